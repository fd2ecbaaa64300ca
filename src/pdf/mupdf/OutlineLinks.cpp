#include "pdf/mupdf/OutlineLinks.h"

namespace leafwright::mupdf {

std::vector<LinkedEntry> listedEntries(const PDFOutline &root) {
    std::vector<LinkedEntry> entries{{&root, -1, root.entry().number.value_or(0), {}}};
    for (size_t i = 0; i < entries.size(); ++i) {
        const PDFOutline &parent = *entries[i].entry;
        for (int k = 0; k < parent.numberOfChildren(); ++k) {
            const PDFOutline &child = parent.childAtIndex(k);
            entries.push_back({&child, static_cast<qsizetype>(i), child.entry().number.value_or(0), {}});
        }
    }
    for (size_t i = entries.size() - 1; i > 0; --i) {
        const bool open = entries[i].entry->entry().open;
        entries[static_cast<size_t>(entries[i].parentIndex)].visible += 1 + (open ? entries[i].visible : 0);
    }
    return entries;
}

void linkEntries(std::vector<LinkedEntry> &entries) {
    for (size_t i = 1; i < entries.size(); ++i) {
        LinkedEntry &entry = entries[i];
        LinkedEntry &parent = entries[static_cast<size_t>(entry.parentIndex)];
        entry.links.parent = parent.number;
        if (entries[i - 1].parentIndex == entry.parentIndex) {
            entry.links.previous = entries[i - 1].number;
            entries[i - 1].links.next = entry.number;
        } else {
            parent.links.first = entry.number;
        }
        parent.links.last = entry.number;
    }
}

}  // namespace leafwright::mupdf
