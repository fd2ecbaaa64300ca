#include "model/OutlineEdits.h"

#include "model/TreeWalk.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

namespace leafwright {

namespace {

/// More steps than this are told together, when they are taken back or done again.
constexpr size_t stepsWorthTellingSingly = 32;

bool areMovesOnly(const std::vector<OutlineStep> &steps) {
    return std::ranges::all_of(
        steps, [](const OutlineStep &step) { return std::holds_alternative<OutlineMove>(step); });
}

/// Steps as long as it lives are told together if there are many.
class ManyChanges {
public:
    /// @param observer, display may be null
    ManyChanges(OutlineMoveObserver *observer, OutlineDisplay *display,
                const std::vector<OutlineStep> &steps) {
        if (steps.size() <= stepsWorthTellingSingly) return;
        if (areMovesOnly(steps)) observer_ = observer;
        display_ = display;
        if (display_) display_->beginManyChanges();
        if (observer_) observer_->beginManyMoves();
    }
    ~ManyChanges() {
        if (observer_) observer_->endManyMoves();
        if (display_) display_->endManyChanges();
    }
    Q_DISABLE_COPY_MOVE(ManyChanges)

private:
    OutlineMoveObserver *observer_ = nullptr;
    OutlineDisplay *display_ = nullptr;
};

}  // namespace

OutlineEdits::OutlineEdits(MyOutlineItem &root) : root_(root) {
    giveIdentities(root);
}

void OutlineEdits::begin(const QString &name, Counting counting) {
    if (depth_ == 0) {
        open_ = {};
        open_.summary.name = name;
        open_.lookBefore = currentLook();
    }
    ++depth_;
    if (counting == Counting::Yes) open_.counting = counting;
}

void OutlineEdits::end() {
    if (--depth_ > 0) return;
    Done transaction = std::move(open_);
    transaction.before = revision_;
    if (transaction.counting == Counting::Yes) ++lastRevision_;
    transaction.after = transaction.counting == Counting::Yes ? lastRevision_ : revision_;
    const quint64 after = transaction.after;
    if (!transaction.steps.empty()) {
        try {
            keep(std::move(transaction));
        } catch (const std::bad_alloc &) {
            forgetHistory();  // What was done stays done, but nothing before it could be taken back rightly.
        }
    } else if (!done_.empty()) {
        done_.back().after = after;  // Nothing to take back by itself: it goes with what was done before.
    }
    setRevisions(after, savedRevision_);
}

void OutlineEdits::make(OutlineStep step) {
    const Transaction one(*this, {}, depth_ == 0 ? Counting::Yes : Counting::No);
    open_.steps.push_back(std::move(step));
    try {
        exchange(open_.steps.back(), moveObserver_);
        if (changesNothing(open_.steps.back())) open_.steps.pop_back();
    } catch (...) {
        open_.steps.pop_back();
        if (depth_ == 1) open_.counting = Counting::No;
        throw;
    }
}

void OutlineEdits::insert(MyOutlineItem &parent, size_t position, std::unique_ptr<MyOutlineItem> item) {
    if (position > parent.children().size()) throw std::out_of_range("child index");
    giveIdentities(*item);
    MyOutlineItem::Children coming;
    coming.push_back(std::move(item));
    make(PresenceStep{&parent, position, 1, std::move(coming)});
}

void OutlineEdits::remove(MyOutlineItem &parent, size_t first, size_t count) {
    if (count > 0) make(PresenceStep{&parent, first, count, {}});
}

void OutlineEdits::removeAll(MyOutlineItem &parent) {
    remove(parent, 0, parent.children().size());
}

void OutlineEdits::move(const OutlineMove &move) {
    make(move);
}

void OutlineEdits::rearrange(std::vector<OutlineArrangement> arrangements) {
    make(RearrangementStep{std::move(arrangements)});
}

void OutlineEdits::setPageTitle(MyOutlineItem &item, const QString &title) {
    make(ValueStep{&item, ValueStep::Title{title}});
}

void OutlineEdits::setPageLabel(MyOutlineItem &item, const QString &label) {
    make(ValueStep{&item, LabelAndPage{label, std::nullopt}});
}

void OutlineEdits::setImportedPage(MyOutlineItem &item, std::optional<int> index) {
    make(ValueStep{&item, LabelAndPage{item.pageLabel(), index}});
}

void OutlineEdits::setPointOnPage(MyOutlineItem &item, const QPointF &point) {
    make(ValueStep{&item, point});
}

void OutlineEdits::setEntry(MyOutlineItem &item, const OutlineEntry &entry) {
    make(ValueStep{&item, entry});
}

void OutlineEdits::setNumber(MyOutlineItem &item, quint64 levelnum,
                             std::shared_ptr<const LevelNumber> number) {
    item.setLevelnum(levelnum);
    item.setLevelstr(std::move(number));
}

void OutlineEdits::countChange() {
    const Transaction nothing(*this, {});
}

void OutlineEdits::keep(Done transaction) {
    for (const Done &undone : std::exchange(undone_, {}))
        weight_ -= undone.weight;
    for (const OutlineStep &step : transaction.steps)
        transaction.summary.itemsGone += itemsTakenOutBy(step);
    weigh(transaction, done_.empty() ? nullptr : done_.back().lookBefore, nullptr);
    done_.push_back(std::move(transaction));
    forgetWhatIsTooMuch();
    historyChanged();
}

size_t OutlineEdits::bytesOf(const Look &look) {
    return look ? (look->selected.size() + look->unfolded.size()) * sizeof(quint64) : 0;
}

/// Once it is done or taken back, since it keeps other things then.
/// @param earlier, later the looks next to its own
void OutlineEdits::weigh(Done &transaction, const Look &earlier, const Look &later) {
    weight_ -= transaction.weight;
    transaction.weight = 0;
    for (const OutlineStep &step : transaction.steps)
        transaction.weight += bytesKeptBy(step);
    if (transaction.lookBefore != earlier) transaction.weight += bytesOf(transaction.lookBefore);
    if (transaction.lookAfter != later && transaction.lookAfter != transaction.lookBefore)
        transaction.weight += bytesOf(transaction.lookAfter);
    weight_ += transaction.weight;
}

void OutlineEdits::forgetWhatIsTooMuch() {
    while (weight_ > heaviestHistory_ && done_.size() > 1) {
        weight_ -= done_.front().weight;
        const Look shared = std::move(done_.front().lookBefore);
        done_.pop_front();
        if (!shared || done_.front().lookBefore != shared) continue;
        done_.front().weight += bytesOf(shared);
        weight_ += bytesOf(shared);
    }
    while (weight_ > heaviestHistory_ && undone_.size() > 1) {
        weight_ -= undone_.front().weight;
        undone_.pop_front();
    }
}

void OutlineEdits::undo() {
    if (depth_ > 0 || done_.empty()) throw std::logic_error("there is nothing to take back");
    const Look later = undone_.empty() ? nullptr : undone_.back().lookBefore;
    done_.back().lookAfter = currentLook();
    undone_.push_back(std::move(done_.back()));
    done_.pop_back();
    exchangeAll(undone_.back(), true);
    weigh(undone_.back(), done_.empty() ? nullptr : done_.back().lookBefore, later);
    forgetWhatIsTooMuch();
    setRevisions(undone_.back().before, savedRevision_);
    show(undone_.back().lookBefore);
    historyChanged();
}

void OutlineEdits::redo() {
    if (depth_ > 0 || undone_.empty()) throw std::logic_error("there is nothing to do again");
    // What was selected since it was taken back is what is there before it is done this time.
    undone_.back().lookBefore = currentLook();
    const Look earlier = done_.empty() ? nullptr : done_.back().lookBefore;
    done_.push_back(std::move(undone_.back()));
    undone_.pop_back();
    exchangeAll(done_.back(), false);
    const Look after = std::exchange(done_.back().lookAfter, nullptr);
    weigh(done_.back(), earlier, nullptr);
    forgetWhatIsTooMuch();
    setRevisions(done_.back().after, savedRevision_);
    show(after);
    historyChanged();
}

void OutlineEdits::exchangeAll(Done &transaction, bool isBack) {
    std::vector<OutlineStep> &steps = transaction.steps;
    try {
        const ManyChanges together(moveObserver_, display_, steps);
        if (isBack) {
            for (auto step = steps.rbegin(); step != steps.rend(); ++step)
                exchange(*step, moveObserver_);
        } else {
            for (OutlineStep &step : steps)
                exchange(step, moveObserver_);
        }
    } catch (...) {
        // Half of it is done: what was before can't be had again, nor what would have come.
        forgetHistory();
        setRevisions(++lastRevision_, savedRevision_);
        throw;
    }
}

void OutlineEdits::forgetHistory() {
    done_.clear();
    undone_.clear();
    weight_ = 0;
    historyChanged();
}

OutlineEdits::Look OutlineEdits::currentLook() {
    if (!display_) return nullptr;
    OutlineLook look = display_->look();
    if (!lastLook_ || *lastLook_ != look) lastLook_ = std::make_shared<const OutlineLook>(std::move(look));
    return lastLook_;
}

void OutlineEdits::show(const Look &look) {
    if (!display_ || !look) return;
    display_->setLook(*look);
    lastLook_ = look;
}

void OutlineEdits::historyChanged() const {
    if (historyHandler_) historyHandler_();
}

void OutlineEdits::setSavedRevision(quint64 revision) {
    setRevisions(revision_, revision);
}

void OutlineEdits::setRevisions(quint64 revision, quint64 savedRevision) {
    const bool wasEdited = isEdited();
    revision_ = revision;
    savedRevision_ = savedRevision;
    if (editedHandler_ && isEdited() != wasEdited) editedHandler_(isEdited());
}

void OutlineEdits::giveIdentities(MyOutlineItem &top) {
    walkTree(top, [this](MyOutlineItem &item, size_t) {
        if (item.identity() == 0) item.setIdentity(++lastIdentity_);
    });
}

}  // namespace leafwright
