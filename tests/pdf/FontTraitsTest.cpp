#include "support/OpenPdf.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;

/// The font of a page that is set in one font. @param entries of its dictionary
Font fontWith(const std::string &entries) {
    PdfBuilder pdf;
    pdf.addFont("T",
                "<< /Type /Font /Subtype /Type1 /FirstChar 65 /LastChar 65 /Widths [600] " + entries + " >>");
    pdf.addPage("BT /T 10 Tf 72 700 Td (A) Tj ET");
    const auto text = openPdf(pdf)->pageText(0);
    return text->attributedString.runs.at(0).font;
}

FontTraits traitsWith(const std::string &descriptor) {
    return fontWith(
               "/BaseFont /Garamond /FontDescriptor << /Type /FontDescriptor /FontName /Garamond "
               "/FontBBox [0 0 1000 1000] /StemV 80 /Ascent 800 /Descent -200 /CapHeight 700 " +
               descriptor + " >>")
        .symbolicTraits();
}

constexpr FontTraits plain = 0;

TEST(FontTraits, PlainDescriptor) {
    EXPECT_EQ(traitsWith("/Flags 34 /ItalicAngle 0"), plain);
}

TEST(FontTraits, ItalicFlag) {
    EXPECT_EQ(traitsWith("/Flags 98 /ItalicAngle 0"), ItalicTrait);
}

TEST(FontTraits, ItalicAngle) {
    EXPECT_EQ(traitsWith("/Flags 34 /ItalicAngle -12"), ItalicTrait);
}

TEST(FontTraits, ForceBoldFlag) {
    EXPECT_EQ(traitsWith("/Flags 262178 /ItalicAngle 0"), BoldTrait);
}

TEST(FontTraits, FontWeight) {
    EXPECT_EQ(traitsWith("/Flags 34 /ItalicAngle 0 /FontWeight 400"), plain);
    EXPECT_EQ(traitsWith("/Flags 34 /ItalicAngle 0 /FontWeight 700"), BoldTrait);
    EXPECT_EQ(traitsWith("/Flags 98 /ItalicAngle -9 /FontWeight 900"), BoldTrait | ItalicTrait);
}

TEST(FontTraits, StandardFonts) {
    PdfBuilder pdf;
    pdf.addPage(PdfBuilder::showText("F1", 10, 72, 700, "a") + PdfBuilder::showText("F2", 10, 72, 680, "b") +
                PdfBuilder::showText("F3", 10, 72, 660, "c") + PdfBuilder::showText("F4", 10, 72, 640, "d"));
    const auto text = openPdf(pdf)->pageText(0);
    const auto &runs = text->attributedString.runs;
    ASSERT_EQ(runs.size(), 4U);
    EXPECT_EQ(runs[0].font.symbolicTraits(), plain);
    EXPECT_EQ(runs[1].font.symbolicTraits(), BoldTrait);
    EXPECT_EQ(runs[2].font.symbolicTraits(), ItalicTrait);
    EXPECT_EQ(runs[3].font.symbolicTraits(), BoldTrait | ItalicTrait);
    EXPECT_EQ(runs[3].font.familyName(), "Times");
    EXPECT_EQ(runs[3].font.displayName(), "Times BoldItalic");
}

TEST(FontNames, LongOnesAreComplete) {
    const Font font =
        fontWith("/BaseFont /ABCDEF+TheQuickBrownFoxJumpsOverTheLazyDogSans-ExtraCondensedBoldItalic");
    EXPECT_EQ(font.familyName(), "TheQuickBrownFoxJumpsOverTheLazyDogSans");
    EXPECT_EQ(font.displayName(), "TheQuickBrownFoxJumpsOverTheLazyDogSans ExtraCondensedBoldItalic");
}

TEST(FontNames, LongOnesThatDifferOnlyAtTheEndAreDifferentFonts) {
    PdfBuilder pdf;
    const std::string name = "/BaseFont /ABCDEF+TheQuickBrownFoxJumpsOverTheLazyDog-";
    pdf.addFont("A", "<< /Type /Font /Subtype /Type1 " + name + "One >>");
    pdf.addFont("B", "<< /Type /Font /Subtype /Type1 " + name + "Two >>");
    pdf.addPage(PdfBuilder::showText("A", 10, 72, 700, "a") + PdfBuilder::showText("B", 10, 72, 680, "b"));
    EXPECT_THAT(test::runsOf(*openPdf(pdf), 0),
                testing::ElementsAre("TheQuickBrownFoxJumpsOverTheLazyDog One 10: a\n",
                                     "TheQuickBrownFoxJumpsOverTheLazyDog Two 10: b\n"));
}

TEST(FontNames, OfADescendantForACompositeFont) {
    PdfBuilder pdf;
    const int descendant = pdf.addObject(
        "<< /Type /Font /Subtype /CIDFontType2 /BaseFont /ABCDEF+Noto-Bold /CIDSystemInfo << /Registry "
        "(Adobe) "
        "/Ordering (Identity) /Supplement 0 >> /FontDescriptor << /Type /FontDescriptor /FontName "
        "/ABCDEF+Noto-Bold "
        "/Flags 4 /FontBBox [0 0 1000 1000] /ItalicAngle 0 /Ascent 800 /Descent -200 /CapHeight 700 /StemV "
        "80 "
        "/FontWeight 700 >> >>");
    const int map = pdf.addStream(
        "1 begincodespacerange <0000> <FFFF> endcodespacerange\n"
        "1 beginbfchar <0001> <0041> endbfchar");
    pdf.addFont("C",
                "<< /Type /Font /Subtype /Type0 /BaseFont /ABCDEF+Noto-Bold-Identity-H /Encoding /Identity-H "
                "/DescendantFonts [" +
                    PdfBuilder::reference(descendant) + "] /ToUnicode " + PdfBuilder::reference(map) + " >>");
    pdf.addPage("BT /C 10 Tf 72 700 Td <0001> Tj ET");
    EXPECT_THAT(test::runsOf(*openPdf(pdf), 0), testing::ElementsAre("Noto Bold 10: A\n"));
}

TEST(FontNames, OfAType3FontIsItsResourceName) {
    PdfBuilder pdf;
    const int glyph = pdf.addStream("500 0 d0 0 0 400 400 re f");
    pdf.addFont("Tee",
                "<< /Type /Font /Subtype /Type3 /FontBBox [0 0 500 500] /FontMatrix [0.001 0 0 0.001 0 0] "
                "/FirstChar 65 /LastChar 65 /Widths [500] /Encoding << /Differences [65 /A] >> /CharProcs "
                "<< /A " +
                    PdfBuilder::reference(glyph) + " >> /Resources << >> >>");
    pdf.addPage("BT /Tee 10 Tf 72 700 Td (A) Tj ET");
    EXPECT_THAT(test::runsOf(*openPdf(pdf), 0), testing::ElementsAre("Tee 10: A\n"));
}

TEST(FontNames, OneFaceIsSharedByAllPages) {
    PdfBuilder pdf;
    pdf.addNumberedPages(2);
    const auto document = openPdf(pdf);
    EXPECT_EQ(document->pageText(0)->attributedString.runs.at(0).font,
              document->pageText(1)->attributedString.runs.at(0).font);
}

}  // namespace
}  // namespace leafwright
