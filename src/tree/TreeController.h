#pragma once

#include "model/OutlineEdits.h"
#include "tree/PooledAllocator.h"
#include "tree/TreeDragHandler.h"
#include "tree/TreeNode.h"

#include <QAbstractItemModel>
#include <QItemSelectionModel>

#include <functional>
#include <unordered_map>
#include <unordered_set>

namespace leafwright {

/// Arranges the items below a root item as nodes, which index paths lead to, and is the model and the
/// selection behind every view of them. It follows what happens to the items, whoever changes them: within
/// the notice, nodes and paths are right again. Observers of items must not change the tree from a notice.
/// What it is asked to change itself, by a path or in a cell, it changes through the outline's edits.
///
/// Moves, and moves taken back, keep the nodes, so that selection, current row and unfolding survive. A list
/// of children replaced on an item (`setChildren`) keeps the nodes at its beginning and end that stay; in
/// between, all nodes leave and new ones come.
///
/// Main thread only. The edits, whose only observer of moves it is, must outlive it.
class TreeController final : public QAbstractItemModel,
                             private OutlineItemObserver,
                             private OutlineMoveObserver {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TreeController)

public:
    enum Column : int { TitleColumn, PageColumn };
    enum Role : int {
        /// Where an entry leads that leads to no page: "→ https://example.org"; "" for all others.
        ElsewhereRole = Qt::UserRole,
        /// Of a page label, whether no page has it; see setLabelCheck().
        LostLabelRole
    };

    explicit TreeController(OutlineEdits &edits, QObject *parent = nullptr);
    ~TreeController() override;

    // Nodes

    /// The invisible root node; its children are the top-level nodes.
    TreeNode &arrangedObjects() const { return *root_; }
    /// Null if there is no such node; the invisible root for the empty path.
    TreeNode *descendantNodeAtIndexPath(const IndexPath &path) const;
    /// The node of an index of this model, in whichever column; the invisible root for an invalid index.
    TreeNode &nodeForIndex(const QModelIndex &index) const;
    /// Invalid for the invisible root, and for a node that a filter hides.
    QModelIndex indexForNode(const TreeNode &node, int column = TitleColumn) const;
    /// Null for an item that is not in the tree.
    TreeNode *nodeForItem(const MyOutlineItem &item) const;
    /// How many nodes there are, without the invisible root.
    size_t nodeCount() const { return nodes_.size() - 1; }
    /// Another number whenever a node came, left or moved.
    quint64 structureRevision() const { return structureRevision_; }

    // Filter

    /// Shows views these nodes and all that they are below, and no others: those have no index. The hidden
    /// ones are selected no longer. Nodes that come, and those that come below a hidden one, are shown; moves
    /// leave it at what was shown, together with what is above it. Views are told that the model was reset.
    void setFilter(const std::vector<TreeNode *> &matches);
    /// Shows views all nodes again; what is selected stays so.
    void clearFilter();
    bool isFiltered() const { return isFiltered_; }
    /// Shows views nodes, and all that they are below, though the filter would not.
    void showNodes(const std::vector<TreeNode *> &nodes);
    /// Whether views are shown a node. Without a filter, all are.
    bool isShown(const TreeNode &node) const { return !isFiltered_ || node.isShown_ || &node == root_; }
    /// The children of a node that views are shown. @param node which is shown itself
    const std::vector<TreeNode *> &shownChildren(const TreeNode &node) const {
        return isFiltered_ ? node.shown_ : node.children_;
    }
    /// How many nodes views are shown.
    size_t shownCount() const { return isFiltered_ ? shownCount_ : nodeCount(); }
    /// How many of the nodes that the filter was set to show have not left; 0 without a filter.
    size_t matchCount() const { return matchCount_; }
    /// The first of them in tree order; null without one.
    TreeNode *firstMatch() const;

    // Selection

    QItemSelectionModel *selectionModel() { return &selectionModel_; }
    /// In tree order.
    std::vector<TreeNode *> selectedNodes() const { return selection().nodes; }
    /// Quicker than the selection model's answer, which looks through all of its ranges.
    bool isSelected(const TreeNode &node) const { return selection().mark == node.selectionMark_; }
    /// The first in tree order; absent without a selection.
    std::optional<IndexPath> selectionIndexPath() const;
    /// In tree order.
    std::vector<IndexPath> selectionIndexPaths() const;
    /// Selects just the nodes at these paths and makes the first of them the current one. Paths that lead
    /// nowhere are passed over.
    void setSelectionIndexPaths(const std::vector<IndexPath> &paths);
    /// Selects just these nodes and makes the first of them the current one; an empty list selects nothing.
    /// Those that a filter hides are passed over.
    void setSelectedNodes(const std::vector<TreeNode *> &nodes);

    // Changes

    /// moveNodes() for one node.
    bool moveNode(TreeNode &node, const IndexPath &path);
    /// Moves nodes, with all that is below them, to one place, where they stand next to each other in the
    /// order of the list. They keep their selection and unfolding.
    ///
    /// The path names a gap as the tree is before the move: the one before the child at its last index, or
    /// behind the last child if it is the number of children. So moving the first of three siblings to [2]
    /// puts it between the other two, and moving it to [0] or to [1] leaves it where it is. The gap keeps
    /// its parent and its neighbours, however positions shift while nodes leave.
    ///
    /// A node listed together with one that it is below leaves it and stands beside it afterwards. A node
    /// listed twice counts once.
    /// @return false, with nothing changed, if the gap does not exist or is below one of the nodes, or if
    /// one of them is not in the tree or is the invisible root
    bool moveNodes(const std::vector<TreeNode *> &nodes, const IndexPath &path);
    /// Moves as long as it lives are told to views together, at its end. For very many moves: each told by
    /// itself costs time by the number of selected nodes. Until the end only nodes and paths are right.
    class ManyMoves {
    public:
        /// @param tree must outlive this
        explicit ManyMoves(TreeController &tree) : tree_(tree) { tree_.beginManyMoves(); }
        ~ManyMoves() { tree_.endManyMoves(); }
        Q_DISABLE_COPY_MOVE(ManyMoves)

    private:
        TreeController &tree_;
    };
    /// Inserts an object with all that is below it; it becomes the selection. Throws std::out_of_range
    /// unless the path's parent exists and has that many children. @return the object's node
    TreeNode &insertObjectAtArrangedObjectIndexPath(std::unique_ptr<MyOutlineItem> object,
                                                    const IndexPath &path);
    /// Throws std::out_of_range if there is no such object.
    void removeObjectAtArrangedObjectIndexPath(const IndexPath &path);
    /// Removes the objects of nodes with all below them. @param nodes in tree order; one that stands below
    /// another goes with it
    void removeObjects(const std::vector<TreeNode *> &nodes);

    // Hooks

    using ShouldEdit = std::function<bool(int column, const TreeNode &node)>;
    /// Asked whether a cell may be edited in place. Without it, all may be.
    void setShouldEdit(ShouldEdit shouldEdit) { shouldEdit_ = std::move(shouldEdit); }
    /// Who knows whether no page has an item's label; nobody for no.
    using LabelCheck = std::function<bool(const MyOutlineItem &item)>;
    void setLabelCheck(LabelCheck isLost) { isLabelLost_ = std::move(isLost); }
    /// Not owned; null for neither drags nor drops, which is how it begins.
    void setDragHandler(TreeDragHandler *handler) { dragHandler_ = handler; }
    /// The kinds of data that may be dropped on the tree.
    void setMimeTypes(const QStringList &types) { mimeTypes_ = types; }

    // QAbstractItemModel. There is no removeRows, deliberately: after a drop that moved rows a view would
    // remove them from their new place.

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    QModelIndex sibling(int row, int column, const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// Sets a title or a page label, as someone who edits a cell. @return false if it may not be edited
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    QStringList mimeTypes() const override { return mimeTypes_; }
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    Qt::DropActions supportedDropActions() const override;
    Qt::DropActions supportedDragActions() const override;
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

Q_SIGNALS:
    /// A cell was edited in place and its text is another now.
    void itemEdited(leafwright::TreeNode *node, int column);
    /// All nodes have left; what comes next is another outline.
    void emptied();

private:
    /// Children next to each other, and the gap that they are to move to, in positions before the move.
    struct BlockMove {
        TreeNode &source;
        size_t first;
        size_t count;
        TreeNode &target;
        size_t gap;
    };

    void willChangeValueForKey(const MyOutlineItem &item, QLatin1String key) override;
    void didChangeValueForKey(const MyOutlineItem &item, QLatin1String key) override;
    void followText(const TreeNode &node, int column);
    void followLook(const TreeNode &node);
    void followChildren(TreeNode &node);
    void insertNodes(TreeNode &parent, size_t first, size_t count);
    void removeNodes(TreeNode &parent, size_t first, size_t count);
    TreeNode *makeNode(MyOutlineItem &item, TreeNode *parent, size_t row);
    void makeNodesBelow(TreeNode &top);
    /// @return the nodes, so that they outlive what still may point to them
    std::vector<std::shared_ptr<TreeNode>> forget(const std::vector<TreeNode *> &tops);

    bool canMove(const std::vector<TreeNode *> &nodes, const TreeNode *target, const IndexPath &path) const;
    void moveRuns(const std::vector<TreeNode *> &nodes, TreeNode &target, size_t gap);
    void moveScattered(const std::vector<TreeNode *> &nodes, TreeNode &target, size_t gap);

    size_t viewRow(const TreeNode &node) const { return isFiltered_ ? node.shownRow_ : node.row(); }
    int childIndexAt(int viewRow, const QModelIndex &parent) const;
    static void numberShown(const TreeNode &parent, size_t first);
    void hideAll();
    void arrangeShown();
    void showNode(TreeNode &node);
    size_t viewRowsBefore(const TreeNode &parent, size_t position) const;
    void showAllOf(const std::vector<TreeNode *> &added);
    static void insertShown(TreeNode &parent, size_t viewFirst, const std::vector<TreeNode *> &added);
    static void removeShown(TreeNode &parent, size_t viewFirst, size_t count);

    BlockMove nodesOf(const OutlineMove &move) const;
    static void spliceNodes(const BlockMove &move);
    void beginManyMoves() override;
    void endManyMoves() override;
    void willMove(const OutlineMove &move) override;
    void didMove(const OutlineMove &move) override;
    void didRearrange(const std::vector<OutlineArrangement> &parents) override;

    /// The selected nodes, made again when the selection or the tree changed.
    struct Selection {
        std::vector<TreeNode *> nodes;
        quint32 mark = 0;  ///< That of each of them, and of no other.
        quint64 structureRevision = 0;
        bool isCurrent = false;
    };
    const Selection &selection() const;
    void inTreeOrder(std::vector<TreeNode *> &nodes) const;
    void putInTreeOrder(std::vector<TreeNode *> &nodes, quint32 TreeNode::*mark, quint32 value) const;
    QItemSelection selectionOf(const std::vector<TreeNode *> &nodes) const;
    void putSelectionAside();
    void restoreSelection();

    using Nodes =
        std::unordered_map<const MyOutlineItem *, std::shared_ptr<TreeNode>, std::hash<const MyOutlineItem *>,
                           std::equal_to<>,
                           PooledAllocator<std::pair<const MyOutlineItem *const, std::shared_ptr<TreeNode>>>>;

    OutlineEdits &edits_;
    /// By item, the root's too. Shared only so that others can hold weak pointers.
    Nodes nodes_;
    TreeNode *root_;
    QItemSelectionModel selectionModel_;
    mutable Selection selection_;
    mutable quint32 lastOrderMark_ = 0;
    std::vector<TreeNode *> selectionAside_;
    QModelIndexList indexesBeforeMoves_;
    bool movingItems_ = false;
    bool movingMany_ = false;
    bool movingFiltered_ = false;  ///< Moves of one step, which views are told as a new layout.
    bool isFiltered_ = false;
    size_t shownCount_ = 0;  ///< While there is a filter.
    size_t matchCount_ = 0;
    quint64 structureRevision_ = 0;
    ShouldEdit shouldEdit_;
    LabelCheck isLabelLost_;
    TreeDragHandler *dragHandler_ = nullptr;
    QStringList mimeTypes_;
};

}  // namespace leafwright
