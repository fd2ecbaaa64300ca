#include "support/OpenPdf.h"
#include "support/TempDir.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;

PdfBuilder onePage() {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    return pdf;
}

std::pair<int, int> versionOf(const PdfBuilder &pdf, const std::string &header) {
    const PDFVersion version = openPdf(pdf, {.version = header})->version();
    return {version.major, version.minor};
}

TEST(Version, FromTheHeader) {
    EXPECT_EQ(versionOf(onePage(), "1.3"), std::pair(1, 3));
    EXPECT_EQ(versionOf(onePage(), "1.7"), std::pair(1, 7));
    EXPECT_EQ(versionOf(onePage(), "2.0"), std::pair(2, 0));
}

TEST(Version, FromAHeaderWithBytesInFrontOfIt) {
    const test::TempDir dir;
    onePage().save(dir.path("a.pdf"), {.version = "1.3"});
    for (const QByteArray &front : {QByteArray("x"), QByteArray("\r\n%PD\n"), QByteArray(1000, '%')}) {
        const auto document = test::openBytes(front + test::contentOf(dir.path("a.pdf")));
        EXPECT_EQ(document->version().minor, 3);
        EXPECT_FALSE(document->wasRepaired()) << "its offsets count from the header";
        EXPECT_EQ(document->pageCount(), 1);
    }
}

TEST(Version, LaterOneOfTheCatalogWins) {
    PdfBuilder pdf = onePage();
    pdf.setCatalogEntry("/Version", "/1.6");
    EXPECT_EQ(versionOf(pdf, "1.4"), std::pair(1, 6));
    pdf.setCatalogEntry("/Version", "/1.9");
    EXPECT_EQ(versionOf(pdf, "1.4"), std::pair(1, 9));
    pdf.setCatalogEntry("/Version", "/2.0");
    EXPECT_EQ(versionOf(pdf, "1.7"), std::pair(2, 0));
}

TEST(Version, EarlierOneOfTheCatalogDoesNotCount) {
    PdfBuilder pdf = onePage();
    pdf.setCatalogEntry("/Version", "/1.2");
    EXPECT_EQ(versionOf(pdf, "1.5"), std::pair(1, 5));
}

TEST(Version, NonsenseInTheCatalogDoesNotCount) {
    PdfBuilder pdf = onePage();
    for (const char *nonsense : {"/new", "1.7", "(1.7)", "[/1.7]", "/1.7.9"}) {
        pdf.setCatalogEntry("/Version", nonsense);
        EXPECT_EQ(versionOf(pdf, "1.4"), std::pair(1, 4)) << nonsense;
    }
}

TEST(Outline, IsThereWithAnEntry) {
    PdfBuilder pdf = onePage();
    test::addOutline(pdf, {{"(Intro)", ""}});
    EXPECT_TRUE(openPdf(pdf)->hasOutline());
}

TEST(Outline, IsNotThereWithoutEntries) {
    PdfBuilder pdf = onePage();
    EXPECT_FALSE(openPdf(pdf)->hasOutline());
    test::addOutline(pdf, {});
    EXPECT_FALSE(openPdf(pdf)->hasOutline());
    pdf.setCatalogEntry("/Outlines", "(none)");
    EXPECT_FALSE(openPdf(pdf)->hasOutline());
}

/// A form with one signature field. @param value its /V entry
PdfBuilder form(const std::string &value) {
    PdfBuilder pdf = onePage();
    const int field = pdf.addObject("<< /FT /Sig /T (Signature) " + value + " >>");
    pdf.setCatalogEntry("/AcroForm", "<< /Fields [" + PdfBuilder::reference(field) + "] >>");
    return pdf;
}

const std::string signature = "<< /Type /Sig /Filter /Adobe.PPKLite /Contents <00> >>";

TEST(Signature, FilledField) {
    EXPECT_TRUE(openPdf(form("/V " + signature))->isSigned());
}

TEST(Signature, UnfilledField) {
    EXPECT_FALSE(openPdf(form(""))->isSigned());
    EXPECT_FALSE(openPdf(form("/V null"))->isSigned());
}

TEST(Signature, FilledTextFieldIsNone) {
    PdfBuilder pdf = onePage();
    pdf.setCatalogEntry("/AcroForm", "<< /Fields [<< /FT /Tx /T (Name) /V (Ada) >>] >>");
    EXPECT_FALSE(openPdf(pdf)->isSigned());
}

TEST(Signature, FieldAmongKidsInheritsItsType) {
    PdfBuilder pdf = onePage();
    const int parent = pdf.addObject("null");
    const int kid =
        pdf.addObject("<< /T (b) /Parent " + PdfBuilder::reference(parent) + " /V " + signature + " >>");
    pdf.replaceObject(parent, "<< /FT /Sig /T (a) /Kids [" + PdfBuilder::reference(kid) + "] >>");
    pdf.setCatalogEntry("/AcroForm", "<< /Fields [" + PdfBuilder::reference(parent) + "] >>");
    EXPECT_TRUE(openPdf(pdf)->isSigned());
}

TEST(Signature, LoopOfFieldsEnds) {
    PdfBuilder pdf = onePage();
    const int field = pdf.addObject("null");
    const std::string self = PdfBuilder::reference(field);
    pdf.replaceObject(field, "<< /T (a) /Parent " + self + " /Kids [" + self + " " + self + "] >>");
    pdf.setCatalogEntry("/AcroForm", "<< /Fields [" + self + "] >>");
    EXPECT_FALSE(openPdf(pdf)->isSigned());
}

TEST(Signature, PermissionsOfTheCatalog) {
    PdfBuilder pdf = onePage();
    pdf.setCatalogEntry("/Perms", "<< /DocMDP " + signature + " >>");
    EXPECT_TRUE(openPdf(pdf)->isSigned());
}

TEST(Signature, WrongTypes) {
    PdfBuilder pdf = onePage();
    for (const char *form : {"7", "[]", "<< /Fields 7 >>", "<< /Fields [7 (a) /b null [] << >>] >>"}) {
        pdf.setCatalogEntry("/AcroForm", form);
        EXPECT_FALSE(openPdf(pdf)->isSigned()) << form;
    }
}

}  // namespace
}  // namespace leafwright
