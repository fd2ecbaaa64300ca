#include "support/OpenPdf.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

DocumentMarks marksOf(const PdfBuilder &pdf) {
    return openPdf(pdf)->engine().marks();
}

/// What a document of two pages has of this structure, whose pages are "@0" and "@1".
DocumentStructure structureOf(std::string kids, const std::string &roles = {}, PdfBuilder pdf = {}) {
    pdf.addNumberedPages(2);
    for (int page = 0; page < 2; ++page) {
        const std::string name = "@" + std::to_string(page);
        for (size_t at = kids.find(name); at != std::string::npos; at = kids.find(name))
            kids.replace(at, 2, pdf.pageReference(page));
    }
    pdf.setCatalogEntry("/StructTreeRoot",
                        "<< /Type /StructTreeRoot /RoleMap << " + roles + " >> /K " + kids + " >>");
    return marksOf(pdf).structure;
}

std::vector<StructureElement> headingsOf(const std::string &kids, const std::string &roles = {}) {
    return structureOf(kids, roles).headings;
}

/// Its items of contents: "level:identifiers", a "|" between tables.
std::string contentsOf(const std::string &kids, const std::string &roles = {}) {
    std::string text;
    for (const std::vector<StructureElement> &items : structureOf(kids, roles).contents) {
        if (!text.empty()) text += " |";
        for (const StructureElement &item : items) {
            text += (text.empty() ? "" : " ") + std::to_string(item.level) + ":";
            for (size_t i = 0; i < item.content.size(); ++i)
                text += (i > 0 ? "," : "") + std::to_string(item.content[i].identifier);
        }
    }
    return text;
}

TEST(DocumentMarks, ProducerAndCreator) {
    PdfBuilder pdf;
    pdf.addPage();
    pdf.setInformation("/Producer", "(pdfTeX)");
    pdf.setInformation("/Creator", "<FEFF00C4>");
    const DocumentMarks marks = marksOf(pdf);
    EXPECT_EQ(marks.producer, "pdfTeX");
    EXPECT_EQ(marks.creator, u"Ä");
    EXPECT_FALSE(marks.hasPageLabels);
    EXPECT_THAT(marks.names, IsEmpty());
    EXPECT_THAT(marks.structure.headings, IsEmpty());
    EXPECT_THAT(marks.structure.contents, IsEmpty());
}

TEST(DocumentMarks, WhetherPagesAreLabelled) {
    PdfBuilder pdf;
    pdf.addPage();
    pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /D >>] >>");
    EXPECT_TRUE(marksOf(pdf).hasPageLabels);
}

TEST(DocumentMarks, NamesOfBothKindsByPlace) {
    PdfBuilder pdf;
    pdf.addNumberedPages(2);
    pdf.setCatalogEntry("/Dests", "<< /old [1 /XYZ 5 6 0] >>");
    pdf.setCatalogEntry("/Names",
                        "<< /Dests << /Names [(low) [0 /XYZ 5 100 0] (section.1) << /D [0 /FitH 700] >> "
                        "(nowhere) [77 /Fit] (whole) [1 /Fit]] >> >>");
    EXPECT_THAT(
        marksOf(pdf).names,
        ElementsAre(NamedDestination{"section.1", {0, {0, 700}}}, NamedDestination{"low", {0, {5, 100}}},
                    NamedDestination{"old", {1, {5, 6}}}, NamedDestination{"whole", {1, {0, 0}}}));
}

TEST(DocumentMarks, HeadingsOfTheStructureInItsOrder) {
    const auto headings = headingsOf(
        "<< /S /Document /K [<< /S /H1 /Pg @0 /K 0 >> << /S /P /Pg @0 /K 1 >> "
        "<< /S /Sect /K [<< /S /H2 /Pg @0 /K [2 << /Type /MCR /Pg @1 /MCID 3 >>] >> "
        "<< /S /H /Pg @1 /K << /S /Span /K 4 >> >>] >>] >>");
    EXPECT_THAT(headings,
                ElementsAre(StructureElement{1, {}, {{0, 0}}}, StructureElement{2, {}, {{0, 2}, {1, 3}}},
                            StructureElement{0, {}, {{1, 4}}}));
}

TEST(DocumentMarks, TextThatStandsForAHeading) {
    const auto headings = headingsOf("<< /S /H3 /ActualText (Title) >>");
    EXPECT_THAT(headings, ElementsAre(StructureElement{3, "Title", {}}));
}

TEST(DocumentMarks, TypesOfTheFilesOwnAreMapped) {
    const auto headings =
        headingsOf("[<< /S /Chapter /Pg @0 /K 0 >> << /S /Loop /Pg @0 /K 1 >> << /S /Para /Pg @0 /K 2 >>]",
                   "/Chapter /Heading /Heading /H1 /Loop /Loop2 /Loop2 /Loop /Para /P");
    EXPECT_THAT(headings, ElementsAre(StructureElement{1, {}, {{0, 0}}}));
}

TEST(DocumentMarks, PiecesWithoutAPageAreLeftOut) {
    const auto headings =
        headingsOf("<< /S /H1 /K [0 << /MCID 1 /Pg 7 >> << /MCID 2 /Pg @1 >> << /Type /OBJR >>] >>");
    EXPECT_THAT(headings, ElementsAre(StructureElement{1, {}, {{1, 2}}}));
}

TEST(DocumentMarks, StructureWithLoopsEnds) {
    PdfBuilder pdf;
    pdf.addPage();
    const int kids = pdf.addObject("[]");
    const int element =
        pdf.addObject("<< /S /H1 /Pg " + pdf.pageReference(0) + " /K " + PdfBuilder::reference(kids) + " >>");
    std::string many;
    for (int i = 0; i < 1'000; ++i)
        many += PdfBuilder::reference(kids) + " " + PdfBuilder::reference(element) + " ";
    pdf.replaceObject(kids, "[" + many + " 5]");
    pdf.setCatalogEntry("/StructTreeRoot", "<< /K " + PdfBuilder::reference(kids) + " >>");
    EXPECT_THAT(marksOf(pdf).structure.headings, SizeIs(1));
}

TEST(DocumentMarks, DeepStructureIsWalked) {
    std::string nested = "<< /S /H1 /Pg @0 /K 0 >>";
    for (int i = 0; i < 200; ++i)
        nested = "<< /S /Sect /K " + nested + " >>";
    EXPECT_THAT(headingsOf(nested), SizeIs(1));
}

TEST(DocumentMarks, BrokenStructureHasNone) {
    for (const char *broken : {"7", "(a)", "[null 7 (a) << /S 7 >> << /S /H1x >> << /S /H7 >>]", "<< >>"})
        EXPECT_THAT(headingsOf(broken), IsEmpty()) << broken;
}

TEST(DocumentMarks, EnormousNumbersOfPiecesAreCutOff) {
    std::string pieces;
    for (int i = 0; i < 2'000; ++i)
        pieces += std::to_string(i) + " ";
    const auto headings = headingsOf("<< /S /H1 /Pg @0 /K [" + pieces + "] >>");
    ASSERT_THAT(headings, SizeIs(1));
    EXPECT_THAT(headings[0].content, SizeIs(1'000));
}

TEST(DocumentMarks, ItemsOfContents) {
    EXPECT_EQ(
        contentsOf("<< /S /Document /K [<< /S /P /Pg @0 /K 9 >> << /S /TOC /Pg @0 /K ["
                   "<< /S /TOCI /K [<< /S /Lbl /K 0 >> << /S /Reference /K << /S /Link /K [1 2] >> >>] >> "
                   "<< /S /TOCI /K << /S /P /K 3 >> >>] >> << /S /P /Pg @0 /K 8 >>] >>"),
        "1:0,1,2 1:3");
    EXPECT_EQ(contentsOf("<< /S /TOCI /Pg @0 /K 1 >>"), "") << "an item of nothing";
    EXPECT_EQ(contentsOf("<< /S /TOC /Pg @0 /K << /S /P /K 1 >> >>"), "") << "contents without an item";
    EXPECT_EQ(contentsOf("<< /S /Verzeichnis /Pg @0 /K << /S /Zeile /K 1 >> >>",
                         "/Verzeichnis /TOC /Zeile /Item /Item /TOCI"),
              "1:1");
}

TEST(DocumentMarks, ContentsWithinContents) {
    const std::string first = "<< /S /TOCI /K 0 >>";
    const std::string below = "<< /S /TOC /K [<< /S /TOCI /K 1 >> << /S /TOC /K << /S /TOCI /K 2 >> >>] >>";
    const std::string last = "<< /S /TOCI /K 3 >>";
    EXPECT_EQ(contentsOf("<< /S /TOC /Pg @0 /K [" + first + below + last + "] >>"), "1:0 2:1 3:2 1:3");
    EXPECT_EQ(contentsOf("<< /S /TOC /Pg @0 /K [<< /S /TOCI /K [0 " + below + "] >> " + last + "] >>"),
              "1:0 2:1 3:2 1:3")
        << "an item's own text is what is not in the contents below it";
    EXPECT_EQ(contentsOf("[<< /S /TOC /Pg @0 /K " + first + " >> << /S /TOC /Pg @1 /K " + last + " >>]"),
              "1:0 | 1:3")
        << "two lists beside each other";
}

TEST(DocumentMarks, TextThatStandsForAnItem) {
    const auto contents = structureOf("<< /S /TOC /K << /S /TOCI /ActualText (Title) >> >>").contents;
    ASSERT_THAT(contents, SizeIs(1));
    EXPECT_THAT(contents[0], ElementsAre(StructureElement{1, "Title", {}}));
}

TEST(DocumentMarks, WhereItemsLead) {
    PdfBuilder pdf;
    const auto linkTo = [&pdf](const std::string &target) {
        const int annotation = pdf.addObject("<< /Subtype /Link /Rect [0 0 9 9] " + target + " >>");
        return "<< /Type /OBJR /Obj " + PdfBuilder::reference(annotation) + " >>";
    };
    const std::string item = "<< /S /TOCI /Pg @0 /K << /S /Reference /K << /S /Link /K [";
    const std::string two = item + linkTo("/Dest [1 /XYZ 5 600 0]") + " 0 " + linkTo("/Dest [0 /Fit]");
    const std::string action = item + "1 " + linkTo("/A << /S /GoTo /D [1 /Fit] >>");
    const std::string web = item + "2 " + linkTo("/A << /S /URI /URI (https://example.org/) >>");
    const std::string end = "] >> >> >> ";
    const auto contents =
        structureOf("<< /S /TOC /K [" + two + end + action + end + web + end + "] >>", {}, pdf).contents;
    ASSERT_THAT(contents, SizeIs(1));
    EXPECT_THAT(contents[0], ElementsAre(StructureElement{1, {}, {{0, 0}}, PDFDestination{1, {5, 600}}},
                                         StructureElement{1, {}, {{0, 1}}, PDFDestination{1, {}}},
                                         StructureElement{1, {}, {{0, 2}}}));
}

TEST(DocumentMarks, ContentsOfManyTablesEnd) {
    std::string nested = "<< /S /TOCI /Pg @0 /K 0 >>";
    for (int i = 0; i < 200; ++i)
        nested = "<< /S /TOC /K " + nested + " >>";
    EXPECT_EQ(contentsOf(nested), "200:0");
}

TEST(DocumentMarks, LockedFileSaysNothing) {
    PdfBuilder pdf;
    pdf.addPage();
    pdf.setInformation("/Producer", "(pdfTeX)");
    const auto document = openPdf(pdf, {.userPassword = "secret"});
    EXPECT_EQ(document->engine().marks().producer, QString());
}

}  // namespace
}  // namespace leafwright
