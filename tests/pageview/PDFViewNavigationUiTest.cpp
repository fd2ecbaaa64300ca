#include "pageview/PDFViewFixture.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

namespace leafwright {
namespace {

using test::numberedPages;
using test::PdfBuilder;
using test::smallPages;

class PDFViewNavigationTest : public test::PDFViewFixture {};

// Going places

TEST_F(PDFViewNavigationTest, PagingStaysAtTheEnds) {
    show(numberedPages(3));
    EXPECT_EQ(currentIndex(), 0);
    const int top = scrollPosition();
    view.goToPreviousPage();
    EXPECT_EQ(currentIndex(), 0);
    EXPECT_EQ(scrollPosition(), top);
    EXPECT_FALSE(view.canGoToPreviousPage());
    view.goToLastPage();
    EXPECT_EQ(currentIndex(), 2);
    const int bottom = scrollPosition();
    EXPECT_FALSE(view.canGoToNextPage());
    view.goToNextPage();
    EXPECT_EQ(currentIndex(), 2);
    EXPECT_EQ(scrollPosition(), bottom);
}

TEST_F(PDFViewNavigationTest, PagingReachesEveryPageAlsoWhereManyAreInSight) {
    show(smallPages(6));
    std::vector<int> visited{currentIndex()};
    while (view.canGoToNextPage()) {
        view.goToNextPage();
        visited.push_back(currentIndex());
    }
    while (view.canGoToPreviousPage()) {
        view.goToPreviousPage();
        visited.push_back(currentIndex());
    }
    EXPECT_EQ(visited, (std::vector<int>{1, 2, 3, 4, 5, 4, 3, 2, 1, 0}));
}

TEST_F(PDFViewNavigationTest, BackLeadsToWhatJumpsLeftAndForwardThereAgain) {
    show(numberedPages(9));
    QSignalSpy changes(&view, &PDFView::historyChanged);
    EXPECT_FALSE(view.canGoBack());
    view.verticalScrollBar()->setValue(300);
    view.goToPage(&page(4));
    const int onFour = scrollPosition();
    view.goToDestination({7, {72, 400}});
    EXPECT_EQ(changes.count(), 2);
    EXPECT_FALSE(view.canGoForward());
    view.goBack();
    EXPECT_EQ(scrollPosition(), onFour);
    EXPECT_EQ(currentIndex(), 4);
    EXPECT_TRUE(view.canGoForward());
    view.goBack();
    EXPECT_EQ(scrollPosition(), 300);
    EXPECT_FALSE(view.canGoBack());
    view.goBack();
    EXPECT_EQ(scrollPosition(), 300);
    view.goForward();
    EXPECT_EQ(scrollPosition(), onFour);
    view.goToPage(&page(1));
    EXPECT_FALSE(view.canGoForward()) << "another way was taken";
    view.goBack();
    EXPECT_EQ(scrollPosition(), onFour);
}

TEST_F(PDFViewNavigationTest, StepsAndSmallMovesLeaveNoPlaceBehind) {
    show(numberedPages(9));
    view.goToNextPage();
    view.goToNextPage();
    view.goToPreviousPage();
    view.goToPage(&page(1));
    view.goToPage(nullptr);
    view.goToDestination({99, {}});
    EXPECT_FALSE(view.canGoBack());
}

TEST_F(PDFViewNavigationTest, APlaceThatWasLeftIsFoundAtAnotherScale) {
    show(numberedPages(9));
    view.goToDestination({3, {72, 500}});
    view.goToPage(&page(8));
    view.setScaleFactor(2);
    view.goBack();
    EXPECT_NEAR(view.convertPointToPage({0, 0}, page(3)).y(), 500, 1);
}

TEST_F(PDFViewNavigationTest, AnotherDocumentHasNoPlacesToGoBackTo) {
    show(numberedPages(9));
    view.goToLastPage();
    ASSERT_TRUE(view.canGoBack());
    show(numberedPages(3));
    EXPECT_FALSE(view.canGoBack());
    view.setDocument(nullptr);
    view.goBack();
    view.goForward();
}

TEST_F(PDFViewNavigationTest, OnlySoManyPlacesAreKept) {
    show(numberedPages(9));
    for (int i = 0; i < 300; ++i)
        view.goToPage(&page(i % 2 == 0 ? 8 : 0));
    int back = 0;
    for (; view.canGoBack(); ++back)
        view.goBack();
    EXPECT_EQ(back, 100);
}

TEST_F(PDFViewNavigationTest, KeysAndButtonsLeadBackAndForward) {
    show(numberedPages(9));
    view.goToLastPage();
    const int last = scrollPosition();
    const auto press = [&](QEvent::Type type, Qt::MouseButton button) {
        QMouseEvent event(type, {100, 100}, view.viewport()->mapToGlobal(QPoint(100, 100)), button, button,
                          {});
        QApplication::sendEvent(view.viewport(), &event);
    };
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(scrollPosition(), 0);
    key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(scrollPosition(), last);
    key(Qt::Key_Back);
    EXPECT_EQ(scrollPosition(), 0);
    key(Qt::Key_Forward);
    EXPECT_EQ(scrollPosition(), last);
    press(QEvent::MouseButtonPress, Qt::BackButton);
    EXPECT_EQ(scrollPosition(), 0);
    press(QEvent::MouseButtonDblClick, Qt::ForwardButton);
    EXPECT_EQ(scrollPosition(), last);
    QKeyEvent claim(QEvent::ShortcutOverride, Qt::Key_Left, Qt::AltModifier);
    claim.ignore();
    QApplication::sendEvent(&view, &claim);
    EXPECT_TRUE(claim.isAccepted()) << "whatever the key does elsewhere";
    QKeyEvent other(QEvent::ShortcutOverride, Qt::Key_Up, Qt::AltModifier);
    other.ignore();
    QApplication::sendEvent(&view, &other);
    EXPECT_FALSE(other.isAccepted());
}

TEST_F(PDFViewNavigationTest, CurrentPageIsInTheMiddleAfterScrolling) {
    show(numberedPages(3));
    QSignalSpy changes(&view, &PDFView::pageChanged);
    view.verticalScrollBar()->setValue(792 - 100);
    EXPECT_EQ(currentIndex(), 1);
    EXPECT_EQ(changes.count(), 1);
    view.verticalScrollBar()->setValue(792);
    EXPECT_EQ(changes.count(), 1);
    view.goToPage(&page(0));
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(currentIndex(), 0);
}

TEST_F(PDFViewNavigationTest, DestinationIsAtTheTopOfTheView) {
    show(numberedPages(5));
    view.goToDestination({2, {72, 500}});
    EXPECT_NEAR(at(72, 500, 2).y(), 0, 1);
    EXPECT_EQ(currentIndex(), 2);
}

TEST_F(PDFViewNavigationTest, DestinationAtThePagesEndLeavesThatPageCurrent) {
    show(numberedPages(5));
    view.goToDestination({2, {72, 10}});
    EXPECT_NEAR(at(72, 10, 2).y(), 0, 1);
    EXPECT_EQ(currentIndex(), 2) << "although most of the view shows the next";
    view.verticalScrollBar()->setValue(scrollPosition() + 1);
    EXPECT_EQ(currentIndex(), 3);
}

TEST_F(PDFViewNavigationTest, ZeroPointIsTheTopOfThePage) {
    show(numberedPages(5));
    view.goToDestination({3, {0, 0}});
    EXPECT_NEAR(at(0, 792, 3).y(), PageLayout::gap, 1);
    const int there = scrollPosition();
    view.goToFirstPage();
    view.goToPage(&page(3));
    EXPECT_EQ(scrollPosition(), there);
}

TEST_F(PDFViewNavigationTest, DestinationOffTheDocumentDoesNothing) {
    show(numberedPages(2));
    view.goToLastPage();
    const int there = scrollPosition();
    view.goToDestination({2, {0, 0}});
    view.goToDestination({-1, {0, 0}});
    EXPECT_EQ(scrollPosition(), there);
}

TEST_F(PDFViewNavigationTest, DestinationOffThePageIsTheNearestPointOnIt) {
    show(numberedPages(5));
    view.goToDestination({2, {-1e30, 1e30}});
    EXPECT_NEAR(at(0, 792, 2).y(), PageLayout::gap, 1);
    view.goToDestination({2, {1e30, -1e30}});
    EXPECT_NEAR(at(0, 0, 2).y(), 0, 1);
    EXPECT_EQ(currentIndex(), 2);
}

TEST_F(PDFViewNavigationTest, PageOfAnotherDocumentDoesNothing) {
    show(numberedPages(3));
    const auto other = test::openPdf(numberedPages(3));
    view.goToPage(other->page(2));
    EXPECT_EQ(currentIndex(), 0);
}

TEST_F(PDFViewNavigationTest, DestinationOutOfSightSidewaysIsScrolledTo) {
    show(numberedPages(2));
    view.setScaleFactor(4);
    view.horizontalScrollBar()->setValue(0);
    view.goToDestination({0, {500, 700}});
    EXPECT_TRUE(view.viewport()->rect().contains(at(500, 699)));
}

// Scale

TEST_F(PDFViewNavigationTest, ScaleKeepsTheMiddleOfTheView) {
    show(numberedPages(5));
    view.verticalScrollBar()->setValue(1000);
    const QPointF middle(320, 200);
    const PDFPage *const there = view.pageForPoint(middle, true);
    const QPointF before = view.convertPointToPage(middle, *there);
    QSignalSpy changes(&view, &PDFView::scaleChanged);
    view.setScaleFactor(2.5);
    EXPECT_EQ(view.scaleFactor(), 2.5);
    EXPECT_EQ(changes.count(), 1);
    const QPointF after = view.convertPointToPage(middle, *there);
    EXPECT_NEAR(after.x(), before.x(), 1);
    EXPECT_NEAR(after.y(), before.y(), 1);
    view.setScaleFactor(2.5);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(PDFViewNavigationTest, ScaleFollowsTheWidthUntilOneIsSet) {
    show(numberedPages(2));
    view.setAutoScales(true);
    EXPECT_NEAR(view.scaleFactor(), (640 - 2.0 * PageLayout::gap) / 612, 1e-9);
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), 0);
    view.resize(view.width() + 300, view.height());
    EXPECT_NEAR(view.scaleFactor(), (940 - 2.0 * PageLayout::gap) / 612, 1e-9);
    view.zoomIn();
    EXPECT_FALSE(view.autoScales());
    const double zoomed = view.scaleFactor();
    view.resize(view.width() - 300, view.height());
    EXPECT_EQ(view.scaleFactor(), zoomed);
    view.zoomToFit();
    EXPECT_TRUE(view.autoScales());
    EXPECT_NEAR(view.scaleFactor(), (640 - 2.0 * PageLayout::gap) / 612, 1e-9);
}

TEST_F(PDFViewNavigationTest, ZoomingInAndOutCancelOut) {
    show(numberedPages(2));
    view.zoomIn();
    EXPECT_GT(view.scaleFactor(), 1);
    view.zoomOut();
    EXPECT_DOUBLE_EQ(view.scaleFactor(), 1);
}

TEST_F(PDFViewNavigationTest, WheelWithControlZoomsAboutThePointer) {
    show(numberedPages(5));
    view.setScaleFactor(2);
    view.verticalScrollBar()->setValue(3000);
    view.horizontalScrollBar()->setValue(200);
    const QPointF pointer(450, 120);
    const PDFPage *const there = view.pageForPoint(pointer, true);
    const QPointF before = view.convertPointToPage(pointer, *there);
    QWheelEvent wheel(pointer, view.viewport()->mapToGlobal(pointer), {}, {0, 120}, {}, Qt::ControlModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.viewport(), &wheel);
    EXPECT_GT(view.scaleFactor(), 2.1);
    EXPECT_NEAR(view.convertPointToPage(pointer, *there).x(), before.x(), 1);
    EXPECT_NEAR(view.convertPointToPage(pointer, *there).y(), before.y(), 1);
}

TEST_F(PDFViewNavigationTest, WheelAloneScrolls) {
    show(numberedPages(5));
    QWheelEvent wheel({50, 50}, {50, 50}, {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.viewport(), &wheel);
    EXPECT_GT(scrollPosition(), 0);
    EXPECT_EQ(view.scaleFactor(), 1);
}

// Keys

TEST_F(PDFViewNavigationTest, KeysPage) {
    show(numberedPages(4));
    key(Qt::Key_Space);
    const int first = scrollPosition();
    EXPECT_EQ(first, 400);
    key(Qt::Key_PageDown);
    EXPECT_EQ(scrollPosition(), 2 * first);
    key(Qt::Key_PageUp);
    key(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(scrollPosition(), 0);
    key(Qt::Key_Down);
    EXPECT_GT(scrollPosition(), 0);
    key(Qt::Key_Up);
    EXPECT_EQ(scrollPosition(), 0);
    key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(scrollPosition(), view.verticalScrollBar()->maximum());
    EXPECT_EQ(currentIndex(), 3);
    key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(scrollPosition(), 0);
}

TEST_F(PDFViewNavigationTest, HomeAndEndStayOnThePage) {
    show(numberedPages(4));
    view.goToPage(&page(1));
    const int top = scrollPosition();
    key(Qt::Key_End);
    EXPECT_EQ(scrollPosition(), top + 792 + 2 * PageLayout::gap - 400);
    EXPECT_EQ(currentIndex(), 1);
    key(Qt::Key_Home);
    EXPECT_EQ(scrollPosition(), top);
}

TEST_F(PDFViewNavigationTest, ArrowsTurnPagesWhereTheyCannotScroll) {
    show(smallPages(9));
    view.goToPage(&page(0));
    key(Qt::Key_Right);
    EXPECT_EQ(currentIndex(), 1);
    key(Qt::Key_Left);
    EXPECT_EQ(currentIndex(), 0);
    view.setScaleFactor(10);
    view.goToPage(&page(0));
    view.horizontalScrollBar()->setValue(0);
    key(Qt::Key_Right);
    EXPECT_EQ(currentIndex(), 0);
    EXPECT_GT(view.horizontalScrollBar()->value(), 0);
}

TEST_F(PDFViewNavigationTest, TheWholePageFits) {
    show(numberedPages(5));
    view.setAutoScales(true);
    view.goToPage(&page(2));
    view.zoomToPage();
    EXPECT_FALSE(view.autoScales());
    EXPECT_NEAR(view.scaleFactor(), (400 - 16) / 792.0, 0.001);
    EXPECT_EQ(currentIndex(), 2);
    const QRectF shown = view.convertRectFromPage(page(2).cropBox(), page(2));
    EXPECT_TRUE(QRectF(view.viewport()->rect()).contains(shown));
    view.zoomToActualSize();
    EXPECT_EQ(view.scaleFactor(), 1);
    view.setDocument(nullptr);
    view.zoomToPage();
}

}  // namespace
}  // namespace leafwright
