#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// The JSON lines that `text` prints.
std::vector<QJsonObject> runsOf(const QStringList &arguments) {
    const CliResult result = runCli(QStringList{"text"} + arguments);
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_TRUE(result.out.isEmpty() || result.out.endsWith('\n'));
    std::vector<QJsonObject> runs;
    for (const QByteArray &line : result.out.split('\n')) {
        if (!line.isEmpty()) runs.push_back(parsedJson(line).object());
    }
    return runs;
}

/// Pages with "Big words" in Helvetica-Bold 18 and "small ones" in Times-Italic 10, then an empty page.
QString saveSample(const TempDir &dir) {
    PdfBuilder pdf;
    pdf.addPage(PdfBuilder::showText("F2", 18, 72, 700, "Big words") +
                PdfBuilder::showText("F3", 10, 72, 600, "small ones"));
    pdf.addPage();
    pdf.save(dir.path("a.pdf"));
    return dir.path("a.pdf");
}

TEST(TextCommand, ALineHasItsFixedShape) {
    const TempDir dir;
    const CliResult result = runCli({"text", saveSample(dir)});
    // The names, their order and the order of the runs; the bounds are looked at elsewhere.
    EXPECT_THAT(result.out.toStdString(),
                testing::MatchesRegex(
                    "\\{\"page\": 1, \"location\": 0, \"length\": 10, \"font\": \"Helvetica Bold\", "
                    "\"size\": 18, \"bold\": true, \"italic\": false, \"bounds\": \\[[0-9., ]+\\], "
                    "\"text\": \"Big words\\\\n\"\\}\n"
                    "\\{\"page\": 1, \"location\": 10, \"length\": 11, \"font\": \"Times Italic\", "
                    "\"size\": 10, \"bold\": false, \"italic\": true, \"bounds\": \\[[0-9., ]+\\], "
                    "\"text\": \"small ones\\\\n\"\\}\n"));
}

TEST(TextCommand, BoundsAreWhereTheTextStands) {
    const TempDir dir;
    const std::vector<QJsonObject> runs = runsOf({saveSample(dir)});
    ASSERT_EQ(runs.size(), 2U);
    const QJsonArray bounds = runs[0]["bounds"].toArray();
    ASSERT_EQ(bounds.size(), 4);
    EXPECT_NEAR(bounds[0].toDouble(), 72, 2);
    EXPECT_NEAR(bounds[1].toDouble(), 700, 6);  // the baseline less the descent
    EXPECT_NEAR(bounds[2].toDouble(), 90, 15);
    EXPECT_NEAR(bounds[3].toDouble(), 20, 8);
}

TEST(TextCommand, PageWithoutTextPrintsNothing) {
    const TempDir dir;
    EXPECT_THAT(runsOf({saveSample(dir), "--page", "2"}), IsEmpty());
}

TEST(TextCommand, OnePageOfSeveral) {
    const TempDir dir;
    const QString path = savePdf(dir, "a.pdf", 3);
    const std::vector<QJsonObject> runs = runsOf({path, "--page", "2"});
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0]["page"], 2);
    EXPECT_EQ(runs[0]["text"], "Page 2\n");
    EXPECT_EQ(runsOf({path}).size(), 3U);
}

TEST(TextCommand, PageThatIsNotThereIsAFailure) {
    const TempDir dir;
    const QString path = savePdf(dir, "a.pdf", 3);
    for (const char *page : {"0", "4", "-1", "2147483647"}) {
        SCOPED_TRACE(page);
        const CliResult result = runCli({"text", path, QStringLiteral("--page=") + page});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT(result.err.toStdString(),
                    HasSubstr(std::string("there is no page ") + page + "; the pages are 1 to 3"));
        EXPECT_EQ(result.out, "");
    }
}

TEST(TextCommand, PageThatIsNoNumberIsWrongUsage) {
    const TempDir dir;
    const QString path = savePdf(dir, "a.pdf", 3);
    for (const char *page : {"two", "1.5", "1-2", "2x", "99999999999"}) {
        SCOPED_TRACE(page);
        const CliResult result = runCli({"text", path, QStringLiteral("--page=") + page});
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_THAT(result.err.toStdString(), HasSubstr(std::string("\"") + page + "\" is no page number"));
        EXPECT_EQ(result.out, "");
    }
}

}  // namespace
}  // namespace leafwright::test
