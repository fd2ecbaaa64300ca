#include "formats/KeyedArchive.h"
#include "support/OpenPdf.h"
#include "view/LabelPDFView.h"
#include "view/SpotArchive.h"

#include <QApplication>
#include <QDrag>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTest>

namespace leafwright {
namespace {

using test::PdfBuilder;

/// Notes what would be dragged.
class DraggedSpotView final : public LabelPDFView {
public:
    QList<QByteArray> dragged;
    QStringList formats;
    QPoint hotSpot;
    QByteArray iconAtStart;  ///< The icon's place when the drag began.

protected:
    void dragImage(const QImage &image, const QPoint &hot, QMimeData *mimeData) override {
        EXPECT_EQ(image, targeticon());
        dragged.append(mimeData->data(NSPOINT_PBOARD_TYPE));
        formats = mimeData->formats();
        hotSpot = hot;
        iconAtStart = iconLocationData();
        delete mimeData;
    }
};

constexpr int patience = 60'000;

/// A view of three pages of text, of 612 by 792 points, two of which are labelled 1.
class LabelPDFViewTest : public testing::Test {
protected:
    void SetUp() override { show(threePages()); }

    static PdfBuilder threePages(const std::string &entries = {}) {
        PdfBuilder pdf;
        for (int i = 0; i < 3; ++i)
            pdf.addPage(PdfBuilder::showText("F1", 20, 72, 700, "Alpha beta gamma"), entries);
        pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /D >> 1 << /S /D >>] >>");
        return pdf;
    }
    void show(const PdfBuilder &pdf) {
        view.setDocument(nullptr);
        document = test::openPdf(pdf);
        view.resize(700, 500);
        view.setDocument(document.get());
        view.show();
        waitUntilRendered();
    }
    void waitUntilRendered() {
        ASSERT_TRUE(QTest::qWaitFor([this] { return view.visiblePagesAreRendered(); }, patience));
    }

    const PDFPage &page(int index) const { return *document->page(index); }
    QPoint at(double x, double y, int pageIndex = 0) const {
        return view.convertPointFromPage({x, y}, page(pageIndex)).toPoint();
    }
    QColor colourAt(double x, double y, int pageIndex = 0) {
        view.goToDestination({pageIndex, {x, y + 100}});
        waitUntilRendered();
        return view.viewport()->grab().toImage().pixelColor(at(x, y, pageIndex));
    }
    QString selected() const {
        return view.currentSelection() ? view.currentSelection()->string() : QString();
    }

    void mouse(QEvent::Type type, const QPoint &point, Qt::MouseButton button, bool soon = false) {
        const bool isRelease = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, point, view.viewport()->mapToGlobal(point), button,
                          isRelease ? Qt::NoButton : button, {});
        time += soon ? 1 : 10'000;
        event.setTimestamp(time);
        QApplication::sendEvent(view.viewport(), &event);
    }
    void click(const QPoint &point, bool soon = false) {
        mouse(QEvent::MouseButtonPress, point, Qt::LeftButton, soon);
        mouse(QEvent::MouseButtonRelease, point, Qt::LeftButton, true);
    }
    void doubleClick(const QPoint &point, Qt::MouseButton button = Qt::LeftButton) {
        mouse(QEvent::MouseButtonPress, point, button);
        mouse(QEvent::MouseButtonRelease, point, button, true);
        mouse(QEvent::MouseButtonDblClick, point, button, true);
        mouse(QEvent::MouseButtonRelease, point, button, true);
    }
    /// Waits until the view has read the page's text, so that a selection would come at once.
    void waitForText() {
        mouse(QEvent::MouseButtonPress, at(75, 705), Qt::LeftButton);
        const QPoint end = at(200, 705);
        QMouseEvent move(QEvent::MouseMove, end, view.viewport()->mapToGlobal(end), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(view.viewport(), &move);
        mouse(QEvent::MouseButtonRelease, end, Qt::LeftButton);
        ASSERT_TRUE(QTest::qWaitFor([this] { return !selected().isEmpty(); }, patience));
        view.clearSelection();
    }

    std::unique_ptr<PDFDocument> document;  // Outlives the view.
    DraggedSpotView view;
    quint64 time = 1'000'000;
};

TEST_F(LabelPDFViewTest, StartsWithTheBadgeAtTheTopRightAndNoIcon) {
    EXPECT_EQ(view.pageLabelLocation(), "Q1");
    EXPECT_TRUE(view.iconLocationData().isNull());
    EXPECT_FALSE(view.targeticon().isNull());
}

TEST_F(LabelPDFViewTest, TheBadgeIsInItsCornerOfEveryPage) {
    const std::map<QString, QPointF> corners{
        {"Q1", {470, 780}}, {"Q2", {10, 780}}, {"Q3", {10, 10}}, {"Q4", {470, 10}}};
    for (const auto &[location, corner] : corners) {
        view.setPageLabelLocation(location);
        view.setNeedsDisplay();
        for (const auto &[other, point] : corners)
            for (const int index : {0, 2})
                EXPECT_EQ(colourAt(point.x(), point.y(), index), other == location ? Qt::red : Qt::white)
                    << qPrintable(location + other);
    }
}

TEST_F(LabelPDFViewTest, WithNoneThereIsNeitherBadgeNorIcon) {
    view.setIconLocationData(archivedSpot({{300, 400}, "1"}));
    EXPECT_NE(colourAt(300, 400), QColor(Qt::white));
    view.setPageLabelLocation("None");
    EXPECT_EQ(colourAt(300, 400), QColor(Qt::white));
    EXPECT_EQ(colourAt(470, 780), QColor(Qt::white));
}

TEST_F(LabelPDFViewTest, TwoPagesOfOneLabelBothShowTheIcon) {
    view.setIconLocationData(archivedSpot({{300, 400}, "1"}));
    EXPECT_NE(colourAt(300, 400, 0), QColor(Qt::white));
    EXPECT_NE(colourAt(300, 400, 1), QColor(Qt::white));
    EXPECT_EQ(colourAt(300, 400, 2), QColor(Qt::white));
    view.setIconLocationData({});
    EXPECT_EQ(colourAt(300, 400, 0), QColor(Qt::white));
}

TEST_F(LabelPDFViewTest, ADoubleClickDragsTheSpot) {
    const QPoint point = at(100, 600);
    doubleClick(point);
    ASSERT_EQ(view.dragged.size(), 1);
    EXPECT_EQ(view.formats, QStringList("NSPOINT_PBOARD_TYPE"));
    EXPECT_EQ(view.hotSpot, QPoint(10, 10));
    const auto archive = KeyedArchive::unarchive(view.dragged[0]);
    ASSERT_TRUE(archive);
    EXPECT_EQ(archive->decode("pageLabel"), "1");
    EXPECT_EQ(archive->decode("pagePointAsString"), stringFromPoint(view.convertPointToPage(point, page(0))));
    EXPECT_EQ(view.draggingSessionSourceOperationMask(), Qt::CopyAction);
}

TEST_F(LabelPDFViewTest, TheIconShowsAtOnceWhereTheDoubleClickWas) {
    ASSERT_EQ(colourAt(100, 600), QColor(Qt::white));
    doubleClick(at(100, 600));
    EXPECT_EQ(view.iconAtStart, view.dragged[0]);
    EXPECT_EQ(view.iconLocationData(), view.dragged[0]);
    EXPECT_NE(colourAt(100, 600), QColor(Qt::white));
}

TEST_F(LabelPDFViewTest, ADoubleClickReachesTheRotatedPageSpot) {
    for (const int rotation : {90, 180, 270}) {
        show(threePages("/CropBox [50 100 450 600] /Rotate " + std::to_string(rotation)));
        view.dragged.clear();
        const QPoint point = view.viewport()->rect().center();
        const PDFPage *under = view.pageForPoint(point, false);
        ASSERT_TRUE(under);
        doubleClick(point);
        ASSERT_EQ(view.dragged.size(), 1) << rotation;
        const auto spot = unarchivedSpot(view.dragged[0]);
        EXPECT_EQ(view.convertPointFromPage(spot->point, *under).toPoint(), point) << rotation;
    }
}

TEST_F(LabelPDFViewTest, ADoubleClickInTheGrayBetweenPagesDoesNothing) {
    view.goToDestination({1, {0, 792}});
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->value() - 100);
    const QPoint between = at(300, -1);
    ASSERT_EQ(view.pageForPoint(between, false), nullptr);
    ASSERT_NE(view.pageForPoint(between, true), nullptr);
    doubleClick(between);
    EXPECT_TRUE(view.dragged.isEmpty());
    EXPECT_TRUE(view.iconLocationData().isNull());
    const QByteArray before = archivedSpot({{1, 2}, "1"});
    view.setIconLocationData(before);
    doubleClick({2, 100});  // Beside the pages.
    EXPECT_TRUE(view.dragged.isEmpty());
    EXPECT_EQ(view.iconLocationData(), before);
}

TEST_F(LabelPDFViewTest, ADoubleClickWithoutADocumentDoesNothing) {
    view.setDocument(nullptr);
    doubleClick({100, 100});
    EXPECT_TRUE(view.dragged.isEmpty());
    EXPECT_TRUE(view.iconLocationData().isNull());
}

TEST_F(LabelPDFViewTest, ADoubleClickSelectsNoWord) {
    waitForText();
    doubleClick(at(140, 705));
    EXPECT_EQ(view.dragged.size(), 1);
    EXPECT_EQ(selected(), QString());
}

TEST_F(LabelPDFViewTest, ASingleClickIsThatOfAPlainView) {
    waitForText();
    view.setCurrentSelection(page(0).selectionForRange({0, 5}));
    ASSERT_EQ(selected(), "Alpha");
    click(at(300, 500));
    EXPECT_EQ(selected(), QString());
    EXPECT_TRUE(view.dragged.isEmpty());
    EXPECT_TRUE(view.iconLocationData().isNull());
}

TEST_F(LabelPDFViewTest, ATripleClickSelectsTheLineAsInAPlainView) {
    waitForText();
    doubleClick(at(140, 705));
    click(at(140, 705), true);
    EXPECT_TRUE(QTest::qWaitFor([this] { return selected().startsWith("Alpha beta gamma"); }, patience));
    EXPECT_EQ(view.dragged.size(), 1);
}

TEST_F(LabelPDFViewTest, TheFourthOfFourQuickClicksIsNoDoubleClick) {
    waitForText();
    const QPoint point = at(140, 705);
    doubleClick(point);
    click(point, true);
    mouse(QEvent::MouseButtonDblClick, point, Qt::LeftButton, true);
    mouse(QEvent::MouseButtonRelease, point, Qt::LeftButton, true);
    EXPECT_EQ(view.dragged.size(), 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return selected().startsWith("Alpha beta gamma"); }, patience));
    doubleClick(point);
    EXPECT_EQ(view.dragged.size(), 2) << "the next pair counts anew";
}

TEST_F(LabelPDFViewTest, AClickOfAnotherButtonIsNoneOfThoseThatAddUp) {
    const QPoint point = at(100, 600);
    mouse(QEvent::MouseButtonPress, point, Qt::RightButton);
    mouse(QEvent::MouseButtonRelease, point, Qt::RightButton, true);
    mouse(QEvent::MouseButtonPress, point, Qt::LeftButton, true);
    mouse(QEvent::MouseButtonRelease, point, Qt::LeftButton, true);
    mouse(QEvent::MouseButtonDblClick, point, Qt::LeftButton, true);
    EXPECT_EQ(view.dragged.size(), 1);
}

TEST_F(LabelPDFViewTest, OtherButtonsPickNoSpot) {
    doubleClick(at(100, 600), Qt::RightButton);
    EXPECT_TRUE(view.dragged.isEmpty());
}

TEST_F(LabelPDFViewTest, DrawsPagesUpsideDownWithTheCrossedTranslation) {
    // The badge at the top right, turned to the lower left, moves by what the page's height is more than its
    // width: 100 to the right and 100 down, that is, below the page.
    PdfBuilder pdf;
    pdf.addPage({}, "/MediaBox [0 0 300 400] /Rotate 180");
    show(pdf);
    view.resize(700, 700);
    waitUntilRendered();
    const QImage crossed = view.viewport()->grab().toImage();
    view.setPageLabelLocation("None");
    view.setNeedsDisplay();
    const QImage plain = view.viewport()->grab().toImage();
    const PageTransform shown = page(0).transform();
    const QPointF lowerLeft = view.convertPointFromPage(shown.toPage(QPointF(0, 400)), page(0));
    QRect changed;
    for (int y = 0; y < plain.height(); ++y)
        for (int x = 0; x < plain.width(); ++x)
            if (plain.pixel(x, y) != crossed.pixel(x, y)) changed |= QRect(x, y, 1, 1);
    ASSERT_FALSE(changed.isEmpty());
    EXPECT_NEAR(changed.left(), lowerLeft.x() + 100, 2);
    EXPECT_NEAR(changed.right(), lowerLeft.x() + 175, 2);
    EXPECT_NEAR(changed.top(), lowerLeft.y() + 80, 2);
    EXPECT_NEAR(changed.bottom(), lowerLeft.y() + 100, 2);
}

/// The drag itself, of the toolkit.
TEST(LabelPDFViewDrag, CopiesTheSpotAndKeepsTheIconWhenRefused) {
    const auto document = test::openPdf(PdfBuilder([] {
        PdfBuilder pdf;
        pdf.addNumberedPages(1);
        return pdf;
    }()));
    LabelPDFView view;
    view.resize(700, 500);
    view.setDocument(document.get());
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));

    // The offscreen platform ends a drag at once, as if nobody had taken it.
    const QPointF point(300, 200);
    QMouseEvent event(QEvent::MouseButtonDblClick, point, view.viewport()->mapToGlobal(point), Qt::LeftButton,
                      Qt::LeftButton, {});
    QApplication::sendEvent(view.viewport(), &event);
    const auto *drag = view.findChild<QDrag *>();
    ASSERT_TRUE(drag);
    EXPECT_TRUE(unarchivedSpot(drag->mimeData()->data(NSPOINT_PBOARD_TYPE)));
    EXPECT_EQ(drag->hotSpot(), QPoint(10, 10));
    EXPECT_EQ(drag->pixmap().deviceIndependentSize(), QSizeF(20, 20));
    EXPECT_EQ(drag->supportedActions(), Qt::CopyAction);
    EXPECT_EQ(view.iconLocationData(), drag->mimeData()->data(NSPOINT_PBOARD_TYPE));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !view.findChild<QDrag *>(); }));
}

TEST_F(LabelPDFViewTest, EscapeTakesTheIconAway) {
    view.setIconLocationData(archivedSpot({{300, 400}, "1"}));
    ASSERT_NE(colourAt(300, 400), QColor(Qt::white));
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_TRUE(view.iconLocationData().isNull());
    EXPECT_EQ(colourAt(300, 400), QColor(Qt::white));
    QKeyEvent again(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(&view, &again);
    EXPECT_FALSE(again.isAccepted()) << "somebody else's, without an icon";
}

TEST_F(LabelPDFViewTest, TheIconCanBeDragged) {
    const QByteArray spot = archivedSpot({{300, 600}, "1"});
    view.setIconLocationData(spot);
    const auto dragFrom = [this](const QPoint &from) {
        view.dragged.clear();
        mouse(QEvent::MouseButtonPress, from, Qt::LeftButton);
        for (const QPoint &to : {from + QPoint(1, 0), from + QPoint(30, 30), from + QPoint(60, 60)}) {
            QMouseEvent move(QEvent::MouseMove, to, view.viewport()->mapToGlobal(to), Qt::NoButton,
                             Qt::LeftButton, {});
            QApplication::sendEvent(view.viewport(), &move);
        }
        mouse(QEvent::MouseButtonRelease, from + QPoint(60, 60), Qt::LeftButton);
        return view.dragged;
    };
    EXPECT_EQ(dragFrom(at(304, 596)), QList{spot});
    EXPECT_EQ(view.iconLocationData(), spot);
    EXPECT_TRUE(dragFrom(at(330, 600)).isEmpty()) << "beside it";
    view.setPageLabelLocation("None");
    EXPECT_TRUE(dragFrom(at(304, 596)).isEmpty()) << "it is not seen";
}

TEST_F(LabelPDFViewTest, AClickOnTheIconDragsNothing) {
    view.setIconLocationData(archivedSpot({{300, 600}, "1"}));
    click(at(300, 600));
    const QPoint beyond = at(300, 600) + QPoint(50, 0);
    QMouseEvent hover(QEvent::MouseMove, beyond, view.viewport()->mapToGlobal(beyond), Qt::NoButton,
                      Qt::NoButton, {});
    QApplication::sendEvent(view.viewport(), &hover);
    EXPECT_TRUE(view.dragged.isEmpty());
}

}  // namespace
}  // namespace leafwright
