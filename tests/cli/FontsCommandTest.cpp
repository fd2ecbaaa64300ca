#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

TEST(FontsCommand, CensusAndMapHaveTheirFixedShape) {
    const TempDir dir;
    const CliResult result = runCli({"fonts", "-q", savePdfWithHeadings(dir, "a.pdf")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, R"({
  "census": [
    {"font": "Helvetica Bold", "size": 18, "bold": true, "italic": false, "fontIDString": "18.5 Helvetica Bold", "charCount": 24, "instances": 2},
    {"font": "Helvetica Bold", "size": 14, "bold": true, "italic": false, "fontIDString": "14.5 Helvetica Bold", "charCount": 27, "instances": 2},
    {"font": "Times Italic", "size": 12, "bold": false, "italic": true, "fontIDString": "12.4 Times Italic", "charCount": 13, "instances": 1},
    {"font": "Helvetica", "size": 10, "bold": false, "italic": false, "fontIDString": "10.0 Helvetica", "charCount": 202, "instances": 2}
  ],
  "map": [
    {"levelNumber": 1, "Level": "H1", "FontTraits": "18.0 pt Helvetica Bold", "font": "Helvetica Bold", "size": 18, "bold": true, "italic": false},
    {"levelNumber": 2, "Level": "H2", "FontTraits": "14.0 pt Helvetica Bold", "font": "Helvetica Bold", "size": 14, "bold": true, "italic": false},
    {"levelNumber": 3, "Level": "H3", "FontTraits": "12.0 pt Times Italic", "font": "Times Italic", "size": 12, "bold": false, "italic": true}
  ]
}
)");
}

TEST(FontsCommand, FileWithoutTextHasEmptyLists) {
    const TempDir dir;
    PdfBuilder pdf;
    pdf.addPage();
    pdf.save(dir.path("a.pdf"));
    const CliResult result = runCli({"fonts", dir.path("a.pdf")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(parsedJson(result.out).object(),
              (QJsonObject{{"census", QJsonArray()}, {"map", QJsonArray()}}));
}

TEST(FontsCommand, SavesTheGuessedMap) {
    const TempDir dir;
    const QString path = savePdfWithHeadings(dir, "a.pdf");
    const CliResult result = runCli({"fonts", path, "--save-map", dir.path("map.txt")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, runCli({"fonts", path}).out);
    EXPECT_EQ(bytesOf(dir.path("map.txt")),
              "H1/18.0/\"Helvetica\" +B\n"
              "H2/14.0/\"Helvetica\" +B\n"
              "H3/12.0/\"Times\" +I\n");
}

TEST(FontsCommand, MapThatCannotBeSavedIsAFailure) {
    const TempDir dir;
    const QString map = dir.path("missing/map.txt");
    const CliResult result = runCli({"fonts", savePdfWithHeadings(dir, "a.pdf"), "--save-map", map});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr(map.toStdString() + " could not be written: "));
}

}  // namespace
}  // namespace leafwright::test
