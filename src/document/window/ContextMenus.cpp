#include "document/window/ContextMenus.h"

#include "document/commands/ActionTable.h"
#include "document/window/DocumentWindow.h"
#include "document/window/RefusalTips.h"
#include "outlineview/OKNSOutlineView.h"
#include "pageview/ThumbnailView.h"
#include "view/LabelPDFView.h"

#include <QAction>
#include <QMenu>
#include <QTableView>

namespace leafwright {

namespace {

void fill(QMenu &menu, DocumentWindow &window, Place place) {
    window.refusalTips().watch(menu);
    for (const char *selector : commandsIn(place)) {
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
    window.refusalTips().watch(*titles);
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
        fill(menu, window, isOnEntry ? Place::OnEntries : Place::BesideEntries);
        if (isOnEntry) addTitles(menu, window);
    });
    addContextMenu(window, window.pdfview(), [&window](QMenu &menu, const QPoint & /*position*/) {
        if (window.pdfview()->currentSelection()) {
            fill(menu, window, Place::OnText);
            menu.addSeparator();
        }
        fill(menu, window, Place::OnPages);
    });
    addContextMenu(window, window.pdfthumbs(), [&window](QMenu &menu, const QPoint & /*position*/) {
        fill(menu, window, Place::OnThumbnails);
    });
    addContextMenu(
        window, window.tableViewH1H2H3Config(),
        [&window](QMenu &menu, const QPoint & /*position*/) { fill(menu, window, Place::OnMapRows); });
}

}  // namespace leafwright
