#include "document/outline/OutlineRelinking.h"

#include "model/TreeWalk.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <utility>

namespace leafwright {

namespace {

using PagesByLabel = QHash<QString, QList<int>>;

PagesByLabel pagesByLabel(const TextPages &pages) {
    PagesByLabel result;
    for (int i = 0; i < pages.pageCount(); ++i)
        result[pages.pageLabel(i)].append(i);
    return result;
}

/// What an entry is found again by: its title, and the type of its action, empty for none. Where several have
/// the same, see numbersHold() and entriesInOrder().
using EntryKey = std::pair<QString, QString>;

EntryKey keyOf(const QString &title, const OutlineEntry &entry) {
    return {title, entry.action ? entry.action->type : QString()};
}

using NumbersByKey = QHash<EntryKey, QList<int>>;

/// The object numbers of the entries of an outline, in its order.
NumbersByKey entriesByKey(const PDFOutline &outline) {
    NumbersByKey result;
    walkBelow(outline, [&result](const PDFOutline &entry, size_t /*depth*/) {
        if (const auto number = entry.entry().number)
            result[keyOf(entry.label(), entry.entry())].append(*number);
    });
    return result;
}

/// The numbers that items stand for, in their order.
NumbersByKey itemsByKey(const MyOutlineItem &root) {
    NumbersByKey result;
    walkBelow(root, [&result](const MyOutlineItem &item, size_t /*depth*/) {
        if (const auto number = item.entry().number)
            result[keyOf(item.pageTitle(), item.entry())].append(*number);
    });
    return result;
}

/// Whether entries have the numbers by which items know them: what is added to a file leaves its objects
/// theirs, and one that is made anew gives them to others. Of items whose key no entry has, nothing is known.
bool numbersHold(const NumbersByKey &items, const NumbersByKey &entries) {
    for (auto each = items.begin(); each != items.end(); ++each) {
        const QList<int> found = entries.value(each.key());
        const QSet<int> there(found.begin(), found.end());
        const auto isThere = [&there](int number) { return there.contains(number); };
        if (!there.isEmpty() && !std::ranges::all_of(each.value(), isThere)) return false;
    }
    return true;
}

using NumberPairs = QList<std::pair<int, int>>;

/// The entries of a file that was made anew that stand for items, all of one key. None rather than another
/// one: they must be as many, and the items in the order in which they were.
NumberPairs entriesInOrder(QList<int> items, const QList<int> &entries) {
    const bool isInOrder = std::ranges::is_sorted(items);
    // Copies of an item stand for one entry.
    items.erase(std::ranges::unique(items).begin(), items.end());
    NumberPairs pairs;
    if (!isInOrder || items.size() != entries.size()) return pairs;
    for (qsizetype i = 0; i < items.size(); ++i)
        pairs.append({items[i], entries[i]});
    return pairs;
}

NumberPairs entriesOfTheSameNumbers(const QList<int> &items) {
    NumberPairs pairs;
    for (const int number : items)
        pairs.append({number, number});
    return pairs;
}

class Relinking {
public:
    Relinking(OutlineEdits &edits, const TextPages &before, const TextPages &now,
              const PDFOutline &outlineNow)
        : edits_(edits), before_(pagesByLabel(before)), now_(pagesByLabel(now)) {
        const NumbersByKey entries = entriesByKey(outlineNow);
        const NumbersByKey items = itemsByKey(edits.root());
        const bool hold = numbersHold(items, entries);
        for (auto each = items.begin(); each != items.end(); ++each) {
            if (!entries.contains(each.key())) continue;
            const auto pairs =
                hold ? entriesOfTheSameNumbers(*each) : entriesInOrder(*each, entries.value(each.key()));
            for (const auto &[old, current] : pairs)
                numbers_.insert({each.key(), old}, current);
        }
    }

    void relink(MyOutlineItem &item) {
        const Target target = item.target();
        if (const auto *page = std::get_if<PageTarget>(&target)) relinkPage(item, *page);
        relinkEntry(item);
    }
    const LostTargets &lost() const { return lost_; }

private:
    void relinkPage(MyOutlineItem &item, const PageTarget &target) {
        if (target.importedPage) {
            const qsizetype place = before_.value(target.label).indexOf(*target.importedPage);
            const int page = now_.value(target.label).value(place, -1);
            edits_.setImportedPage(item, page < 0 ? std::nullopt : std::optional(page));
        }
        if (!before_.contains(target.label) || now_.contains(target.label)) return;
        ++lost_.unknownLabels;
        QStringList &first = lost_.firstUnknownLabels;
        if (first.size() < LostTargets::mostNamed && !first.contains(target.label))
            first.append(target.label);
    }

    void relinkEntry(MyOutlineItem &item) {
        OutlineEntry entry = item.entry();
        if (!entry.number) return;
        const auto found = numbers_.constFind({keyOf(item.pageTitle(), entry), *entry.number});
        const bool isFound = found != numbers_.constEnd();
        entry.number = isFound ? std::optional(*found) : std::nullopt;
        edits_.setEntry(item, entry);
        if (!isFound && entry.action && !entry.action->isKnownInFull()) ++lost_.actions;
    }

    OutlineEdits &edits_;
    PagesByLabel before_;
    PagesByLabel now_;
    QHash<std::pair<EntryKey, int>, int> numbers_;  // in the file now, of those in the file before
    LostTargets lost_;
};

}  // namespace

LostTargets relinkOutline(OutlineEdits &edits, const TextPages &before, const TextPages &now,
                          const PDFOutline &outlineNow) {
    const OutlineEdits::Transaction edit(edits, QStringLiteral("reloadFromDisk:"));
    Relinking relinking(edits, before, now, outlineNow);
    walkBelow(edits.root(), [&relinking](MyOutlineItem &item, size_t /*depth*/) { relinking.relink(item); });
    return relinking.lost();
}

}  // namespace leafwright
