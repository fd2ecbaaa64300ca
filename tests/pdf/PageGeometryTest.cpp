#include "support/OpenPdf.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;

PageGeometry geometryWith(const std::string &entries) {
    PdfBuilder pdf;
    pdf.addPage({}, entries);
    const auto document = openPdf(pdf);
    const PDFPage *page = document->page(0);
    return {page->mediaBox(), page->cropBox(), page->rotation()};
}

/// The geometry of a page that has nothing of its own, below two nodes.
PageGeometry inheritedGeometry(const std::string &outer, const std::string &inner) {
    PdfBuilder pdf;
    const int root = pdf.addObject("null");
    const int node = pdf.addObject("null");
    const int page = pdf.addObject("<< /Type /Page /Parent " + PdfBuilder::reference(node) + " >>");
    pdf.replaceObject(node, "<< /Type /Pages /Count 1 /Kids [" + PdfBuilder::reference(page) + "] /Parent " +
                                PdfBuilder::reference(root) + " " + inner + " >>");
    pdf.replaceObject(
        root, "<< /Type /Pages /Count 1 /Kids [" + PdfBuilder::reference(node) + "] " + outer + " >>");
    pdf.setCatalogEntry("/Pages", PdfBuilder::reference(root));
    const auto document = openPdf(pdf);
    return {document->page(0)->mediaBox(), document->page(0)->cropBox(), document->page(0)->rotation()};
}

TEST(MediaBox, AsGiven) {
    EXPECT_EQ(geometryWith("/MediaBox [-10 20 300.5 400]").mediaBox, (Rect{-10, 20, 310.5, 380}));
}

TEST(MediaBox, CornersInAnyOrder) {
    EXPECT_EQ(geometryWith("/MediaBox [300 400 10 20]").mediaBox, (Rect{10, 20, 290, 380}));
    EXPECT_EQ(geometryWith("/MediaBox [10 400 300 20]").mediaBox, (Rect{10, 20, 290, 380}));
}

TEST(MediaBox, Inherited) {
    EXPECT_EQ(inheritedGeometry("/MediaBox [0 0 100 200]", "").mediaBox, (Rect{0, 0, 100, 200}));
    EXPECT_EQ(inheritedGeometry("/MediaBox [0 0 100 200]", "/MediaBox [0 0 50 60]").mediaBox,
              (Rect{0, 0, 50, 60}));
}

TEST(MediaBox, MissingOrMeaninglessIsUsLetter) {
    const Rect letter{0, 0, 612, 792};
    EXPECT_EQ(inheritedGeometry("", "").mediaBox, letter);
    for (const char *box :
         {"null", "7", "[]", "[0 0 100]", "[0 5 9]", "[0 0 0 0]", "[5 5 5 90]", "[(a) /b null << >>]"})
        EXPECT_EQ(geometryWith(std::string("/MediaBox ") + box).mediaBox, letter) << box;
}

TEST(MediaBox, LoopOfParentsEnds) {
    PdfBuilder pdf;
    const int root = pdf.addObject("null");
    const std::string self = PdfBuilder::reference(root);
    const int page = pdf.addObject("<< /Type /Page /Parent " + self + " >>");
    pdf.replaceObject(
        root, "<< /Type /Pages /Count 1 /Kids [" + PdfBuilder::reference(page) + "] /Parent " + self + " >>");
    pdf.setCatalogEntry("/Pages", self);
    EXPECT_EQ(openPdf(pdf)->page(0)->mediaBox(), (Rect{0, 0, 612, 792}));
}

TEST(CropBox, IsTheMediaBoxWhereMissing) {
    EXPECT_EQ(geometryWith("/MediaBox [1 2 300 400]").cropBox, (Rect{1, 2, 299, 398}));
}

TEST(CropBox, IsClippedToTheMediaBox) {
    EXPECT_EQ(geometryWith("/CropBox [-50 100 300 5000]").cropBox, (Rect{0, 100, 300, 692}));
}

TEST(CropBox, OutsideTheMediaBoxDoesNotCount) {
    EXPECT_EQ(geometryWith("/CropBox [700 800 900 900]").cropBox, (Rect{0, 0, 612, 792}));
}

TEST(CropBox, Inherited) {
    EXPECT_EQ(inheritedGeometry("/MediaBox [0 0 100 200] /CropBox [10 10 90 190]", "").cropBox,
              (Rect{10, 10, 80, 180}));
}

TEST(Rotation, QuarterTurns) {
    EXPECT_EQ(geometryWith("").rotation, 0);
    EXPECT_EQ(geometryWith("/Rotate 90").rotation, 90);
    EXPECT_EQ(geometryWith("/Rotate 180").rotation, 180);
    EXPECT_EQ(geometryWith("/Rotate 270").rotation, 270);
    EXPECT_EQ(geometryWith("/Rotate 810").rotation, 90);
}

TEST(Rotation, Negative) {
    EXPECT_EQ(geometryWith("/Rotate -90").rotation, 270);
    EXPECT_EQ(geometryWith("/Rotate -360").rotation, 0);
    EXPECT_EQ(geometryWith("/Rotate -450").rotation, 270);
}

TEST(Rotation, OtherAnglesDoNotCount) {
    EXPECT_EQ(geometryWith("/Rotate 45").rotation, 0);
    EXPECT_EQ(geometryWith("/Rotate -91").rotation, 0);
    EXPECT_EQ(geometryWith("/Rotate (90)").rotation, 0);
}

TEST(Rotation, Inherited) {
    EXPECT_EQ(inheritedGeometry("/Rotate 90", "").rotation, 90);
    EXPECT_EQ(inheritedGeometry("/Rotate 90", "/Rotate 180").rotation, 180);
}

}  // namespace
}  // namespace leafwright
