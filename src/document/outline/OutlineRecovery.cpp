#include "document/outline/OutlineRecovery.h"

#include <QSet>

#include <algorithm>
#include <cmath>

namespace leafwright {

namespace {

/// All that is known of the pages of another file: which labels there were.
class LabelsOfKept final : public TextPages {
public:
    explicit LabelsOfKept(const KeptOutline &kept) {
        for (const KeptEntry &entry : kept.entries)
            if (entry.page) labels_.append(entry.label);
        labels_.removeDuplicates();
    }
    int pageCount() const override { return static_cast<int>(labels_.size()); }
    QString pageLabel(int index) const override { return labels_[index]; }
    std::shared_ptr<const PageText> pageText(int /*index*/) const override {
        return std::make_shared<PageText>();
    }

private:
    QStringList labels_;
};

bool isSameText(const QString &a, const QString &b) {
    return a == b && a.isNull() == b.isNull();
}

bool isSameColor(const std::optional<OutlineEntry::Color> &a, const std::optional<OutlineEntry::Color> &b) {
    constexpr double coarseness = 0.0001;  // of what a file spells
    if (!a || !b) return a.has_value() == b.has_value();
    return std::ranges::equal(*a, *b, [](double x, double y) { return std::abs(x - y) <= coarseness; });
}

/// Whether a label is what a file has after another was written to it, where only pages stand: the same, or
/// one of the same page. A label that no page has is written as the first page.
bool isLabelOfSamePage(const OutlineDocument &document, const QString &inFile, const QString &kept) {
    const auto pageOf = [&document](const QString &label) {
        return document.knownPageIndexOfItem(MyOutlineItem(QString(), PageTarget{label})).value_or(0);
    };
    return isSameText(inFile, kept) || (!inFile.isNull() && !kept.isNull() && pageOf(inFile) == pageOf(kept));
}

/// Whether an entry of the file is what was kept before it was written there. Which objects they are in does
/// not matter then.
bool isWritten(const OutlineDocument &document, const KeptEntry &inFile, const KeptEntry &kept) {
    OutlineEntry entry = kept.entry;
    entry.number = inFile.entry.number;
    entry.color = inFile.entry.color;
    // A file spells points with few digits; and none is not kept, but written as the page's default.
    constexpr double coarseness = 0.01;
    const bool isSamePoint =
        kept.point.isNull() || (inFile.point - kept.point).manhattanLength() <= coarseness;
    return inFile.depth == kept.depth && inFile.title == kept.title &&
           isLabelOfSamePage(document, inFile.label, kept.label) && isSamePoint &&
           isSameColor(inFile.entry.color, kept.entry.color) && inFile.entry == entry;
}

/// Whether an entry is what was kept of the same file: nothing has been written since.
bool isUntouched(const KeptEntry &inFile, const KeptEntry &kept) {
    return inFile.depth == kept.depth && inFile.title == kept.title && isSameText(inFile.label, kept.label) &&
           inFile.page == kept.page && inFile.point == kept.point && inFile.entry == kept.entry;
}

/// Takes from entries what a document's file does not have, since the file that they were kept in need not be
/// sound, nor does it have an entry that was removed, saved and taken back. @return what leads nowhere then
LostTargets forgetWhatIsNotIn(const OutlineDocument &document, std::vector<KeptEntry> &entries) {
    QSet<int> numbers;
    for (const EntryInFile &inFile : entriesInFile(document.outlineOfFile()))
        numbers.insert(inFile.number);
    LostTargets lost;
    for (KeptEntry &kept : entries) {
        if (kept.page && *kept.page >= document.pdfDoc()->pageCount()) kept.page.reset();
        if (!kept.entry.number || numbers.contains(*kept.entry.number)) continue;
        kept.entry.number.reset();
        if (leadsByItsEntryAlone(kept.label, kept.entry)) ++lost.actions;
    }
    return lost;
}

}  // namespace

bool isForFileOf(const OutlineDocument &document, const KeptOutline &kept) {
    const auto mark = document.markOfFile();
    return mark && mark->isOfSameContentAs(kept.file);
}

bool isSameOutline(const OutlineDocument &document, const KeptOutline &kept) {
    const bool isForFile = isForFileOf(document, kept);
    const auto isSame = [&](const KeptEntry &inFile, const KeptEntry &entry) {
        return isForFile ? isUntouched(inFile, entry) : isWritten(document, inFile, entry);
    };
    return std::ranges::equal(keptEntries(document.root()), kept.entries, isSame);
}

LostTargets recoverOutline(OutlineDocument &document, const KeptOutline &kept) {
    const bool fits = isForFileOf(document, kept);
    std::vector<KeptEntry> entries = kept.entries;
    LostTargets lost;
    if (fits) {
        lost = forgetWhatIsNotIn(document, entries);
    } else {
        // The pages of another file are other ones.
        for (KeptEntry &entry : entries)
            entry.page.reset();
    }
    OutlineEdits &edits = document.edits();
    const OutlineEdits::Transaction edit(edits, QStringLiteral("recoverOutline"));
    MyOutlineItem::Children items = itemsOfKeptEntries(entries);
    edits.removeAll(document.root());
    for (size_t i = 0; i < items.size(); ++i)
        edits.insert(document.root(), i, std::move(items[i]));
    if (fits) return lost;
    return relinkOutline(edits, LabelsOfKept(kept), *document.pdfDoc(), entriesInFile(kept.entries),
                         document.outlineOfFile());
}

}  // namespace leafwright
