#include "platform/Assertion.h"
#include "widgets/SplitView.h"

#include <QLabel>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

namespace leafwright {
namespace {

/// Keeps dividers within bounds and lays out in proportion, or raises.
class FakeDelegate : public SplitViewDelegate {
public:
    double constrainMinCoordinate(const SplitView & /*view*/, double proposed, int divider) override {
        if (raises) failAssertion("no least");
        proposedLeast = proposed;
        return divider == 0 ? 50 : proposed;
    }
    double constrainMaxCoordinate(const SplitView & /*view*/, double proposed, int divider) override {
        proposedGreatest = proposed;
        return divider == 0 ? 120 : proposed;
    }
    void resizeSubviewsWithOldSize(SplitView &view, const QSizeF &oldSize) override {
        oldSizes.append(oldSize);
        if (raises) {
            view.setFrameSize(0, {1, 1});
            failAssertion("panes are too small");
        }
        view.adjustSubviews();
    }
    double minimumLength(const SplitView & /*view*/) const override { return 99.5; }

    bool raises = false;
    double proposedLeast = -1;
    double proposedGreatest = -1;
    QList<QSizeF> oldSizes;
};

class SplitViewTest : public testing::Test {
protected:
    void SetUp() override {
        view.setDividerThickness(5);
        view.resize(310, 40);
        for (QLabel *&pane : panes)
            view.addSubview(pane = new QLabel("pane"));
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    }
    std::vector<QRect> geometries() const {
        std::vector<QRect> result;
        for (const QWidget *pane : view.subviews())
            result.push_back(pane->geometry());
        return result;
    }
    void drag(int divider, int by) {
        QWidget *handle = view.dividerAtIndex(divider);
        const QPoint start = handle->rect().center();
        const QPoint step = view.isVertical() ? QPoint(by, 0) : QPoint(0, by);
        const QPoint target = handle->mapTo(&view, start) + step;
        QTest::mousePress(handle, Qt::LeftButton, {}, start);
        QMouseEvent move(QEvent::MouseMove, handle->mapFrom(&view, target), view.mapToGlobal(target),
                         Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(handle, &move);
        QTest::mouseRelease(handle, Qt::LeftButton);
    }

    SplitView view;
    std::array<QLabel *, 3> panes{};
};

TEST_F(SplitViewTest, PanesStandSideBySideWithGapsBetween) {
    EXPECT_TRUE(view.isVertical());
    EXPECT_EQ(view.subviewCount(), 3);
    EXPECT_EQ(geometries(),
              (std::vector{QRect(0, 0, 100, 40), QRect(105, 0, 100, 40), QRect(210, 0, 100, 40)}));
    EXPECT_EQ(view.dividerAtIndex(0)->geometry(), QRect(100, 0, 5, 40));
    EXPECT_EQ(view.dividerAtIndex(1)->geometry(), QRect(205, 0, 5, 40));
}

TEST_F(SplitViewTest, PanesCanStandOneAboveTheOther) {
    view.setVertical(false);
    view.resize(40, 310);
    EXPECT_EQ(geometries(),
              (std::vector{QRect(0, 0, 40, 100), QRect(0, 105, 40, 100), QRect(0, 210, 40, 100)}));
    drag(1, -20);
    EXPECT_EQ(view.positionOfDividerAtIndex(1), 185);
}

TEST_F(SplitViewTest, WithoutADelegateSizesChangeInProportion) {
    view.setPositionOfDividerAtIndex(150, 0);
    view.resize(610, 50);
    EXPECT_EQ(geometries(),
              (std::vector{QRect(0, 0, 300, 50), QRect(305, 0, 100, 50), QRect(410, 0, 200, 50)}));
}

TEST_F(SplitViewTest, PanesOfNoLengthComeBack) {
    view.resize(0, 0);
    view.resize(310, 40);
    EXPECT_EQ(geometries(),
              (std::vector{QRect(0, 0, 100, 40), QRect(105, 0, 100, 40), QRect(210, 0, 100, 40)}));
}

TEST_F(SplitViewTest, ADividerMovesBetweenItsTwoPanesOnly) {
    const QSignalSpy resized(&view, &SplitView::subviewsResized);
    view.setPositionOfDividerAtIndex(150, 1);
    EXPECT_EQ(geometries(),
              (std::vector{QRect(0, 0, 100, 40), QRect(105, 0, 45, 40), QRect(155, 0, 155, 40)}));
    view.setPositionOfDividerAtIndex(1000, 1);
    EXPECT_EQ(view.positionOfDividerAtIndex(1), 305);
    view.setPositionOfDividerAtIndex(-1000, 1);
    EXPECT_EQ(view.positionOfDividerAtIndex(1), 105);
    EXPECT_EQ(resized.count(), 3);
}

TEST_F(SplitViewTest, DividersThatAreNoneDoNothing) {
    const auto before = geometries();
    for (const int index : {-1, 2, 100})
        view.setPositionOfDividerAtIndex(150, index);
    view.setPositionOfDividerAtIndex(std::nan(""), 0);
    EXPECT_EQ(geometries(), before);
}

TEST_F(SplitViewTest, TheDelegateBoundsADivider) {
    FakeDelegate delegate;
    view.setDelegate(&delegate);
    view.setPositionOfDividerAtIndex(10, 0);
    EXPECT_EQ(view.positionOfDividerAtIndex(0), 50);
    EXPECT_EQ(delegate.proposedLeast, 0);
    EXPECT_EQ(delegate.proposedGreatest, 200);
    view.setPositionOfDividerAtIndex(180, 0);
    EXPECT_EQ(view.positionOfDividerAtIndex(0), 120);
    EXPECT_EQ(view.rangeOfDividerAtIndex(0), std::pair(50.0, 120.0));
    view.setDelegate(nullptr);
}

TEST_F(SplitViewTest, TheMouseMovesADivider) {
    drag(0, 30);
    EXPECT_EQ(view.positionOfDividerAtIndex(0), 130);
    drag(0, -200);
    EXPECT_EQ(view.positionOfDividerAtIndex(0), 0);
}

TEST_F(SplitViewTest, ADoubleClickMovesNothing) {
    const auto before = geometries();
    QTest::mouseDClick(view.dividerAtIndex(0), Qt::LeftButton);
    EXPECT_EQ(geometries(), before);
}

TEST_F(SplitViewTest, TheKeyboardMovesADivider) {
    QWidget *divider = view.dividerAtIndex(0);
    EXPECT_EQ(divider->focusPolicy(), Qt::TabFocus);
    QTest::keyClick(divider, Qt::Key_Right);
    EXPECT_EQ(view.positionOfDividerAtIndex(0), 110);
    QTest::keyClick(divider, Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(view.positionOfDividerAtIndex(0), 109);
    QTest::keyClick(divider, Qt::Key_Up);
    EXPECT_EQ(view.positionOfDividerAtIndex(0), 109);
    QTest::keyClick(divider, Qt::Key_Home);
    EXPECT_EQ(view.positionOfDividerAtIndex(0), 0);
    QTest::keyClick(divider, Qt::Key_End);
    EXPECT_EQ(view.positionOfDividerAtIndex(0), 200);
}

TEST_F(SplitViewTest, DividersHaveAccessibleNames) {
    EXPECT_EQ(view.dividerAtIndex(1)->accessibleName(), "Divider 2");
    panes[0]->setAccessibleName("Pages");
    panes[1]->setAccessibleName("Page");
    view.setPositionOfDividerAtIndex(110, 0);
    EXPECT_EQ(view.dividerAtIndex(0)->accessibleName(), "Divider between Pages and Page");
}

TEST_F(SplitViewTest, FractionsAreKeptWhileWidgetsAreWhole) {
    view.setPositionOfDividerAtIndex(100.4, 0);
    EXPECT_EQ(view.lengthOfSubview(0), 100.4);
    EXPECT_EQ(panes[0]->width(), 100);
    EXPECT_EQ(panes[1]->geometry(), QRect(105, 0, 100, 40));
    view.setPositionOfDividerAtIndex(100.5, 0);
    EXPECT_EQ(panes[0]->width(), 101);
    EXPECT_EQ(panes[1]->x(), 106);
    EXPECT_EQ(panes[1]->geometry().right(), 204);
}

TEST_F(SplitViewTest, APaneThatGoesLeavesItsRoom) {
    delete panes[1];
    EXPECT_EQ(view.subviews(), (QList<QWidget *>{panes[0], panes[2]}));
    EXPECT_EQ(geometries(), (std::vector{QRect(0, 0, 152, 40), QRect(157, 0, 153, 40)}));
    delete panes[0];
    delete panes[2];
    EXPECT_EQ(view.subviewCount(), 0);
    view.resize(100, 100);
}

TEST_F(SplitViewTest, ADelegateThatRaisesIsLoggedAndLeavesPanesAsTheyAre) {
    FakeDelegate delegate;
    delegate.raises = true;
    view.setDelegate(&delegate);
    const auto before = geometries();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("panes are too small"));
    view.resize(200, 40);
    EXPECT_EQ(geometries(), before);
    EXPECT_EQ(view.frameOfSubview(0), QRectF(0, 0, 100, 40));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("no least"));
    view.setPositionOfDividerAtIndex(60, 0);
    EXPECT_EQ(geometries(), before);

    // What comes next starts from the size that the panes fill.
    delegate.raises = false;
    view.resize(250, 40);
    EXPECT_EQ(delegate.oldSizes, (QList<QSizeF>{{310, 40}, {310, 40}}));
    EXPECT_EQ(view.frameOfSubview(2).right(), 250);
    view.setDelegate(nullptr);
}

TEST_F(SplitViewTest, TheDelegateTellsTheLeastSize) {
    FakeDelegate delegate;
    view.setDelegate(&delegate);
    EXPECT_EQ(view.minimumSizeHint(), QSize(100, 0));
    view.setVertical(false);
    EXPECT_EQ(view.minimumSizeHint(), QSize(0, 100));
    view.setDelegate(nullptr);
}

}  // namespace
}  // namespace leafwright
