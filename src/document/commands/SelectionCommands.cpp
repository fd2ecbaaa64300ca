#include "document/commands/SelectionCommands.h"

#include "document/MyDocument.h"
#include "document/window/CurrentEntry.h"
#include "document/window/DocumentWindow.h"
#include "document/window/OutlineFilter.h"
#include "model/TreeWalk.h"
#include "outlineview/OKNSOutlineView.h"
#include "texts/CountText.h"
#include "texts/Translated.h"
#include "tree/TreeController.h"
#include "widgets/Sheet.h"

#include <QLabel>
#include <QLineEdit>

#include <iterator>

namespace leafwright {

namespace {

constexpr Translated translated{"SelectionCommands"};

}  // namespace

std::vector<IndexPath> recursiveMatchIndexPathsInSubTree(TreeNode &node, const QString &term) {
    std::vector<IndexPath> matches;
    walkTree(node, [&](const TreeNode &each, size_t /*depth*/) {
        if (each.representedObject()->hasText(term)) matches.push_back(each.indexPath());
    });
    return matches;
}

SelectionCommands::SelectionCommands(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    actions.handle("selectTOCAll:", [this](QObject *) { selectTOCAll(); });
    actions.handle("selectTOCOnlyLevel1:", [this](QObject *) { selectTOCOnlyLevel(1); });
    actions.handle("selectTOCOnlyLevel2:", [this](QObject *) { selectTOCOnlyLevel(2); });
    actions.handle("selectTOCOnlyLevel3:", [this](QObject *) { selectTOCOnlyLevel(3); });
    actions.handle("applyTOCExpand:", [this](QObject *) { applyTOCExpand(); });
    actions.handle("applyTOCCollapse:", [this](QObject *) { applyTOCCollapse(); });
    actions.handle("filterOutline:", [this](QObject *) { filterOutline(); });
    actions.handle("revealCurrentEntry:", [this](QObject *) { revealCurrentEntry(); });
    actions.handle("runSearchSelectSheet:", [this](QObject *) { runSearchSelectSheet(); });
}

void SelectionCommands::selectTOCAll() {
    const OKNSOutlineView &outline = *document_.outlineview();
    std::vector<TreeNode *> nodes;
    for (int row = 0; row < outline.numberOfRows(); ++row)
        nodes.push_back(outline.itemAtRow(row));
    document_.treecontroller().setSelectedNodes(nodes);
}

void SelectionCommands::selectTOCOnlyLevel(int level) {
    std::vector<TreeNode *> nodes = document_.treecontroller().arrangedObjects().childNodes();
    for (int depth = 1; depth < level; ++depth) {
        std::vector<TreeNode *> below;
        for (const TreeNode *node : nodes)
            below.insert(below.end(), node->childNodes().begin(), node->childNodes().end());
        nodes = std::move(below);
    }
    document_.treecontroller().setSelectedNodes(nodes);
}

void SelectionCommands::applyTOCExpand() {
    // Collected first: unfolding changes the rows.
    for (const TreeNode *node : document_.selectedNodes())
        document_.outlineview()->expandItem(*node, true);
}

void SelectionCommands::applyTOCCollapse() {
    document_.outlineview()->collapseItems(document_.selectedNodes());
}

void SelectionCommands::filterOutline() {
    document_.myWindow()->outlineFilter()->open();
}

void SelectionCommands::revealCurrentEntry() {
    document_.myWindow()->currentEntry()->reveal();
}

void SelectionCommands::runSearchSelectSheet() {
    auto *sheet = new Sheet(translated("Search and Select"));
    sheet->addText(
        translated("Selects all items whose titles contain a text. Upper and lower case make a difference."));
    auto *field = new QLineEdit;
    sheet->addField(translated("&Text:"), field, QStringLiteral("searchSelectField"));
    auto *found = new QLabel(QStringLiteral(" "));
    found->setTextFormat(Qt::PlainText);
    sheet->addField({}, found, QStringLiteral("searchSelectFound"));
    sheet->addButton(translated("Cancel"), 0);
    sheet->addButton(translated("Select"), 1);
    QObject::connect(field, &QLineEdit::textChanged, sheet, [this, found](const QString &text) {
        const auto count = text.isEmpty() ? 0 : std::ssize(matches(text));
        found->setText(text.isEmpty() ? QStringLiteral(" ")
                       : count == 0   ? translated("No title contains this text.")
                                      : translated("Selects %1.").arg(entryCountText(count)));
    });
    document_.beginSheet(sheet, [this, field](int returnCode) {
        if (returnCode == 1) searchAndSelect(field->text());
    });
}

std::vector<IndexPath> SelectionCommands::matches(const QString &term) const {
    const TreeController &tree = document_.treecontroller();
    std::vector<IndexPath> found;
    for (TreeNode *node : tree.arrangedObjects().childNodes())
        for (IndexPath &path : recursiveMatchIndexPathsInSubTree(*node, term))
            found.push_back(std::move(path));
    // What a filter hides can't be selected.
    std::erase_if(found, [&tree](const IndexPath &path) {
        return !tree.isShown(*tree.descendantNodeAtIndexPath(path));
    });
    return found;
}

void SelectionCommands::searchAndSelect(const QString &term) {
    const std::vector<IndexPath> found = matches(term);
    if (found.empty()) return document_.platform().beep();
    document_.treecontroller().setSelectionIndexPaths(found);
    document_.outlineview()->setFocus();
}

}  // namespace leafwright
