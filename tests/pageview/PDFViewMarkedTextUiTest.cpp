#include "pageview/PDFViewFixture.h"

namespace leafwright {
namespace {

using test::PdfBuilder;

class PDFViewMarkedText : public test::PDFViewFixture {
protected:
    /// Shows pages with a line of text near their top and one near their foot, in 20 point type.
    void showPages(int count) {
        PdfBuilder pdf;
        for (int i = 0; i < count; ++i)
            pdf.addPage(PdfBuilder::showText("F1", 20, 72, 700, "Alpha beta gamma") +
                        PdfBuilder::showText("F1", 20, 72, 60, "last line"));
        show(pdf);
    }
    static constexpr TextRange first{0, 5};
    static constexpr TextRange last{17, 4};

    bool isInView(double x, double y, int pageIndex) {
        return view.viewport()->rect().contains(at(x, y, pageIndex));
    }
};

TEST_F(PDFViewMarkedText, IsMarkedWhereItStands) {
    showPages(1);
    // Blanks have no print.
    const QPoint blank = at(125, 705);
    view.addMarkedText(0, {TextRange{0, 16}});
    waitUntil([&] { return colourAt(blank) != QColor(Qt::white); });
    EXPECT_EQ(colourAt(at(125, 600)), QColor(Qt::white));
    view.clearMarkedText();
    EXPECT_EQ(colourAt(blank), QColor(Qt::white));
}

TEST_F(PDFViewMarkedText, MoreOfAPageIsMarkedBesideWhatIs) {
    showPages(1);
    view.addMarkedText(0, {TextRange{0, 16}});
    const QPoint blank = at(125, 705);
    waitUntil([&] { return colourAt(blank) != QColor(Qt::white); });
    view.addMarkedText(0, {last});
    EXPECT_NE(colourAt(blank), QColor(Qt::white));
}

TEST_F(PDFViewMarkedText, OfVeryManyTextsSoManyAreMarkedAsAreDrawnSoon) {
    showPages(1);
    std::vector<TextRange> ranges(30'000, first);
    ranges.push_back({0, 16});
    view.addMarkedText(0, ranges);
    const QPoint middleOfFirst = at(74, 701);
    waitUntil([&] { return colourAt(middleOfFirst) != QColor(Qt::white); });
    EXPECT_EQ(colourAt(at(125, 705)), QColor(Qt::white));
}

TEST_F(PDFViewMarkedText, ATextThatIsShownUnnotedLeavesNothingToGoBackTo) {
    showPages(5);
    view.showText(3, first, PDFView::Leaving::Unnoted);
    EXPECT_EQ(currentIndex(), 3);
    EXPECT_FALSE(view.canGoBack());
}

TEST_F(PDFViewMarkedText, ANewDocumentHasNone) {
    showPages(1);
    view.addMarkedText(0, {TextRange{0, 16}});
    waitUntil([&] { return colourAt(at(125, 705)) != QColor(Qt::white); });
    view.setDocument(nullptr);
    view.setDocument(document.get());
    waitUntilRendered();
    EXPECT_EQ(colourAt(at(125, 705)), QColor(Qt::white));
}

TEST_F(PDFViewMarkedText, TextOfAnotherPageIsShownWithThePage) {
    showPages(5);
    view.showText(3, last);
    EXPECT_EQ(currentIndex(), 3) << "at once";
    waitUntil([&] { return isInView(80, 65, 3); });
    EXPECT_EQ(currentIndex(), 3);
    view.goBack();
    EXPECT_EQ(currentIndex(), 0) << "it was one jump";
    EXPECT_FALSE(view.canGoBack());
}

TEST_F(PDFViewMarkedText, WhatCanBeSeenIsNotMoved) {
    showPages(2);
    view.addMarkedText(0, {TextRange{0, 16}});
    waitUntil([&] { return colourAt(at(125, 705)) != QColor(Qt::white); });
    const int before = scrollPosition();
    view.showText(0, first);
    EXPECT_EQ(scrollPosition(), before);
    EXPECT_FALSE(view.canGoBack());
}

TEST_F(PDFViewMarkedText, WhoHasGoneElsewhereMeanwhileStaysThere) {
    showPages(5);
    view.showText(4, last);
    view.goToPage(&page(1));
    const int before = scrollPosition();
    // A page that is read later is read when this one has been.
    view.addMarkedText(1, {TextRange{0, 16}});
    waitUntil([&] { return colourAt(at(125, 705, 1)) != QColor(Qt::white); });
    QTest::qWait(0);
    EXPECT_EQ(scrollPosition(), before);
}

TEST_F(PDFViewMarkedText, APageThatIsNotThereIsPassedOver) {
    showPages(1);
    view.showText(1, first);
    view.showText(-1, first);
    EXPECT_EQ(currentIndex(), 0);
}

}  // namespace
}  // namespace leafwright
