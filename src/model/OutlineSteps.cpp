#include "model/OutlineSteps.h"

#include "model/Splicing.h"
#include "model/TreeWalk.h"

#include <span>
#include <unordered_map>
#include <utility>

namespace leafwright {

namespace {

using Children = MyOutlineItem::Children;

void moveItems(const OutlineMove &move) {
    Children children = move.source->takeChildren();
    if (move.source == move.target) {
        splice(children, move.first, move.count, children, move.gap);
    } else {
        Children others = move.target->takeChildren();
        splice(children, move.first, move.count, others, move.gap);
        move.target->setChildren(std::move(others));
    }
    move.source->setChildren(std::move(children));
}

void exchangeStep(PresenceStep &step, OutlineMoveObserver * /*observer*/) {
    if (step.away.empty()) {
        step.away = step.parent->removeChildrenAtIndex(step.first, step.count);
    } else {
        step.parent->insertChildrenAtIndex(std::move(step.away), step.first);
    }
}

void exchangeStep(OutlineMove &step, OutlineMoveObserver *observer) {
    const OutlineMove move = step;
    if (observer) observer->willMove(move);
    moveItems(move);
    step = move.back();
    if (observer) observer->didMove(move);
}

void exchangeStep(RearrangementStep &step, OutlineMoveObserver *observer) {
    if (observer) observer->beginManyMoves();
    std::vector<OutlineArrangement> before;
    std::unordered_map<const MyOutlineItem *, std::unique_ptr<MyOutlineItem>> items;
    for (const OutlineArrangement &arrangement : step.other) {
        OutlineArrangement old{arrangement.parent, {}};
        for (std::unique_ptr<MyOutlineItem> &item : arrangement.parent->takeChildren()) {
            old.children.push_back(item.get());
            items.emplace(item.get(), std::move(item));
        }
        before.push_back(std::move(old));
    }
    for (const OutlineArrangement &arrangement : step.other) {
        Children children;
        children.reserve(arrangement.children.size());
        for (const MyOutlineItem *child : arrangement.children)
            children.push_back(std::move(items.at(child)));
        arrangement.parent->setChildren(std::move(children));
    }
    step.other.swap(before);
    if (!observer) return;
    observer->didRearrange(before);
    observer->endManyMoves();
}

void exchangeStep(ValueStep &step, OutlineMoveObserver * /*observer*/) {
    MyOutlineItem &item = *step.item;
    if (auto *title = std::get_if<ValueStep::Title>(&step.other)) {
        const QString coming = std::exchange(title->text, item.pageTitle());
        item.setPageTitle(coming);
    } else if (auto *label = std::get_if<LabelAndPage>(&step.other)) {
        const LabelAndPage coming = std::exchange(*label, {item.pageLabel(), item.importedPage()});
        item.setPageLabel(coming.label);
        item.setImportedPage(coming.importedPage);
    } else if (auto *point = std::get_if<QPointF>(&step.other)) {
        item.setPointOnPage(std::exchange(*point, item.pointOnPage()));
    } else {
        item.setEntry(std::exchange(std::get<OutlineEntry>(step.other), item.entry()));
    }
}

/// Calls `use(item)` for all that a step has taken out.
template <typename Use>
void forEachAway(const OutlineStep &step, Use &&use) {
    const auto visit = [&use](const MyOutlineItem &item, size_t /*depth*/) { use(item); };
    if (const auto *presence = std::get_if<PresenceStep>(&step))
        for (const auto &item : presence->away)
            walkTree(*item, visit);
}

/// Absent and empty texts are not the same.
bool areIdentical(const QString &a, const QString &b) {
    return a == b && a.isNull() == b.isNull();
}

size_t bytesOf(const QString &text) {
    return static_cast<size_t>(text.capacity()) * sizeof(QChar);
}

size_t bytesOf(const OutlineEntry &entry) {
    if (!entry.action) return 0;
    return bytesOf(entry.action->type) + bytesOf(entry.action->target.value_or(QString()));
}

}  // namespace

OutlineMove OutlineMove::back() const {
    if (source != target) return {target, gap, count, source, first};
    return gap < first ? OutlineMove{source, gap, count, source, first + count}
                       : OutlineMove{source, gap - count, count, source, first};
}

void exchange(OutlineStep &step, OutlineMoveObserver *observer) {
    std::visit([observer](auto &kind) { exchangeStep(kind, observer); }, step);
}

bool changesNothing(const OutlineStep &step) {
    const auto *value = std::get_if<ValueStep>(&step);
    if (!value) return false;
    const MyOutlineItem &item = *value->item;
    if (const auto *title = std::get_if<ValueStep::Title>(&value->other))
        return areIdentical(title->text, item.pageTitle());
    if (const auto *label = std::get_if<LabelAndPage>(&value->other))
        return areIdentical(label->label, item.pageLabel()) && label->importedPage == item.importedPage();
    if (const auto *point = std::get_if<QPointF>(&value->other))
        return point->x() == item.pointOnPage().x() && point->y() == item.pointOnPage().y();
    return std::get<OutlineEntry>(value->other) == item.entry();
}

size_t bytesKeptBy(const OutlineStep &step) {
    size_t bytes = sizeof(step);
    forEachAway(step, [&bytes](const MyOutlineItem &item) {
        bytes += sizeof(item) + sizeof(void *) + bytesOf(item.pageTitle()) + bytesOf(item.pageLabel()) +
                 bytesOf(item.entry());
    });
    if (const auto *rearrangement = std::get_if<RearrangementStep>(&step))
        for (const OutlineArrangement &arrangement : rearrangement->other)
            bytes += sizeof(arrangement) + std::span(arrangement.children).size_bytes();
    if (const auto *value = std::get_if<ValueStep>(&step)) {
        if (const auto *title = std::get_if<ValueStep::Title>(&value->other)) bytes += bytesOf(title->text);
        if (const auto *label = std::get_if<LabelAndPage>(&value->other)) bytes += bytesOf(label->label);
        if (const auto *entry = std::get_if<OutlineEntry>(&value->other)) bytes += bytesOf(*entry);
    }
    return bytes;
}

size_t itemsTakenOutBy(const OutlineStep &step) {
    size_t count = 0;
    forEachAway(step, [&count](const MyOutlineItem & /*item*/) { ++count; });
    return count;
}

}  // namespace leafwright
