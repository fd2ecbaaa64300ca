#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <QFile>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

/// What is written never takes the place of what is read, nor of something else that is written. `link.*` is
/// a symbolic link to `a.*`.
class FileClash : public testing::Test {
protected:
    void SetUp() override {
        saveBytes(dir.path("steps.json"), "[]");
        saveBytes(dir.path("tree.txt"), "+ @1 New\n");
        before = bytesOf(pdf);
        ASSERT_TRUE(QFile::link(pdf, dir.path("link.pdf")));
    }
    /// Runs a command whose names stand for files of the folder.
    CliResult run(QStringList arguments) {
        for (qsizetype i = 1; i < arguments.size(); ++i)
            if (arguments[i].contains(u'.')) arguments[i] = dir.path(arguments[i]);
        return runCli(arguments);
    }
    void expectRefusal(const QStringList &arguments, const std::string &message) {
        const CliResult result = run(arguments);
        EXPECT_EQ(result.exitCode, 1) << arguments.join(u' ').toStdString();
        EXPECT_THAT(result.err.toStdString(), EndsWith(message + '\n'));
        EXPECT_EQ(bytesOf(pdf), before);
        EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
    }

    /// A script that saves the PDF, and then by a panel something under a name.
    void saveScript(const char *selector, const QString &name) {
        const QString path = QDir(dir.path({})).absoluteFilePath(name);
        saveBytes(
            dir.path("steps.json"),
            QStringLiteral(R"([{"do": "setTitle", "path": [0], "title": "New"}, {"do": "saveDocument:"},)"
                           R"({"do": "chooseFile", "path": "%1"}, {"do": "%2"}])")
                .arg(path, QLatin1String(selector))
                .toUtf8());
    }
    /// The script ends there, and nothing has changed.
    void expectStop(const QStringList &options, const QString &name, const std::string &message) {
        const QByteArray steps = bytesOf(dir.path("steps.json"));
        const CliResult result = run(QStringList{"run", "steps.json", "a.pdf"} + options);
        EXPECT_EQ(result.exitCode, 1) << qPrintable(name);
        EXPECT_THAT(result.err.toStdString(), EndsWith(name.toStdString() + ": " + message + '\n'));
        EXPECT_EQ(bytesOf(pdf), before);
        EXPECT_EQ(bytesOf(dir.path("steps.json")), steps);
        for (const char *file : {"out.pdf", "map.txt"})
            EXPECT_FALSE(QFile::exists(dir.path(QLatin1String(file)))) << file;
    }

    static constexpr const char *saveMap = "buttonClickedSaveH1H2H3Map:";
    static constexpr const char *saveAs = "saveDocumentAs:";
    const std::string read = " is read, and would be overwritten; nothing was written";
    TempDir dir;
    QString pdf = savePdfWithHeadings(dir, "a.pdf");
    QByteArray before;
};

TEST_F(FileClash, WhatIsReadIsNotWrittenOver) {
    expectRefusal({"fonts", "a.pdf", "--save-map", "a.pdf"}, "a.pdf" + read);
    expectRefusal({"fonts", "a.pdf", "--save-map", "link.pdf"}, "link.pdf" + read);
    expectRefusal({"contents", "a.pdf", "-o", "out.pdf", "--report", "link.pdf"}, "link.pdf" + read);
    expectRefusal({"run", "steps.json", "a.pdf", "--report", "link.pdf"}, "link.pdf" + read);
    expectRefusal({"run", "steps.json", "a.pdf", "--report", "steps.json"}, "steps.json" + read);
    expectRefusal({"apply", "a.pdf", "tree.txt", "-o", "tree.txt"}, "tree.txt" + read);
    expectRefusal({"autotoc", "a.pdf", "--map", "tree.txt", "-o", "./tree.txt"}, "./tree.txt" + read);
    EXPECT_EQ(bytesOf(dir.path("tree.txt")), "+ @1 New\n");
    EXPECT_EQ(bytesOf(dir.path("steps.json")), "[]");
}

TEST_F(FileClash, StandardInputMayBeAFile) {
    const StandardInput input(dir.path("tree.txt"));
    expectRefusal({"apply", "a.pdf", "-", "-o", "tree.txt"}, "tree.txt" + read);
}

TEST_F(FileClash, TwoResultsDoNotMeet) {
    const std::string meet = "nothing was written";
    expectRefusal({"contents", "a.pdf", "-o", "out.pdf", "--report", "./out.pdf"}, meet);
    expectRefusal({"run", "steps.json", "a.pdf", "-o", "out.pdf", "--report", "./out.pdf"}, meet);
    ASSERT_TRUE(QFile::link(dir.path("out.pdf"), dir.path("soon.pdf")));
    expectRefusal({"run", "steps.json", "a.pdf", "-o", "out.pdf", "--report", "soon.pdf"}, meet);
}

TEST_F(FileClash, WhatIsNoPdfTakesThePlaceOfNone) {
    const QByteArray other = "%PDF-1.7\nsomebody's\n";
    saveBytes(dir.path("other.pdf"), other);
    const auto expectItStays = [&](const QStringList &arguments) {
        expectRefusal(arguments, "a PDF stands there, which only a PDF may replace");
        EXPECT_EQ(bytesOf(dir.path("other.pdf")), other) << qPrintable(arguments.join(u' '));
    };
    expectItStays({"fonts", "a.pdf", "--save-map", "other.pdf"});
    expectItStays({"contents", "a.pdf", "-o", "out.pdf", "--report", "other.pdf"});
    expectItStays({"run", "steps.json", "a.pdf", "-o", "out.pdf", "--report", "other.pdf"});
    saveScript(saveMap, QStringLiteral("other.pdf"));
    expectItStays({"run", "steps.json", "a.pdf"});
}

TEST_F(FileClash, ThePdfMayBeWrittenAgain) {
    EXPECT_EQ(run({"autotoc", "a.pdf", "-o", "link.pdf"}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(pdf), outlineOfHeadings);
    EXPECT_EQ(run({"run", "steps.json", "a.pdf", "-o", "link.pdf", "--report", "report.json"}).exitCode, 0);
}

TEST_F(FileClash, WhatAScriptIsPlayedOnNothingElseIsSavedOver) {
    const std::string isRead = "it is read, and would be overwritten";
    for (const char *name : {"a.pdf", "link.pdf", "./a.pdf", "steps.json"}) {
        saveScript(saveMap, QLatin1String(name));
        expectStop({}, dir.path(QString(name).remove("./")), isRead);
    }
    ASSERT_TRUE(QFile::link(dir.path("steps.json"), dir.path("steps.pdf")));
    for (const char *name : {"steps.json", "steps.pdf"}) {
        saveScript(saveAs, QLatin1String(name));
        expectStop({}, dir.path(QLatin1String(name)), isRead);
        const StandardInput input(dir.path("steps.json"));
        EXPECT_EQ(run({"run", "-", "a.pdf"}).exitCode, 1);
        EXPECT_EQ(bytesOf(pdf), before);
    }
}

TEST_F(FileClash, WhatARunWritesNothingElseIsSavedOver) {
    const std::string meet = "two results would be written to it";
    ASSERT_TRUE(QFile::link(dir.path("out.pdf"), dir.path("soon.pdf")));
    for (const char *name : {"out.pdf", "soon.pdf"}) {
        saveScript(saveMap, QLatin1String(name));
        expectStop({"--report", "out.pdf"}, dir.path(QLatin1String(name)), meet);
        expectStop({"-o", "out.pdf"}, dir.path("out.pdf"), meet);
        saveScript(saveAs, QLatin1String(name));
        expectStop({"--report", "out.pdf"}, dir.path(QLatin1String(name)), meet);
    }
}

TEST_F(FileClash, AScriptMaySaveTheSameTwice) {
    saveScript(saveAs, "out.pdf");
    EXPECT_EQ(run({"run", "steps.json", "a.pdf", "-o", "out.pdf"}).exitCode, 0);
    saveBytes(dir.path("map.txt"), "old");
    const QByteArray save =
        R"({"do": "chooseFile", "path": ")" + dir.path("map.txt").toUtf8() + R"("}, {"do": ")";
    saveBytes(dir.path("steps.json"), '[' + save + saveMap + R"("}, )" + save + saveMap + R"("}])");
    EXPECT_EQ(run({"run", "steps.json", "a.pdf"}).exitCode, 0);
    EXPECT_THAT(bytesOf(dir.path("map.txt")).toStdString(), testing::StartsWith("H1/18"));
}

TEST_F(FileClash, SeveralFilesHaveAResultEach) {
    savePdfWithHeadings(dir, "b.pdf");
    ASSERT_TRUE(QDir(dir.path({})).mkdir("out"));
    ASSERT_TRUE(QFile::link(dir.path("out/b.pdf"), dir.path("out/a.pdf")));
    const CliResult result = run({"autotoc", "a.pdf", "b.pdf", "--out-dir", "./out"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("two results would be written to"));
    EXPECT_FALSE(QFile::exists(dir.path("out/b.pdf")));

    ASSERT_TRUE(QFile::remove(dir.path("out/a.pdf")));
    ASSERT_TRUE(QFile::link(dir.path("b.pdf"), dir.path("out/a.pdf")));
    EXPECT_EQ(run({"contents", "a.pdf", "b.pdf", "--out-dir", "./out"}).exitCode, 2);
    EXPECT_EQ(bytesOf(dir.path("b.pdf")), before) << "another file's result is not written over it";
}

TEST_F(FileClash, SeveralFilesHaveAReportEach) {
    savePdfWithHeadings(dir, "a.PDF");
    const CliResult result =
        run({"contents", "a.pdf", "a.PDF", "--out-dir", "./out", "--report", "./reports"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("two results would be written to"));
    EXPECT_FALSE(QFile::exists(dir.path("out/a.pdf")));
}

}  // namespace
}  // namespace leafwright::test
