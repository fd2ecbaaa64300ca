#include "document/outline/OutlineRelinking.h"

#include "model/TreeWalk.h"

#include <QHash>

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

/// What an entry is found again by: its title, and the type of its action, empty for none.
using EntryKey = std::pair<QString, QString>;

EntryKey keyOf(const QString &title, const OutlineEntry &entry) {
    return {title, entry.action ? entry.action->type : QString()};
}

/// The object numbers of the entries of an outline, the first of a key last.
QHash<EntryKey, QList<int>> entriesByKey(const PDFOutline &outline) {
    QHash<EntryKey, QList<int>> result;
    walkBelow(outline, [&result](const PDFOutline &entry, size_t /*depth*/) {
        if (const auto number = entry.entry().number)
            result[keyOf(entry.label(), entry.entry())].append(*number);
    });
    for (QList<int> &numbers : result)
        std::ranges::reverse(numbers);
    return result;
}

class Relinking {
public:
    Relinking(OutlineEdits &edits, const TextPages &before, const TextPages &now,
              const PDFOutline &outlineNow)
        : edits_(edits),
          before_(pagesByLabel(before)),
          now_(pagesByLabel(now)),
          entries_(entriesByKey(outlineNow)) {}

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
        const auto entries = entries_.find(keyOf(item.pageTitle(), entry));
        const bool isFound = entries != entries_.end() && !entries->isEmpty();
        entry.number = isFound ? std::optional(entries->takeLast()) : std::nullopt;
        edits_.setEntry(item, entry);
        if (!isFound && entry.action && !entry.action->isKnownInFull()) ++lost_.actions;
    }

    OutlineEdits &edits_;
    PagesByLabel before_;
    PagesByLabel now_;
    QHash<EntryKey, QList<int>> entries_;
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
