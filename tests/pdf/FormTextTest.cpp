#include "support/OpenPdf.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;
using test::runsOf;
using testing::ElementsAre;

std::string fontNamed(const std::string &baseFont) {
    return "<< /Type /Font /Subtype /Type1 /BaseFont /" + baseFont + " >>";
}

std::string form(PdfBuilder &pdf, const std::string &content, const std::string &entries = {}) {
    return PdfBuilder::reference(
        pdf.addStream(content, "/Type /XObject /Subtype /Form /BBox [0 0 612 792] " + entries));
}

/// A page whose /Fm is the form and whose /F is Courier.
void addPage(PdfBuilder &pdf, const std::string &content, const std::string &form) {
    pdf.addPage(content, "/Resources << /Font << /F " + fontNamed("Courier") + " >> /XObject << /Fm " + form +
                             " >> >>");
}

TEST(FormText, OfAForm) {
    PdfBuilder pdf;
    addPage(pdf, "/Fm Do",
            form(pdf, PdfBuilder::showText("G", 10, 72, 700, "inside"),
                 "/Resources << /Font << /G " + fontNamed("Times-Bold") + " >> >>"));
    EXPECT_THAT(runsOf(*openPdf(pdf), 0), ElementsAre("Times Bold 10: inside\n"));
}

TEST(FormText, FontsComeFromTheFormsOwnResources) {
    PdfBuilder pdf;
    addPage(pdf,
            PdfBuilder::showText("F", 10, 72, 720, "before") + "/Fm Do " +
                PdfBuilder::showText("F", 10, 72, 680, "after"),
            form(pdf, PdfBuilder::showText("F", 10, 72, 700, "inside"),
                 "/Resources << /Font << /F " + fontNamed("VeryVeryVeryLongFontNameOfManyLetters-Italic") +
                     " >> >>"));
    EXPECT_THAT(
        runsOf(*openPdf(pdf), 0),
        ElementsAre("Courier 10: before\n", "VeryVeryVeryLongFontNameOfManyLetters Italic 10: inside\n",
                    "Courier 10: after\n"));
}

TEST(FormText, FormWithoutResourcesUsesThePages) {
    PdfBuilder pdf;
    addPage(pdf, "/Fm Do", form(pdf, PdfBuilder::showText("F", 10, 72, 700, "inside")));
    EXPECT_THAT(runsOf(*openPdf(pdf), 0), ElementsAre("Courier 10: inside\n"));
}

TEST(FormText, FormWithinAForm) {
    PdfBuilder pdf;
    const std::string inner = form(pdf, PdfBuilder::showText("F", 10, 72, 700, "inner"),
                                   "/Resources << /Font << /F " + fontNamed("Times-Roman") + " >> >>");
    const std::string outer = form(
        pdf, "/In Do " + PdfBuilder::showText("F", 10, 72, 680, "outer"),
        "/Resources << /Font << /F " + fontNamed("Helvetica") + " >> /XObject << /In " + inner + " >> >>");
    addPage(pdf, "/Fm Do " + PdfBuilder::showText("F", 10, 72, 660, "page"), outer);
    EXPECT_THAT(runsOf(*openPdf(pdf), 0),
                ElementsAre("Times Roman 10: inner\n", "Helvetica 10: outer\n", "Courier 10: page\n"));
}

TEST(FormText, FormThatShowsItselfEnds) {
    PdfBuilder pdf;
    const int number = pdf.addStream(PdfBuilder::showText("F", 10, 72, 700, "again") + "/Fm Do",
                                     "/Type /XObject /Subtype /Form /BBox [0 0 612 792]");
    addPage(pdf, "/Fm Do", PdfBuilder::reference(number));
    EXPECT_TRUE(test::textOf(*openPdf(pdf), 0).startsWith("again\n"));
}

TEST(FormText, FormIsScaledByItsMatrix) {
    PdfBuilder pdf;
    addPage(pdf, "2 0 0 2 0 0 cm /Fm Do",
            form(pdf, PdfBuilder::showText("F", 10, 72, 200, "big"), "/Matrix [1.5 0 0 1.5 0 0]"));
    EXPECT_THAT(runsOf(*openPdf(pdf), 0), ElementsAre("Courier 30: big\n"));
}

TEST(FormText, FontSetByAGraphicsState) {
    PdfBuilder pdf;
    const int font = pdf.addObject(fontNamed("VeryVeryVeryLongFontNameOfManyLetters-Bold"));
    pdf.addPage("/GS gs BT 72 700 Td (state) Tj ET",
                "/Resources << /ExtGState << /GS << /Font [" + PdfBuilder::reference(font) + " 9] >> >> >>");
    EXPECT_THAT(runsOf(*openPdf(pdf), 0),
                ElementsAre("VeryVeryVeryLongFontNameOfManyLetters Bold 9: state\n"));
}

}  // namespace
}  // namespace leafwright
