#include "document/window/ContextMenus.h"

#include "document/commands/ActionTable.h"
#include "document/window/DocumentWindow.h"
#include "outlineview/OKNSOutlineView.h"
#include "pageview/ThumbnailView.h"
#include "view/LabelPDFView.h"

#include <QAction>
#include <QMenu>
#include <QTableView>

#include <array>
#include <span>

namespace leafwright {

namespace {

using Selectors = std::span<const char *const>;

/// Stands between groups.
constexpr const char *separator = "";

constexpr auto onEntries = std::to_array<const char *>(
    {"moveToPageOfOutlineItem:", separator, "addSiblingOutlineItem:", "addChildOutlineItem:", separator,
     "copy:", "removeOutlineItems:", "promoteChildrenOutlineItem:", separator,
     "moveLeft:", "moveRight:", "moveUp:", "moveDown:", separator, "applyTOCExpand:", "applyTOCCollapse:"});
constexpr auto besideEntries =
    std::to_array<const char *>({"addSiblingOutlineItem:", separator,
                                 "selectTOCAll:", "runSearchSelectSheet:", separator, "runGuessPDF:"});
constexpr auto onText = std::to_array<const char *>(
    {"copy:", separator, "addSelectedTextAsTOCSibling:", "addSelectedTextAsTOCChild:", separator,
     "useSelectionforH1:", "useSelectionforH2:", "useSelectionforH3:", "useSelectionforH4:", "runMiniTOC:"});
constexpr auto onPages = std::to_array<const char *>(
    {"addSiblingOutlineItem:", "addChildOutlineItem:", separator, "goToPageLabel:", "goBack:", "goForward:",
     separator, "zoomIn:", "zoomOut:", "zoomToFit:", "zoomToPage:", "zoomToActualSize:", separator,
     "nextPageLabelLocation:", "runPrintedPageSheet:"});
constexpr auto onThumbnails = std::to_array<const char *>(
    {"addSiblingOutlineItem:", "addChildOutlineItem:", separator, "goToPageLabel:", "runPrintedPageSheet:"});
constexpr auto onMapRows = std::to_array<const char *>(
    {"buttonDeleteSelectedH1H2H3RowsClicked:", "resetH1H2H3FontsMap:", separator,
     "buttonClickedLoadH1H2H3Map:", "buttonClickedSaveH1H2H3Map:", separator, "runGuessPDF:"});

void fill(QMenu &menu, DocumentWindow &window, Selectors selectors) {
    for (const char *selector : selectors) {
        if (*selector == 0) {
            menu.addSeparator();
        } else if (auto *action = window.findChild<QAction *>(QString::fromLatin1(selector))) {
            menu.addAction(action);
        }
    }
}

/// Commands for titles are many, and most of them stand in a menu of their own.
void addTitles(QMenu &menu, DocumentWindow &window) {
    QMenu *titles = menu.addMenu(menuTitle(Menu::Titles));
    for (const ActionDescription &description : actionDescriptions()) {
        if (description.menu != Menu::Titles) continue;
        if (auto *action = window.findChild<QAction *>(QString::fromLatin1(description.selector)))
            titles->addAction(action);
    }
}

/// @param fillMenu gets the menu and the place in the view
template <typename FillMenu>
void addContextMenu(DocumentWindow &window, QAbstractScrollArea *view, FillMenu fillMenu) {
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(view, &QWidget::customContextMenuRequested, &window,
                     [&window, view, fillMenu](const QPoint &position) {
                         auto *menu = new QMenu(view);
                         menu->setAttribute(Qt::WA_DeleteOnClose);
                         fillMenu(*menu, position);
                         window.updateActions();
                         menu->popup(view->viewport()->mapToGlobal(position));
                     });
}

}  // namespace

void addContextMenus(DocumentWindow &window) {
    addContextMenu(window, window.outlineview(), [&window](QMenu &menu, const QPoint &position) {
        const bool isOnEntry = window.outlineview()->indexAt(position).isValid();
        fill(menu, window, isOnEntry ? Selectors(onEntries) : Selectors(besideEntries));
        if (isOnEntry) addTitles(menu, window);
    });
    addContextMenu(window, window.pdfview(), [&window](QMenu &menu, const QPoint & /*position*/) {
        if (window.pdfview()->currentSelection()) {
            fill(menu, window, onText);
            menu.addSeparator();
        }
        fill(menu, window, onPages);
    });
    addContextMenu(window, window.pdfthumbs(),
                   [&window](QMenu &menu, const QPoint & /*position*/) { fill(menu, window, onThumbnails); });
    addContextMenu(window, window.tableViewH1H2H3Config(),
                   [&window](QMenu &menu, const QPoint & /*position*/) { fill(menu, window, onMapRows); });
}

}  // namespace leafwright
