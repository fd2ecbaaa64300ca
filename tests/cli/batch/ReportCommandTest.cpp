#include "cli/batch/Distribution.h"
#include "cli/batch/JobResult.h"
#include "cli/batch/ReportLogs.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <QFileInfo>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using cli::Distribution;
using cli::JobMark;
using cli::JobResult;
using cli::lineOf;
using cli::logLineOf;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

QByteArray doneLine(const QString &file, double seconds = 1, const QByteArray &job = {}) {
    return logLineOf({.file = file,
                      .out = "out/" + file,
                      .status = JobResult::Status::Done,
                      .seconds = seconds,
                      .facts = {12, 3},
                      .peakBytes = 30 << 20},
                     job.isNull() ? file.toUtf8() : job, JobMark{4 << 20, 1});
}

QByteArray failedLine(const QString &file, const QString &message) {
    return logLineOf({.file = file, .message = message}, file.toUtf8(), JobMark{1, 1});
}

class Reports : public testing::Test {
protected:
    /// The page for a log of this content; the test fails where there is none.
    std::string pageOf(const QByteArray &log) {
        saveBytes(dir.path("log"), log);
        const CliResult result = runCli({"report", dir.path("log")});
        EXPECT_EQ(result.exitCode, 0) << result.err.constData();
        return result.out.toStdString();
    }
    QByteArray tableOf(const QStringList &logs) {
        const CliResult result = runCli(QStringList{"report", "--csv", "-"} + logs);
        EXPECT_EQ(result.exitCode, 0) << result.err.constData();
        return result.out;
    }

    TempDir dir;
};

TEST_F(Reports, CountWhatIsDoneAndWhyOthersFailed) {
    const std::string page = pageOf(
        doneLine("a.pdf") + doneLine("b.pdf") + failedLine("c.pdf", "c.pdf: this is no PDF") +
        failedLine("d.pdf", "d.pdf: this is no PDF") + failedLine("e.pdf", "a warning\ngiven up after 60 s"));
    EXPECT_THAT(page, HasSubstr("<td>done</td><td class=\"n\">2</td>"));
    EXPECT_THAT(page, HasSubstr("<td>failed</td><td class=\"n\">3</td>"));
    EXPECT_THAT(page, HasSubstr("<td class=\"n\">2</td><td>this is no PDF</td><td>c.pdf</td>"));
    EXPECT_THAT(page, HasSubstr("<td class=\"n\">1</td><td>given up after 60 s</td><td>e.pdf</td>"));
    EXPECT_THAT(page, HasSubstr("<td>pages of what is done</td><td class=\"n\">24</td>"));
    EXPECT_THAT(page, HasSubstr("<td>entries of what is done</td><td class=\"n\">6</td>"));
}

TEST_F(Reports, CountReasonsAlikeWhateverTheirFilesAreNamed) {
    const std::string page = pageOf(failedLine("a", "a: what a strange file is at ./a") +
                                    failedLine("b.pdf", "b.pdf: what a strange file is at ./b.pdf"));
    EXPECT_THAT(page, HasSubstr("<td class=\"n\">1</td><td>what … strange file is at ./…</td><td>a</td>"));
    EXPECT_THAT(page,
                HasSubstr("<td class=\"n\">1</td><td>what a strange file is at ./…</td><td>b.pdf</td>"));
}

TEST_F(Reports, OfLogsThatGrowMeanwhileAreOfWhatWasThereAtFirst) {
    saveBytes(dir.path("one"), doneLine("a.pdf") + doneLine("b.pdf"));
    saveBytes(dir.path("two"), doneLine("c.pdf"));
    QStringList files;
    const auto problem =
        cli::ReportLogs({dir.path("one"), dir.path("two")}).read([&](const cli::ReportedJob &job) {
            if (files.isEmpty()) saveBytes(dir.path("one"), bytesOf(dir.path("one")) + doneLine("new.pdf"));
            files.append(job.file);
        });
    EXPECT_EQ(problem, std::nullopt);
    EXPECT_EQ(files, (QStringList{"a.pdf", "b.pdf", "c.pdf"}));
}

TEST_F(Reports, NeedNothingElseAndTrustNoName) {
    const std::string page = pageOf(failedLine("<script>.pdf", "<b>why</b> & \"so\""));
    EXPECT_THAT(page, AllOf(HasSubstr("&lt;script&gt;.pdf"), HasSubstr("&lt;b&gt;why&lt;/b&gt; &amp; ")));
    EXPECT_THAT(page, AllOf(Not(HasSubstr("<script")), Not(HasSubstr("http")), Not(HasSubstr("src="))));
}

TEST_F(Reports, ShowTheSlowestFirst) {
    QByteArray log;
    for (int i = 0; i < 30; ++i)
        log += doneLine(QStringLiteral("file%1.pdf").arg(i), i);
    const std::string page = pageOf(log);
    const size_t slowest = page.find("The slowest");
    const size_t last = page.find("file29.pdf", slowest);
    EXPECT_LT(last, page.find("file28.pdf", slowest));
    EXPECT_EQ(page.substr(slowest, page.find("The largest files") - slowest).find("file9.pdf"),
              std::string::npos)
        << "twenty are shown";
}

TEST_F(Reports, CountAJobOnceOverAllLogs) {
    saveBytes(dir.path("one"), failedLine("a.pdf", "given up") + doneLine("b.pdf"));
    saveBytes(dir.path("two"), doneLine("a.pdf") + failedLine("a.pdf", "cancelled") +
                                   failedLine("c.pdf", "first") + failedLine("c.pdf", "last"));
    const QByteArray table = tableOf({dir.path("one"), dir.path("two")});
    EXPECT_EQ(table.count('\n'), 4);
    EXPECT_TRUE(table.contains("a.pdf,out/a.pdf,done,1,12,3,30,4194304,\r\n")) << table.constData();
    EXPECT_TRUE(table.contains("c.pdf,,failed,,,,,1,last\r\n")) << table.constData();
}

TEST_F(Reports, ReadWhatABatchHasPrinted) {
    saveBytes(dir.path("printed"),
              lineOf({.file = "a.pdf",
                      .status = JobResult::Status::Done,
                      .printed = "{\n  \"pages\": 1\n}\n",
                      .printedIsJson = true},
                     "one") +
                  lineOf({.file = "b.pdf", .status = JobResult::Status::Skipped}, "two"));
    EXPECT_EQ(tableOf({dir.path("printed")}).count('\n'), 2) << "what was skipped is in another one";
}

TEST_F(Reports, KnowTheJobsOfALogInWhatWasPrinted) {
    const JobResult result{.file = "a.pdf", .status = JobResult::Status::Done};
    saveBytes(dir.path("log"), logLineOf(result, "one", JobMark{1, 1}));
    saveBytes(dir.path("printed"), lineOf(result, "one"));
    saveBytes(dir.path("other"), lineOf(result, "two"));
    EXPECT_EQ(tableOf({dir.path("log"), dir.path("printed")}).count('\n'), 2);
    EXPECT_EQ(tableOf({dir.path("printed"), dir.path("other")}).count('\n'), 3)
        << "another command has done something else with the file";
}

TEST_F(Reports, QuoteTheCellsOfTheTable) {
    saveBytes(dir.path("log"), failedLine("a, \"b\".pdf", "one\ntwo"));
    EXPECT_TRUE(tableOf({dir.path("log")}).contains("\"a, \"\"b\"\".pdf\",,failed,,,,,1,\"one\ntwo\"\r\n"));
}

TEST_F(Reports, GoToFiles) {
    saveBytes(dir.path("log"), doneLine("a.pdf"));
    const CliResult result =
        runCli({"report", dir.path("log"), "--html", dir.path("page.html"), "--csv", dir.path("table.csv")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(bytesOf(dir.path("page.html")).endsWith("</html>\n"));
    EXPECT_TRUE(bytesOf(dir.path("table.csv")).startsWith("file,out,status,"));
}

TEST_F(Reports, AreNotWrittenOverTheLog) {
    const QByteArray log = doneLine("a.pdf");
    saveBytes(dir.path("log"), log);
    const CliResult result = runCli({"report", dir.path("log"), "--csv", dir.path("log")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(bytesOf(dir.path("log")), log);
}

TEST_F(Reports, LogsThatAreDamagedAreRefused) {
    saveBytes(dir.path("log"), doneLine("a.pdf") + "nonsense\n");
    const CliResult result = runCli({"report", dir.path("log"), "--csv", dir.path("table.csv")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("line 2 is not what a batch has written"));
    EXPECT_FALSE(QFileInfo::exists(dir.path("table.csv")));
    EXPECT_EQ(runCli({"report", dir.path("none")}).exitCode, 1);
}

TEST_F(Reports, LastLineThatWasCutOffIsTold) {
    saveBytes(dir.path("log"), doneLine("a.pdf") + doneLine("b.pdf").chopped(9));
    const CliResult result = runCli({"report", dir.path("log"), "--csv", "-"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out.count('\n'), 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("the last line was cut off; it is left out"));
}

TEST(Distribution, TellsQuantilesAndBars) {
    Distribution numbers;
    EXPECT_TRUE(numbers.bars().empty());
    for (int i = 1; i <= 1000; ++i)
        numbers.add(i);
    EXPECT_EQ(numbers.count(), 1000);
    EXPECT_EQ(numbers.sum(), 500'500);
    EXPECT_EQ(numbers.largest(), 1000);
    EXPECT_NEAR(numbers.quantile(0.5), 500, 25);
    EXPECT_NEAR(numbers.quantile(0.9), 900, 45);
    const auto bars = numbers.bars();
    ASSERT_EQ(bars.size(), 10U);
    EXPECT_EQ(bars.front().from, 1);
    EXPECT_EQ(bars.front().count, 1);
    EXPECT_EQ(bars.at(8).count, 256);
    EXPECT_EQ(bars.back().count, 1000 - 511);
}

TEST(Distribution, TakesWhatIsNothing) {
    Distribution numbers;
    numbers.add(0);
    numbers.add(-1);
    EXPECT_EQ(numbers.count(), 2);
    EXPECT_EQ(numbers.bars().size(), 1U);
}

TEST(JobResult, IsALineOfJson) {
    EXPECT_EQ(
        lineOf({.file = "a.pdf",
                .out = "b.pdf",
                .status = JobResult::Status::Done,
                .seconds = 1.23456,
                .facts = {3, {}},
                .peakBytes = 25 << 20,
                .message = "one\ntwo"},
               "c0ffee"),
        "{\"file\": \"a.pdf\", \"out\": \"b.pdf\", \"status\": \"done\", \"seconds\": 1.235, \"pages\": 3, "
        "\"entries\": null, \"peakMB\": 25, \"message\": \"one\\ntwo\", \"job\": \"c0ffee\"}\n");
    EXPECT_EQ(lineOf({.file = {}, .message = "why"}, {}),
              "{\"file\": null, \"out\": null, \"status\": \"failed\", \"seconds\": null, \"pages\": null, "
              "\"entries\": null, \"peakMB\": null, \"message\": \"why\", \"job\": null}\n");
}

TEST(JobResult, HasWhatWasPrinted) {
    EXPECT_TRUE(
        lineOf({.file = "a", .printed = "[\n  {\n    \"title\": \"a  b\"\n  }\n]\n", .printedIsJson = true},
               "one")
            .endsWith(", \"job\": \"one\", \"result\": [{\"title\": \"a  b\"}]}\n"));
    EXPECT_TRUE(lineOf({.file = "a", .printed = "[1] One\n"}, "one")
                    .endsWith(", \"job\": \"one\", \"result\": \"[1] One\\n\"}\n"));
}

}  // namespace
}  // namespace leafwright::test
