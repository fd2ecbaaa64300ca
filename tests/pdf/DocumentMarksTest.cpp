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

/// The headings of a document of two pages with this structure, whose pages are "@0" and "@1".
std::vector<StructureElement> headingsOf(std::string kids, const std::string &roles = {}) {
    PdfBuilder pdf;
    pdf.addNumberedPages(2);
    for (int page = 0; page < 2; ++page) {
        const std::string name = "@" + std::to_string(page);
        for (size_t at = kids.find(name); at != std::string::npos; at = kids.find(name))
            kids.replace(at, 2, pdf.pageReference(page));
    }
    pdf.setCatalogEntry("/StructTreeRoot",
                        "<< /Type /StructTreeRoot /RoleMap << " + roles + " >> /K " + kids + " >>");
    return marksOf(pdf).headings;
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
    EXPECT_THAT(marks.headings, IsEmpty());
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
    EXPECT_THAT(marksOf(pdf).headings, SizeIs(1));
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

TEST(DocumentMarks, LockedFileSaysNothing) {
    PdfBuilder pdf;
    pdf.addPage();
    pdf.setInformation("/Producer", "(pdfTeX)");
    const auto document = openPdf(pdf, {.userPassword = "secret"});
    EXPECT_EQ(document->engine().marks().producer, QString());
}

}  // namespace
}  // namespace leafwright
