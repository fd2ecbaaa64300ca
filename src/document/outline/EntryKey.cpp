#include "document/outline/EntryKey.h"

#include "model/TreeWalk.h"

namespace leafwright {

EntryKey entryKey(const QString &title, bool leadsToPage, const OutlineEntry &entry) {
    return {title, entry.action && !leadsToPage ? entry.action->type : QString()};
}

EntryKey entryKey(const PDFOutline &entry) {
    return entryKey(entry.label(), entry.destination().has_value(), entry.entry());
}

std::vector<EntryInFile> entriesInFile(const PDFOutline &outline) {
    std::vector<EntryInFile> entries;
    walkBelow(outline, [&entries](const PDFOutline &entry, size_t /*depth*/) {
        if (const auto number = entry.entry().number) entries.push_back({*number, entryKey(entry)});
    });
    return entries;
}

}  // namespace leafwright
