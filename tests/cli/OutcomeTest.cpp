#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Paths.h"

#include <gtest/gtest.h>

namespace leafwright::test {
namespace {

/// What commands say that they have done.
class Outcome : public testing::Test {
protected:
    /// What a command says that ends well, without what stands before each message.
    static QString said(const QStringList &arguments) {
        const CliResult result = runCli(arguments);
        EXPECT_EQ(result.exitCode, 0) << result.err.constData();
        EXPECT_TRUE(result.err.isEmpty() || result.err.startsWith("leafwright-cli: "));
        return QString::fromUtf8(result.err).remove("leafwright-cli: ").trimmed();
    }

    TempDir dir;
    QString in = savePdfWithHeadings(dir, "in.pdf");  ///< Two pages, with an outline of one entry.
    QString out = dir.path("out.pdf");
};

TEST_F(Outcome, IsSaidOfWhatIsPrinted) {
    const QString pages = QString::number(parsedJson(runCli({"labels", in}).out).array().size());
    EXPECT_EQ(said({"info", in}), in + ": " + pages + " pages");
    EXPECT_EQ(said({"labels", in}), in + ": " + pages + " pages");
    EXPECT_EQ(said({"text", in}), in + ": " + pages + " pages");
    EXPECT_EQ(said({"text", in, "--page", "1"}), in + ": 1 page");
    EXPECT_EQ(said({"outline", in}), in + ": 1 entry");
    const QJsonObject fonts = parsedJson(runCli({"fonts", in}).out).object();
    EXPECT_EQ(said({"fonts", in}), QString("%1: %2 fonts, %3 of them of headings")
                                       .arg(in)
                                       .arg(fonts["census"].toArray().size())
                                       .arg(fonts["map"].toArray().size()));
}

TEST_F(Outcome, IsSaidOfWhatIsWritten) {
    const auto entries = [this] {
        const qsizetype count = runCli({"outline", "--format", "plus", out}).out.count('\n');
        return out + " written, " + (count == 1 ? "1 entry" : QString::number(count) + " entries");
    };
    QString outcome = said({"autotoc", in, "-o", out});
    EXPECT_EQ(outcome, entries());
    outcome = said({"minitoc", in, "-o", out, "--page", "1", "--text", "Section"});
    EXPECT_EQ(outcome, entries());
    saveBytes(dir.path("tree"), "+ @1 One\n++ @2 Two\n");
    EXPECT_EQ(said({"apply", in, dir.path("tree"), "-o", out}), out + " written, 2 entries");
    saveBytes(dir.path("tree"), "[]");
    EXPECT_EQ(said({"apply", in, dir.path("tree"), "-o", out}), out + " written, 0 entries");
    const QString folder = dir.path("folder");
    EXPECT_EQ(said({"autotoc", in, "--out-dir", folder}).section(',', 0, 0), folder + "/in.pdf written")
        << "by the process that does the one file";
}

TEST_F(Outcome, IsNotSaidWhenQuietIsAskedFor) {
    const QString folder = dir.path("folder");
    const QString other = savePdfWithHeadings(dir, "other.pdf");
    for (const QStringList &command : QList<QStringList>{{"info", in},
                                                         {"autotoc", in, "-o", out},
                                                         {"autotoc", in, "--out-dir", folder},
                                                         {"autotoc", in, other, "--out-dir", folder},
                                                         {"outline", in, "--timeout", "100"}})
        for (const char *option : {"-q", "--quiet"})
            EXPECT_EQ(said(command + QStringList(option)), "") << qPrintable(command.join(' '));
}

TEST_F(Outcome, IsNotSaidOfWhatFailed) {
    const CliResult result = runCli({"autotoc", in, "-o", dir.path("none/out.pdf")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err.count('\n'), 1) << result.err.constData();
    const CliResult quiet = runCli({"info", "-q", dir.path("none.pdf")});
    EXPECT_EQ(quiet.err, "leafwright-cli: " + dir.path("none.pdf").toUtf8() + ": there is no such file\n")
        << "what is wrong is said all the same";
}

TEST_F(Outcome, OfABatchIsHowManyJobsAreDone) {
    saveBytes(dir.path("jobs"), in.toUtf8() + '\n');
    const auto batch = [this](const QString &option) {
        return runProgram("/bin/sh", {"-c", "\"$0\" batch " + option + " info < \"$1\"", commandLineProgram(),
                                      dir.path("jobs")});
    };
    EXPECT_EQ(batch("").err, "leafwright-cli: 1 job done\n");
    EXPECT_EQ(batch("-q").err, "");
    saveBytes(dir.path("log"), batch("").out);
    EXPECT_EQ(said({"report", dir.path("log")}), "1 job reported");
}

}  // namespace
}  // namespace leafwright::test
