#pragma once

#include "model/OutlineLook.h"
#include "model/OutlineSteps.h"

#include <deque>
#include <functional>

namespace leafwright {

/// The one door through which an outline is changed: what is below a root item, and what the items there are.
/// Whoever changes an item that is in the tree calls this; items that are detached may be built by anyone.
///
/// Changes are made in steps, and steps that belong together are a transaction, which is taken back as a
/// whole. Every counted transaction leads to a revision of the outline, a number that no other state of it
/// gets; taking it back leads to the revision before. The outline is edited while its revision is not the one
/// that was saved.
///
/// Main thread only. The root must outlive this. What observers of items are told amid a step must not make
/// them change the tree.
class OutlineEdits {
public:
    /// Whether a transaction is a change that is to be saved.
    enum class Counting { Yes, No };

    explicit OutlineEdits(MyOutlineItem &root);
    OutlineEdits(const OutlineEdits &) = delete;
    OutlineEdits &operator=(const OutlineEdits &) = delete;

    MyOutlineItem &root() const { return root_; }

    // Transactions

    /// Steps as long as it lives are one transaction. One within another belongs to that, which is counted if
    /// either says so.
    class Transaction {
    public:
        /// @param edits must outlive this @param name the command's selector, or what else tells people what
        /// would be taken back
        explicit Transaction(OutlineEdits &edits, const QString &name, Counting counting = Counting::Yes)
            : edits_(edits) {
            edits_.begin(name, counting);
        }
        ~Transaction() { edits_.end(); }
        Transaction(const Transaction &) = delete;
        Transaction &operator=(const Transaction &) = delete;

    private:
        OutlineEdits &edits_;
    };

    // Steps. One outside of a transaction is a counted one by itself. What is given must be in the tree.

    /// Inserts a detached item with all below it, each of which gets its identity unless it has one. Throws
    /// std::out_of_range unless the position is within 0..count.
    void insert(MyOutlineItem &parent, size_t position, std::unique_ptr<MyOutlineItem> item);
    /// Removes children next to each other with all below them; they live on for as long as this may be taken
    /// back. Throws std::out_of_range if there are no such children.
    void remove(MyOutlineItem &parent, size_t first, size_t count = 1);
    /// Removes all children, together.
    void removeAll(MyOutlineItem &parent);
    /// Moves siblings. The gap must exist, be another place, and not be below what moves.
    void move(const OutlineMove &move);
    /// Gives items other children, all at once. The children must be those that the same items have before.
    void rearrange(std::vector<OutlineArrangement> arrangements);
    void setPageTitle(MyOutlineItem &item, const QString &title);
    /// An item with a new label has no page of its own any more.
    void setPageLabel(MyOutlineItem &item, const QString &label);
    /// The page that an item keeps as its own, or none; its label stays.
    void setImportedPage(MyOutlineItem &item, std::optional<int> index);
    void setPointOnPage(MyOutlineItem &item, const QPointF &point);
    void setEntry(MyOutlineItem &item, const OutlineEntry &entry);

    // What a write gives items: nobody has changed anything then, it would be given again, so it is no step.

    /// The spot of an item without a particular one.
    static void setDefaultPoint(MyOutlineItem &item, const QPointF &point) { item.setPointOnPage(point); }
    /// Where an item stands in the tree. @param levelnum 1 for a top-level item
    static void setNumber(MyOutlineItem &item, quint64 levelnum, std::shared_ptr<const LevelNumber> number);

    /// Counts a change that changed nothing.
    void countChange();

    // History

    bool canUndo() const { return !done_.empty(); }
    bool canRedo() const { return !undone_.empty(); }
    /// Takes the last transaction back. Must be possible, and not be asked amid a transaction.
    void undo();
    /// Does again what was taken back last. Must be possible, and not be asked amid a transaction.
    void redo();
    /// A transaction, for people.
    struct Summary {
        QString name;          ///< As the transaction was given it.
        size_t itemsGone = 0;  ///< How many items it removed, with those below them, as it was done.
    };
    /// What undo() would take back; its name is null if there is nothing.
    Summary undoSummary() const { return done_.empty() ? Summary() : done_.back().summary; }
    /// What redo() would do again; its name is null if there is nothing.
    Summary redoSummary() const { return undone_.empty() ? Summary() : undone_.back().summary; }
    /// Nothing can be taken back or done again from now on.
    void forgetHistory();
    /// How many bytes, about, all transactions together may keep (256 MB), those that were taken back and
    /// what all of them look like included. When there are more, the oldest are forgotten, and then those
    /// that were taken back first; but neither what would be taken back next nor what would be done again.
    void setHeaviestHistory(size_t bytes) { heaviestHistory_ = bytes; }
    /// Who shows the outline. What is taken back looks again as it looked before it was done; what is done
    /// again, as it looked when it was taken back. Not owned; null for nobody.
    void setDisplay(OutlineDisplay *display) { display_ = display; }
    /// Called whenever what can be taken back or done again is something else.
    void setHistoryHandler(std::function<void()> handler) { historyHandler_ = std::move(handler); }

    // Revisions

    quint64 revision() const { return revision_; }
    /// Says which revision is the one that was saved; what changed since is still to be saved.
    void setSavedRevision(quint64 revision);
    bool isEdited() const { return revision_ != savedRevision_; }
    /// Called whenever isEdited() is another.
    void setEditedHandler(std::function<void(bool edited)> handler) { editedHandler_ = std::move(handler); }

    /// Who is told of moves. Not owned; null for nobody.
    void setMoveObserver(OutlineMoveObserver *observer) { moveObserver_ = observer; }

private:
    using Look =
        std::shared_ptr<const OutlineLook>;  ///< Shared by what looks the same; null without a display.

    struct Done {
        Summary summary;
        Counting counting = Counting::No;
        std::vector<OutlineStep> steps;
        Look lookBefore;
        Look lookAfter;
        quint64 before = 0;  ///< The revision without it.
        quint64 after = 0;   ///< The revision with it.
        size_t weight = 0;   ///< In bytes; a look that its neighbour has as well counts once.
    };

    void begin(const QString &name, Counting counting);
    void end();
    void make(OutlineStep step);
    void keep(Done transaction);
    static size_t bytesOf(const Look &look);
    void weigh(Done &transaction, const Look &earlier, const Look &later);
    void forgetWhatIsTooMuch();
    void setRevisions(quint64 revision, quint64 savedRevision);
    /// Exchanges all steps; the last first where they are taken back.
    void exchangeAll(Done &transaction, bool isBack);
    void giveIdentities(MyOutlineItem &top);
    Look currentLook();
    void show(const Look &look);
    void historyChanged() const;

    MyOutlineItem &root_;
    quint64 lastIdentity_ = 0;
    Done open_;
    int depth_ = 0;  ///< How many transactions are open, each within another.
    std::deque<Done> done_;
    std::deque<Done> undone_;  ///< What was taken back first stands first.
    size_t weight_ = 0;        ///< Of both.
    size_t heaviestHistory_ = size_t{256} << 20;
    OutlineDisplay *display_ = nullptr;
    Look lastLook_;  ///< What was seen last, to be shared by what looks the same.
    quint64 revision_ = 0;
    quint64 savedRevision_ = 0;
    quint64 lastRevision_ = 0;
    std::function<void(bool edited)> editedHandler_;
    std::function<void()> historyHandler_;
    OutlineMoveObserver *moveObserver_ = nullptr;
};

}  // namespace leafwright
