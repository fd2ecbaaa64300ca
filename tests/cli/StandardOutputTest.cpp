#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Paths.h"

#include <QDir>

#include <cstdlib>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

namespace leafwright::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

/// The program as a shell starts it in a folder, which decides where standard output leads.
class FromAShell : public testing::Test {
protected:
    void SetUp() override {
        saveBytes(dir.path("tree"), "+ @1 New\n");
        saveBytes(dir.path("steps.json"), R"([{"do": "setTitle", "path": [0], "title": "New"},)"
                                          R"( {"do": "saveDocument:"}])");
        before = bytesOf(pdf);
    }
    /// @param script lines of the shell, to which the program is $P
    ProgramResult shell(const QString &script) {
        return runProgram("/bin/sh",
                          {"-c", "P=$0; cd \"$1\"; " + script, commandLineProgram(), dir.path({})});
    }
    void expectRefusal(const QString &script, const std::string &message) {
        const ProgramResult result = shell(script);
        EXPECT_EQ(result.exitCode, 1) << qPrintable(script);
        EXPECT_THAT(result.err.toStdString(), EndsWith(message + '\n')) << qPrintable(script);
        EXPECT_TRUE(bytesOf(pdf) == before) << qPrintable(script);
    }

    TempDir dir;
    QString pdf = savePdfWithHeadings(dir, "a.pdf");
    QByteArray before;
};

using StandardOutput = FromAShell;

TEST_F(StandardOutput, IsNotThePdfThatIsRead) {
    for (const char *command : {"info", "labels", "outline", "text", "fonts"}) {
        for (const char *output : {">> a.pdf", "1<> a.pdf"})
            expectRefusal(QStringLiteral("$P %1 a.pdf %2").arg(command, output),
                          "standard output leads to a file that is read; nothing was written");
    }
    for (const char *command : {"contents a.pdf -o out.pdf --report -", "contents a.pdf -o out.pdf --explain",
                                "run steps.json a.pdf --report -"})
        expectRefusal(QStringLiteral("$P %1 >> a.pdf").arg(command),
                      "standard output leads to a file that is read; nothing was written");
}

TEST_F(StandardOutput, DoesNotAddThePdfToItself) {
    for (const char *output : {"/dev/stdout >> a.pdf", "/dev/stdout 1<> a.pdf", "/dev/fd/3 3>> a.pdf"}) {
        for (const char *command : {"apply a.pdf tree", "autotoc a.pdf", "contents a.pdf",
                                    "run steps.json a.pdf", "minitoc a.pdf --page 1 --text 'Chapter One'"}) {
            expectRefusal(QStringLiteral("$P %1 -o %2").arg(command, output),
                          QString(output).section(' ', 0, 0).toStdString() +
                              " is read, and would be overwritten; nothing was written");
        }
    }
    saveBytes(dir.path("steps.json"),
              R"([{"do": "chooseFile", "path": "/dev/stdout"}, {"do": "saveDocumentAs:"}])");
    expectRefusal("$P run steps.json a.pdf >> a.pdf", "it is read, and would be overwritten");
}

TEST_F(StandardOutput, MayBeAnythingElse) {
    for (const char *output : {"> /dev/null", "> out.json", "| cat"})
        EXPECT_EQ(shell(QStringLiteral("$P info a.pdf %1").arg(output)).exitCode, 0) << output;
    EXPECT_EQ(shell("$P apply a.pdf tree -o /dev/stdout > out.pdf").exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @1 New\n");
    EXPECT_EQ(shell("$P apply a.pdf tree -o a.pdf > /dev/null").exitCode, 0);
    EXPECT_EQ(plusLinesOf(pdf), "+ @1 New\n");
}

TEST_F(StandardOutput, TakesNoPdfWhereNoTemporaryFileCanBeMade) {
    expectRefusal("TMPDIR=/proc $P apply a.pdf tree -o /dev/stdout > out.pdf",
                  "/dev/stdout could not be written: no temporary file can be made in /proc: No such file or "
                  "directory");
    expectRefusal("TMPDIR=$PWD/a.pdf $P apply a.pdf tree -o /dev/stdout > out.pdf", "a.pdf: Not a directory");
}

TEST_F(StandardOutput, GetsThePdfForADash) {
    for (const char *command : {"apply a.pdf tree", "contents a.pdf", "autotoc a.pdf",
                                "minitoc a.pdf --page 1 --text 'Chapter One'", "run steps.json a.pdf",
                                "apply a.pdf tree --timeout 60"}) {
        const QString line(command);
        for (const char *dash : {"-o -", "--output=-"}) {
            saveBytes(pdf, before);
            const ProgramResult result = shell(QStringLiteral("$P %1 %2 | cat > out.pdf").arg(line, dash));
            EXPECT_EQ(result.exitCode, 0) << qPrintable(line) << result.err.constData();
            const QByteArray written = bytesOf(dir.path("out.pdf"));
            EXPECT_TRUE(written.startsWith(before)) << qPrintable(line);
            EXPECT_EQ(runProgram("qpdf", {"--check", dir.path("out.pdf")}).exitCode, 0) << qPrintable(line);
        }
    }
    EXPECT_FALSE(QFile::exists(dir.path("-")));
}

TEST_F(StandardOutput, MessagesAreNoPartOfThePdf) {
    saveBytes(dir.path("tree"), "+ @nowhere A\n");
    const ProgramResult result = shell("$P apply a.pdf tree -o - > out.pdf");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("no page is labelled \"nowhere\""));
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @1 A\n");
}

TEST_F(StandardOutput, FailuresLeaveNothingInIt) {
    saveBytes(dir.path("tree"), "Prose\n");
    EXPECT_EQ(shell("$P apply a.pdf tree -o - > out.pdf").exitCode, 1);
    EXPECT_EQ(bytesOf(dir.path("out.pdf")), "");
    saveBytes(dir.path("tree"), "+ @1 New\n");
    expectRefusal("$P apply a.pdf tree -o - > /dev/full",
                  "/dev/stdout could not be written: No space left on device");
    for (const char *output : {">> a.pdf", "1<> a.pdf"})
        expectRefusal(QStringLiteral("$P apply a.pdf tree -o - %1").arg(output),
                      "/dev/stdout is read, and would be overwritten; nothing was written");
}

TEST_F(StandardOutput, ThatIsATerminalGetsNoPdf) {
    const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    ASSERT_EQ(::grantpt(terminal), 0);
    ASSERT_EQ(::unlockpt(terminal), 0);
    const QString name = QString::fromLocal8Bit(::ptsname(terminal));
    expectRefusal("$P apply a.pdf tree -o - > " + name,
                  "standard output is a terminal, which can't show a PDF; nothing was written");
    EXPECT_EQ(shell("$P apply a.pdf tree -o out.pdf > " + name).exitCode, 0);
    ::close(terminal);
}

TEST_F(StandardOutput, TakesOneThingOnly) {
    for (const char *command : {"contents a.pdf -o - --report -", "contents a.pdf -o - --explain",
                                "run steps.json a.pdf -o - --report -"}) {
        const ProgramResult result = shell(QStringLiteral("$P %1 > out.pdf").arg(command));
        EXPECT_EQ(result.exitCode, 2) << command;
        EXPECT_THAT(result.err.toStdString(), HasSubstr("would be printed into each other")) << command;
        EXPECT_EQ(bytesOf(dir.path("out.pdf")), "") << command;
    }
}

TEST_F(StandardOutput, IsNotAFileCalledDash) {
    EXPECT_EQ(shell("$P apply a.pdf tree -o ./- > out.pdf").exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("./-")), "+ @1 New\n");
    EXPECT_EQ(bytesOf(dir.path("out.pdf")), "");
}

TEST_F(StandardOutput, ThatTakesNoReportKeepsThePdfFromBeingWritten) {
    for (const char *command : {"run steps.json a.pdf --report -", "run steps.json a.pdf -o a.pdf --report -",
                                "contents a.pdf -o a.pdf --report -", "contents a.pdf -o a.pdf --explain"}) {
        expectRefusal(QStringLiteral("$P %1 > /dev/full").arg(command),
                      "could not be written to standard output");
    }
}

TEST_F(StandardOutput, ThatNobodyReadsToItsEndIsAFailureAndLeavesNothing) {
    PdfBuilder large;
    large.addNumberedPages(1);
    addOutline(large, {{"(Old)", "[" + large.pageReference(0) + " /Fit]"}});
    large.addNoise(500'000);  // more than a pipe holds
    large.save(pdf);
    before = bytesOf(pdf);
    const QStringList names = QDir(dir.path({})).entryList(QDir::AllEntries | QDir::Hidden);
    for (const char *command : {"apply a.pdf tree", "run steps.json a.pdf"}) {
        const ProgramResult result = shell(
            QStringLiteral("{ $P %1 -o /dev/stdout; echo \"exit status $?\" >&2; } | head -c 10 >/dev/null")
                .arg(command));
        EXPECT_THAT(result.err.toStdString(), HasSubstr("/dev/stdout could not be written: Broken pipe"));
        EXPECT_THAT(result.err.toStdString(), EndsWith("exit status 1\n"));
        EXPECT_TRUE(bytesOf(pdf) == before);
        EXPECT_EQ(QDir(dir.path({})).entryList(QDir::AllEntries | QDir::Hidden), names);
    }
}

using WorkingFolder = FromAShell;

TEST_F(WorkingFolder, ThatIsGoneMakesRelativePathsAnError) {
    const std::string gone =
        ": the folder that this program was started in is gone, and with it what a relative path begins at; "
        "go "
        "to another folder, or give the whole path";
    const QString from = QStringLiteral("A=$PWD; mkdir gone; cd gone; rmdir ../gone; ");
    const QString play = from + QStringLiteral("$P run $A/steps.json ");
    expectRefusal(play + "-o leafwright-test.pdf $A/a.pdf", "leafwright-test.pdf" + gone);
    expectRefusal(play + "--report leafwright-test.json $A/a.pdf", "leafwright-test.json" + gone);
    expectRefusal(play + "a.pdf", "a.pdf" + gone);
    for (const char *selector :
         {"saveDocumentAs:", "buttonClickedSaveH1H2H3Map:", "buttonClickedLoadH1H2H3Map:"}) {
        saveBytes(dir.path("steps.json"),
                  QByteArray(R"([{"do": "chooseFile", "path": "leafwright-test"}, {"do": ")") + selector +
                      R"("}])");
        expectRefusal(play + "$A/a.pdf", "leafwright-test" + gone);
    }
    EXPECT_THAT(shell(from + "TMPDIR=tmp $P run $A/steps.json $A/a.pdf").err.toStdString(),
                HasSubstr("no folder for temporary files can be made in tmp: "));
    for (const QString &name : QDir("/").entryList(QDir::Files))
        EXPECT_FALSE(name.startsWith("leafwright-test")) << "nothing is written to the root";
}

TEST_F(WorkingFolder, ThatIsGoneIsNotNeededByWholePaths) {
    const ProgramResult result = shell(
        "A=$PWD; mkdir gone; cd gone; rmdir ../gone; $P run $A/steps.json $A/a.pdf -o $A/out.pdf --report -");
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @2 New\n");
    EXPECT_EQ(plusLinesOf(pdf), "+ @2 New\n");
}

}  // namespace
}  // namespace leafwright::test
