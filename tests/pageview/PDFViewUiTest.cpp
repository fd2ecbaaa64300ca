#include "pageview/PDFViewFixture.h"

#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>

namespace leafwright {
namespace {

using test::numberedPages;
using test::PdfBuilder;
using test::smallPages;

class PDFViewTest : public test::PDFViewFixture {};

TEST_F(PDFViewTest, WithoutADocumentNothingHappens) {
    view.show();
    EXPECT_EQ(view.currentPage(), nullptr);
    EXPECT_EQ(view.pageForPoint({5, 5}, true), nullptr);
    EXPECT_EQ(view.boundsForDisplayBox(nullptr), Rect());
    EXPECT_FALSE(view.canGoToNextPage());
    EXPECT_FALSE(view.canGoToPreviousPage());
    view.goToNextPage();
    view.goToPreviousPage();
    view.goToFirstPage();
    view.goToLastPage();
    view.goToPage(nullptr);
    const auto other = test::openPdf(numberedPages(1));
    view.goToPage(other->page(0));
    view.setAutoScales(true);
    view.setScaleFactor(2);
    view.copy();
    view.clearSelection();
    drag({5, 5}, {100, 100});
    doubleClick({5, 5});
    tripleClick({5, 5});
    hover({5, 5});
    for (const Qt::Key k : {Qt::Key_Home, Qt::Key_End, Qt::Key_Space, Qt::Key_Left, Qt::Key_Right})
        key(k);
    picture();
}

TEST_F(PDFViewTest, IsNamedForThoseWhoDoNotSee) {
    EXPECT_EQ(view.accessibleName(), "Page");
    EXPECT_EQ(view.focusPolicy(), Qt::StrongFocus);
}

TEST_F(PDFViewTest, PagesStandOnGray) {
    show(numberedPages(2));
    EXPECT_EQ(colourAt({2, 2}).rgb(), view.palette().color(QPalette::Dark).rgb());
    EXPECT_EQ(colourAt(at(300, 780)), QColor(Qt::white));
}

/// For each rotation, on a page whose crop box is not at the origin.
class PDFViewRotationTest : public PDFViewTest, public testing::WithParamInterface<int> {
protected:
    void showTurned() {
        PdfBuilder pdf;
        pdf.addPage("1 0 0 rg 30 50 20 20 re f 0 0 1 rg 100 200 20 20 re f",
                    "/MediaBox [0 0 300 400] /CropBox [20 40 140 340] /Rotate " + std::to_string(GetParam()));
        show(pdf);
    }
};

TEST_P(PDFViewRotationTest, PictureAndPagePointsAgree) {
    showTurned();
    for (const double scale : {1.0, 0.9, 1.7}) {
        view.setScaleFactor(scale);
        view.verticalScrollBar()->setValue(scrollPosition() + at(40, 60).y() - 200);
        waitUntilRendered();
        for (const QPointF &inRed : {QPointF(33, 53), QPointF(47, 53), QPointF(33, 67)})
            EXPECT_EQ(colourAt(at(inRed.x(), inRed.y())), QColor(Qt::red)) << scale;
        if (view.viewport()->rect().contains(at(110, 210))) {
            EXPECT_EQ(colourAt(at(110, 210)), QColor(Qt::blue)) << scale;
        }
        EXPECT_EQ(colourAt(at(53, 53)), QColor(Qt::white)) << scale;
    }
}

TEST_P(PDFViewRotationTest, ConversionsGoThereAndBack) {
    showTurned();
    view.setScaleFactor(1.3);
    const QPointF point(47.5, 77.25);
    const QPointF back = view.convertPointToPage(view.convertPointFromPage(point, page(0)), page(0));
    EXPECT_NEAR(back.x(), point.x(), 1e-9);
    EXPECT_NEAR(back.y(), point.y(), 1e-9);
    const QRectF rect = view.convertRectFromPage({30, 50, 20, 10}, page(0));
    EXPECT_EQ(view.pageForPoint(rect.center(), false), &page(0));
    EXPECT_NEAR(rect.width() * rect.height(), 200 * 1.3 * 1.3, 1e-6);
}

/// Draws a green square where a subclass would draw on top of the page.
class CornerView final : public PDFView {
protected:
    void drawPage(QPainter &painter, const PDFPage &page) override {
        PDFView::drawPage(painter, page);
        painter.fillRect(QRectF(0, 0, 12, 12), QColor(Qt::green));
    }
};

TEST_P(PDFViewRotationTest, SubclassesDrawFromTheLowerLeftOfThePageAsShown) {
    showTurned();
    CornerView corners;
    corners.resize(500, 500);
    corners.setDocument(document.get());
    corners.show();
    const QRectF whole = corners.convertRectFromPage(page(0).cropBox(), page(0));
    EXPECT_EQ(colourOf(corners, whole.bottomLeft() + QPointF(3, -3)), QColor(Qt::green));
    EXPECT_EQ(colourOf(corners, whole.bottomLeft() + QPointF(10, -10)), QColor(Qt::green));
    EXPECT_NE(colourOf(corners, whole.bottomLeft() + QPointF(14, -3)), QColor(Qt::green));
    corners.setDocument(nullptr);
}

INSTANTIATE_TEST_SUITE_P(Rotations, PDFViewRotationTest, testing::Values(0, 90, 180, 270));

TEST_F(PDFViewTest, PageUnderAPoint) {
    show(smallPages(3));
    const QPointF inGap = at(50, 0) + QPointF(0, 2);
    EXPECT_EQ(view.pageForPoint(at(50, 60), false), &page(0));
    EXPECT_EQ(view.pageForPoint(inGap, false), nullptr);
    EXPECT_EQ(view.pageForPoint(inGap, true), &page(0));
    EXPECT_EQ(view.pageForPoint({1, 60}, false), nullptr) << "beside the page";
    EXPECT_EQ(view.pageForPoint({1, 60}, true), &page(0));
    EXPECT_EQ(view.pageForPoint({300, 399}, true), &page(2));
}

// Documents and images

TEST_F(PDFViewTest, AnotherDocumentStartsAtItsTop) {
    show(numberedPages(5));
    view.goToLastPage();
    PDFSelection selection;
    selection.add(page(4), {0, 4});
    view.setCurrentSelection(selection);
    QSignalSpy pages(&view, &PDFView::pageChanged);
    QSignalSpy documents(&view, &PDFView::documentChanged);
    const auto other = test::openPdf(numberedPages(2));
    view.setDocument(other.get());
    EXPECT_EQ(view.currentPage(), other->page(0));
    EXPECT_EQ(scrollPosition(), 0);
    EXPECT_FALSE(view.currentSelection());
    EXPECT_EQ(documents.count(), 1);
    EXPECT_EQ(pages.count(), 1);
    waitUntilRendered();
    view.setDocument(nullptr);
    EXPECT_EQ(view.currentPage(), nullptr);
    EXPECT_EQ(view.imageBytes(), 0);
    EXPECT_EQ(documents.count(), 2);
}

TEST_F(PDFViewTest, DocumentMayBeClosedWhileItIsDrawn) {
    PdfBuilder pdf;
    pdf.addPage(test::endlessContent());
    pdf.addNumberedPages(20);
    for (int i = 0; i < 5; ++i) {
        auto closed = test::openPdf(pdf);
        view.resize(600, 400);
        view.show();
        view.setDocument(closed.get());
        waitUntil([&] { return view.renderQueue().startedCount() > i; });
        view.setDocument(nullptr);
        closed.reset();
        picture();
    }
}

TEST_F(PDFViewTest, ViewMayGoWhileItsDocumentIsDrawn) {
    PdfBuilder pdf;
    pdf.addPage(test::endlessContent());
    document = test::openPdf(pdf);
    auto passing = std::make_unique<PDFView>();
    passing->resize(300, 300);
    passing->show();
    passing->setDocument(document.get());
    waitUntil([&] { return passing->renderQueue().startedCount() > 0; });
    passing.reset();
    EXPECT_EQ(document->pageCount(), 1);
}

TEST_F(PDFViewTest, ImagesStayWithinTheirBoundWhileScrolling) {
    show(numberedPages(300));
    view.setScaleFactor(2);
    const int step = view.verticalScrollBar()->maximum() / 150;
    qint64 most = 0;
    for (int i = 0; i <= 150; ++i) {
        view.verticalScrollBar()->setValue(i * step);
        waitUntilRendered();
        most = std::max(most, view.imageBytes());
        ASSERT_LE(view.imageBytes(), view.imageCapacity());
    }
    EXPECT_LE(view.imageCapacity(), 100 << 20);
    EXPECT_GT(most, view.imageCapacity() * 8 / 10) << "or the bound was never put to the test";
}

TEST_F(PDFViewTest, LargeScaleDrawsNoMoreThanCanBeSeen) {
    PdfBuilder pdf;
    pdf.addPage("1 0 0 rg 0 0 306 792 re f");
    show(pdf);
    view.setScaleFactor(30);
    waitUntilRendered();
    EXPECT_LE(view.imageBytes(), view.imageCapacity());
    view.goToDestination({0, {306, 400}});
    view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->maximum() / 2);
    waitUntilRendered();
    EXPECT_EQ(colourAt(at(304, 398)), QColor(Qt::red));
    EXPECT_EQ(colourAt(at(308, 398)), QColor(Qt::white));
}

TEST_F(PDFViewTest, OldImageStandsInUntilTheNewOneIsThere) {
    PdfBuilder pdf;
    pdf.addPage("1 0 0 rg 0 0 612 792 re f");
    show(pdf);
    view.setScaleFactor(1.5);
    EXPECT_FALSE(view.visiblePagesAreRendered());
    EXPECT_EQ(colourAt({300, 200}), QColor(Qt::red)) << "scaled from the old one";
}

TEST_F(PDFViewTest, PageIsWhiteUntilItIsDrawn) {
    PdfBuilder pdf;
    pdf.addPage("1 0 0 rg 0 0 612 792 re f");
    document = test::openPdf(pdf);
    view.resize(600, 400);
    view.show();
    view.setDocument(document.get());
    EXPECT_EQ(colourAt({300, 200}), QColor(Qt::white));
    waitUntilRendered();
    EXPECT_EQ(colourAt({300, 200}), QColor(Qt::red));
}

TEST_F(PDFViewTest, TellsWhenAllThatIsSeenIsDrawn) {
    show(numberedPages(5));
    QSignalSpy spy(&view, &PDFView::visiblePagesRendered);
    view.goToLastPage();
    EXPECT_FALSE(view.visiblePagesAreRendered());
    waitUntil([&] { return spy.count() == 1; });
    EXPECT_TRUE(view.visiblePagesAreRendered());
}

TEST_F(PDFViewTest, PagesOfAbsurdSizes) {
    PdfBuilder pdf;
    pdf.addPage({}, "/MediaBox [0 0 1000000000 1000000000]");
    pdf.addPage({}, "/MediaBox [0 0 0.0001 0.0001]");
    pdf.addNumberedPages(1);
    show(pdf);
    view.setScaleFactor(100);
    view.goToLastPage();
    waitUntilRendered();
    view.setAutoScales(true);
    waitUntilRendered();
    EXPECT_LE(view.imageBytes(), view.imageCapacity());
    picture();
}

TEST_F(PDFViewTest, SaysWhyThereAreNoPages) {
    document = test::openPdf(PdfBuilder());
    view.resize(640, 400);
    view.setDocument(document.get());
    ASSERT_EQ(view.currentPage(), nullptr);
    const QImage plain = view.viewport()->grab().toImage();
    view.setPlaceholderText("No page of this file can be read.");
    EXPECT_NE(view.viewport()->grab().toImage(), plain);
    EXPECT_EQ(view.accessibleDescription(), "No page of this file can be read.");
}

}  // namespace
}  // namespace leafwright
