#include "document/commands/NavigationCommands.h"

#include "document/MyDocument.h"
#include "outlineview/OKNSOutlineView.h"
#include "platform/Settings.h"
#include "platform/UserDefaults.h"
#include "texts/Translated.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"
#include "widgets/Sheet.h"

#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <array>

namespace leafwright {

namespace {

constexpr Translated translated{"NavigationCommands"};

/// Which page it is, for people.
QString placeOf(const PDFPage &page) {
    return translated("Page %1 (%2 of %3)")
        .arg(page.label(), QString::number(page.index() + 1), QString::number(page.document().pageCount()));
}

}  // namespace

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
    actions.handle("zoomToPage:", [this](QObject *) { document_.pdfview()->zoomToPage(); });
    actions.handle("zoomToActualSize:", [this](QObject *) { document_.pdfview()->zoomToActualSize(); });
    actions.handle("goToPageLabel:", [this](QObject *) { goToPageLabel(); });
    actions.handle("goBack:", [this](QObject *) { document_.pdfview()->goBack(); });
    actions.handle("goForward:", [this](QObject *) { document_.pdfview()->goForward(); });
}

void NavigationCommands::doubleClickAction(Qt::KeyboardModifiers modifiers) {
    const bool editing = document_.platform().userDefaults().boolForKey(setting::enableDoubleClickEditing);
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
    document_.edits().countChange();
}

void NavigationCommands::moveToMOI(const MyOutlineItem &item) {
    const int index = document_.outline().pageIndexOfItem(item).value_or(0);
    const Target target = item.target();
    const auto *page = std::get_if<PageTarget>(&target);
    if (page && page->point) {
        document_.pdfview()->goToDestination({index, *page->point});
    } else {
        document_.pdfview()->goToPage(document_.pdfDoc()->page(index));
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

void NavigationCommands::goToPageLabel() {
    auto *sheet = new Sheet(translated("Go to Page"));
    auto *field = new QLineEdit;
    sheet->addField(translated("&Label or number:"), field, QStringLiteral("goToPageField"));
    auto *found = new QLabel(QStringLiteral(" "));
    found->setTextFormat(Qt::PlainText);
    sheet->addField({}, found, QStringLiteral("goToPageFound"));
    sheet->addButton(translated("Cancel"), 0);
    QPushButton *go = sheet->addButton(translated("Go"), 1);
    go->setEnabled(false);
    QObject::connect(field, &QLineEdit::textChanged, sheet, [this, found, go](const QString &text) {
        const PDFPage *page = pageCalled(text);
        go->setEnabled(page);
        found->setText(page             ? placeOf(*page)
                       : text.isEmpty() ? QStringLiteral(" ")
                                        : translated("There is no such page."));
    });
    document_.beginSheet(sheet, [this, field](int returnCode) {
        if (returnCode == 1) document_.pdfview()->goToPage(pageCalled(field->text()));
    });
}

const PDFPage *NavigationCommands::pageCalled(const QString &text) const {
    const QString name = text.trimmed();
    const PDFDocument *pdf = document_.pdfDoc();
    if (!pdf || name.isEmpty()) return nullptr;
    const auto &labels = document_.pdfMapPageLabelToIndex();
    const auto index = labels.constFind(name);
    if (index != labels.constEnd()) return pdf->page(*index);
    bool isNumber = false;
    const int number = name.toInt(&isNumber);
    return isNumber && number > 0 ? pdf->page(number - 1) : nullptr;
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
