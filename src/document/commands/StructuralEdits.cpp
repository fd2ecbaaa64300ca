#include "document/commands/StructuralEdits.h"

#include "categories/CharacterSet.h"
#include "categories/IndexPathSteps.h"
#include "categories/RunWalk.h"
#include "categories/SelectionFont.h"
#include "categories/TextCleaning.h"
#include "document/MyDocument.h"
#include "document/outline/TitleRewriting.h"
#include "outlineview/OKNSOutlineView.h"
#include "outlineview/OutlineViewExtensions.h"
#include "texts/CountText.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"

#include <algorithm>

namespace leafwright {

namespace {

/// More selected nodes than this move together, as far as views can tell.
constexpr size_t nodesWorthMovingSingly = 32;

/// Marks a document as moving its selected items; a change that is counted at the end, whatever was moved.
class Moving {
public:
    Moving(MyDocument &document, const QString &command)
        : document_(document), edit_(document.edits(), command) {
        document_.setShouldIgnoreKVO(true);
        TreeController &tree = document_.treecontroller();
        nodes_ = tree.selectedNodes();
        if (nodes_.size() > nodesWorthMovingSingly || tree.isFiltered()) manyMoves_.emplace(tree);
    }
    ~Moving() {
        manyMoves_.reset();
        document_.outlineview()->revealItems(nodes_);
        document_.setShouldIgnoreKVO(false);
    }
    Moving(const Moving &) = delete;
    Moving &operator=(const Moving &) = delete;

    /// Those selected at the start, in tree order.
    const std::vector<TreeNode *> &nodes() const { return nodes_; }

private:
    MyDocument &document_;
    OutlineEdits::Transaction edit_;
    std::vector<TreeNode *> nodes_;
    std::optional<TreeController::ManyMoves> manyMoves_;
};

IndexPath siblingPath(const IndexPath &path, size_t position) {
    return path.indexPathByRemovingLastIndex().indexPathByAddingIndex(position);
}

QString trimmedToLetters(const QString &text) {
    const CharacterSet &letters = CharacterSet::letters();
    const auto isLetter = [&](QChar unit) { return letters.contains(unit); };
    const auto first = std::ranges::find_if(text, isLetter);
    const auto last = std::find_if(text.rbegin(), std::make_reverse_iterator(first), isLetter).base();
    return QString(first, last - first);
}

}  // namespace

bool checkLegitimateTitle(const QString &title) {
    const CharacterSet &letters = CharacterSet::letters();
    return !title.isEmpty() && std::ranges::all_of(title, [&](QChar unit) { return letters.contains(unit); });
}

StructuralEdits::StructuralEdits(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    actions.handle("moveLeft:", [this](QObject *) { moveLeft(); });
    actions.handle("moveRight:", [this](QObject *) { moveRight(); });
    actions.handle("moveUp:", [this](QObject *) { moveUp(); });
    actions.handle("moveDown:", [this](QObject *) { moveDown(); });
    actions.handle("addSiblingOutlineItem:", [this](QObject *) { addSiblingOutlineItem(); });
    actions.handle("addChildOutlineItem:", [this](QObject *) { addChildOutlineItem(); });
    actions.handle("removeOutlineItems:", [this](QObject *) { removeOutlineItems(); });
    actions.handle("promoteChildrenOutlineItem:", [this](QObject *) { promoteChildrenOutlineItem(); });
    actions.handle("addSelectedTextAsTOCSibling:", [this](QObject *) { addSelectedTextAsTOCSibling(); });
    actions.handle("addSelectedTextAsTOCChild:", [this](QObject *) { addSelectedTextAsTOCChild(); });
    actions.handle("changeOutlineItemToTitleCase:", [this](QObject *) { changeOutlineItemToTitleCase(); });
}

void StructuralEdits::moveLeft() {
    const Moving moving(document_, QStringLiteral("moveLeft:"));
    TreeController &tree = document_.treecontroller();
    // From the last to the first: each goes right behind the parent, before those that went earlier.
    for (auto node = moving.nodes().rbegin(); node != moving.nodes().rend(); ++node)
        if (const auto aunt = nextaunt((*node)->indexPath())) tree.moveNode(**node, *aunt);
}

void StructuralEdits::moveRight() {
    const Moving moving(document_, QStringLiteral("moveRight:"));
    TreeController &tree = document_.treecontroller();
    for (TreeNode *node : moving.nodes()) {
        const IndexPath path = node->indexPath();
        if (path.lastIndex() == 0) continue;
        const TreeNode *sibling = tree.descendantNodeAtIndexPath(siblingPath(path, path.lastIndex() - 1));
        tree.moveNode(*node, sibling->indexPath().indexPathByAddingIndex(sibling->childCount()));
    }
}

void StructuralEdits::moveUp() {
    const Moving moving(document_, QStringLiteral("moveUp:"));
    TreeController &tree = document_.treecontroller();
    for (TreeNode *node : moving.nodes()) {
        const IndexPath path = node->indexPath();
        if (path.lastIndex() > 0) tree.moveNode(*node, siblingPath(path, path.lastIndex() - 1));
    }
}

void StructuralEdits::moveDown() {
    const Moving moving(document_, QStringLiteral("moveDown:"));
    TreeController &tree = document_.treecontroller();
    struct Run {
        TreeNode *first;
        TreeNode *last;
    };
    // By the sibling that would go on with the run. The order of the runs does not matter: they do not touch.
    std::map<IndexPath, Run> runsByNext;
    for (TreeNode *node : moving.nodes()) {
        const IndexPath path = node->indexPath();
        Run run{node, node};
        if (const auto found = runsByNext.find(path); found != runsByNext.end()) {
            run.first = found->second.first;
            runsByNext.erase(found);
        }
        runsByNext.emplace(*nextsibling(path), run);
    }
    for (const auto &[next, run] : runsByNext) {
        TreeNode *after = tree.descendantNodeAtIndexPath(*nextsibling(run.last->indexPath()));
        if (after) tree.moveNode(*after, run.first->indexPath());
    }
}

bool StructuralEdits::mayEdit() const {
    return document_.allowTOCediting() && !document_.lockTOCediting();
}

TreeNode *StructuralEdits::firstSelected() const {
    const auto path = document_.treecontroller().selectionIndexPath();
    return path ? document_.treecontroller().descendantNodeAtIndexPath(*path) : nullptr;
}

IndexPath StructuralEdits::endOfTopLevel() const {
    return IndexPath::indexPathWithIndex(document_.root().children().size());
}

void StructuralEdits::showSelected() {
    document_.outlineview()->revealItems(document_.treecontroller().selectedNodes());
}

void StructuralEdits::editSelectedTitle() {
    OKNSOutlineView &outline = *document_.outlineview();
    showSelected();
    outline.editColumn(TreeController::TitleColumn, outline.selectedRow());
}

std::unique_ptr<MyOutlineItem> StructuralEdits::itemForCurrentPage() const {
    const PDFPage *page = document_.pdfview()->currentPage();
    return std::make_unique<MyOutlineItem>(
        getSuggestedTitleOnCurrentPage(),
        page ? PageTarget{page->label(), std::nullopt, page->index()} : PageTarget{QString()});
}

void StructuralEdits::addSiblingOutlineItem() {
    if (!mayEdit()) return;
    const OutlineEdits::Transaction edit(document_.edits(), QStringLiteral("addSiblingOutlineItem:"));
    auto item = itemForCurrentPage();
    document_.undoSupport().registerObserversForOutlineItem(*item);
    const TreeNode *selected = firstSelected();
    const IndexPath path = selected ? *nextsibling(selected->indexPath()) : endOfTopLevel();
    document_.treecontroller().insertObjectAtArrangedObjectIndexPath(std::move(item), path);
    editSelectedTitle();
}

void StructuralEdits::addChildOutlineItem() {
    if (!mayEdit()) return document_.platform().beep();
    const OutlineEdits::Transaction edit(document_.edits(), QStringLiteral("addChildOutlineItem:"));
    TreeNode *parent = firstSelected();
    const IndexPath path =
        parent ? parent->indexPath().indexPathByAddingIndex(parent->childCount()) : endOfTopLevel();
    document_.treecontroller().insertObjectAtArrangedObjectIndexPath(itemForCurrentPage(), path);
    if (parent) document_.outlineview()->expandItem(*parent);
    editSelectedTitle();
}

/// Tells how many entries went, or of those that went unseen.
/// @param unseen which the filter hid, below others that it did not
void StructuralEdits::tellRemoved(size_t count, size_t unseen) const {
    document_.tell(
        unseen > 0
            ? MyDocument::tr("Entries that the filter hides were removed with those above them: %1. Step "
                             "Back brings them back.")
                  .arg(unseen)
            : MyDocument::tr("%1 removed").arg(entryCountText(static_cast<qint64>(count))));
}

void StructuralEdits::removeOutlineItems() {
    if (!mayEdit()) return document_.platform().beep();
    const OutlineEdits::Transaction edit(document_.edits(), QStringLiteral("removeOutlineItems:"));
    TreeController &tree = document_.treecontroller();
    const size_t before = tree.nodeCount();
    const size_t hiddenBefore = before - tree.shownCount();
    // What is left of the list stays where it was, although Qt would show the neighbour of what goes.
    document_.outlineview()->keepingPlace([&] {
        tree.removeObjects(document_.selectedNodes());
        tree.setSelectedNodes({});
    });
    tellRemoved(before - tree.nodeCount(), hiddenBefore - (tree.nodeCount() - tree.shownCount()));
}

void StructuralEdits::promoteChildrenOutlineItem() {
    if (!mayEdit()) return;
    const OutlineEdits::Transaction edit(document_.edits(), QStringLiteral("promoteChildrenOutlineItem:"));
    const TreeNode *node = firstSelected();
    if (node) {
        const std::vector<TreeNode *> children = node->childNodes();
        document_.treecontroller().moveNodes(children, *nextsibling(node->indexPath()));
        document_.outlineview()->revealItems(children);
    }
    if (node) document_.outlineview()->reloadItem(node->parentNode());
}

void StructuralEdits::removeNodeAtIndexPath(const IndexPath &path) {
    const OutlineEdits::Transaction edit(document_.edits(), QStringLiteral("removeNodeAtIndexPath:"),
                                         OutlineEdits::Counting::No);
    document_.treecontroller().removeObjectAtArrangedObjectIndexPath(path);
}

std::unique_ptr<MyOutlineItem> StructuralEdits::itemForSelectedText() const {
    const auto selection = document_.pdfview()->currentSelection();
    if (!selection || selection->isEmpty()) return nullptr;
    const PDFPage &page = *selection->pages().front();
    return std::make_unique<MyOutlineItem>(cleanedRun(selection->string(), charactersToTrim()),
                                           PageTarget{page.label(), topLeftPoint(*selection), page.index()});
}

void StructuralEdits::addSelectedTextAsTOCSibling() {
    auto item = itemForSelectedText();
    if (!item) return;
    const OutlineEdits::Transaction edit(document_.edits(), QStringLiteral("addSelectedTextAsTOCSibling:"));
    const TreeNode *selected = firstSelected();
    const IndexPath path = selected ? *nextsibling(selected->indexPath()) : endOfTopLevel();
    document_.treecontroller().insertObjectAtArrangedObjectIndexPath(std::move(item), path);
    showSelected();
}

void StructuralEdits::addSelectedTextAsTOCChild() {
    auto item = itemForSelectedText();
    if (!item) return;
    const OutlineEdits::Transaction edit(document_.edits(), QStringLiteral("addSelectedTextAsTOCChild:"));
    const TreeNode *parent = firstSelected();
    const IndexPath path =
        parent ? parent->indexPath().indexPathByAddingIndex(parent->childCount()) : endOfTopLevel();
    document_.treecontroller().insertObjectAtArrangedObjectIndexPath(std::move(item), path);
    showSelected();
}

void StructuralEdits::changeOutlineItemToTitleCase() {
    if (!mayEdit()) return document_.platform().beep();
    const OutlineEdits::Transaction edit(document_.edits(), QStringLiteral("changeOutlineItemToTitleCase:"));
    const OKNSOutlineView &outline = *document_.outlineview();
    if (const TreeNode *node = outline.itemAtRow(outline.selectedRow())) {
        MyOutlineItem &item = *node->representedObject();
        document_.edits().setPageTitle(item, capitalizedString(item.pageTitle()));
    }
}

QString StructuralEdits::getSuggestedTitleOnCurrentPage() const {
    QString suggestion = MyDocument::tr("Untitled");
    const PDFPage *page = document_.pdfview()->currentPage();
    if (!page) return suggestion;
    const std::shared_ptr<const PageText> pageText = page->text();
    std::optional<Font> best;
    walkRuns(pageText->attributedString, [&](const CleanedRun &run) {
        const QString text = trimmedToLetters(run.text);
        if (!checkLegitimateTitle(text)) return;
        if (best && run.font.pointSize() <= best->pointSize()) return;
        suggestion = text;
        best = run.font;
    });
    return suggestion;
}

}  // namespace leafwright
