#include "pageview/PDFViewFixture.h"
#include "pageview/PDFViewTextDrag.h"

#include <QScrollBar>
#include <QSignalSpy>

namespace leafwright {
namespace {

using test::PdfBuilder;

class PDFViewInputTest : public test::PDFViewFixture {
protected:
    /// Waits for the selection to be what is expected; shows what it is when it does not come.
    void expectSelected(const QString &text) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return selected() == text; }, test::patience / 6))
            << selected().toStdString();
    }
    /// Waits until the text of the page under the pointer is known, by the pointer's shape.
    void waitForShape(const QPoint &point, Qt::CursorShape shape) {
        hover(point);
        waitUntil([&] { return view.viewport()->cursor().shape() == shape; });
    }
};

/// Pages with two lines of text near their top, in 20 point type.
PdfBuilder pagesOfText(int count = 1, const std::string &entries = {}) {
    PdfBuilder pdf;
    for (int i = 0; i < count; ++i) {
        pdf.addPage(PdfBuilder::showText("F1", 20, 72, 700, "Alpha beta gamma") +
                        PdfBuilder::showText("F1", 20, 72, 660, "second line"),
                    entries);
    }
    return pdf;
}

TEST_F(PDFViewInputTest, DraggingSelectsText) {
    show(pagesOfText());
    drag(at(70, 705), at(126, 705));
    expectSelected("Alpha ");
}

TEST_F(PDFViewInputTest, DraggingBackwardsSelectsTheSame) {
    show(pagesOfText());
    drag(at(126, 705), at(70, 705));
    expectSelected("Alpha ");
}

TEST_F(PDFViewInputTest, DraggingAcrossLines) {
    show(pagesOfText());
    drag(at(130, 705), at(135, 665));
    expectSelected("beta gamma\nsecond");
}

TEST_F(PDFViewInputTest, DraggingOnTurnedPagesAndShiftedBoxes) {
    for (const char *entries :
         {"/Rotate 90 /CropBox [50 500 400 750]", "/Rotate 180 /CropBox [50 500 400 750]",
          "/Rotate 270 /CropBox [50 500 400 750]", "/CropBox [50 500 400 750]"}) {
        show(pagesOfText(1, entries));
        drag(at(70, 705), at(126, 705));
        expectSelected("Alpha ");
        view.setDocument(nullptr);
    }
}

TEST_F(PDFViewInputTest, DraggingAcrossPages) {
    show(pagesOfText(4));
    view.setScaleFactor(0.15);
    drag(at(74, 665, 0), at(126, 705, 3));
    expectSelected(
        "second line\n"
        "Alpha beta gamma\nsecond line\n"
        "Alpha beta gamma\nsecond line\n"
        "Alpha ");
}

TEST_F(PDFViewInputTest, DraggingBeyondTheViewScrolls) {
    show(pagesOfText(3));
    press(at(72, 705));
    moveTo(at(72, 690));
    moveTo({300, 480});
    waitUntil([&] { return view.verticalScrollBar()->value() > 400; });
    release({300, 480});
    const int there = view.verticalScrollBar()->value();
    expectSelected(selected());
    QApplication::processEvents();
    EXPECT_EQ(view.verticalScrollBar()->value(), there) << "not any more after the button is released";
    EXPECT_TRUE(selected().startsWith("Alpha beta gamma\nsecond line")) << selected().toStdString();
}

TEST_F(PDFViewInputTest, ShiftClickExtendsTheSelection) {
    show(pagesOfText());
    drag(at(70, 705), at(126, 705));
    expectSelected("Alpha ");
    click(at(135, 665), Qt::ShiftModifier);
    expectSelected("Alpha beta gamma\nsecond");
}

TEST_F(PDFViewInputTest, DoubleClickSelectsAWord) {
    show(pagesOfText());
    doubleClick(at(140, 705));
    expectSelected("beta");
}

TEST_F(PDFViewInputTest, TripleClickSelectsALine) {
    show(pagesOfText());
    tripleClick(at(140, 705));
    expectSelected("Alpha beta gamma\n");
}

TEST_F(PDFViewInputTest, ThirdClickThatComesLateIsASingleOne) {
    show(pagesOfText());
    doubleClick(at(140, 705));
    expectSelected("beta");
    press(at(140, 665));
    release(at(140, 665));
    QApplication::processEvents();
    EXPECT_EQ(selected(), QString());
}

TEST_F(PDFViewInputTest, TripleClickOffTheTextSelectsNothing) {
    show(pagesOfText());
    tripleClick(at(140, 705));
    expectSelected("Alpha beta gamma\n");
    tripleClick(at(400, 500));
    expectSelected(QString());
}

TEST_F(PDFViewInputTest, ClickClearsTheSelection) {
    show(pagesOfText());
    doubleClick(at(140, 705));
    expectSelected("beta");
    QSignalSpy changes(&view, &PDFView::selectionChanged);
    click(at(300, 500));
    EXPECT_FALSE(view.currentSelection());
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(PDFViewInputTest, EmptySelectionIsNone) {
    show(pagesOfText());
    view.setCurrentSelection(PDFSelection());
    EXPECT_FALSE(view.currentSelection());
    QSignalSpy changes(&view, &PDFView::selectionChanged);
    view.clearSelection();
    EXPECT_EQ(changes.count(), 0);
    view.setCurrentSelection(page(0).selectionForRange({0, 5}));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(selected(), "Alpha");
}

TEST_F(PDFViewInputTest, SelectionIsShown) {
    show(pagesOfText());
    const QPoint paper = at(110, 717);  // above the "ha" of "Alpha"
    EXPECT_EQ(colourAt(paper), QColor(Qt::white));
    view.setCurrentSelection(page(0).selectionForRange({0, 16}));
    waitUntil([&] { return colourAt(paper) != QColor(Qt::white); });
    EXPECT_EQ(colourAt(at(110, 740)), QColor(Qt::white));
    view.clearSelection();
    EXPECT_EQ(colourAt(paper), QColor(Qt::white));
}

TEST_F(PDFViewInputTest, SelectionIsDimmedWhileAnotherHasTheKeyboard) {
    show(pagesOfText());
    QPalette palette = view.palette();
    palette.setColor(QPalette::Highlight, Qt::red);
    view.setPalette(palette);
    view.activateWindow();
    view.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    const QPoint paper = at(110, 717);
    view.setCurrentSelection(page(0).selectionForRange({0, 16}));
    const auto isRed = [&] { return colourAt(paper).red() > colourAt(paper).green(); };
    waitUntil([&] { return colourAt(paper) != QColor(Qt::white); });
    EXPECT_TRUE(isRed());
    view.clearFocus();
    EXPECT_FALSE(isRed());
    EXPECT_NE(colourAt(paper), QColor(Qt::white));
}

TEST_F(PDFViewInputTest, HighlightsAreShownBesideTheSelection) {
    show(pagesOfText());
    view.setHighlightedSelections({page(0).selectionForRange({17, 11})});
    const QPoint paper = at(110, 677);
    waitUntil([&] { return colourAt(paper) != QColor(Qt::white); });
    EXPECT_EQ(view.highlightedSelections().size(), 1U);
    EXPECT_FALSE(view.currentSelection());
    view.setHighlightedSelections({});
    EXPECT_EQ(colourAt(paper), QColor(Qt::white));
}

TEST_F(PDFViewInputTest, AreaIsHighlightedWhereThereIsNoText) {
    show(pagesOfText());
    const QPoint paper = at(300, 640);
    EXPECT_EQ(colourAt(paper), QColor(Qt::white));
    view.setHighlightedArea(PDFView::PageArea{0, {290, 630, 20, 20}});
    EXPECT_NE(colourAt(paper), QColor(Qt::white));
    EXPECT_EQ(colourAt(at(300, 660)), QColor(Qt::white));
    view.setHighlightedArea(PDFView::PageArea{1, {290, 630, 20, 20}});
    EXPECT_EQ(colourAt(paper), QColor(Qt::white)) << "that is on another page";
    view.setHighlightedArea(std::nullopt);
    EXPECT_FALSE(view.highlightedArea());
}

TEST_F(PDFViewInputTest, CopyAsksForTheSelectedText) {
    show(pagesOfText());
    QSignalSpy copies(&view, &PDFView::copyRequested);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copies.count(), 0) << "nothing is selected";
    doubleClick(at(140, 705));
    expectSelected("beta");
    key(Qt::Key_C, Qt::ControlModifier);
    ASSERT_EQ(copies.count(), 1);
    EXPECT_EQ(copies[0][0].toString(), "beta");
}

TEST_F(PDFViewInputTest, DragThatBeginsOnTheSelectionTakesTheTextAlong) {
    show(pagesOfText());
    doubleClick(at(140, 705));
    expectSelected("beta");
    picture();  // what is selected is known where it has been painted
    press(at(140, 705));
    moveTo(at(140, 600));
    release(at(140, 600));
    EXPECT_EQ(view.dragged, QStringList("beta"));
    EXPECT_EQ(selected(), "beta");
}

TEST_F(PDFViewInputTest, ClickOnTheSelectionClearsIt) {
    show(pagesOfText());
    doubleClick(at(140, 705));
    expectSelected("beta");
    picture();
    click(at(140, 705));
    EXPECT_FALSE(view.currentSelection());
    EXPECT_TRUE(view.dragged.isEmpty());
}

TEST_F(PDFViewInputTest, TextDragsAreKnownByTheNameOfTheirSource) {
    const PDFViewTextDrag drag(&view);
    EXPECT_TRUE(QByteArray(drag.metaObject()->className()).startsWith("PDFView"));
}

TEST_F(PDFViewInputTest, OtherButtonsLeaveTheSelectionAlone) {
    show(pagesOfText());
    doubleClick(at(140, 705));
    expectSelected("beta");
    QTest::mouseClick(view.viewport(), Qt::RightButton, {}, {300, 350});
    EXPECT_EQ(selected(), "beta");
}

// Links

PdfBuilder pagesWithLinks() {
    PdfBuilder pdf;
    pdf.addPage(
        {},
        "/Annots [<< /Subtype /Link /Rect [72 690 200 720] /Dest /there >> << /Subtype /Link /Rect [72 "
        "640 200 670] /A << /S /URI /URI (https://example.org/) >> >>]");
    pdf.addNumberedPages(4);
    pdf.setCatalogEntry("/Dests", "<< /there [3 /XYZ 72 400 0] >>");
    return pdf;
}

TEST_F(PDFViewInputTest, LinkWithinTheDocumentIsFollowed) {
    show(pagesWithLinks());
    click(at(100, 700));
    waitUntil([&] { return view.currentPage() == &page(3); });
    EXPECT_NEAR(at(72, 400, 3).y(), 0, 1);
}

TEST_F(PDFViewInputTest, LinkToTheWebIsHandedOn) {
    show(pagesWithLinks());
    QSignalSpy links(&view, &PDFView::linkClicked);
    click(at(100, 650));
    waitUntil([&] { return links.count() == 1; });
    EXPECT_EQ(links[0][0].toString(), "https://example.org/");
    EXPECT_EQ(view.currentPage(), &page(0));
}

TEST_F(PDFViewInputTest, DraggingOverALinkDoesNotFollowIt) {
    show(pagesWithLinks());
    waitForShape(at(100, 650), Qt::PointingHandCursor);
    QSignalSpy links(&view, &PDFView::linkClicked);
    drag(at(100, 650), at(180, 650));
    QApplication::processEvents();
    EXPECT_EQ(links.count(), 0);
}

TEST_F(PDFViewInputTest, ClickBesideALinkDoesNothing) {
    show(pagesWithLinks());
    waitForShape(at(100, 650), Qt::PointingHandCursor);
    QSignalSpy links(&view, &PDFView::linkClicked);
    click(at(300, 650));
    click(at(300, 700));
    QApplication::processEvents();
    EXPECT_EQ(links.count(), 0);
    EXPECT_EQ(view.currentPage(), &page(0));
}

TEST_F(PDFViewInputTest, PointerIsAHandOverLinksAndABeamOverText) {
    PdfBuilder pdf = pagesWithLinks();
    pdf.addPage();
    show(pdf);
    waitForShape(at(100, 700), Qt::PointingHandCursor);
    waitForShape(at(300, 700), Qt::ArrowCursor);
    view.goToPage(&page(1));
    const Rect box = page(1).characterBoxes().at(1);
    waitForShape(view.convertRectFromPage(box, page(1)).center().toPoint(), Qt::IBeamCursor);
}

TEST_F(PDFViewInputTest, TheMiddleButtonPullsThePagesAlong) {
    show(pagesOfText(3));
    view.setScaleFactor(2);
    view.goToPage(&page(1));
    const QPoint held = view.viewport()->rect().center();
    const QPointF before = view.convertPointToPage(held, page(1));
    const QPoint way(-40, -70);
    QTest::mousePress(view.viewport(), Qt::MiddleButton, {}, held);
    EXPECT_EQ(view.viewport()->cursor().shape(), Qt::ClosedHandCursor);
    mouse(QEvent::MouseMove, held + way / 2, Qt::MiddleButton);
    mouse(QEvent::MouseMove, held + way, Qt::MiddleButton);
    EXPECT_EQ(view.convertPointFromPage(before, page(1)).toPoint(), held + way);
    QTest::mouseRelease(view.viewport(), Qt::MiddleButton, {}, held + way);
    EXPECT_NE(view.viewport()->cursor().shape(), Qt::ClosedHandCursor);
    mouse(QEvent::MouseMove, held, Qt::MiddleButton);
    EXPECT_EQ(view.convertPointFromPage(before, page(1)).toPoint(), held + way) << "nothing is held";
    EXPECT_EQ(selected(), "");
}

TEST_F(PDFViewInputTest, OnlyAltAloneLeadsBackAndForward) {
    show(test::numberedPages(3));
    view.goToPage(&page(2));
    key(Qt::Key_Left, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_TRUE(view.canGoBack()) << "it is another command's";
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(currentIndex(), 0);
}

}  // namespace
}  // namespace leafwright
