#include "support/OpenPdf.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;
using test::runsOf;
using testing::ElementsAre;
using testing::IsEmpty;

/// The runs of a page with this content.
std::vector<std::string> runsWith(const std::string &content) {
    PdfBuilder pdf;
    pdf.addPage(content);
    return runsOf(*openPdf(pdf), 0);
}

QString textWith(const std::string &content) {
    PdfBuilder pdf;
    pdf.addPage(content);
    return test::textOf(*openPdf(pdf), 0);
}

std::string show(const std::string &font, double size, double x, double y, const std::string &text) {
    return PdfBuilder::showText(font, size, x, y, text);
}

TEST(PageText, LineEndsWithALineFeedInItsLastFont) {
    EXPECT_THAT(runsWith(show("F2", 14, 72, 700, "Chapter") + show("F1", 10, 72, 660, "Text")),
                ElementsAre("Helvetica Bold 14: Chapter\n", "Helvetica 10: Text\n"));
}

TEST(PageText, RunsGoOnAcrossLinesOfOneFont) {
    EXPECT_THAT(runsWith(show("F1", 10, 72, 700, "One") + show("F1", 10, 72, 688, "two")),
                ElementsAre("Helvetica 10: One\ntwo\n"));
}

TEST(PageText, FontChangeWithinALine) {
    EXPECT_THAT(runsWith("BT 72 700 Td /F1 10 Tf (one) Tj /F2 10 Tf (two) Tj ET"),
                ElementsAre("Helvetica 10: one", "Helvetica Bold 10: two\n"));
}

TEST(PageText, BlankInAnotherFontBelongsToTheWordBeforeIt) {
    EXPECT_THAT(runsWith("BT 72 700 Td /F2 10 Tf (1.2) Tj /F1 10 Tf ( ) Tj /F2 10 Tf (Intro) Tj ET"),
                ElementsAre("Helvetica Bold 10: 1.2 Intro\n"));
    EXPECT_THAT(runsWith("BT 72 700 Td /F2 10 Tf (Bold) Tj /F1 10 Tf ( plain) Tj ET"),
                ElementsAre("Helvetica Bold 10: Bold ", "Helvetica 10: plain\n"));
}

TEST(PageText, BlankThatOnlyAGapMakesBelongsToTheWordBeforeIt) {
    EXPECT_THAT(runsWith("BT 72 700 Td /F2 10 Tf [(Bold) -600] TJ /F1 10 Tf (plain) Tj ET"),
                ElementsAre("Helvetica Bold 10: Bold ", "Helvetica 10: plain\n"));
}

TEST(PageText, LinesInContentOrder) {
    EXPECT_EQ(textWith(show("F1", 10, 72, 100, "last on the page") + show("F1", 10, 72, 700, "first")),
              "last on the page\nfirst\n");
}

TEST(PageText, LigatureOfTheEncodingIsExpanded) {
    PdfBuilder pdf;
    pdf.addFont("L",
                "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding "
                "<< /Differences [65 /fi /fl /ffi] >> >>");
    pdf.addPage("BT /L 10 Tf 72 700 Td (AB) Tj ET");
    EXPECT_EQ(test::textOf(*openPdf(pdf), 0), "fifl\n");
}

TEST(PageText, LigatureOfAToUnicodeMapIsExpanded) {
    PdfBuilder pdf;
    const int map = pdf.addStream(
        "1 begincodespacerange <00> <FF> endcodespacerange\n"
        "2 beginbfchar <41> <FB01> <42> <006600660069> endbfchar");
    pdf.addFont("L", "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /ToUnicode " +
                         PdfBuilder::reference(map) + " >>");
    pdf.addPage("BT /L 10 Tf 72 700 Td (AxB) Tj ET");
    EXPECT_EQ(test::textOf(*openPdf(pdf), 0), "fixffi\n");
}

TEST(PageText, CharactersBeyondTheBasicPlane) {
    PdfBuilder pdf;
    const int map = pdf.addStream(
        "1 begincodespacerange <00> <FF> endcodespacerange\n"
        "1 beginbfchar <41> <D83DDE00> endbfchar");
    pdf.addFont("L", "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /ToUnicode " +
                         PdfBuilder::reference(map) + " >>");
    pdf.addPage("BT /L 10 Tf 72 700 Td (A) Tj ET");
    const auto document = openPdf(pdf);
    EXPECT_EQ(test::textOf(*document, 0), "😀\n");
    EXPECT_EQ(document->engine().characterBoxes(0).size(), 3U);
}

TEST(PageText, TheLastCharacterOfUnicodeIsOne) {
    PdfBuilder pdf;
    const int map = pdf.addStream(
        "1 begincodespacerange <00> <FF> endcodespacerange\n"
        "2 beginbfchar <41> <DBFFDFFF> <42> <DBFFDFFE> endbfchar");
    pdf.addFont("L", "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /ToUnicode " +
                         PdfBuilder::reference(map) + " >>");
    pdf.addPage("BT /L 10 Tf 72 700 Td (AB) Tj ET");
    EXPECT_EQ(test::textOf(*openPdf(pdf), 0), QString::fromUtf8("\U0010FFFF\U0010FFFE\n"));
}

TEST(PageText, SizesAreRoundedToHundredths) {
    EXPECT_THAT(runsWith(show("F1", 11.9552, 72, 700, "TeX")), ElementsAre("Helvetica 11.96: TeX\n"));
    EXPECT_THAT(runsWith("BT /F1 7.97011 Tf 72 700 Td (a) Tj ET"), ElementsAre("Helvetica 7.97: a\n"));
}

TEST(PageText, NoiseOfMatrixArithmeticMakesNoRuns) {
    EXPECT_THAT(runsWith("BT /F1 1 Tf 9.99999 0 0 9.99999 72 700 Tm (one) Tj ET "
                         "BT /F1 10 Tf 1 0 0 1 72 680 Tm (two) Tj ET"),
                ElementsAre("Helvetica 10: one\ntwo\n"));
}

TEST(PageText, SizesAreScaledByTheMatrices) {
    EXPECT_THAT(runsWith("BT /F1 1 Tf 12 0 0 12 72 700 Tm (text matrix) Tj ET"),
                ElementsAre("Helvetica 12: text matrix\n"));
    EXPECT_THAT(runsWith("0.5 0 0 0.5 0 0 cm BT /F1 24 Tf 1 0 0 1 144 1400 Tm (page matrix) Tj ET"),
                ElementsAre("Helvetica 12: page matrix\n"));
    EXPECT_THAT(runsWith("BT /F1 1 Tf 0 12 -12 0 300 300 Tm (upwards) Tj ET"),
                ElementsAre("Helvetica 12: upwards\n"));
}

TEST(PageText, UserUnitDoesNotScaleTheSize) {
    PdfBuilder pdf;
    pdf.addPage(show("F1", 10, 72, 700, "plan"), "/UserUnit 4");
    EXPECT_THAT(runsOf(*openPdf(pdf), 0), ElementsAre("Helvetica 10: plan\n"));
}

TEST(PageText, PageWithoutText) {
    EXPECT_THAT(runsWith(""), IsEmpty());
    EXPECT_THAT(runsWith("0 0 100 100 re f"), IsEmpty());
    EXPECT_THAT(runsWith("BT /F1 10 Tf 72 700 Td () Tj ET"), IsEmpty());
}

TEST(PageText, InvisibleTextCounts) {
    EXPECT_EQ(textWith("BT 3 Tr /F1 10 Tf 72 700 Td (scanned) Tj ET"), "scanned\n");
}

TEST(PageText, ContentInSeveralStreams) {
    PdfBuilder pdf;
    const int first = pdf.addStream("BT /F1 10 Tf 72 700 Td (one) Tj");
    const int second = pdf.addStream("0 -20 Td (two) Tj ET");
    pdf.addPage({}, "/Contents [" + PdfBuilder::reference(first) + " " + PdfBuilder::reference(second) + "]");
    EXPECT_EQ(test::textOf(*openPdf(pdf), 0), "one\ntwo\n");
}

TEST(PageText, BrokenContentKeepsTheTextBeforeTheDamage) {
    const std::string sound = show("F1", 10, 72, 700, "sound");
    for (const char *damage :
         {"BT /F1 10 Tf (unended", "<< /A ", ")))) >> ]", "ET ET Q Q Q Q", "/None gs /None Do",
          "BT /Missing 10 Tf (x) Tj ET", "1 0 0 0 0 0 cm", "[ [ [", "\xFF\xFE\x00"})
        EXPECT_TRUE(textWith(sound + damage).startsWith("sound\n")) << damage;
}

TEST(PageText, BrokenStreamKeepsTheTextBeforeTheDamage) {
    PdfBuilder pdf;
    const int first = pdf.addStream(show("F1", 10, 72, 700, "sound"));
    const int second = pdf.addStream("garbage", "/Filter /NoSuchFilter");
    pdf.addPage(
        {}, "/Contents [" + PdfBuilder::reference(first) + " " + PdfBuilder::reference(second) + " null 7]");
    EXPECT_EQ(test::textOf(*openPdf(pdf), 0), "sound\n");
}

TEST(PageText, ContentThatIsNoStream) {
    PdfBuilder pdf;
    pdf.addPage({}, "/Contents 7");
    pdf.addPage({}, "/Contents << >>");
    pdf.addPage({}, "/Resources 7");
    const auto document = openPdf(pdf);
    for (int page = 0; page < 3; ++page)
        EXPECT_EQ(test::textOf(*document, page), "");
}

TEST(PageText, ImagesAndAnnotationsAreNoText) {
    PdfBuilder pdf;
    const int image = pdf.addStream(std::string(64, 'x'),
                                    "/Type /XObject /Subtype /Image /Width 8 /Height 8 "
                                    "/ColorSpace /DeviceGray /BitsPerComponent 8");
    const int appearance = pdf.addStream(
        "BT /A 10 Tf 0 0 Td (stamp) Tj ET",
        "/Type /XObject /Subtype /Form /BBox [0 0 99 99] /Resources << /Font << /A << /Type /Font "
        "/Subtype /Type1 /BaseFont /Courier >> >> >>");
    pdf.addPage("q 100 0 0 100 0 0 cm /Im Do Q " + show("F1", 10, 72, 700, "text"),
                "/Resources << /XObject << /Im " + PdfBuilder::reference(image) +
                    " >> /Font << /F1 << /Type /Font /Subtype /Type1 /BaseFont /Courier >> >> >> /Annots "
                    "[<< /Type /Annot /Subtype /FreeText /Contents (note) /Rect [0 0 99 99] /AP << /N " +
                    PdfBuilder::reference(appearance) + " >> >>]");
    EXPECT_EQ(test::textOf(*openPdf(pdf), 0), "text\n");
}

TEST(PageText, IsReadOnce) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    const auto document = openPdf(pdf);
    EXPECT_EQ(document->pageText(0), document->pageText(0));
    EXPECT_EQ(document->page(0)->text(), document->pageText(0));
}

}  // namespace
}  // namespace leafwright
