#include "document/NavigationCommands.h"

#include "desktop/OKNSOutlineView.h"
#include "document/MyDocument.h"
#include "platform/UserDefaults.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"

#include <QGuiApplication>

#include <array>

namespace leafwright {

NavigationCommands::NavigationCommands(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    actions.handle("doubleClickAction:",
                   [this](QObject *) { doubleClickAction(QGuiApplication::keyboardModifiers()); });
    actions.handle("moveToPageOfOutlineItem:", [this](QObject *) { moveToPageOfOutlineItem(); });
    actions.handle("nextPage:", [this](QObject *) { nextPage(); });
    actions.handle("prevPage:", [this](QObject *) { prevPage(); });
    actions.handle("nextPageLabelLocation:", [this](QObject *) { nextPageLabelLocation(); });
    actions.handle("zoomIn:", [this](QObject *) { document_.pdfview()->zoomIn(); });
    actions.handle("zoomOut:", [this](QObject *) { document_.pdfview()->zoomOut(); });
    actions.handle("zoomToFit:", [this](QObject *) { document_.pdfview()->zoomToFit(); });
}

void NavigationCommands::doubleClickAction(Qt::KeyboardModifiers modifiers) {
    const bool editing =
        document_.platform().userDefaults().boolForKey(QStringLiteral("LeafwrightEnableDoubleClickEditing"));
    const bool commandKey = modifiers.testFlag(Qt::ControlModifier);
    if (editing != commandKey) {
        editClickedCell();
    } else if (const TreeNode *node =
                   document_.outlineview()->itemAtRow(document_.outlineview()->clickedRow())) {
        moveToMOI(*node->representedObject());
    }
}

void NavigationCommands::editClickedCell() {
    if (document_.lockTOCediting()) return;
    OKNSOutlineView &outline = *document_.outlineview();
    outline.editColumn(outline.clickedColumn(), outline.clickedRow());
    // Counted before anything is typed.
    document_.updateChangeCount(Document::Change::Done);
}

void NavigationCommands::moveToMOI(const MyOutlineItem &item) {
    const int index = document_.pageIndexOfItem(item).value_or(0);
    if (isZeroPoint(item.pointOnPage())) {
        document_.pdfview()->goToPage(document_.pdfDoc()->page(index));
    } else {
        document_.pdfview()->goToDestination({index, item.pointOnPage()});
    }
}

void NavigationCommands::moveToPageOfOutlineItem() {
    TreeController &tree = document_.treecontroller();
    const auto path = tree.selectionIndexPath();
    const TreeNode *node = path ? tree.descendantNodeAtIndexPath(*path) : nullptr;
    if (node) {
        moveToMOI(*node->representedObject());
    } else {
        moveToPageLabel({});
    }
}

void NavigationCommands::moveToPageLabel(const QString &label) {
    const int index = document_.getRealPageArrayIndex(label).value_or(0);
    document_.pdfview()->goToPage(document_.pdfDoc()->page(index));
}

void NavigationCommands::nextPage() {
    document_.pdfview()->goToNextPage();
}

void NavigationCommands::prevPage() {
    document_.pdfview()->goToPreviousPage();
}

void NavigationCommands::nextPageLabelLocation() {
    static const std::array corners{QStringLiteral("None"), QStringLiteral("Q1"), QStringLiteral("Q4"),
                                    QStringLiteral("Q3"), QStringLiteral("Q2")};
    LabelPDFView &view = *document_.pdfview();
    const auto found = std::ranges::find(corners, view.pageLabelLocation());
    const bool isLast = found == corners.end() || std::next(found) == corners.end();
    view.setPageLabelLocation(isLast ? corners.front() : *std::next(found));
    view.setNeedsDisplay();
}

}  // namespace leafwright
