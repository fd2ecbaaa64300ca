#include "app/layout/PrioritySplitViewDelegate.h"
#include "platform/Assertion.h"
#include "widgets/SplitView.h"

#include <QLabel>
#include <QMainWindow>
#include <QRegularExpression>
#include <QTest>

namespace leafwright {
namespace {

using Lengths = std::vector<double>;

/// The priorities and minimum lengths of the document window.
void setUpAsInWindow(PrioritySplitViewDelegate &delegate) {
    delegate.setPriority(3, 0);
    delegate.setPriority(1, 1);
    delegate.setPriority(2, 2);
    delegate.setMinimumLength(200, 0);
    delegate.setMinimumLength(400, 1);
    delegate.setMinimumLength(300, 2);
}

/// A delegate, called by the test, and a split view that is none of its own: it holds frames.
class DelegateAlone : public testing::Test {
protected:
    void SetUp() override {
        setUpAsInWindow(delegate);
        view.setDividerThickness(5);
    }
    /// Panes with these lengths that fill the view.
    void setLengths(const Lengths &lengths, double height = 100) {
        while (view.subviewCount() < static_cast<int>(lengths.size()))
            view.addSubview(new QLabel);
        double offset = 0;
        for (int i = 0; i < view.subviewCount(); ++i) {
            const double length = lengths[static_cast<size_t>(i)];
            view.setFrameSize(i, view.isVertical() ? QSizeF(length, height) : QSizeF(height, length));
            view.setFrameOrigin(i, view.isVertical() ? QPointF(offset, 0) : QPointF(0, offset));
            offset += length + view.dividerThickness();
        }
        const double whole = offset - view.dividerThickness();
        filled = view.isVertical() ? QSizeF(whole, height) : QSizeF(height, whole);
        view.resize(filled.toSize());
    }
    /// Changes the length of the view and lays out.
    void resizeBy(int delta) {
        const QSize by = view.isVertical() ? QSize(delta, 0) : QSize(0, delta);
        view.resize(filled.toSize() + by);
        delegate.resizeSubviewsWithOldSize(view, filled);
    }
    Lengths lengths() const {
        Lengths result;
        for (int i = 0; i < view.subviewCount(); ++i)
            result.push_back(view.lengthOfSubview(i));
        return result;
    }
    Lengths xs() const {
        Lengths result;
        for (int i = 0; i < view.subviewCount(); ++i)
            result.push_back(view.frameOfSubview(i).x());
        return result;
    }
    QString failureOf(int delta) {
        try {
            resizeBy(delta);
        } catch (const AssertionFailure &failure) {
            EXPECT_EQ(failure.sourceFile(), "PrioritySplitViewDelegate");
            EXPECT_EQ(failure.description(), QString::fromUtf8(failure.what()));
            return failure.description();
        }
        return {};
    }
    QString address() const { return QString::asprintf("%p", static_cast<const void *>(&view)); }
    QString tooFewValid() const {
        return "Number of valid views in priority list is less than the subview count of split view " +
               address() + ".";
    }

    PrioritySplitViewDelegate delegate;
    SplitView view;  ///< Never shown, so it never lays out by itself.
    QSizeF filled;
};

TEST_F(DelegateAlone, WideningGoesToTheLowestPriorityNumberOnly) {
    setLengths({200, 450, 300});
    resizeBy(100);
    EXPECT_EQ(lengths(), (Lengths{200, 550, 300}));
    EXPECT_EQ(xs(), (Lengths{0, 205, 760}));
    setLengths({700, 10, 20});
    resizeBy(100);
    EXPECT_EQ(lengths(), (Lengths{700, 110, 20}));
}

TEST_F(DelegateAlone, NarrowingPassesOnWhatAPaneCantGiveUp) {
    setLengths({250, 450, 420});
    resizeBy(-150);
    EXPECT_EQ(lengths(), (Lengths{250, 400, 320}));
    EXPECT_EQ(xs(), (Lengths{0, 255, 660}));
}

TEST_F(DelegateAlone, NarrowingReachesTheLastPriority) {
    setLengths({250, 450, 320});
    resizeBy(-110);
    EXPECT_EQ(lengths(), (Lengths{210, 400, 300}));
}

TEST_F(DelegateAlone, NarrowingToExactlyTheMinimumsIsAllowed) {
    setLengths({250, 450, 320});
    resizeBy(-120);
    EXPECT_EQ(lengths(), (Lengths{200, 400, 300}));
}

TEST_F(DelegateAlone, NarrowingBelowTheSumOfTheMinimumsRaises) {
    setLengths({250, 450, 320});
    EXPECT_EQ(failureOf(-121),
              "Split view " + address() + " resized smaller than minimum width of 910.000000");
}

TEST_F(DelegateAlone, LessThanHalfAPointTooSmallIsLetPass) {
    delegate.setMinimumLength(200.4, 0);
    setLengths({250, 450, 320});
    EXPECT_EQ(failureOf(-120), QString());
    delegate.setMinimumLength(200.5, 0);
    setLengths({250, 450, 320});
    EXPECT_FALSE(failureOf(-120).isNull());
}

TEST_F(DelegateAlone, PanesStayWhereTheyAreWhenTooSmall) {
    setLengths({250, 450, 320});
    view.setFrameOrigin(1, {7, 8});
    EXPECT_FALSE(failureOf(-200).isNull());
    EXPECT_EQ(xs()[1], 7);
}

TEST_F(DelegateAlone, APaneBelowItsMinimumGrowsToItWhileOthersShrink) {
    setLengths({250, 350, 420});
    resizeBy(-10);
    EXPECT_EQ(lengths(), (Lengths{250, 400, 360}));
}

TEST_F(DelegateAlone, APaneBelowItsMinimumKeepsItsLengthWhenNothingChanges) {
    setLengths({150, 350, 250});
    resizeBy(0);
    EXPECT_EQ(lengths(), (Lengths{150, 350, 250}));
}

TEST_F(DelegateAlone, APaneWithoutAMinimumMayShrinkToNothing) {
    PrioritySplitViewDelegate plain;
    plain.setPriority(1, 0);
    plain.setPriority(2, 1);
    setLengths({100, 100});
    view.resize(65, 100);
    plain.resizeSubviewsWithOldSize(view, filled);
    EXPECT_EQ(lengths(), (Lengths{0, 60}));
}

TEST_F(DelegateAlone, APaneWithoutAPriorityRaises) {
    delegate = {};
    delegate.setPriority(1, 0);
    delegate.setPriority(2, 2);
    setLengths({200, 400, 300});
    EXPECT_EQ(failureOf(10), tooFewValid());
}

TEST_F(DelegateAlone, TwoPanesOfOnePriorityRaise) {
    delegate = {};
    delegate.setPriority(3, 0);
    delegate.setPriority(1, 1);
    delegate.setPriority(1, 2);
    setLengths({200, 400, 300});
    EXPECT_EQ(failureOf(10), tooFewValid());
    // The later one is in the table.
    EXPECT_EQ(lengths(), (Lengths{200, 400, 310}));
}

TEST_F(DelegateAlone, AMissingPriorityIsFoundBeforeALackOfRoom) {
    delegate = {};
    delegate.setPriority(1, 0);
    delegate.setMinimumLength(200, 0);
    setLengths({200, 400, 300});
    EXPECT_EQ(failureOf(-500), tooFewValid());
}

TEST_F(DelegateAlone, PrioritiesOfPanesThatAreNotThereAreSkipped) {
    delegate.setPriority(0, 3);
    delegate.setPriority(-1, -1);
    setLengths({200, 400, 300});
    resizeBy(10);
    EXPECT_EQ(lengths(), (Lengths{200, 410, 300}));
}

TEST_F(DelegateAlone, PanesGetTheHeightOfTheView) {
    setLengths({200, 400, 300}, 100);
    view.resize(view.width(), 170);
    delegate.resizeSubviewsWithOldSize(view, filled);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(view.frameOfSubview(i).height(), 170);
}

TEST_F(DelegateAlone, PanesAboveOneAnotherGetTheirLengthsButArePlacedAlongX) {
    view.setVertical(false);
    setLengths({200, 450, 320}, 80);
    resizeBy(-60);
    EXPECT_EQ(lengths(), (Lengths{200, 400, 310}));
    EXPECT_EQ(xs(), (Lengths{0, 85, 170}));
    EXPECT_EQ(view.frameOfSubview(1).y(), 205);
    EXPECT_EQ(view.frameOfSubview(2).size(), QSizeF(80, 310));
}

TEST_F(DelegateAlone, TooLittleHeightIsToldWithTheWidth) {
    view.setVertical(false);
    setLengths({200, 400, 300}, 80);
    EXPECT_EQ(failureOf(-30),
              "Split view " + address() + " resized smaller than minimum height of 110.000000");
}

TEST_F(DelegateAlone, ADividerStopsAtTheMinimumsOfItsNeighbours) {
    setLengths({300, 500, 350});
    EXPECT_EQ(delegate.constrainMinCoordinate(view, 17, 0), 200);
    EXPECT_EQ(delegate.constrainMaxCoordinate(view, 17, 0), 300 + 500 - 400);
    EXPECT_EQ(delegate.constrainMinCoordinate(view, 17, 1), 305 + 400);
    EXPECT_EQ(delegate.constrainMaxCoordinate(view, 17, 1), 305 + 500 + 350 - 300);
}

TEST_F(DelegateAlone, DividersBetweenPanesAboveOneAnotherAreBoundAlongY) {
    view.setVertical(false);
    setLengths({300, 500, 350});
    EXPECT_EQ(delegate.constrainMinCoordinate(view, 17, 1), 305 + 400);
    EXPECT_EQ(delegate.constrainMaxCoordinate(view, 17, 1), 305 + 500 + 350 - 300);
}

TEST_F(DelegateAlone, TheLeastLengthCountsMinimumsAndDividers) {
    setLengths({300, 500, 350});
    EXPECT_EQ(delegate.minimumLength(view), 910);
}

/// Three panes in a window.
class DelegateInWindow : public testing::Test {
protected:
    void SetUp() override {
        setUpAsInWindow(delegate);
        view = new SplitView;
        view->setDividerThickness(5);
        for (int i = 0; i < 3; ++i)
            view->addSubview(new QLabel("pane"));
        view->setDelegate(&delegate);
        window.setCentralWidget(view);
        window.resize(1200, 400);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        view->setPositionOfDividerAtIndex(800, 1);
        view->setPositionOfDividerAtIndex(250, 0);
    }
    Lengths widths() const {
        Lengths result;
        for (const QWidget *pane : view->subviews())
            result.push_back(pane->width());
        return result;
    }
    void resizeTo(int width) {
        window.resize(width, 400);
        ASSERT_TRUE(QTest::qWaitFor([&] { return view->width() == width; }));
    }

    PrioritySplitViewDelegate delegate;
    QMainWindow window;
    SplitView *view = nullptr;
};

TEST_F(DelegateInWindow, ResizingTheWindowFollowsThePriorities) {
    ASSERT_EQ(widths(), (Lengths{250, 545, 395}));
    resizeTo(1300);
    EXPECT_EQ(widths(), (Lengths{250, 645, 395}));
    resizeTo(1000);
    EXPECT_EQ(widths(), (Lengths{250, 400, 340}));
    resizeTo(930);
    EXPECT_EQ(widths(), (Lengths{220, 400, 300}));
    resizeTo(1000);
    EXPECT_EQ(widths(), (Lengths{220, 470, 300}));
}

TEST_F(DelegateInWindow, DividersStopAtTheMinimums) {
    view->setPositionOfDividerAtIndex(0, 0);
    EXPECT_EQ(widths(), (Lengths{200, 595, 395}));
    view->setPositionOfDividerAtIndex(1200, 0);
    EXPECT_EQ(widths(), (Lengths{395, 400, 395}));
    view->setPositionOfDividerAtIndex(1200, 1);
    EXPECT_EQ(widths(), (Lengths{395, 495, 300}));
}

TEST_F(DelegateInWindow, TheWindowDoesNotBecomeTooSmall) {
    window.resize(300, 100);
    EXPECT_EQ(window.minimumSizeHint().width(), 910);
    ASSERT_TRUE(QTest::qWaitFor([&] { return view->width() == 910; }));
    EXPECT_EQ(widths(), (Lengths{200, 400, 300}));
}

TEST_F(DelegateInWindow, AViewForcedBelowTheMinimumsRecovers) {
    window.takeCentralWidget();
    view->show();
    const Lengths before = widths();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("resized smaller than minimum width of 910\\.0"));
    view->resize(700, 400);
    EXPECT_EQ(widths(), before);
    view->resize(1300, 400);
    EXPECT_EQ(widths(), (Lengths{250, 645, 395}));
    delete view;
}

TEST_F(DelegateInWindow, APaneWithoutAPriorityIsLoggedAndNothingMoves) {
    const Lengths before = widths();
    delegate = {};
    delegate.setPriority(1, 1);
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression("Number of valid views in priority list is less than"));
    resizeTo(1300);
    EXPECT_EQ(widths(), before);
}

}  // namespace
}  // namespace leafwright
