#include "files/FileName.h"
#include "support/OpenPdf.h"
#include "support/Unprivileged.h"
#include "support/WindowFixture.h"
#include "widgets/NoticeBars.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTableView>
#include <QToolBar>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace leafwright {
namespace {

using test::PdfBuilder;
using testing::Contains;

class Window : public test::WindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(3);
        addOutline(pdf, {{"(One)", "[" + pdf.pageReference(0) + " /XYZ 72 700 null]"}});
        open(pdf);
    }

    DocumentWindow &window() { return *document.myWindow(); }
    QAction &action(const char *selector) { return *window().findChild<QAction *>(selector); }

    /// Everything below an element that assistive programs see.
    static QList<QAccessibleInterface *> below(QAccessibleInterface *top) {
        QList<QAccessibleInterface *> all{top};
        for (qsizetype i = 0; i < all.size(); ++i) {
            // The rows of views are content, and there may be thousands.
            if (all[i]->tableInterface()) continue;
            for (int k = 0; k < all[i]->childCount(); ++k)
                if (QAccessibleInterface *child = all[i]->child(k)) all.append(child);
        }
        return all;
    }
};

TEST_F(Window, TheTitleNamesTheFileAndMarksChanges) {
    EXPECT_TRUE(window().windowTitle().startsWith("a.pdf[*]")) << window().windowTitle().toStdString();
    EXPECT_FALSE(window().isWindowModified());
    document.updateChangeCount(Document::Change::Done);
    EXPECT_TRUE(window().isWindowModified());
    document.updateChangeCount(Document::Change::Cleared);
    EXPECT_FALSE(window().isWindowModified());
}

/// A style sheet goes by it, say.
TEST_F(Window, HasTheNameOfItsLayout) {
    EXPECT_EQ(window().objectName(), "MyDocument");
}

TEST_F(Window, TheTitleSaysFromTheStartThatAFileIsReadOnly) {
    EXPECT_FALSE(window().windowTitle().contains("read-only"));
    const QByteArray path = QFile::encodeName(document.pdfURL());
    ASSERT_EQ(::chmod(QFile::encodeName(dir.path(".")).constData(), 0777), 0);
    ASSERT_EQ(::chmod(path.constData(), 0444), 0);
    MyDocument other(platform);
    const test::Unprivileged nobody;
    ASSERT_TRUE(other.readFromURL(document.pdfURL()));
    other.makeWindowControllers();
    EXPECT_TRUE(other.window()->windowTitle().startsWith("a.pdf (read-only)[*]"))
        << other.window()->windowTitle().toStdString();
}

TEST_F(Window, WhatAFileIsCalledIsShownAsItIs) {
    document.setPdfURL(dir.path("a[*]b.pdf"));
    EXPECT_TRUE(window().windowTitle().startsWith("a[*][*]b.pdf[*]"));
}

TEST_F(Window, ATitleEditedInPlaceIsAChange) {
    document.treecontroller().setData(document.treecontroller().indexForNode(*node({0}), 0), "New",
                                      Qt::EditRole);
    EXPECT_EQ(document.root().children()[0]->pageTitle(), "New");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Window, APageEditedInPlaceIsAChange) {
    document.treecontroller().setData(document.treecontroller().indexForNode(*node({0}), 1), "3",
                                      Qt::EditRole);
    EXPECT_EQ(document.root().children()[0]->pageLabel(), "3");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Window, UndoDoesNotReverseARenaming) {
    document.treecontroller().setData(document.treecontroller().indexForNode(*node({0}), 0), "New",
                                      Qt::EditRole);
    EXPECT_TRUE(document.actions().perform("undo:"));
    EXPECT_EQ(document.root().children()[0]->pageTitle(), "New");
}

/// Notes in a list when it is done, undone, and done again.
class NotedCommand : public QUndoCommand {
public:
    explicit NotedCommand(QStringList &notes) : notes_(notes) {}
    void undo() override { notes_.append("undone"); }
    void redo() override { notes_.append("done"); }

private:
    QStringList &notes_;
};

TEST_F(Window, UndoAndRedoReachTheUndoManager) {
    QStringList notes;
    document.undoManager().push(new NotedCommand(notes));
    EXPECT_TRUE(document.actions().perform("undo:"));
    EXPECT_EQ(notes, (QStringList{"done", "undone"}));
    EXPECT_TRUE(document.actions().perform("redo:"));
    EXPECT_EQ(notes, (QStringList{"done", "undone", "done"}));
}

TEST_F(Window, ClosingWithoutChangesAsksNothing) {
    QSignalSpy closed(&document, &Document::closed);
    EXPECT_TRUE(window().close());
    EXPECT_TRUE(platform.alerts.isEmpty());
    EXPECT_EQ(closed.size(), 1);
}

TEST_F(Window, ClosingWithChangesAsksAndCancelKeepsTheWindow) {
    document.updateChangeCount(Document::Change::Done);
    platform.answers = {2};
    EXPECT_FALSE(window().close());
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].buttons, (QStringList{"Save", "Discard", "Cancel"}));
    EXPECT_EQ(platform.alerts[0].title, "a.pdf");
    EXPECT_TRUE(window().isVisible());
}

TEST_F(Window, DiscardingClosesAndLeavesTheFileAsItWas) {
    const QByteArray before = test::contentOf(document.pdfURL());
    document.root().children()[0]->setPageTitle("Changed");
    document.updateChangeCount(Document::Change::Done);
    platform.answers = {1};
    EXPECT_TRUE(window().close());
    EXPECT_EQ(test::contentOf(document.pdfURL()), before);
}

TEST_F(Window, SavingBeforeClosingWritesTheFile) {
    document.root().children()[0]->setPageTitle("Changed");
    document.updateChangeCount(Document::Change::Done);
    platform.answers = {0};
    EXPECT_TRUE(window().close());
    EXPECT_TRUE(outlineOf(document.pdfURL()).contains("Changed"));
}

TEST_F(Window, WhenSavingFailsTheWindowStays) {
    document.updateChangeCount(Document::Change::Done);
    document.setPdfURL(dir.path("no folder/a.pdf"));
    platform.answers = {0};
    EXPECT_FALSE(window().close());
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Window, ClosingWaitsUntilTheDocumentIsIdle) {
    QSignalSpy closed(&document, &Document::closed);
    {
        const Document::Busy busy(document);
        EXPECT_FALSE(window().close());
        QCoreApplication::processEvents();
        EXPECT_TRUE(window().isVisible());
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window().isVisible(); }));
    EXPECT_EQ(closed.size(), 1);
}

TEST_F(Window, ClosingThatHasWaitedAsksOnceHoweverOftenItWasTried) {
    document.updateChangeCount(Document::Change::Done);
    for (const int times : {1, 2, 3}) {
        platform.alerts.clear();
        platform.answers = {2};
        {
            const Document::Busy busy(document);
            for (int i = 0; i < times; ++i)
                EXPECT_FALSE(window().close());
            QCoreApplication::processEvents();
            EXPECT_TRUE(platform.alerts.isEmpty());
        }
        EXPECT_TRUE(QTest::qWaitFor([&] { return !platform.alerts.isEmpty(); }));
        QCoreApplication::processEvents();
        EXPECT_EQ(platform.alerts.size(), 1) << times;
    }
}

TEST_F(Window, EveryCommandOfTheMenusWorks) {
    for (const QAction *top : window().menuBar()->actions()) {
        ASSERT_NE(top->menu(), nullptr);
        for (const QAction *action : top->menu()->actions()) {
            if (action->isSeparator() || action->menu()) continue;
            EXPECT_TRUE(document.actions().isHandled(action->objectName())) << action->text().toStdString();
        }
    }
}

TEST_F(Window, EveryWidgetThatTakesTheFocusHasANameForAssistivePrograms) {
    QAccessibleInterface *top = QAccessible::queryAccessibleInterface(&window());
    QStringList names;
    for (const QAccessibleInterface *element : below(top)) {
        if (!element->state().focusable || element->state().invisible) continue;
        const QString name = element->text(QAccessible::Name);
        EXPECT_FALSE(name.isEmpty()) << element->object()->metaObject()->className();
        names.append(name);
    }
    for (const char *name : {"Pages", "Page", "Outline", "Filter of the outline", "Heading map"})
        EXPECT_TRUE(names.contains(name)) << name;
}

TEST_F(Window, EveryButtonAndDividerHasANameForAssistivePrograms) {
    for (const QAccessibleInterface *element : below(QAccessible::queryAccessibleInterface(&window()))) {
        // The tool bar's own is for what has no room in it.
        if (!element->object() || element->object()->objectName() == "qt_toolbar_ext_button") continue;
        if (!qobject_cast<QAbstractButton *>(element->object())) continue;
        EXPECT_NE(element->text(QAccessible::Name), "")
            << qPrintable(element->object()->parent()->objectName());
    }
    QStringList dividers;
    for (const QWidget *widget : window().findChildren<QWidget *>())
        if (widget->accessibleName().startsWith("Divider")) dividers.append(widget->accessibleName());
    dividers.sort();
    EXPECT_EQ(dividers,
              (QStringList{"Divider between Page and Outline pane", "Divider between Pages and Page",
                           "Divider between outline and heading map"}));
}

TEST_F(Window, AssistiveProgramsReadTheOutlineBeforeTheHeadingMap) {
    const QAccessibleInterface *pane = nullptr;
    for (const QAccessibleInterface *element : below(QAccessible::queryAccessibleInterface(&window())))
        if (element->text(QAccessible::Name) == "Outline pane") pane = element;
    ASSERT_NE(pane, nullptr);
    const QWidget *first = qobject_cast<QWidget *>(pane->child(0)->object());
    EXPECT_TRUE(first->isAncestorOf(document.outlineview()));
    EXPECT_EQ(pane->child(1)->text(QAccessible::Name), "Heading map");
}

TEST_F(Window, TheTabKeyReachesEveryPane) {
    window().activateWindow();
    document.outlineview()->setFocus();
    QSet<QString> reached;
    for (int i = 0; i < 20; ++i) {
        QTest::keyClick(window().focusWidget(), Qt::Key_Tab);
        reached.insert(window().focusWidget()->accessibleName());
    }
    for (const char *name : {"Pages", "Page", "Outline", "Filter of the outline", "Heading map"})
        EXPECT_TRUE(reached.contains(name)) << name;
}

TEST_F(Window, DroppedFilesAreToldOf) {
    QSignalSpy dropped(&window(), &DocumentWindow::filesDropped);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/one.pdf"), QUrl("https://example.org/two.pdf"),
                  QUrl::fromLocalFile("/3.pdf")});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window(), &event);
    ASSERT_EQ(dropped.size(), 1);
    EXPECT_EQ(dropped[0][0].toStringList(), (QStringList{"/one.pdf", "/3.pdf"}));
}

TEST_F(Window, DroppedFilesKeepTheBytesOfTheirNames) {
    QSignalSpy dropped(&window(), &DocumentWindow::filesDropped);
    QMimeData data;
    // As a file manager drops it.
    data.setData("text/uri-list", "file:///caf%E9.pdf\r\n");
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window(), &enter);
    QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window(), &event);
    ASSERT_EQ(dropped.size(), 1);
    const QStringList paths = dropped[0][0].toStringList();
    ASSERT_EQ(paths.size(), 1);
    EXPECT_EQ(fileNameBytes(paths[0]), "/caf\xE9.pdf");
}

TEST_F(Window, TheNextWindowIsAsLargeAsTheLast) {
    window().resize(1111, 666);
    EXPECT_TRUE(window().close());
    MyDocument other(platform);
    ASSERT_TRUE(other.readFromURL(document.pdfURL()));
    other.makeWindowControllers();
    EXPECT_EQ(other.window()->size(), QSize(1111, 666));
}

TEST_F(Window, ACommandSeesWhatIsBeingTyped) {
    document.outlineview()->editColumn(TreeController::TitleColumn, 0);
    auto *editor = document.outlineview()->findChild<QLineEdit *>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, "typed");
    select({{0}});
    QCoreApplication::processEvents();
    action("changeCaseToUpperCase:").trigger();
    EXPECT_EQ(node({0})->representedObject()->pageTitle(), "TYPED");
}

TEST_F(Window, UndoRedoAndCopyOfTheMenuAreForTheFieldThatIsTypedIn) {
    window().show();
    document.outlineview()->editColumn(TreeController::TitleColumn, 0);
    auto *editor = document.outlineview()->findChild<QLineEdit *>();
    ASSERT_NE(editor, nullptr);
    editor->setFocus();
    QTest::keyClicks(editor, "typed");
    editor->selectAll();
    action("copy:").trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), "typed");
    action("undo:").trigger();
    EXPECT_EQ(editor->text(), "One");
    action("redo:").trigger();
    EXPECT_EQ(editor->text(), "typed");
    EXPECT_EQ(node({0})->representedObject()->pageTitle(), "One") << "still being typed";
}

TEST_F(Window, CopyIsForTheOutlineWhenItHasTheFocus) {
    select({{0}});
    window().tableViewH1H2H3Config()->setFocus();
    action("copy:").trigger();
    EXPECT_TRUE(platform.clipboardTexts.isEmpty());
    document.outlineview()->setFocus();
    action("copy:").trigger();
    EXPECT_EQ(platform.clipboardTexts, QStringList{" One\n"});
}

/// A window on an outline of an item with a child, "One (Two)".
class WindowOnATree : public Window {
protected:
    void SetUp() override {
        Window::SetUp();
        node({0})->representedObject()->insertObjectInChildrenAtIndex(std::make_unique<MyOutlineItem>(), 0);
        node({0})->representedObject()->children()[0]->setPageTitle("Two");
    }
    bool isOn(const char *selector) {
        QCoreApplication::processEvents();
        return action(selector).isEnabled();
    }
};

TEST_F(WindowOnATree, ItemsOfMenusAndToolBarAreEnabledByTheSelection) {
    for (const char *selector : {"removeOutlineItems:", "moveLeft:", "renameAddPrefix:", "applyTOCExpand:"}) {
        select({});
        EXPECT_FALSE(isOn(selector)) << selector;
        select({{0}});
        EXPECT_TRUE(isOn(selector)) << selector;
    }
    EXPECT_TRUE(isOn("promoteChildrenOutlineItem:"));
    EXPECT_TRUE(isOn("addSiblingOutlineItem:"));
    EXPECT_FALSE(isOn("runMiniTOC:"));
    document.pdfview()->setCurrentSelection(document.pdfDoc()->page(0)->selectionForRange({0, 4}));
    EXPECT_TRUE(isOn("runMiniTOC:"));
    document.pdfview()->clearSelection();
    EXPECT_FALSE(isOn("runMiniTOC:"));
}

TEST_F(WindowOnATree, ASelectedRowCountsWhileItCanBeSeen) {
    document.outlineview()->expandItem(*node({0}), true);
    select({{0, 0}});
    EXPECT_TRUE(isOn("moveLeft:"));
    document.outlineview()->collapse(document.treecontroller().indexForNode(*node({0}), 0));
    select({{0, 0}});
    EXPECT_FALSE(isOn("moveLeft:"));
    document.outlineview()->expand(document.treecontroller().indexForNode(*node({0}), 0));
    EXPECT_TRUE(isOn("moveLeft:"));
    document.outlineview()->collapse(document.treecontroller().indexForNode(*node({0}), 0));
    EXPECT_TRUE(isOn("moveLeft:"));
    EXPECT_EQ(document.treecontroller().selectionIndexPaths(), std::vector<IndexPath>{{0}})
        << "the folded item is selected instead";
}

TEST_F(WindowOnATree, ARowThatMovesIntoAFoldedOneStaysInSight) {
    document.root().insertObjectInChildrenAtIndex(std::make_unique<MyOutlineItem>(), 1);
    select({{1}});
    EXPECT_TRUE(isOn("moveRight:"));
    action("moveRight:").trigger();
    ASSERT_EQ(node({0})->childCount(), 2);
    EXPECT_EQ(document.selectedNodes().size(), 1U);
    EXPECT_TRUE(isOn("moveLeft:"));
}

/// The commands of the menu that a click with the second button brings up; "|" between groups.
QString contextMenuOf(QAbstractScrollArea &view, const QPoint &position) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, position, view.viewport()->mapToGlobal(position));
    QCoreApplication::sendEvent(view.viewport(), &event);
    const auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!menu) return {};
    QStringList names;
    for (const QAction *each : menu->actions())
        names.append(each->isSeparator() ? "|" : each->menu() ? each->menu()->title() : each->objectName());
    QApplication::activePopupWidget()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return names.join(' ');
}

TEST_F(WindowOnATree, AClickWithTheSecondButtonOffersWhatCanBeDoneThere) {
    window().show();
    OKNSOutlineView &outline = *document.outlineview();
    const QPoint entry = outline.visualRect(document.treecontroller().indexForNode(*node({0}))).center();
    EXPECT_EQ(contextMenuOf(outline, entry),
              "moveToPageOfOutlineItem: pointSelectedEntryHere: | addSiblingOutlineItem: "
              "addChildOutlineItem: | copy: "
              "removeOutlineItems: promoteChildrenOutlineItem: | moveLeft: moveRight: moveUp: moveDown: | "
              "applyTOCExpand: applyTOCCollapse: toggleOpenInViewers: &Titles");
    EXPECT_EQ(contextMenuOf(outline, {20, outline.viewport()->height() - 5}),
              "addSiblingOutlineItem: | selectTOCAll: runSearchSelectSheet: filterOutline: | runGuessPDF:");
    const QString onPages = contextMenuOf(*document.pdfview(), {100, 100});
    EXPECT_TRUE(onPages.startsWith("addSiblingOutlineItem: addChildOutlineItem: pointSelectedEntryHere: | "))
        << onPages.toStdString();
    EXPECT_TRUE(onPages.contains("zoomToFit:"));
    document.pdfview()->setCurrentSelection(document.pdfDoc()->page(0)->selectionForRange({0, 4}));
    EXPECT_EQ(contextMenuOf(*document.pdfview(), {100, 100}),
              "copy: | addSelectedTextAsTOCSibling: addSelectedTextAsTOCChild: | useSelectionforH1: "
              "useSelectionforH2: useSelectionforH3: useSelectionforH4: runMiniTOC: | " +
                  onPages);
    EXPECT_TRUE(contextMenuOf(*document.pdfthumbs(), {50, 50}).startsWith("addSiblingOutlineItem: "));
    EXPECT_TRUE(contextMenuOf(*window().tableViewH1H2H3Config(), {20, 5})
                    .startsWith("buttonDeleteSelectedH1H2H3RowsClicked: resetH1H2H3FontsMap: | "));
}

TEST_F(WindowOnATree, AClickWithTheSecondButtonSelectsTheEntryUnlessItIs) {
    window().show();
    document.root().insertObjectInChildrenAtIndex(std::make_unique<MyOutlineItem>(), 1);
    OKNSOutlineView &outline = *document.outlineview();
    const auto pressOn = [&](const IndexPath &path) {
        const QRect row = outline.visualRect(document.treecontroller().indexForNode(*node(path)));
        QTest::mousePress(outline.viewport(), Qt::RightButton, {}, row.center());
        QTest::mouseRelease(outline.viewport(), Qt::RightButton, {}, row.center());
    };
    select({{0}});
    pressOn({1});
    EXPECT_EQ(document.treecontroller().selectionIndexPaths(), std::vector<IndexPath>{{1}});
    select({{0}, {1}});
    pressOn({1});
    EXPECT_EQ(document.treecontroller().selectionIndexPaths().size(), 2U);
}

TEST_F(Window, EachMenuHasItsCommandsInGroups) {
    QMap<QString, QStringList> expected;
    for (const ActionDescription *each : document.actions().handled()) {
        if (each->menu == Menu::None) continue;
        QStringList &names = expected[menuTitle(each->menu)];
        if (each->has(ActionDescription::StartsGroup) && !names.isEmpty()) names.append("|");
        names.append(each->selector);
    }
    QMap<QString, QStringList> shown;
    for (const QAction *top : window().menuBar()->actions())
        for (const QAction *each : top->menu()->actions())
            shown[top->text()].append(each->isSeparator() ? "|" : each->objectName());
    EXPECT_EQ(shown, expected);
    EXPECT_GT(shown.value(menuTitle(Menu::Outline)).count("|"), 1);
}

TEST_F(Window, AMenuBroughtUpShowsWhatCanBeDoneNow) {
    select({});
    QCoreApplication::processEvents();
    select({{0}});
    Q_EMIT window().menuBar()->actions().at(2)->menu()->aboutToShow();
    EXPECT_TRUE(action("removeOutlineItems:").isEnabled()) << "without waiting for events";
}

TEST_F(Window, LinksToTheWebAreOpenedInTheBrowser) {
    Q_EMIT document.pdfview()->linkClicked("https://example.org/a?b=c#d");
    EXPECT_EQ(platform.openedURLs, QList{QUrl("https://example.org/a?b=c#d")});
}

TEST_F(Window, CopyIsForThePageWhenItHasTheFocus) {
    select({{0}});
    document.pdfview()->setCurrentSelection(document.pdfDoc()->page(1)->selectionForRange({0, 4}));
    document.pdfview()->setFocus();
    action("copy:").trigger();
    EXPECT_EQ(platform.clipboardTexts, QStringList{"Page"});
    window().tableViewH1H2H3Config()->setFocus();
    action("copy:").trigger();
    EXPECT_EQ(platform.clipboardTexts.size(), 1);
}

TEST_F(Window, TheStatusBarTellsPageAndZoom) {
    const auto status = [this] {
        QStringList texts;
        for (const char *name : {"pageStatus", "zoomStatus"})
            texts.append(window().statusBar()->findChild<QLabel *>(name)->text());
        return texts.join(", ");
    };
    document.pdfview()->setScaleFactor(1.5);
    EXPECT_EQ(status(), "Page 1 (1 of 3), 150 %");
    document.pdfview()->goToPage(document.pdfDoc()->page(2));
    EXPECT_EQ(status(), "Page 3 (3 of 3), 150 %");
    document.pdfview()->setScaleFactor(0.504);
    EXPECT_EQ(status(), "Page 3 (3 of 3), 50 %");
}

TEST_F(Window, TextsOfTheStatusBarStandApart) {
    window().show();
    QCoreApplication::processEvents();
    const auto *page = window().statusBar()->findChild<QLabel *>("pageStatus");
    const auto *zoom = window().statusBar()->findChild<QLabel *>("zoomStatus");
    const int blank = page->fontMetrics().horizontalAdvance(u' ');
    EXPECT_GT(zoom->mapTo(&window(), zoom->contentsRect().topLeft()).x() -
                  page->mapTo(&window(), page->contentsRect().topRight()).x(),
              3 * blank);
}

TEST_F(Window, NoticesStandAboveThePagesAcrossTheWindow) {
    window().resize(1000, 700);
    window().show();
    const int height = window().splitViewTopLevel()->height();
    document.updateChangeCount(Document::Change::Done);
    document.setPdfURL(dir.path("no folder/a.pdf"));
    document.actions().perform("saveDocument:");
    const NoticeBar *bar = window().notices()->bar("failedWrite");
    ASSERT_TRUE(bar);
    QCoreApplication::processEvents();
    ASSERT_TRUE(window().isAncestorOf(bar));
    EXPECT_TRUE(bar->isVisible());
    const QPoint place = bar->mapTo(&window(), QPoint(0, bar->height()));
    EXPECT_LE(place.y(), window().splitViewTopLevel()->mapTo(&window(), QPoint(0, 0)).y());
    EXPECT_EQ(bar->width(), window().splitViewTopLevel()->width());
    EXPECT_LT(window().splitViewTopLevel()->height(), height);
    EXPECT_GT(window().splitViewTopLevel()->height(), height / 2) << "it takes no more than it needs";
}

TEST_F(Window, ThePanesShareTheHeightThreeToOne) {
    window().resize(1000, 900);
    window().show();
    QCoreApplication::processEvents();
    const int outline = document.outlineview()->height();
    window().resize(1000, 1300);
    QCoreApplication::processEvents();
    EXPECT_NEAR(document.outlineview()->height() - outline, 300, 20);
}

TEST_F(Window, EveryCommandOfAMenuHasALetterOfItsOwn) {
    for (const QAction *top : window().menuBar()->actions()) {
        QString letters;
        for (const QAction *each : top->menu()->actions()) {
            if (each->isSeparator() || each->menu()) continue;
            const QKeySequence key = QKeySequence::mnemonic(each->text());
            EXPECT_FALSE(key.isEmpty()) << each->text().toStdString();
            EXPECT_FALSE(letters.contains(key.toString())) << each->text().toStdString();
            letters += key.toString() + ' ';
        }
    }
}

TEST_F(Window, ToolTipsTellTheKeys) {
    EXPECT_EQ(action("addSiblingOutlineItem:").toolTip(), "Add Sibling (Ctrl+B)");
    EXPECT_EQ(action("openPDFInDefaultApp:").toolTip(), "Open in Default Application");
}

TEST_F(Window, TheToolBarHasWhatIsNeededMost) {
    QStringList titles;
    for (const QAction *each : window().findChild<QToolBar *>("toolBar")->actions())
        titles.append(each->isSeparator() ? "|" : each->objectName());
    EXPECT_EQ(titles.join(' '),
              "saveDocument: openPDFInDefaultApp: | addSiblingOutlineItem: addChildOutlineItem: "
              "removeOutlineItems: moveLeft: moveRight: moveUp: moveDown: | findContents: runGuessPDF: | "
              "zoomIn: zoomOut: zoomToFit:");
}

}  // namespace
}  // namespace leafwright
