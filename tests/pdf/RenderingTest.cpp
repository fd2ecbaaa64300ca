#include "pageview/DrawnPage.h"
#include "support/OpenPdf.h"
#include "support/RawPdf.h"

#include <QColor>
#include <QImage>

#include <gmock/gmock.h>
#include <thread>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;
using testing::ElementsAre;

QImage draw(const PDFDocument &document, int page, double scale = 1) {
    const QSizeF size = document.page(page)->transform().shownSize() * scale;
    return drawnPage(document, {page, scale, QRect(0, 0, qRound(size.width()), qRound(size.height()))});
}

std::string colour(const QImage &image, int x, int y) {
    return image.pixelColor(x, y).name().toStdString();
}

std::string fill(const std::string &colour, int x, int y, int width, int height) {
    return colour + " rg " + std::to_string(x) + " " + std::to_string(y) + " " + std::to_string(width) + " " +
           std::to_string(height) + " re f ";
}

const std::string red = "#ff0000";
const std::string green = "#00ff00";
const std::string blue = "#0000ff";
const std::string black = "#000000";
const std::string white = "#ffffff";

/// A page that shows 100 by 200 points of a larger one, with a square in each corner: red at the lower left,
/// green at the lower right, blue at the upper left, black at the upper right.
PdfBuilder pageOfCorners(int rotation) {
    PdfBuilder pdf;
    pdf.addPage(fill("0.5 0.5 0.5", 0, 0, 300, 400) + fill("1 1 1", 20, 40, 100, 200) +
                    fill("1 0 0", 20, 40, 20, 20) + fill("0 1 0", 100, 40, 20, 20) +
                    fill("0 0 1", 20, 220, 20, 20) + fill("0 0 0", 100, 220, 20, 20),
                "/MediaBox [0 0 300 400] /CropBox [20 40 120 240] /Rotate " + std::to_string(rotation));
    return pdf;
}

/// The corners of an image in reading order, and its middle.
std::vector<std::string> cornersOf(const QImage &image) {
    const int right = image.width() - 10;
    const int bottom = image.height() - 10;
    return {colour(image, 10, 10), colour(image, right, 10), colour(image, 10, bottom),
            colour(image, right, bottom), colour(image, image.width() / 2, image.height() / 2)};
}

TEST(Rendering, UprightPageShowsItsCropBox) {
    const QImage image = draw(*openPdf(pageOfCorners(0)), 0);
    EXPECT_EQ(image.size(), QSize(100, 200));
    EXPECT_THAT(cornersOf(image), ElementsAre(blue, black, red, green, white));
    EXPECT_EQ(colour(image, 0, 0), blue);
    EXPECT_EQ(colour(image, 99, 199), green);
}

TEST(Rendering, PageTurnedByNinetyDegrees) {
    const QImage image = draw(*openPdf(pageOfCorners(90)), 0);
    EXPECT_EQ(image.size(), QSize(200, 100));
    EXPECT_THAT(cornersOf(image), ElementsAre(red, blue, green, black, white));
}

TEST(Rendering, PageTurnedUpsideDown) {
    const QImage image = draw(*openPdf(pageOfCorners(180)), 0);
    EXPECT_EQ(image.size(), QSize(100, 200));
    EXPECT_THAT(cornersOf(image), ElementsAre(green, red, black, blue, white));
}

TEST(Rendering, PageTurnedByTwoHundredAndSeventyDegrees) {
    const QImage image = draw(*openPdf(pageOfCorners(270)), 0);
    EXPECT_EQ(image.size(), QSize(200, 100));
    EXPECT_THAT(cornersOf(image), ElementsAre(black, green, blue, red, white));
}

TEST(Rendering, ScaleIsPixelsPerPoint) {
    const QImage image = draw(*openPdf(pageOfCorners(0)), 0, 2.5);
    EXPECT_EQ(image.size(), QSize(250, 500));
    EXPECT_EQ(colour(image, 48, 48), blue);
    EXPECT_EQ(colour(image, 52, 48), white);
}

TEST(Rendering, ClipIsTheSamePartOfTheWhole) {
    const auto document = openPdf(pageOfCorners(90));
    const QRect clip(150, 30, 100, 120);
    EXPECT_EQ(drawnPage(*document, {0, 2, clip}), draw(*document, 0, 2).copy(clip));
}

TEST(Rendering, ClipBeyondThePageIsWhite) {
    const QImage image = drawnPage(*openPdf(pageOfCorners(0)), {0, 1, QRect(-50, -50, 200, 300)});
    EXPECT_EQ(colour(image, 45, 45), white) << "and not the gray outside the crop box";
    EXPECT_EQ(colour(image, 55, 55), blue);
    EXPECT_EQ(colour(image, 199, 299), white);
}

TEST(Rendering, EmptyOrEnormousClipGivesNoImage) {
    const auto document = openPdf(pageOfCorners(0));
    EXPECT_TRUE(document->renderPage({0, 1, QRect()}, {}).isNull());
    EXPECT_TRUE(document->renderPage({0, 1, QRect(0, 0, 1'000'000, 1'000'000)}, {}).isNull());
}

TEST(Rendering, TextIsDrawn) {
    PdfBuilder pdf;
    pdf.addPage(PdfBuilder::showText("F2", 72, 100, 600, "HHHH"));
    const QImage image = draw(*openPdf(pdf), 0);
    int dark = 0;
    for (int x = 100; x < 300; ++x)
        dark += image.pixelColor(x, 792 - 610).lightness() < 64 ? 1 : 0;
    EXPECT_GT(dark, 40);
}

TEST(Rendering, AnnotationIsDrawnWhereItsRectangleIs) {
    PdfBuilder pdf;
    const int form =
        pdf.addStream(fill("1 0 0", 0, 0, 10, 10), "/Type /XObject /Subtype /Form /BBox [0 0 10 10]");
    pdf.addPage({}, "/Annots [ << /Subtype /Stamp /Rect [100 100 200 200] /AP << /N " +
                        PdfBuilder::reference(form) + " >> >> ]");
    const QImage image = draw(*openPdf(pdf), 0);
    EXPECT_EQ(colour(image, 105, 792 - 195), red);
    EXPECT_EQ(colour(image, 195, 792 - 105), red);
    EXPECT_EQ(colour(image, 205, 792 - 150), white);
}

/// A square with a red left and a green right half, a blue corner at its lower left, moved from the origin.
std::string halves(PdfBuilder &pdf, const std::string &entries) {
    const std::string content =
        fill("1 0 0", 5, 20, 5, 10) + fill("0 1 0", 10, 20, 5, 10) + fill("0 0 1", 5, 20, 2, 2);
    return PdfBuilder::reference(
        pdf.addStream(content, "/Type /XObject /Subtype /Form /BBox [5 20 15 30] " + entries));
}

QImage drawStamp(PdfBuilder &pdf, const std::string &form, const std::string &entries = {}) {
    pdf.addPage({}, "/Annots [ << /Subtype /Stamp /Rect [100 100 300 200] /AP << /N " + form + " >> " +
                        entries + " >> ]");
    const auto document = openPdf(pdf);
    return draw(*document, document->pageCount() - 1);
}

TEST(Rendering, AppearanceIsStretchedFromItsBoxToTheRectangle) {
    PdfBuilder pdf;
    const QImage image = drawStamp(pdf, halves(pdf, ""));
    EXPECT_EQ(colour(image, 105, 792 - 195), red);
    EXPECT_EQ(colour(image, 195, 792 - 150), red);
    EXPECT_EQ(colour(image, 205, 792 - 150), green);
    EXPECT_EQ(colour(image, 295, 792 - 105), green);
    EXPECT_EQ(colour(image, 105, 792 - 105), blue);
    EXPECT_EQ(colour(image, 135, 792 - 115), blue);
    EXPECT_EQ(colour(image, 145, 792 - 115), red);
    EXPECT_EQ(colour(image, 135, 792 - 125), red);
    for (const QPoint outside : {QPoint(95, 150), QPoint(305, 150), QPoint(200, 95), QPoint(200, 205)})
        EXPECT_EQ(colour(image, outside.x(), 792 - outside.y()), white);
}

TEST(Rendering, AppearanceThatIsTurnedByItsMatrix) {
    PdfBuilder pdf;
    const QImage image = drawStamp(pdf, halves(pdf, "/Matrix [0 1 -1 0 40 -7]"));
    EXPECT_EQ(colour(image, 200, 792 - 105), red);
    EXPECT_EQ(colour(image, 200, 792 - 195), green);
    EXPECT_EQ(colour(image, 295, 792 - 105), blue);
}

TEST(Rendering, AppearancesWithoutAreaAreNotDrawn) {
    PdfBuilder pdf;
    for (const char *box : {"[0 0 0 10]", "[0 0 10 0]", "[10 10 10 10]", "[]", "7"}) {
        const int form = pdf.addStream(fill("1 0 0", -500, -500, 1000, 1000),
                                       std::string("/Type /XObject /Subtype /Form /BBox ") + box);
        const QImage image = drawStamp(pdf, PdfBuilder::reference(form));
        EXPECT_EQ(colour(image, 150, 792 - 150), white) << box;
        EXPECT_EQ(colour(image, 10, 792 - 10), white) << box;
    }
}

TEST(Rendering, FlagsAndKindsOfAnnotations) {
    PdfBuilder pdf;
    for (const char *shown : {"/F 0", "/F 1", "/F 4", "/F 8", "/F 16", "/F 64", "/F 128", "/F (2)"})
        EXPECT_EQ(colour(drawStamp(pdf, halves(pdf, ""), shown), 150, 792 - 150), red) << shown;
    for (const char *hidden : {"/F 2", "/F 3", "/F 32", "/F 36", "/Subtype /Popup"})
        EXPECT_EQ(colour(drawStamp(pdf, halves(pdf, ""), hidden), 150, 792 - 150), white) << hidden;
}

TEST(Rendering, AllAnnotationsAreDrawnInTheirOrder) {
    PdfBuilder pdf;
    const auto stamp = [&](const std::string &colour, const std::string &rectangle) {
        const int form =
            pdf.addStream(fill(colour, 0, 0, 10, 10), "/Type /XObject /Subtype /Form /BBox [0 0 10 10]");
        return "<< /Subtype /Stamp /Rect " + rectangle + " /AP << /N " + PdfBuilder::reference(form) +
               " >> >> ";
    };
    pdf.addPage(fill("0 0 0", 0, 0, 50, 50),
                "/Annots [ " + stamp("1 0 0", "[0 0 30 30]") + "7 << >> << /Subtype /Stamp /AP 7 >> " +
                    stamp("0 1 0", "[10 10 40 40]") + stamp("0 0 1", "[20 20 25 25]") + "]");
    const QImage image = draw(*openPdf(pdf), 0);
    EXPECT_EQ(colour(image, 5, 792 - 5), red);
    EXPECT_EQ(colour(image, 15, 792 - 15), green);
    EXPECT_EQ(colour(image, 22, 792 - 22), blue);
    EXPECT_EQ(colour(image, 45, 792 - 45), black);
}

TEST(Rendering, AppearanceIsThatOfTheAnnotationsState) {
    PdfBuilder pdf;
    const std::string box = "/Type /XObject /Subtype /Form /BBox [0 0 10 10]";
    const int on = pdf.addStream(fill("0 1 0", 0, 0, 10, 10), box);
    const int off = pdf.addStream(fill("1 0 0", 0, 0, 10, 10), box);
    pdf.addPage({}, "/Annots [ << /Subtype /Widget /Rect [100 100 200 200] /AS /Yes /AP << /N << /Yes " +
                        PdfBuilder::reference(on) + " /Off " + PdfBuilder::reference(off) + " >> >> >> ]");
    EXPECT_EQ(colour(draw(*openPdf(pdf), 0), 150, 792 - 150), green);
}

TEST(Rendering, HiddenAnnotationsAreNotDrawn) {
    PdfBuilder pdf;
    const int form =
        pdf.addStream(fill("1 0 0", 0, 0, 10, 10), "/Type /XObject /Subtype /Form /BBox [0 0 10 10]");
    for (const char *flags : {"2", "32", "34"}) {
        pdf.addPage({}, std::string("/Annots [ << /Subtype /Stamp /F ") + flags +
                            " /Rect [100 100 200 200] /AP << /N " + PdfBuilder::reference(form) + " >> >> ]");
    }
    const auto document = openPdf(pdf);
    for (int i = 0; i < document->pageCount(); ++i)
        EXPECT_EQ(colour(draw(*document, i), 150, 792 - 150), white) << i;
}

TEST(Rendering, BlendingMixesWithWhatIsBeneath) {
    PdfBuilder pdf;
    pdf.addPage(fill("1 1 0", 0, 0, 300, 300) + "/Multiply gs " + fill("0 1 1", 100, 100, 300, 300),
                "/Resources << /ExtGState << /Multiply << /BM /Multiply >> >> >>");
    const QImage image = draw(*openPdf(pdf), 0);
    EXPECT_EQ(colour(image, 200, 792 - 200), green);
    EXPECT_EQ(colour(image, 50, 792 - 50), "#ffff00");
    EXPECT_EQ(colour(image, 350, 792 - 350), "#00ffff");
}

/// A page on which a red square is mixed with what is beneath it, which is nothing.
std::string cornerOfPageWith(PdfBuilder &pdf, const std::string &content, const std::string &entries) {
    pdf.addPage(content, entries);
    const auto document = openPdf(pdf);
    return colour(draw(*document, document->pageCount() - 1), 50, 792 - 50);
}

/// The paper counts for nothing where something is blended: it would make anything white.
TEST(Rendering, BlendingIsFoundWhereverItIsAskedFor) {
    const std::string square = fill("1 0 0", 0, 0, 100, 100);
    const std::string screen =
        "<< /Plain << /ca 1 /BM /Normal >> /Old << /BM /Compatible >> "
        "/S << /BM /Screen >> >>";
    const std::string box = "/Type /XObject /Subtype /Form /BBox [0 0 100 100] ";
    PdfBuilder pdf;
    EXPECT_EQ(cornerOfPageWith(pdf, "/S gs " + square, "/Resources << /ExtGState " + screen + " >>"), red);
    EXPECT_EQ(cornerOfPageWith(pdf, "/S gs " + square,
                               "/Resources << /ExtGState << /S << /BM [/Screen /Normal] >> >> >>"),
              red);
    const auto formOf = [&](const std::string &content, const std::string &resources) {
        return PdfBuilder::reference(pdf.addStream(content, box + "/Resources << " + resources + " >>"));
    };
    const std::string plain = formOf("", "");
    const std::string inner = formOf("/S gs " + square, "/ExtGState " + screen);
    const std::string outer = formOf("/F Do", "/XObject << /E " + plain + " /F " + inner + " >>");
    for (const std::string &form : {inner, outer})
        EXPECT_EQ(cornerOfPageWith(pdf, "/F Do",
                                   "/Resources << /ExtGState << /P << /ca 1 >> >> /XObject << /A 7 /E " +
                                       plain + " /F " + form + " >> >>"),
                  red);
    EXPECT_EQ(cornerOfPageWith(pdf, "/F Do",
                               "/Group << /S /Transparency >> /Resources << /XObject << /F << >> >> >>"),
              white)
        << "a group of nothing";
}

TEST(Rendering, APageThatIsAGroupIsDrawnAsOne) {
    PdfBuilder pdf;
    // The state is one that is set by content which is not looked at.
    const std::string own = "/Resources << /Pattern << >> /ExtGState 7 >> ";
    EXPECT_EQ(cornerOfPageWith(pdf, fill("1 0 0", 0, 0, 100, 100), own + "/Group << /S /Transparency >>"),
              red);
}

TEST(Rendering, StatesThatBlendNothing) {
    PdfBuilder pdf;
    EXPECT_EQ(cornerOfPageWith(pdf, "/Half gs " + fill("0 0 0", 0, 0, 100, 100),
                               "/Resources << /ExtGState << /One << >> /Half << /ca 0.5 >> /BM 7 >> >>"),
              "#808080");
}

TEST(Rendering, FormWithColourSpacesOfItsOwn) {
    PdfBuilder pdf;
    const int form =
        pdf.addStream("/Own cs 1 0 0 sc 0 0 100 100 re f",
                      "/Type /XObject /Subtype /Form /BBox [0 0 100 100] /Resources << /ColorSpace "
                      "<< /Own /DeviceRGB /DefaultRGB [/CalRGB << /WhitePoint [1 1 1] >>] >> >>");
    pdf.addPage("/Form Do", "/Resources << /XObject << /Form " + PdfBuilder::reference(form) + " >> >>");
    const auto document = openPdf(pdf);
    EXPECT_NE(colour(draw(*document, 0), 50, 792 - 50), white);
    EXPECT_TRUE(document->page(0)->text()->attributedString.isEmpty());
}

TEST(Rendering, BrokenContentKeepsWhatWasDrawnBefore) {
    PdfBuilder pdf;
    pdf.addPage(fill("1 0 0", 0, 0, 100, 100) + " /Nothing gs /Nothing Do /Nothing sh ((( ");
    EXPECT_EQ(colour(draw(*openPdf(pdf), 0), 50, 792 - 50), red);
}

TEST(Rendering, UnreadablePageIsBlank) {
    const auto document = test::openBytes(test::RawPdf()
                                              .object(1, "<< /Type /Catalog /Pages 2 0 R >>")
                                              .object(2, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>")
                                              .object(3,
                                                      "<< /Type /Page /Parent 2 0 R /Contents 7 /Annots (a) "
                                                      "/Resources [1] /Group << /CS /Nowhere >> >>")
                                              .endWithTable()
                                              .bytes());
    const QImage image = draw(*document, 0);
    EXPECT_EQ(image.size(), QSize(612, 792));
    EXPECT_EQ(colour(image, 300, 300), white);
}

TEST(Rendering, FormThatShowsItselfEnds) {
    PdfBuilder pdf;
    const int resources = pdf.addObject("<< >>");
    const int form =
        pdf.addStream("/Form Do", "/Type /XObject /Subtype /Form /BBox [0 0 100 100] /Resources " +
                                      PdfBuilder::reference(resources));
    pdf.replaceObject(resources, "<< /XObject << /Form " + PdfBuilder::reference(form) + " >> >>");
    pdf.addPage(fill("1 0 0", 0, 0, 100, 100) + "/Form Do", "/Resources " + PdfBuilder::reference(resources));
    EXPECT_EQ(colour(draw(*openPdf(pdf), 0), 50, 792 - 50), red);
}

TEST(Rendering, LongChainOfFormsEnds) {
    PdfBuilder pdf;
    int inner = pdf.addStream(fill("1 0 0", 0, 0, 10, 10), "/Type /XObject /Subtype /Form /BBox [0 0 9 9]");
    for (int i = 0; i < 20'000; ++i) {
        inner = pdf.addStream("/F Do",
                              "/Type /XObject /Subtype /Form /BBox [0 0 100 100] /Resources << /XObject "
                              "<< /F " +
                                  PdfBuilder::reference(inner) + " >> >>");
    }
    pdf.addPage(fill("0 0 1", 200, 200, 100, 100) + "/F Do",
                "/Resources << /XObject << /F " + PdfBuilder::reference(inner) + " >> >>");
    EXPECT_EQ(colour(draw(*openPdf(pdf), 0), 250, 792 - 250), blue);
}

TEST(Rendering, HugeImageIsNoHarm) {
    PdfBuilder pdf;
    const int image = pdf.addStream("abc",
                                    "/Type /XObject /Subtype /Image /Width 2000000 /Height 2000000 "
                                    "/BitsPerComponent 8 /ColorSpace /DeviceRGB");
    pdf.addPage(fill("0 0 1", 0, 0, 100, 100) + "q 500 0 0 500 100 100 cm /Im Do Q",
                "/Resources << /XObject << /Im " + PdfBuilder::reference(image) + " >> >>");
    EXPECT_EQ(colour(draw(*openPdf(pdf), 0), 50, 792 - 50), blue);
}

TEST(Rendering, PatternOfCountlessTilesEnds) {
    PdfBuilder pdf;
    const int pattern =
        pdf.addStream("0 0 1 1 re f",
                      "/Type /Pattern /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 1 1] "
                      "/XStep 0.0001 /YStep 0.0001 /Resources << >>");
    pdf.addPage(fill("0 0 1", 0, 0, 100, 100) + "/Pattern cs /Tiny scn 200 200 400 400 re f",
                "/Resources << /Pattern << /Tiny " + PdfBuilder::reference(pattern) + " >> >>");
    EXPECT_EQ(colour(draw(*openPdf(pdf), 0), 50, 792 - 50), blue);
}

TEST(Rendering, LargeTilesLaidOverEachOtherEnd) {
    PdfBuilder pdf;
    const int pattern =
        pdf.addStream("0 0 600 600 re f",
                      "/Type /Pattern /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 600 "
                      "600] /XStep 0.5 /YStep 0 /Resources << >>");
    pdf.addPage(fill("0 0 1", 0, 0, 100, 100) + "/Pattern cs /Large scn 200 200 400 400 re f",
                "/Resources << /Pattern << /Large " + PdfBuilder::reference(pattern) + " >> >>");
    EXPECT_EQ(colour(draw(*openPdf(pdf), 0), 50, 792 - 50), blue);
}

TEST(Rendering, PatternOfUsualTilesIsDrawn) {
    PdfBuilder pdf;
    const int pattern =
        pdf.addStream("1 0 0 rg 0 0 2 4 re f",
                      "/Type /Pattern /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 4 4] "
                      "/XStep 4 /YStep 4 /Resources << >>");
    pdf.addPage("/Pattern cs /Stripes scn 0 0 612 792 re f",
                "/Resources << /Pattern << /Stripes " + PdfBuilder::reference(pattern) + " >> >>");
    const QImage image = draw(*openPdf(pdf), 0);
    EXPECT_EQ(colour(image, 401, 300), red);
    EXPECT_EQ(colour(image, 403, 300), white);
}

/// What counts are the tiles in the part that is painted and seen.
TEST(Rendering, PatternOfTinyTilesIsDrawnWhereLittleOfItIsSeen) {
    for (const QPoint corner : {QPoint(0, 0), QPoint(600, 0), QPoint(0, 780), QPoint(600, 780)}) {
        PdfBuilder pdf;
        const int pattern =
            pdf.addStream("1 0 0 rg 0 0 1 1 re f",
                          "/Type /Pattern /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 1 1] "
                          "/XStep 0.05 /YStep 0.05 /Resources << >>");
        pdf.addPage("/Pattern cs /Tiny scn " + std::to_string(corner.x()) + " " + std::to_string(corner.y()) +
                        " 12 12 re f",
                    "/Resources << /Pattern << /Tiny " + PdfBuilder::reference(pattern) + " >> >>");
        const QImage image = draw(*openPdf(pdf), 0);
        EXPECT_EQ(colour(image, corner.x() + 6, 791 - corner.y() - 6), red);
    }
}

TEST(Rendering, PatternOfTilesInAMirrorIsLimitedToo) {
    PdfBuilder pdf;
    const int pattern =
        pdf.addStream("1 0 0 rg 0 0 1 1 re f",
                      "/Type /Pattern /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 1 1] "
                      "/XStep -0.001 /YStep 0.001 /Matrix [0 2 -2 0 0 0] /Resources << >>");
    pdf.addPage(fill("0 0 1", 0, 0, 100, 100) + "/Pattern cs /Tiny scn 200 200 400 400 re f",
                "/Resources << /Pattern << /Tiny " + PdfBuilder::reference(pattern) + " >> >>");
    EXPECT_EQ(colour(draw(*openPdf(pdf), 0), 300, 792 - 300), white);
}

TEST(Rendering, CountlessDashesEnd) {
    for (const char *dash :
         {"[0.0001] 0 d", "[0.02] 0 d", "[1] 1000000000000 d", "[0.01 0.01] -1000000000 d", "[0 0] 0 d"}) {
        PdfBuilder pdf;
        pdf.addPage(fill("0 0 1", 0, 0, 100, 100) + dash +
                    " 1 w -1000000000 300 m 1000000000 310 l S 0 0 m 600 600 l 0 600 l 600 0 l S");
        EXPECT_EQ(colour(draw(*openPdf(pdf), 0), 80, 792 - 20), blue) << dash;
    }
}

TEST(Rendering, ShadingsThatAreTooMuchEnd) {
    for (const char *shading :
         {"<< /ShadingType 1 /ColorSpace /DeviceRGB /Domain [0 1000000000 0 1000000000] /Function << "
          "/FunctionType 2 /Domain [0 "
          "1] /N 1 /C0 [1 0 0] /C1 [0 0 1] >> >>",
          "<< /ShadingType 2 /ColorSpace /DeviceRGB /Coords [0 0 0.0000001 0.0000001] /Extend "
          "[true true] /Function << "
          "/FunctionType 2 /Domain [0 1] /N 1 /C0 [1 0 0] /C1 [0 0 1] >> >>",
          "<< /ShadingType 3 /ColorSpace /DeviceRGB /Coords [0 0 0.00001 1000000000 1000000000 1000000000] "
          "/Extend [true true] /Function "
          "<< /FunctionType 2 /Domain [0 1] /N 1 /C0 [1 0 0] /C1 [0 0 1] >> >>"}) {
        PdfBuilder pdf;
        pdf.addPage(fill("0 0 1", 0, 0, 100, 100) + "q 200 200 400 400 re W n /Much sh Q",
                    std::string("/Resources << /Shading << /Much ") + shading + " >> >>");
        EXPECT_EQ(colour(draw(*openPdf(pdf), 0), 50, 792 - 50), blue) << shading;
    }
}

TEST(Rendering, StopsOnRequest) {
    std::stop_source stop;
    stop.request_stop();
    const auto document = openPdf(pageOfCorners(0));
    EXPECT_TRUE(document->renderPage({0, 1, QRect(0, 0, 100, 200)}, stop.get_token()).isNull());
}

TEST(Rendering, StopsAmidALongPage) {
    // Without being stopped, this would go on until the time limit.
    PdfBuilder pdf;
    std::string content;
    for (int i = 0; i < 200'000; ++i)
        content += "0 0 m 612 792 l 612 0 l 0 792 l f* ";
    pdf.addPage(content);
    const auto document = openPdf(pdf);
    std::stop_source stop;
    const std::jthread stopper([&stop] { stop.request_stop(); });
    EXPECT_TRUE(document->renderPage({0, 4, QRect(0, 0, 2448, 3168)}, stop.get_token()).isNull());
}

TEST(Rendering, ThreadsDrawSideBySide) {
    PdfBuilder pdf;
    pdf.addNumberedPages(20);
    const auto document = openPdf(pdf);
    std::vector<QImage> alone;
    for (int i = 0; i < 20; ++i)
        alone.push_back(draw(*document, i));
    std::vector<QImage> together(20);
    {
        std::vector<std::jthread> threads;
        for (size_t k = 0; k < 4; ++k) {
            threads.emplace_back([&, k] {
                for (size_t i = k; i < 20; i += 4)
                    together[i] = draw(*document, static_cast<int>(i));
            });
        }
    }
    EXPECT_EQ(together, alone);
}

}  // namespace
}  // namespace leafwright
