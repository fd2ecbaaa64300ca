#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <QRegularExpression>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

/// Three pages labelled i, 1, 2; entries with and without a page, one below another.
QString saveSample(const TempDir &dir) {
    PdfBuilder pdf;
    pdf.addNumberedPages(3);
    pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /r >> 1 << /S /D >>] >>");
    addOutline(pdf, {{"(Preface)", "[" + pdf.pageReference(0) + " /XYZ 72 700.5 null]"},
                     {"(Part)",
                      "",
                      {{"(First  Chapter)", "[" + pdf.pageReference(1) + " /FitH 500]"},
                       {"(Second Chapter)", "[" + pdf.pageReference(2) + " /Fit]"}}}});
    pdf.save(dir.path("sample.pdf"));
    return dir.path("sample.pdf");
}

QString saveWithTitle(const TempDir &dir, const std::string &title) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    addOutline(pdf, {{title, "[" + pdf.pageReference(0) + " /Fit]"}});
    pdf.save(dir.path("title.pdf"));
    return dir.path("title.pdf");
}

QByteArray jsonOf(const QString &path) {
    const CliResult result = runCli({"outline", path});
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    return result.out;
}

TEST(OutlineCommand, JsonNodesHaveTheirFixedShape) {
    const TempDir dir;
    // As text, not parsed: the order of the members is part of it too.
    const QString json = QString::fromUtf8(jsonOf(saveSample(dir)))
                             .replace(QRegularExpression("\"entry\": [1-9][0-9]*"), "\"entry\": NUMBER");
    EXPECT_EQ(json, R"([
  {
    "title": "Preface",
    "pageLabel": "i",
    "pageIndex": 0,
    "point": [72, 700.5],
    "bold": false,
    "italic": false,
    "color": null,
    "open": false,
    "action": null,
    "entry": NUMBER,
    "children": []
  },
  {
    "title": "Part",
    "pageLabel": null,
    "pageIndex": null,
    "point": [0, 0],
    "bold": false,
    "italic": false,
    "color": null,
    "open": true,
    "action": null,
    "entry": NUMBER,
    "children": [
      {
        "title": "First  Chapter",
        "pageLabel": "1",
        "pageIndex": 1,
        "point": [0, 500],
        "bold": false,
        "italic": false,
        "color": null,
        "open": false,
        "action": null,
        "entry": NUMBER,
        "children": []
      },
      {
        "title": "Second Chapter",
        "pageLabel": "2",
        "pageIndex": 2,
        "point": [0, 0],
        "bold": false,
        "italic": false,
        "color": null,
        "open": false,
        "action": null,
        "entry": NUMBER,
        "children": []
      }
    ]
  }
]
)");
}

TEST(OutlineCommand, JsonIsTheDefaultFormat) {
    const TempDir dir;
    const QString path = saveSample(dir);
    EXPECT_EQ(runCli({"outline", path}).out, runCli({"outline", path, "--format", "json"}).out);
}

TEST(OutlineCommand, PlusLines) {
    const TempDir dir;
    EXPECT_EQ(plusLinesOf(saveSample(dir)),
              "+ @i Preface\n"
              "+ @ Part\n"
              "++ @1 First  Chapter\n"
              "++ @2 Second Chapter\n");
}

TEST(OutlineCommand, TextForPeople) {
    const TempDir dir;
    const CliResult result = runCli({"outline", saveSample(dir), "--format", "text"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out,
              "Preface  [i]\n"
              "Part\n"
              "  First Chapter  [1]\n"
              "  Second Chapter  [2]\n");
}

TEST(OutlineCommand, FormsOfOtherPrograms) {
    const TempDir dir;
    const QString path = saveSample(dir);
    const auto printed = [&](const char *format) {
        return runCli({"outline", path, "--format", format}).out;
    };
    EXPECT_EQ(printed("markdown"),
              "- [Preface](#page=1 \"i\")\n"
              "- Part\n"
              "  - [First  Chapter](#page=2 \"1\")\n"
              "  - [Second Chapter](#page=3 \"2\")\n");
    EXPECT_EQ(printed("cpdf"),
              "0 \"Preface\" 1 \"[1 /XYZ 72 700.5 null]\"\n"
              "0 \"Part\" 0 open\n"
              "1 \"First  Chapter\" 2 \"[2 /XYZ 0 500 null]\"\n"
              "1 \"Second Chapter\" 3\n");
    EXPECT_THAT(printed("pdftk").toStdString(),
                HasSubstr("BookmarkBegin\nBookmarkTitle: Part\nBookmarkLevel: 1\nBookmarkPageNumber: 0\n"));
    EXPECT_THAT(printed("html").toStdString(), HasSubstr("<a href=\"#page=1\" title=\"i\">Preface</a>"));
    EXPECT_THAT(printed("opml").toStdString(),
                HasSubstr("<outline text=\"Preface\" page=\"1\" pageLabel=\"i\"/>"));
    EXPECT_EQ(parsedJson(printed("pdfcpu"))["bookmarks"][0]["page"], 1);
}

TEST(OutlineCommand, FileWithoutOutlineGivesAnEmptyOne) {
    const TempDir dir;
    const QString path = savePdf(dir, "a.pdf", 1);
    EXPECT_EQ(jsonOf(path), "[]\n");
    EXPECT_EQ(plusLinesOf(path), "");
    EXPECT_EQ(runCli({"outline", path, "--format", "text"}).out, "");
}

TEST(OutlineCommand, UnknownFormatIsWrongUsage) {
    const TempDir dir;
    const CliResult result = runCli({"outline", saveSample(dir), "--format", "xml"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("\"xml\" is no format"));
    EXPECT_EQ(result.out, "");
}

TEST(OutlineCommand, LoneSurrogatesAreEscaped) {
    const TempDir dir;
    // High alone, low alone, a pair, and the high one of a pair that never comes.
    const QByteArray json = jsonOf(saveWithTitle(dir, "<FEFF D83D 0041 DE00 0042 D83D DE00 D83D>"));
    EXPECT_THAT(json.toStdString(), HasSubstr("\"title\": \"\\ud83dA\\ude00B\xF0\x9F\x98\x80\\ud83d\""));
    const QString title = parsedJson(json)[0]["title"].toString();
    EXPECT_EQ(title, QString::fromUtf16(u"\xD83D\x41\xDE00\x42\xD83D\xDE00\xD83D", 7));
}

TEST(OutlineCommand, ControlCharactersQuotesAndBackslashesAreEscaped) {
    const TempDir dir;
    const QByteArray json = jsonOf(saveWithTitle(dir, "<FEFF 0022 005C 000A 0009 0001 007F>"));
    EXPECT_THAT(json.toStdString(), HasSubstr(R"("title": "\"\\\n\u0009\u0001\u007f")"));
}

TEST(OutlineCommand, MissingTitleIsEmptyNotNull) {
    const TempDir dir;
    const QByteArray json = jsonOf(saveWithTitle(dir, ""));
    EXPECT_THAT(json.toStdString(), HasSubstr("\"title\": \"\""));
}

TEST(OutlineCommand, TextKeepsATitleOnOneLine) {
    const TempDir dir;
    const QString path = saveWithTitle(dir, "<FEFF 0041 000A 0042>");
    EXPECT_EQ(runCli({"outline", path, "--format", "text"}).out, "A B  [1]\n");
}

TEST(OutlineCommand, TenThousandLevels) {
    constexpr int levels = 10'000;
    const TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    const int root = pdf.addObject("null");
    std::vector<int> numbers{root};
    for (int i = 0; i < levels; ++i)
        numbers.push_back(pdf.addObject("null"));
    for (size_t i = 0; i < numbers.size(); ++i) {
        std::string object = i == 0 ? "<<" : "<< /Title (L) /Parent " + PdfBuilder::reference(numbers[i - 1]);
        if (i + 1 < numbers.size()) {
            const std::string child = PdfBuilder::reference(numbers[i + 1]);
            object += " /First " + child + " /Last " + child + " /Count 1";
        }
        pdf.replaceObject(numbers[i], object + " >>");
    }
    pdf.setCatalogEntry("/Outlines", PdfBuilder::reference(root));
    pdf.save(dir.path("deep.pdf"));

    EXPECT_EQ(jsonOf(dir.path("deep.pdf")).count("\"title\": \"L\""), levels);
    const QStringList lines = plusLinesOf(dir.path("deep.pdf")).split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), levels);
    EXPECT_EQ(lines.last(), QString(levels, u'+') + " @ L");
    EXPECT_EQ(runCli({"outline", dir.path("deep.pdf"), "--format", "text"}).out.count('\n'), levels);
}

}  // namespace
}  // namespace leafwright::test
