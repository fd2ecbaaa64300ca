#include "e2e/Hand.h"
#include "support/TreeWindowFixture.h"

#include <QDrag>
#include <QDragMoveEvent>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::Hand;
using test::onScreen;
using test::PdfBuilder;

/// Notes how drags move over a view.
class DragWatch : public QObject {
public:
    explicit DragWatch(OutlineView &view) : viewport_(view.viewport()) {
        viewport_->installEventFilter(this);
    }

    /// Whether the drag was last seen at this place of the view, and is allowed there or not.
    bool isAt(const QPoint &position, bool allowed) const {
        return position == position_ && allowed == allowed_;
    }
    int drops() const { return drops_; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        const bool moves = event->type() == QEvent::DragMove;
        if (!moves && event->type() != QEvent::Drop) return false;
        // The view answers first; what it answers is what counts.
        viewport_->removeEventFilter(this);
        QCoreApplication::sendEvent(watched, event);
        viewport_->installEventFilter(this);
        const auto &drag = *static_cast<QDropEvent *>(event);
        position_ = drag.position().toPoint();
        allowed_ = drag.isAccepted();
        if (!moves) ++drops_;
        return true;
    }

private:
    QWidget *viewport_;
    QPoint position_;
    bool allowed_ = false;
    int drops_ = 0;
};

class Dragging : public test::TreeWindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addPage(PdfBuilder::showText("F1", 24, 72, 700, "one") +
                    PdfBuilder::showText("F1", 24, 72, 660, "two") +
                    PdfBuilder::showText("F1", 24, 72, 620, "three"));
        open(pdf);
        setOutline("a (x (1) y) b c");
        place(document, 0);
    }

    /// Windows stand side by side; nobody manages them.
    static void place(MyDocument &which, int x) {
        which.window()->setGeometry(x, 0, 1050, 900);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(which.window()));
    }

    OutlineView &view() { return *document.outlineview(); }
    /// Where the title of a row begins, that is the row's text, in the viewport.
    QPoint middle(const IndexPath &path) { return rectOf(path).center(); }
    QPoint upperEdge(const IndexPath &path) { return {rectOf(path).center().x(), rectOf(path).top() + 1}; }
    QRect rectOf(const IndexPath &path) {
        return view().visualRect(document.treecontroller().indexForNode(*node(path)));
    }
    QPoint belowAll() { return {rectOf({0}).center().x(), view().viewport()->height() - 20}; }
    /// A point of the page, on the screen.
    QPoint spotOnScreen(const QPointF &point) {
        LabelPDFView &pages = *document.pdfview();
        const QPointF position = pages.convertPointFromPage(point, *document.pdfDoc()->page(0));
        EXPECT_TRUE(pages.viewport()->rect().contains(position.toPoint()));
        return onScreen(*pages.viewport(), position.toPoint());
    }

    // Steps of a script

    /// Takes hold of a row, and moves until the drag has begun.
    static void pickUp(OutlineView &from, const QPoint &position) {
        QPoint start;
        Hand::onMain([&] { start = onScreen(*from.viewport(), position); });
        Hand::moveTo(start);
        Hand::press();
        pull(from, start);
    }
    /// Moves with the button held until a drag out of something has begun.
    static void pull(const QObject &source, const QPoint &start) {
        int distance = 0;
        Hand::waitFor(
            "a drag to begin", [&] { return source.findChild<QDrag *>() != nullptr; },
            [&] {
                constexpr int step = 6;
                constexpr int farthest = 60;
                distance = (distance + step) % farthest;
                Hand::moveTo(start + QPoint(distance, 0));
            });
    }
    /// Carries what is dragged to a place of a view, and lets go of it when the view has said what it thinks.
    static void carryTo(OutlineView &target, const QPoint &position, const QObject &source, bool allowed) {
        std::unique_ptr<DragWatch> watch;
        QPoint place;
        Hand::onMain([&] {
            watch = std::make_unique<DragWatch>(target);
            place = onScreen(*target.viewport(), position);
        });
        Hand::waitFor(
            "the view to answer", [&] { return watch->isAt(position, allowed); },
            [&] {
                Hand::moveTo(place + QPoint(2, 0));
                Hand::moveTo(place);
            });
        Hand::release();
        Hand::waitFor("the drag to end", [&] { return !source.findChild<QDrag *>(); });
        Hand::onMain([&] {
            EXPECT_EQ(watch->drops(), allowed ? 1 : 0);
            watch.reset();
        });
    }
    void dragRow(const IndexPath &path, const QPoint &position, bool allowed = true) {
        select({path});
        const QPoint from = middle(path);
        Hand::act([&] {
            pickUp(view(), from);
            carryTo(view(), position, view(), allowed);
        });
    }
    /// Double-clicks a spot of the page, holds the button, and drags.
    void dragSpot(const QPoint &position) {
        LabelPDFView &pages = *document.pdfview();
        const QPoint spot = spotOnScreen({300, 500});
        Hand::act([&] {
            Hand::moveTo(spot);
            Hand::waitFor(
                "the target icon", [&] { return pages.findChild<QDrag *>() != nullptr; },
                [] {
                    // On a slow machine two clicks may be too far apart to be one double click.
                    Hand::release();
                    Hand::pressTwice();
                });
            carryTo(view(), position, pages, true);
        });
    }

    const QPointF spotPoint{300, 500};
};

TEST_F(Dragging, AnItemToAnotherPlaceAmongItsSiblings) {
    dragRow({2}, upperEdge({1}));
    EXPECT_EQ(outline(), "a (x (1) y) c b");
    EXPECT_EQ(selected(), "c");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Dragging, AnItemOntoAnother) {
    dragRow({2}, middle({0}));
    EXPECT_EQ(outline(), "a (c x (1) y) b");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Dragging, AnItemToTheEndOfTheTopLevel) {
    dragRow({0, 0}, belowAll());
    EXPECT_EQ(outline(), "a (y) b c x (1)");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Dragging, AnItemIntoWhatIsBelowItIsRefused) {
    dragRow({0}, middle({0, 0, 0}), false);
    EXPECT_EQ(outline(), "a (x (1) y) b c");
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Dragging, SelectedItemsBesideOneOfThem) {
    select({{0, 1}, {1}});
    const QPoint from = middle({1});
    const QPoint target = upperEdge({1});
    Hand::act([&] {
        pickUp(view(), from);
        carryTo(view(), target, view(), true);
    });
    EXPECT_EQ(outline(), "a (x (1)) y b c");
    EXPECT_EQ(selected(), "y b");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Dragging, AnItemOntoItselfIsRefused) {
    dragRow({1}, middle({1}), false);
    EXPECT_EQ(outline(), "a (x (1) y) b c");
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Dragging, ASpotOfThePageOntoAnItem) {
    dragSpot(middle({1}));
    EXPECT_EQ(outline(), "a (x (1) y) b c");
    const MyOutlineItem &item = *node({1})->representedObject();
    EXPECT_EQ(item.pageLabel(), "1");
    EXPECT_NEAR(item.pointOnPage().x(), spotPoint.x(), 2);
    EXPECT_NEAR(item.pointOnPage().y(), spotPoint.y(), 2);
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Dragging, ASpotOfThePageBetweenItems) {
    dragSpot(upperEdge({2}));
    ASSERT_EQ(outline(), "a (x (1) y) b New Dragged Target c");
    const MyOutlineItem &item = *node({2})->representedObject();
    EXPECT_NEAR(item.pointOnPage().x(), spotPoint.x(), 2);
    EXPECT_NEAR(item.pointOnPage().y(), spotPoint.y(), 2);
    EXPECT_TRUE(document.pdfview()->iconLocationData().isEmpty());
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Dragging, ThreeLinesOfTextFromThePage) {
    LabelPDFView &pages = *document.pdfview();
    const QPoint begin = spotOnScreen({70, 705});
    const QPoint end = spotOnScreen({200, 625});
    const QPoint line = spotOnScreen({85, 705});
    const QPoint target = upperEdge({1});
    const auto selectedText = [&] {
        const auto selection = pages.currentSelection();
        return selection ? selection->string().trimmed() : QString();
    };
    Hand::act([&] {
        Hand::moveTo(begin);
        Hand::press();
        Hand::waitFor(
            "three lines to be selected", [&] { return selectedText() == "one\ntwo\nthree"; },
            [&] {
                Hand::moveTo(begin + QPoint(40, 40));
                Hand::moveTo(end);
            });
        Hand::release();
        Hand::moveTo(line);
        Hand::press();
        pull(pages, line);
        carryTo(view(), target, pages, true);
    });
    EXPECT_EQ(outline(), "a (x (1) y) one two three b c");
    EXPECT_EQ(node({1})->representedObject()->pageLabel(), "1");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Dragging, AnItemIntoAnotherDocumentIsRefused) {
    MyDocument other(platform);
    ASSERT_TRUE(other.readFromURL(dir.path("a.pdf")));
    other.makeWindowControllers();
    other.finishLoading();
    place(other, 1100);
    other.root().insertObjectInChildrenAtIndex(test::makeItem({"theirs"}), 0);
    OutlineView &theirs = *other.outlineview();
    select({{1}});
    const QPoint from = middle({1});
    const TreeNode &target = *other.treecontroller().descendantNodeAtIndexPath({0});
    const QPoint onto = theirs.visualRect(other.treecontroller().indexForNode(target)).center();
    Hand::act([&] {
        pickUp(view(), from);
        carryTo(theirs, onto, view(), false);
    });
    EXPECT_EQ(outline(), "a (x (1) y) b c");
    EXPECT_EQ(other.root().children().size(), 1U);
    EXPECT_FALSE(document.isDocumentEdited());
    EXPECT_FALSE(other.isDocumentEdited());
}

}  // namespace
}  // namespace leafwright
