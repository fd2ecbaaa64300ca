#include "support/OpenPdf.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;
using testing::IsEmpty;
using testing::SizeIs;

/// The links of the first of two pages with these annotations. Destinations name the second page by "@".
std::vector<PDFLink> linksOf(std::string annotations, PdfBuilder pdf = {}) {
    const int array = pdf.addObject("[]");
    pdf.addPage({}, "/Annots " + PdfBuilder::reference(array));
    pdf.addPage();
    for (size_t at = annotations.find('@'); at != std::string::npos; at = annotations.find('@'))
        annotations.replace(at, 1, pdf.pageReference(1));
    pdf.replaceObject(array, "[" + annotations + "]");
    return openPdf(pdf)->page(0)->links();
}

const std::string link = "<< /Subtype /Link /Rect [10 20 110 40] ";

TEST(Links, PlaceInTheDocument) {
    const auto links = linksOf(link + "/Dest [@ /XYZ 72 700 0] >>");
    ASSERT_THAT(links, SizeIs(1));
    EXPECT_EQ(links[0], (PDFLink{{10, 20, 100, 20}, PDFDestination{1, {72, 700}}, {}}));
}

TEST(Links, ActionThatGoesToAPlace) {
    const auto links = linksOf(link + "/A << /S /GoTo /D [@ /FitH 600] >> >>");
    ASSERT_THAT(links, SizeIs(1));
    EXPECT_EQ(links[0].destination, (PDFDestination{1, {0, 600}}));
}

TEST(Links, PlaceByName) {
    PdfBuilder pdf;
    pdf.setCatalogEntry("/Dests", "<< /there [1 /XYZ 5 6 0] >>");
    const auto links =
        linksOf(link + "/Dest /there >> " + link + "/Dest /there >> " + link + "/Dest /nowhere >>", pdf);
    ASSERT_THAT(links, SizeIs(2));
    EXPECT_EQ(links[1].destination, (PDFDestination{1, {5, 6}}));
}

TEST(Links, Address) {
    const auto links = linksOf(link + "/A << /S /URI /URI (https://example.org/a?b=c) >> >>");
    ASSERT_THAT(links, SizeIs(1));
    EXPECT_EQ(links[0].uri, "https://example.org/a?b=c");
    EXPECT_FALSE(links[0].destination);
}

TEST(Links, RectangleWithCornersInAnyOrder) {
    const auto links = linksOf("<< /Subtype /Link /Rect [110 40 10 20] /Dest [@ /Fit] >>");
    ASSERT_THAT(links, SizeIs(1));
    EXPECT_EQ(links[0].bounds, (Rect{10, 20, 100, 20}));
}

TEST(Links, ThoseThatLeadElsewhereAreLeftOut) {
    EXPECT_THAT(
        linksOf(link + "/A << /S /Launch /F (a.exe) >> >>" + link + "/A << /S /GoToR /F (b.pdf) >> >>" +
                link + "/A << /S /JavaScript /JS (x) >> >>" + link + ">>"),
        IsEmpty());
}

TEST(Links, OtherAnnotationsAreNone) {
    EXPECT_THAT(linksOf("<< /Subtype /Text /Rect [0 0 9 9] /Dest [@ /Fit] >>"), IsEmpty());
}

TEST(Links, HiddenOnesAreLeftOut) {
    EXPECT_THAT(linksOf(link + "/F 2 /Dest [@ /Fit] >>"), IsEmpty());
}

TEST(Links, BrokenOnesAreLeftOut) {
    const auto links = linksOf(
        "null 7 (a) /Name [[]] 9999 0 R << >> << /Subtype /Link >> "
        "<< /Subtype /Link /Rect 7 /Dest [@ /Fit] >> "
        "<< /Subtype /Link /Rect [(a) null 9] /Dest [@ /Fit] >> "
        "<< /Subtype /Link /Rect [5 5 5 5] /Dest [@ /Fit] >> " +
        link + "/A 7 >> " + link + "/A << /S /URI /URI 7 >> >> " + link + "/Dest [77 /Fit] >> " + link +
        "/Dest [@ /Fit] >>");
    ASSERT_THAT(links, SizeIs(1));
    EXPECT_EQ(links[0].destination, (PDFDestination{1, {0, 0}}));
}

TEST(Links, AnnotationsThatAreNoArray) {
    for (const char *wrong : {"7", "(a)", "<< /Subtype /Link >>", "null", "9999 0 R"}) {
        PdfBuilder pdf;
        pdf.addPage({}, std::string("/Annots ") + wrong);
        EXPECT_THAT(openPdf(pdf)->page(0)->links(), IsEmpty()) << wrong;
    }
}

TEST(Links, EnormousNumbersOfThemAreCutOff) {
    std::string many;
    for (int i = 0; i < 20'000; ++i)
        many += link + "/Dest [@ /Fit] >> ";
    EXPECT_THAT(linksOf(many), SizeIs(10'000));
}

}  // namespace
}  // namespace leafwright
