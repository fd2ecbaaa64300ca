#include "contents/PDFContentsPages.h"
#include "contents/PageLines.h"
#include "support/OpenPdf.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST(PDFContentsPages, WhatIsOnAPage) {
    PdfBuilder pdf;
    pdf.addPage(
        PdfBuilder::showText("F1", 10, 72, 700, "Text"),
        "/CropBox [0 92 612 792] /Rotate 0 /Annots [<< /Subtype /Link /Rect [10 692 110 712] /Dest [1 "
        "/XYZ 72 600 0] >> << /Subtype /Link /Rect [10 20 110 40] /Dest [1 /Fit] >> << /Subtype /Link "
        "/Rect [1 2 3 4] /A << /S /URI /URI (https://example.org/) >> >>]");
    pdf.addPage();
    const auto document = openPdf(pdf);
    const auto evidence = PDFContentsPages(*document).pageEvidence(0);
    EXPECT_EQ(evidence->visibleBox, (Rect{0, 92, 612, 700}));
    ASSERT_THAT(evidence->spans, SizeIs(1));
    EXPECT_EQ(evidence->spans[0].text, "Text");
    ASSERT_THAT(evidence->links, SizeIs(2));
    EXPECT_EQ(evidence->links[0].box, QRectF(10, 80, 100, 20));
    EXPECT_EQ(evidence->links[0].targetPage, 1);
    EXPECT_EQ(evidence->links[0].targetPoint, QPointF(72, 192));
    EXPECT_FALSE(evidence->links[1].targetPoint);
}

TEST(PDFContentsPages, LinksOfThePagesInFrontAlone) {
    PdfBuilder pdf;
    for (int i = 0; i < 62; ++i)
        pdf.addPage({}, "/Annots [<< /Subtype /Link /Rect [10 20 110 40] /Dest [0 /Fit] >>]");
    const auto document = openPdf(pdf);
    EXPECT_THAT(PDFContentsPages(*document).pageEvidence(60)->links, SizeIs(1));
    EXPECT_THAT(PDFContentsPages(*document).pageEvidence(61)->links, IsEmpty())
        << "where no printed contents is looked for";
}

TEST(PDFContentsPages, LabelsWhereTheFileHasThem) {
    PdfBuilder pdf;
    pdf.addNumberedPages(2);
    EXPECT_THAT(PDFContentsPages(*openPdf(pdf)).documentEvidence().pageLabels, IsEmpty());
    pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /r >>] >>");
    EXPECT_THAT(PDFContentsPages(*openPdf(pdf)).documentEvidence().pageLabels, ElementsAre("i", "ii"));
}

TEST(PDFContentsPages, NamesAndWhoMadeTheFile) {
    PdfBuilder pdf;
    pdf.addNumberedPages(2);
    pdf.setCatalogEntry("/Dests", "<< /chapter.1 [1 /XYZ 72 700 0] /whole [1 /Fit] >>");
    pdf.setInformation("/Producer", "(pdfTeX)");
    pdf.setInformation("/Creator", "(LaTeX)");
    const DocumentEvidence evidence = PDFContentsPages(*openPdf(pdf)).documentEvidence();
    EXPECT_EQ(evidence.producer, "pdfTeX LaTeX");
    ASSERT_THAT(evidence.namedPlaces, SizeIs(2));
    EXPECT_EQ(evidence.namedPlaces[0].name, "chapter.1");
    EXPECT_EQ(evidence.namedPlaces[0].pageIndex, 1);
    EXPECT_EQ(evidence.namedPlaces[0].point, QPointF(72, 92));
    EXPECT_EQ(evidence.namedPlaces[1].name, "whole");
    EXPECT_FALSE(evidence.namedPlaces[1].point);
}

TEST(PDFContentsPages, HeadingsOfTheStructureWithTheirText) {
    PdfBuilder pdf;
    const std::string font = "BT /F1 10 Tf 72 700 Td ";
    pdf.addPage(font + "/H1 << /MCID 0 >> BDC (1) Tj EMC /H1 << /MCID 1 >> BDC 20 0 Td (One) Tj EMC ET");
    pdf.addPage(font +
                "/H2 << /MCID 0 >> BDC (Two  words) Tj EMC 0 -20 Td /H2 << /MCID 1 >> BDC ( ) Tj EMC ET");
    const std::string first = pdf.pageReference(0);
    const std::string second = pdf.pageReference(1);
    pdf.setCatalogEntry("/StructTreeRoot", "<< /K [<< /S /H1 /Pg " + first + " /K [0 1] >> << /S /H2 /Pg " +
                                               second + " /K 0 >> << /S /H /ActualText (Instead) /Pg " +
                                               second + " /K 0 >> << /S /H3 /Pg " + second +
                                               " /K 1 >> << /S /H4 /ActualText (Nowhere) >>] >>");
    const auto headings = PDFContentsPages(*openPdf(pdf)).documentEvidence().headings;
    ASSERT_THAT(headings, SizeIs(3));
    EXPECT_EQ(headings[0].text, "1 One");
    EXPECT_EQ(headings[0].level, 1);
    EXPECT_EQ(headings[0].pageIndex, 0);
    EXPECT_EQ(headings[1].text, "Two words");
    EXPECT_EQ(headings[1].pageIndex, 1);
    EXPECT_EQ(headings[2].text, "Instead");
    EXPECT_EQ(headings[2].level, 0);
}

TEST(PDFContentsPages, ContentsOfTheStructureWithTheirTextAndLinks) {
    PdfBuilder pdf;
    pdf.addPage(
        "BT /F1 10 Tf 72 700 Td /Lbl << /MCID 0 >> BDC (1) Tj EMC /Link << /MCID 1 >> BDC 20 0 Td "
        "(Soil .... ) Tj EMC /Link << /MCID 2 >> BDC (2) Tj EMC 0 -20 Td /P << /MCID 3 >> BDC "
        "(Sand  3) Tj EMC ET");
    pdf.addPage();
    const int link = pdf.addObject("<< /Subtype /Link /Rect [9 9 9 9] /Dest [1 /XYZ 72 592 0] >>");
    const std::string item = "<< /S /TOCI /Pg " + pdf.pageReference(0);
    pdf.setCatalogEntry("/StructTreeRoot", "<< /K << /S /TOC /K [" + item +
                                               " /K [<< /S /Lbl /K 0 >> << /S /Link /K [1 2 << "
                                               "/Type /OBJR /Obj " +
                                               PdfBuilder::reference(link) + " >>] >>] >> << /S /TOC /K " +
                                               item +
                                               " /K 3 >> >> << /S /TOCI /ActualText (Nowhere) >>] >> >>");
    const auto contents = PDFContentsPages(*openPdf(pdf)).documentEvidence().contents;
    ASSERT_THAT(contents, SizeIs(1));
    ASSERT_THAT(contents[0], SizeIs(2));
    EXPECT_EQ(contents[0][0].text, "1 Soil .... 2");
    EXPECT_EQ(contents[0][0].level, 1);
    EXPECT_EQ(contents[0][0].pageIndex, 0);
    ASSERT_TRUE(contents[0][0].link);
    EXPECT_EQ(contents[0][0].link->targetPage, 1);
    EXPECT_EQ(contents[0][0].link->targetPoint, QPointF(72, 200));
    EXPECT_EQ(contents[0][1].text, "Sand 3");
    EXPECT_EQ(contents[0][1].level, 2);
    EXPECT_FALSE(contents[0][1].link);
}

TEST(PDFContentsPages, PagesWithoutTextAreReadFromTheCopy) {
    PdfBuilder original;
    original.addPage(PdfBuilder::showText("F1", 10, 72, 700, "from the original"));
    original.addPage();
    PdfBuilder copy;
    copy.addPage(PdfBuilder::showText("F1", 10, 72, 700, "from the copy"));
    copy.addPage(PdfBuilder::showText("F1", 10, 72, 700, "recognised"));
    const auto document = openPdf(original);
    const auto recognised = openPdf(copy);
    const PDFContentsPages pages(*document, *recognised);
    ASSERT_THAT(pages.pageEvidence(0)->spans, SizeIs(1));
    EXPECT_EQ(pages.pageEvidence(0)->spans[0].text, "from the original");
    ASSERT_THAT(pages.pageEvidence(1)->spans, SizeIs(1));
    EXPECT_EQ(pages.pageEvidence(1)->spans[0].text, "recognised");
    EXPECT_FALSE(readLines(pages.pageEvidence(0), 0).isRecognised);
    EXPECT_TRUE(readLines(pages.pageEvidence(1), 1).isRecognised);
}

}  // namespace
}  // namespace leafwright
