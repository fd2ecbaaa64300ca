#include "document/outline/EntriesElsewhere.h"

#include "texts/Translated.h"

#include <ranges>

namespace leafwright {

namespace {

constexpr Translated translated{"EntriesElsewhere"};

}  // namespace

QString EntriesElsewhere::list() const {
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
    std::vector<const MyOutlineItem *> ahead{&root};  // no recursion, trees may be deep
    while (!ahead.empty()) {
        const MyOutlineItem &item = *ahead.back();
        ahead.pop_back();
        for (const auto &child : std::views::reverse(item.children()))
            ahead.push_back(child.get());
        if (!item.importedPage()) continue;
        const int now = pageOfLabel(item.pageLabel()).value_or(0);
        if (now == *item.importedPage()) continue;
        ++result.count;
        if (result.first.size() < EntriesElsewhere::mostNamed)
            result.first.push_back({item.pageTitle(), *item.importedPage(), now});
    }
    return result;
}

}  // namespace leafwright
