#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <QFileInfo>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

/// Runs `autotoc --map` on the file with headings and a map of this content.
CliResult runWithMap(const TempDir &dir, const QByteArray &map) {
    saveBytes(dir.path("map"), map);
    const QString path = savePdfWithHeadings(dir, "in.pdf");
    return runCli({"autotoc", "-q", path, "-o", dir.path("out.pdf"), "--map", dir.path("map")});
}

TEST(HeadingMapOption, SavedMapGivesTheItemsOfTheGuessedOne) {
    const TempDir dir;
    runCli({"fonts", savePdfWithHeadings(dir, "in.pdf"), "--save-map", dir.path("saved")});
    const CliResult result = runWithMap(dir, bytesOf(dir.path("saved")));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), outlineOfHeadings);
}

TEST(HeadingMapOption, PrintedMapGivesTheItemsOfTheGuessedOne) {
    const TempDir dir;
    const QByteArray printed = runCli({"fonts", savePdfWithHeadings(dir, "in.pdf")}).out;
    EXPECT_EQ(runWithMap(dir, printed).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), outlineOfHeadings);
    // The bare list of rows will do as well.
    const QJsonDocument rows(parsedJson(printed)["map"].toArray());
    EXPECT_EQ(runWithMap(dir, rows.toJson()).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), outlineOfHeadings);
}

/// Fonts that only the second decimal of their sizes tells apart, the smaller one first, over body text of 8.
QString savePdfWithCloseSizes(const TempDir &dir) {
    PdfBuilder pdf;
    for (const char *word : {"Alpha", "Gamma"}) {
        pdf.addPage(PdfBuilder::showText("F2", 12.46, 72, 700, std::string("Smaller ") + word) +
                    PdfBuilder::showText("F2", 12.5, 72, 600, std::string("Larger ") + word) +
                    PdfBuilder::showText("F1", 8, 72, 500, "The body text of this document is longer."));
    }
    pdf.save(dir.path("close.pdf"));
    return dir.path("close.pdf");
}

TEST(HeadingMapOption, SizesThatPrintAlikeKeepTheirLevels) {
    const TempDir dir;
    const QString path = savePdfWithCloseSizes(dir);
    const QString out = dir.path("out.pdf");
    ASSERT_EQ(runCli({"autotoc", path, "-o", out}).exitCode, 0);
    const QString guessed = plusLinesOf(out);
    EXPECT_EQ(guessed,
              "+ @1 Smaller Alpha Larger Alpha\n"  // the smaller one can't go deeper than the tree
              "++ @2 Smaller Gamma\n"
              "+ @2 Larger Gamma\n");

    saveBytes(dir.path("printed"), runCli({"fonts", path, "--save-map", dir.path("saved")}).out);
    EXPECT_EQ(bytesOf(dir.path("saved")), "H1/12.5/\"Helvetica\" +B\nH2/12.5/\"Helvetica\" +B\n");
    for (const char *map : {"saved", "printed"}) {
        EXPECT_EQ(runCli({"autotoc", path, "-o", out, "--map", dir.path(map)}).exitCode, 0);
        EXPECT_EQ(plusLinesOf(out), guessed) << map;
    }
}

TEST(HeadingMapOption, PrintedRowMeansTheVeryFontItWasPrintedFor) {
    const TempDir dir;
    const QString path = savePdfWithCloseSizes(dir);
    for (const auto &[size, title] : {std::pair(12.46, "Smaller"), std::pair(12.5, "Larger")}) {
        const QJsonObject row{{"levelNumber", 1}, {"font", "Helvetica Bold"}, {"size", size}, {"bold", true}};
        saveBytes(dir.path("map"), QJsonDocument(QJsonArray{row}).toJson());
        ASSERT_EQ(runCli({"autotoc", path, "-o", dir.path("out.pdf"), "--map", dir.path("map")}).exitCode, 0);
        EXPECT_EQ(plusLinesOf(dir.path("out.pdf")),
                  QStringLiteral("+ @1 %1 Alpha\n+ @2 %1 Gamma\n").arg(title));
    }
}

TEST(HeadingMapOption, EditedMapDecides) {
    const TempDir dir;
    const CliResult result = runWithMap(dir,
                                        "a comment\r\n"
                                        "H2/12.0/\"Times\" +I\r\n"
                                        "H1/14.0/\"Helvetica\" +B\r\n");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")),
              "+ @1 Section Alpha\n"
              "++ @1 Detail Below\n"
              "+ @2 Section Beta\n");
}

TEST(HeadingMapOption, UnreadableLinesAreSaidAndPassedOver) {
    const TempDir dir;
    const CliResult result = runWithMap(dir, "H1/18.0/\"Helvetica\" +B\nHello\nH0/1/\"x\"\n");
    EXPECT_EQ(result.exitCode, 0);
    const std::string map = dir.path("map").toStdString();
    EXPECT_THAT(result.err.toStdString(), HasSubstr(map + ":2: not of the form"));
    EXPECT_THAT(result.err.toStdString(), HasSubstr(map + ":3: not of the form"));
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @1 Chapter One\n+ @2 Chapter Two\n");
}

TEST(HeadingMapOption, MapThatIsNotUtf8IsAFailure) {
    const TempDir dir;
    const CliResult result = runWithMap(dir, "H1/18.0/\"Helvetica\" +B\nH2/14.0/\"Universit\xE9\"\n");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "leafwright-cli: " + dir.path("map").toUtf8() +
                              ":2: the text is not UTF-8\nleafwright-cli: " + dir.path("in.pdf").toUtf8() +
                              ": nothing was written\n");
    EXPECT_FALSE(QFileInfo::exists(dir.path("out.pdf")));
}

TEST(HeadingMapOption, MapWithoutFontsIsAFailure) {
    const TempDir dir;
    for (const char *map : {"", "nothing here\n", "[]", "{}", "{\"map\": 5}", "[{\"font\": \"Times\"}]"}) {
        SCOPED_TRACE(map);
        const CliResult result = runWithMap(dir, map);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT(result.err.toStdString(), HasSubstr("there is no heading font in this map"));
        EXPECT_THAT(result.err.toStdString(), HasSubstr("in.pdf: nothing was written"));
        EXPECT_FALSE(QFileInfo::exists(dir.path("out.pdf")));
    }
}

TEST(HeadingMapOption, MissingMapFileIsAFailure) {
    const TempDir dir;
    const QString path = savePdfWithHeadings(dir, "in.pdf");
    const CliResult result =
        runCli({"autotoc", path, "-o", dir.path("out.pdf"), "--map", dir.path("missing")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("missing: the map can't be read"));
    EXPECT_FALSE(QFileInfo::exists(dir.path("out.pdf")));
}

TEST(HeadingMapOption, FontsThatTheFileLacksMakeNoHeadings) {
    const TempDir dir;
    const CliResult result = runWithMap(dir, "H1/99.0/\"Elsewhere\"\n");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("no headings were found"));
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @2 Old Entry\n");
}

}  // namespace
}  // namespace leafwright::test
