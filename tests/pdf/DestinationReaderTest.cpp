#include "support/OpenPdf.h"
#include "support/OutlineText.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;

/// Three pages (the last with a media box from 100, 50 to 400, 650) and an outline of one entry.
class DestinationReaderTest : public testing::Test {
protected:
    DestinationReaderTest() {
        pdf.addNumberedPages(2);
        pdf.addPage({}, "/MediaBox [100 50 400 650] /CropBox [120 60 380 600]");
        last = pdf.pageReference(2);
    }
    /// "page (x, y)" of the entry with these entries of its own, or "none"
    std::string read(const std::string &entries) {
        const int entry = pdf.addObject("<< /Title (A) " + entries + " >>");
        pdf.setCatalogEntry("/Outlines", "<< /First " + PdfBuilder::reference(entry) + " >>");
        const auto document = openPdf(pdf);
        const PDFOutline &root = document->outlineRoot();
        EXPECT_EQ(root.numberOfChildren(), 1) << entries;
        EXPECT_EQ(root.childAtIndex(0).label(), "A") << entries;
        if (!root.childAtIndex(0).destination()) return "none";
        return test::linesOf(root).at(0).substr(5);
    }
    std::string explicitly(const std::string &form) { return read("/Dest [" + last + " " + form + "]"); }

    PdfBuilder pdf;
    std::string last;
};

TEST_F(DestinationReaderTest, EveryForm) {
    EXPECT_EQ(explicitly("/XYZ 110 300 2"), "2 (110, 300)");
    EXPECT_EQ(explicitly("/FitH 300"), "2 (0, 300)");
    EXPECT_EQ(explicitly("/FitBH 300"), "2 (0, 300)");
    EXPECT_EQ(explicitly("/FitV 110"), "2 (110, 650)");
    EXPECT_EQ(explicitly("/FitBV 110"), "2 (110, 650)");
    EXPECT_EQ(explicitly("/FitR 110 200 300 400"), "2 (110, 400)");
    EXPECT_EQ(explicitly("/Fit"), "2 (0, 0)");
    EXPECT_EQ(explicitly("/FitB"), "2 (0, 0)");
}

TEST_F(DestinationReaderTest, FractionsAndNegativeNumbers) {
    EXPECT_EQ(explicitly("/XYZ -72.1 699.35 null"), "2 (-72.1, 699.35)");
}

TEST_F(DestinationReaderTest, MissingCoordinates) {
    EXPECT_EQ(explicitly("/XYZ null 300 null"), "2 (0, 300)");
    EXPECT_EQ(explicitly("/XYZ 110 null null"), "2 (110, 650)");
    EXPECT_EQ(explicitly("/XYZ 110"), "2 (110, 650)");
    EXPECT_EQ(explicitly("/XYZ null null null"), "2 (0, 0)");
    EXPECT_EQ(explicitly("/XYZ"), "2 (0, 0)");
    EXPECT_EQ(explicitly("/FitH"), "2 (0, 0)");
    EXPECT_EQ(explicitly("/FitH null"), "2 (0, 0)");
    EXPECT_EQ(explicitly("/FitV null"), "2 (0, 0)");
    EXPECT_EQ(explicitly("/FitR 110"), "2 (110, 650)");
}

TEST_F(DestinationReaderTest, MeaninglessFormsAndCoordinates) {
    EXPECT_EQ(explicitly(""), "2 (0, 0)");
    EXPECT_EQ(explicitly("/Sideways 1 2"), "2 (0, 0)");
    EXPECT_EQ(explicitly("7 8 9"), "2 (0, 0)");
    EXPECT_EQ(explicitly("/XYZ (a) /b []"), "2 (0, 0)");
    EXPECT_EQ(explicitly("/XYZ (a) 300"), "2 (0, 300)");
}

TEST_F(DestinationReaderTest, IndirectParts) {
    const std::string top = PdfBuilder::reference(pdf.addObject("300"));
    const std::string array =
        PdfBuilder::reference(pdf.addObject("[" + last + " /XYZ 110 " + top + " null]"));
    EXPECT_EQ(read("/Dest " + array), "2 (110, 300)");
}

TEST_F(DestinationReaderTest, GoToAction) {
    EXPECT_EQ(read("/A << /S /GoTo /D [" + last + " /XYZ 110 300 0] >>"), "2 (110, 300)");
}

TEST_F(DestinationReaderTest, OtherActionsLeadNowhereHere) {
    EXPECT_EQ(read("/A << /S /GoToR /F (other.pdf) /D [0 /Fit] >>"), "none");
    EXPECT_EQ(read("/A << /S /URI /URI (about:blank) >>"), "none");
    EXPECT_EQ(read("/A << /D [" + last + " /Fit] >>"), "none");
    EXPECT_EQ(read("/A 7"), "none");
}

TEST_F(DestinationReaderTest, DestWinsOverTheAction) {
    EXPECT_EQ(read("/Dest [" + last + " /Fit] /A << /S /GoTo /D [0 /Fit] >>"), "2 (0, 0)");
}

TEST_F(DestinationReaderTest, PageByIndex) {
    EXPECT_EQ(read("/Dest [1 /XYZ 72 700 0]"), "1 (72, 700)");
    EXPECT_EQ(read("/Dest [3 /Fit]"), "none");
    EXPECT_EQ(read("/Dest [-1 /Fit]"), "none");
    EXPECT_EQ(read("/Dest [1.5 /Fit]"), "none");
}

TEST_F(DestinationReaderTest, NamesOfATreeWithKids) {
    const std::string leaf =
        PdfBuilder::reference(pdf.addObject("<< /Limits [(b) (d)] /Names [(b) [" + last +
                                            " /XYZ 110 300 0] (d) << /D [" + last + " /FitH 200] >>] >>"));
    pdf.setCatalogEntry(
        "/Names", "<< /Dests << /Kids [<< /Limits [(a) (a)] /Names [(a) [0 /Fit]] >> << /Kids [" + leaf +
                      "] /Limits [(b) (d)] >>] >> >>");
    EXPECT_EQ(read("/Dest (a)"), "0 (0, 0)");
    EXPECT_EQ(read("/Dest (b)"), "2 (110, 300)");
    EXPECT_EQ(read("/Dest (d)"), "2 (0, 200)");
    EXPECT_EQ(read("/Dest <64>"), "2 (0, 200)");
    EXPECT_EQ(read("/A << /S /GoTo /D (b) >>"), "2 (110, 300)");
}

TEST_F(DestinationReaderTest, NamesOfTheOldStyleDictionary) {
    pdf.setCatalogEntry("/Dests", "<< /one [1 /XYZ 72 700 0] /two << /D [" + last + " /Fit] >> >>");
    EXPECT_EQ(read("/Dest /one"), "1 (72, 700)");
    EXPECT_EQ(read("/Dest /two"), "2 (0, 0)");
    EXPECT_EQ(read("/A << /S /GoTo /D /one >>"), "1 (72, 700)");
}

TEST_F(DestinationReaderTest, NamesThatLeadNowhere) {
    EXPECT_EQ(read("/Dest (nowhere)"), "none");
    EXPECT_EQ(read("/Dest /nowhere"), "none");
    pdf.setCatalogEntry("/Names", "<< /Dests << /Names [(a) null (b) 7 (c) (c) (d) (e) (e) (d) (f)] >> >>");
    for (const char *name : {"(a)", "(b)", "(c)", "(d)", "(f)"})
        EXPECT_EQ(read(std::string("/Dest ") + name), "none") << name;
}

TEST_F(DestinationReaderTest, NameWithoutAValueAtTheEndOfItsList) {
    pdf.setCatalogEntry("/Names", "<< /Dests << /Names [(a) [1 /Fit] (b) [2 /Fit] (a)] >> >>");
    EXPECT_EQ(read("/Dest (a)"), "1 (0, 0)");
    EXPECT_EQ(read("/Dest (b)"), "2 (0, 0)");
}

TEST_F(DestinationReaderTest, ADictionaryIsNoListOfNames) {
    pdf.setCatalogEntry("/Names",
                        "<< /Dests << /Kids [<< /Names << /A 1 /B 2 >> >> << /Names [() [1 /Fit]] >>] >> >>");
    EXPECT_EQ(read("/Dest ()"), "1 (0, 0)");
}

TEST_F(DestinationReaderTest, NameThatLeadsToAName) {
    pdf.setCatalogEntry("/Names", "<< /Dests << /Names [(a) (b) (b) [1 /Fit]] >> >>");
    EXPECT_EQ(read("/Dest (a)"), "1 (0, 0)");
}

TEST_F(DestinationReaderTest, NameTreeThatLoopsEnds) {
    const int node = pdf.addObject("null");
    const std::string self = PdfBuilder::reference(node);
    pdf.replaceObject(node, "<< /Kids [" + self + " " + self + "] /Names [(a) [1 /Fit]] >>");
    pdf.setCatalogEntry("/Names", "<< /Dests " + self + " >>");
    EXPECT_EQ(read("/Dest (a)"), "1 (0, 0)");
}

TEST_F(DestinationReaderTest, WrongTypesOfTheNames) {
    for (const char *names : {"7", "[]", "<< /Dests 7 >>", "<< /Dests << /Names 7 /Kids 8 >> >>",
                              "<< /Dests << /Names [7 8 9] /Kids [1 (a) null] >> >>"}) {
        pdf.setCatalogEntry("/Names", names);
        EXPECT_EQ(read("/Dest (a)"), "none") << names;
    }
}

TEST_F(DestinationReaderTest, PageThatIsNotInTheTree) {
    const int stray = pdf.addObject("<< /Type /Page /MediaBox [0 0 9 9] >>");
    EXPECT_EQ(read("/Dest [" + PdfBuilder::reference(stray) + " /Fit]"), "none");
}

TEST_F(DestinationReaderTest, WrongTypes) {
    for (const char *dest :
         {"7", "[]", "[null /Fit]", "[(a) /Fit]", "[[] /Fit]", "<< >>", "<< /D 7 >>", "null"})
        EXPECT_EQ(read(std::string("/Dest ") + dest), "none") << dest;
}

}  // namespace
}  // namespace leafwright
