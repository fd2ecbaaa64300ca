#include "support/BookPdf.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <QRegularExpression>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::IsSupersetOf;

/// "level title @page", a line an entry; pages from 1.
QStringList linesOf(const QJsonArray &nodes, int level = 1) {
    QStringList lines;
    for (const QJsonValue &node : nodes) {
        lines += QStringLiteral("%1 %2 @%3")
                     .arg(level)
                     .arg(node["title"].toString())
                     .arg(node["pageIndex"].toInt() + 1);
        lines += linesOf(node["children"].toArray(), level + 1);
    }
    return lines;
}

/// What makes each entry, in order.
std::vector<std::vector<std::string>> evidenceIn(const QJsonArray &nodes) {
    std::vector<std::vector<std::string>> all;
    for (const QJsonValue &node : nodes) {
        std::vector<std::string> own;
        for (const QJsonValue &each : node["evidence"].toArray())
            own.push_back(each.toString().toStdString());
        all.push_back(std::move(own));
        const auto below = evidenceIn(node["children"].toArray());
        all.insert(all.end(), below.begin(), below.end());
    }
    return all;
}

/// Runs `contents` on a PDF and looks at what it made and reported.
class ContentsEvidence : public testing::Test {
protected:
    void SetUp() override {
        const char *titles[] = {"1 Soil", "1.1 Ground", "1.2 Compost", "2 Water", "2.1 Rain", "2.2 Wells"};
        for (const std::string title : titles)
            addTitle(title);
    }
    /// Adds a page with a heading, of a chapter or a section by its number.
    void addTitle(const std::string &title) {
        std::string page = PdfBuilder::showText("F2", title[1] == ' ' ? 20 : 14, 72, titleY, title);
        for (int line = 0; line < 30; ++line) {
            page += PdfBuilder::showText("F1", 10, 72, 560 - 12 * line,
                                         "There is much to say, and so it is said in plain words.");
        }
        titles_.append(QString::fromStdString(title));
        pdf.addPage(page);
    }
    QStringList outline(const QStringList &options = {}) {
        pdf.save(dir.path("in.pdf"));
        const CliResult result = runCli(QStringList{"contents", dir.path("in.pdf"), "-o", dir.path("out.pdf"),
                                                    "--report", dir.path("report.json")} +
                                        options);
        EXPECT_EQ(result.exitCode, 0) << result.err.constData();
        return linesOf(outlineOf(dir.path("out.pdf")));
    }
    /// That of the last run.
    std::vector<std::vector<std::string>> evidence() const {
        return evidenceIn(parsedJson(bytesOf(dir.path("report.json"))).array());
    }
    /// By what the pages show.
    QStringList rightOutline() const {
        QStringList lines;
        for (int i = 0; i < titles_.size(); ++i)
            lines += QString("%1 %2 @%3").arg(titles_[i][1] == ' ' ? 1 : 2).arg(titles_[i]).arg(i + 1);
        return lines;
    }

    static constexpr double titleY = 600;
    TempDir dir;
    PdfBuilder pdf;

private:
    QStringList titles_;
};

TEST_F(ContentsEvidence, NamesThatMislead) {
    std::string names;
    const char *kinds[] = {"section.1", "chapter.1", "chapter.2", "section.2", "chapter.3", "chapter.4"};
    for (int i = 0; i < 6; ++i)
        names += " /" + std::string(kinds[i]) + " [" + pdf.pageReference(i) + " /XYZ 72 620 0]";
    pdf.setCatalogEntry("/Dests", "<<" + names + " >>");
    EXPECT_EQ(outline(), (QStringList{"1 1 Soil @1", "1 1.1 Ground @2", "1 1.2 Compost @3", "2 2 Water @4",
                                      "1 2.1 Rain @5", "1 2.2 Wells @6"}));
    EXPECT_THAT(evidence(), Each(IsSupersetOf({"style", "name"})));
    EXPECT_EQ(outline({"--text-only"}), rightOutline());
    EXPECT_THAT(evidence(), Each(testing::ElementsAre("style")));
}

TEST_F(ContentsEvidence, StructureThatMisleads) {
    std::string headings;
    int page = 0;
    for (const char *title : {"1 Soil", "1.1 Ground", "1.2 Compost", "2 Water", "2.1 Rain", "2.2 Wells"})
        headings += "<< /S /H1 /ActualText (" + std::string(title) + ") /Pg " + pdf.pageReference(page++) +
                    " /K 0 >> ";
    pdf.setCatalogEntry("/StructTreeRoot", "<< /Type /StructTreeRoot /K [" + headings + "] >>");
    pdf.setCatalogEntry("/MarkInfo", "<< /Marked true >>");
    EXPECT_EQ(outline(), rightOutline().replaceInStrings(QRegularExpression("^2 "), "1 "));
    EXPECT_THAT(evidence(), Each(Contains("structure")));
    EXPECT_EQ(outline({"--text-only"}), rightOutline());
    EXPECT_THAT(evidence(), Each(testing::ElementsAre("style")));
}

/// The titles as items of a table of contents, each below the one before, which are printed nowhere.
TEST_F(ContentsEvidence, ContentsOfTheStructure) {
    pdf.addPage(PdfBuilder::showText("F1", 10, 72, 600, "There is much to say, and so it is said."));
    std::string contents;
    int page = 6;
    for (const char *title : {"2.2 Wells", "2.1 Rain", "2 Water", "1.2 Compost", "1.1 Ground", "1 Soil"}) {
        const int link = pdf.addObject("<< /Subtype /Link /Rect [1 1 9 9] /Dest [" + std::to_string(--page) +
                                       " /XYZ 72 620 0] >>");
        contents = "<< /S /TOC /K [<< /S /TOCI /ActualText (" + std::string(title) + ") /Pg " +
                   pdf.pageReference(6) + " /K << /S /Reference /K << /S /Link /K [0 << /Type /OBJR /Obj " +
                   PdfBuilder::reference(link) + " >>] >> >> >> " + contents + "] >>";
    }
    pdf.setCatalogEntry("/StructTreeRoot", "<< /Type /StructTreeRoot /K " + contents + " >>");
    EXPECT_EQ(outline(), (QStringList{"1 1 Soil @1", "2 1.1 Ground @2", "3 1.2 Compost @3", "4 2 Water @4",
                                      "5 2.1 Rain @5", "6 2.2 Wells @6"}));
    EXPECT_THAT(evidence(), Each(testing::ElementsAre("printed", "style", "link", "structure")));
    EXPECT_EQ(outline({"--text-only"}), rightOutline());
    EXPECT_THAT(evidence(), Each(testing::ElementsAre("style")));
}

/// Labels are asked where no page bears its number. Each title stands on the next page, too.
TEST_F(ContentsEvidence, LabelsThatMislead) {
    pdf = PdfBuilder();
    const std::vector<std::string> titles = {"Soil", "Water", "Light", "Wind", "Frost", "Rain"};
    std::string contents = PdfBuilder::showText("F2", 20, 72, 720, "Contents");
    std::string body;
    for (int line = 0; line < 12; ++line)
        body += PdfBuilder::showText("F1", 10, 72, 300 - 12 * line,
                                     "There is much to say, and so it is said in plain words.");
    for (size_t i = 0; i < titles.size(); ++i) {
        const double y = 680 - 16 * static_cast<double>(i);
        contents += PdfBuilder::showText("F1", 10, 72, y, titles[i] + " . . . . . . . . . . .") +
                    PdfBuilder::showText("F1", 10, 500, y, std::to_string(2 * i + 2));
    }
    pdf.addPage(contents);
    for (const std::string &title : titles) {
        for (int page = 0; page < 2; ++page)
            pdf.addPage(PdfBuilder::showText("F2", 18, 72, 420, title) + body);
    }
    pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /r >> 1 << /S /D >>] >>");
    QStringList byLabel;
    QStringList counted;
    for (size_t i = 0; i < titles.size(); ++i) {
        byLabel += QString("1 %1 @%2").arg(titles[i].c_str()).arg(2 * i + 3);
        counted += QString("1 %1 @%2").arg(titles[i].c_str()).arg(2 * i + 2);
    }
    EXPECT_EQ(outline(), byLabel);
    EXPECT_EQ(outline({"--text-only"}), counted);
}

/// Links from the rows of the book's contents to their pages; the last one leads astray.
std::string linksOfContents(bool misleading) {
    std::string links;
    for (int i = 0; i < 9; ++i) {
        const int y = 680 - 16 * i;
        const int page = misleading && i == 8 ? 7 : i + 1;
        links += "<< /Subtype /Link /Rect [72 " + std::to_string(y - 2) + " 510 " + std::to_string(y + 9) +
                 "] /Dest [" + std::to_string(page) + " /XYZ 72 730 0] >> ";
    }
    return links;
}

QString saveLinkedBook(const TempDir &dir, const QString &name, bool misleading) {
    makeBook({}, {.contentsEntries = "/Annots [" + linksOfContents(misleading) + "]"}).save(dir.path(name));
    return dir.path(name);
}

const QString misledOutline = QString(outlineOfContents).replace("++ @10 3.2 Glass", "++ @8 3.2 Glass");

TEST(ContentsOfLinkedBook, LinksThatMislead) {
    const TempDir dir;
    const QString in = saveLinkedBook(dir, "in.pdf", true);
    EXPECT_EQ(runCli({"contents", in, "-o", dir.path("out.pdf")}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), misledOutline);
    EXPECT_EQ(runCli({"contents", in, "-o", dir.path("out.pdf"), "--text-only"}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), outlineOfContents);
}

TEST(ContentsOfLinkedBook, LinksAreEvidence) {
    const TempDir dir;
    const QString in = saveLinkedBook(dir, "in.pdf", false);
    const auto evidence = [&](const QStringList &more) {
        const CliResult result =
            runCli(QStringList{"contents", in, "-o", dir.path("out.pdf"), "--report", "-"} + more);
        return evidenceIn(parsedJson(result.out).array());
    };
    EXPECT_THAT(evidence({}), Each(testing::ElementsAre("printed", "style", "link")));
    EXPECT_THAT(evidence({"--text-only"}), Each(testing::ElementsAre("printed", "style")));
}

const std::vector<std::string> unnumbered = {"",      "Worms", "Leaves", "",     "Clouds",
                                             "Pumps", "",      "Dusk",   "Panes"};

/// With a folder each file is done by another process, to which all options must come.
TEST(ContentsWithAFolder, OptionsHoldForEachFile) {
    const TempDir dir;
    const QString one = saveLinkedBook(dir, "one.pdf", true);
    const QString two = savePdfWithContents(dir, "two.pdf");
    const QString three = dir.path("three.pdf");
    makeBook({}, {.headingsBelow = unnumbered}).save(three);
    const auto outlines = [&](const QStringList &options) {
        const CliResult result =
            runCli(QStringList{"contents", one, two, three, "--out-dir", dir.path("out")} + options);
        EXPECT_EQ(result.exitCode, 0) << result.err.constData();
        QStringList all;
        for (const char *name : {"one.pdf", "two.pdf", "three.pdf"})
            all += plusLinesOf(dir.path(QString("out/") + name));
        return all;
    };
    const QString kept = "+ @2 Old Entry\n";
    const QString chapters = "+ @2 1 Soil\n+ @5 2 Water\n+ @8 3 Light\n";
    EXPECT_EQ(outlines({}), (QStringList{misledOutline, outlineOfContents, outlineOfContents}));
    EXPECT_EQ(outlines({"--text-only"}),
              (QStringList{outlineOfContents, outlineOfContents, outlineOfContents}));
    EXPECT_EQ(outlines({"--keep"}),
              (QStringList{kept + misledOutline, kept + outlineOfContents, kept + outlineOfContents}));
    EXPECT_EQ(outlines({"--max-depth", "1"}), (QStringList{chapters, chapters, chapters}));
    EXPECT_THAT(outlines({"--deeper"}).last().toStdString(), HasSubstr("+++ @3 Worms\n"));
}

TEST(ContentsDepthOption, DeeperAddsHeadingsThatTheContentsLack) {
    const TempDir dir;
    makeBook({}, {.headingsBelow = unnumbered}).save(dir.path("in.pdf"));
    const auto outline = [&](const QStringList &options) {
        const QStringList command{"contents", dir.path("in.pdf"), "-o", dir.path("out.pdf")};
        EXPECT_EQ(runCli(command + options).exitCode, 0);
        return plusLinesOf(dir.path("out.pdf"));
    };
    EXPECT_EQ(outline({}), outlineOfContents);
    EXPECT_EQ(outline({"--as-printed"}), outlineOfContents);
    EXPECT_EQ(outline({"--deeper"}),
              "+ @2 1 Soil\n"
              "++ @3 1.1 What is in the Ground\n+++ @3 Worms\n"
              "++ @4 1.2 Compost\n+++ @4 Leaves\n"
              "+ @5 2 Water\n"
              "++ @6 2.1 Rain\n+++ @6 Clouds\n"
              "++ @7 2.2 Wells\n+++ @7 Pumps\n"
              "+ @8 3 Light\n"
              "++ @9 3.1 Shade\n+++ @9 Dusk\n"
              "++ @10 3.2 Glass\n+++ @10 Panes\n");
    EXPECT_EQ(outline({"--deeper", "--max-depth", "2"}), outlineOfContents);
}

TEST(ContentsDepthOption, AsPrintedLeavesOutWhatNumbersAdd) {
    const TempDir dir;
    makeBook({}, {.headingsBelow = {"", "1.1.1 Worms", "1.2.1 Leaves", "", "2.1.1 Clouds", "2.2.1 Pumps", "",
                                    "3.1.1 Dusk", "3.2.1 Panes"}})
        .save(dir.path("in.pdf"));
    const auto outline = [&](const QStringList &options) {
        const QStringList command{"contents", dir.path("in.pdf"), "-o", dir.path("out.pdf")};
        EXPECT_EQ(runCli(command + options).exitCode, 0);
        return plusLinesOf(dir.path("out.pdf"));
    };
    EXPECT_THAT(outline({}).toStdString(),
                HasSubstr("++ @3 1.1 What is in the Ground\n+++ @3 1.1.1 Worms\n"));
    EXPECT_EQ(outline({}).count('\n'), 15);
    EXPECT_EQ(outline({"--as-printed"}), outlineOfContents);
}

}  // namespace
}  // namespace leafwright::test
