#include "document/outline/EntriesElsewhere.h"

#include "document/outline/PageLabelMap.h"
#include "model/TreeWalk.h"
#include "texts/Translated.h"

namespace leafwright {

namespace {

constexpr Translated translated{"EntriesElsewhere"};

}  // namespace

void EntriesOfOneReason::add(EntryElsewhere entry) {
    ++count;
    if (first.size() < mostNamed) first.push_back(std::move(entry));
}

QString EntriesOfOneReason::list() const {
    QStringList parts;
    for (const EntryElsewhere &entry : first) {
        parts.append(
            translated("“%1” (page %2, now %3)")
                .arg(entry.title, QString::number(entry.before + 1), QString::number(entry.now + 1)));
    }
    const QString named = parts.join(QLatin1String(", "));
    return count > first.size()
               ? translated("%1 and %2 more").arg(named, QString::number(count - first.size()))
               : named;
}

EntriesElsewhere entriesElsewhere(
    const MyOutlineItem &root, const std::function<std::optional<int>(const QString &label)> &pageOfLabel) {
    EntriesElsewhere result;
    walkTree(root, [&](const MyOutlineItem &item, size_t /*depth*/) {
        const std::optional<int> before = item.importedPage();
        if (!before || item.pageLabel().isNull()) return;
        const int now = pageOfLabel(item.pageLabel()).value_or(0);
        if (now == *before) return;
        EntriesOfOneReason &entries =
            isPrintedPageNumber(item.pageLabel()) ? result.byPrintedNumbers : result.byRepeatedLabels;
        entries.add({item.pageTitle(), *before, now});
    });
    return result;
}

}  // namespace leafwright
