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

using NumbersByKey = QHash<EntryKey, QList<int>>;

/// The object numbers of entries, in their order. Copies that were written in objects of their own still have
/// the number of the first, of which they are copies.
NumbersByKey numbersByKey(const std::vector<EntryInFile> &entries) {
    NumbersByKey result;
    QSet<int> seen;
    for (const auto &[number, key] : entries) {
        if (seen.contains(number)) continue;
        seen.insert(number);
        result[key].append(number);
    }
    return result;
}

/// Whether entries have the numbers that they had: what is added to a file leaves its objects theirs, and one
/// that is made anew gives them to others. Of those whose key no entry has now, nothing is known.
bool numbersHold(const NumbersByKey &before, const NumbersByKey &now) {
    for (auto each = before.begin(); each != before.end(); ++each) {
        const QList<int> found = now.value(each.key());
        const QSet<int> there(found.begin(), found.end());
        const auto isThere = [&there](int number) { return there.contains(number); };
        if (!there.isEmpty() && !std::ranges::all_of(each.value(), isThere)) return false;
    }
    return true;
}

/// Whether entries that look the same are found again in a file that was made anew, which is by their order.
/// None rather than another one: they must be as many, and none moved among them since either file was made,
/// which gives numbers in order.
bool areFoundInOrder(const QList<int> &before, const QList<int> &now) {
    return before.size() == now.size() && std::ranges::is_sorted(before) && std::ranges::is_sorted(now);
}

/// The numbers in the file now, of those in the file before.
QHash<int, int> numbersNow(const NumbersByKey &before, const NumbersByKey &now) {
    const bool hold = numbersHold(before, now);
    QHash<int, int> numbers;
    for (auto each = before.begin(); each != before.end(); ++each) {
        const QList<int> found = now.value(each.key());
        if (hold ? found.isEmpty() : !areFoundInOrder(each.value(), found)) continue;
        for (qsizetype i = 0; i < each->size(); ++i)
            numbers.insert(each->at(i), hold ? each->at(i) : found.at(i));
    }
    return numbers;
}

class Relinking {
public:
    Relinking(OutlineEdits &edits, const TextPages &before, const TextPages &now, QHash<int, int> numbersNow)
        : edits_(edits),
          before_(pagesByLabel(before)),
          now_(pagesByLabel(now)),
          numbers_(std::move(numbersNow)) {}

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
        const auto found = numbers_.constFind(*entry.number);
        const bool isFound = found != numbers_.constEnd();
        entry.number = isFound ? std::optional(*found) : std::nullopt;
        edits_.setEntry(item, entry);
        if (!isFound && leadsByItsEntryAlone(item.pageLabel(), entry)) ++lost_.actions;
    }

    OutlineEdits &edits_;
    PagesByLabel before_;
    PagesByLabel now_;
    QHash<int, int> numbers_;  ///< See numbersNow().
    LostTargets lost_;
};

}  // namespace

bool leadsByItsEntryAlone(const QString &label, const OutlineEntry &entry) {
    return label.isNull() && entry.action && !entry.action->isKnownInFull();
}

LostTargets relinkOutline(OutlineEdits &edits, const TextPages &before, const TextPages &now,
                          const std::vector<EntryInFile> &entriesBefore, const PDFOutline &outlineNow) {
    const OutlineEdits::Transaction edit(edits, QStringLiteral("reloadFromDisk:"));
    const NumbersByKey entriesNow = numbersByKey(entriesInFile(outlineNow));
    Relinking relinking(edits, before, now, numbersNow(numbersByKey(entriesBefore), entriesNow));
    walkBelow(edits.root(), [&relinking](MyOutlineItem &item, size_t /*depth*/) { relinking.relink(item); });
    return relinking.lost();
}

}  // namespace leafwright
