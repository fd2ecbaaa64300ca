#include "document/outline/OutlineRecovery.h"

#include "model/TreeWalk.h"

#include <QSet>

#include <algorithm>

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

/// Whether an entry of the file is what was kept. Which objects they are in does not matter.
bool isSameEntry(const KeptEntry &inFile, const KeptEntry &kept) {
    OutlineEntry entry = kept.entry;
    entry.number = inFile.entry.number;
    // A file spells points with few digits; and none is not kept, but written as the page's default.
    constexpr double coarseness = 0.01;
    const bool isSamePoint =
        kept.point.isNull() || (inFile.point - kept.point).manhattanLength() <= coarseness;
    return inFile.depth == kept.depth && inFile.title == kept.title && isSameText(inFile.label, kept.label) &&
           isSamePoint && inFile.entry == entry;
}

/// Takes from entries what the PDF does not have, since the file that they were kept in need not be sound.
void forgetWhatIsNotIn(const PDFDocument &pdf, std::vector<KeptEntry> &entries) {
    QSet<int> numbers;
    walkBelow(pdf.outlineRoot(), [&](const PDFOutline &entry, size_t /*depth*/) {
        if (const auto number = entry.entry().number) numbers.insert(*number);
    });
    for (KeptEntry &kept : entries) {
        if (kept.entry.number && !numbers.contains(*kept.entry.number)) kept.entry.number.reset();
        if (kept.page && *kept.page >= pdf.pageCount()) kept.page.reset();
    }
}

}  // namespace

std::optional<FileMark> markOfKnownFile(const OutlineDocument &document) {
    const auto isKnown = [&document] { return document.stateOnDisk() == FileOnDisk::State::Unchanged; };
    if (!isKnown()) return std::nullopt;
    const auto mark = markOfFile(document.pdfURL());
    // Not of what another program has put there meanwhile.
    return isKnown() ? mark : std::nullopt;
}

bool isForFileOf(const OutlineDocument &document, const KeptOutline &kept) {
    const auto mark = markOfKnownFile(document);
    return mark && mark->isOfSameContentAs(kept.file);
}

bool isSameOutline(const OutlineDocument &document, const KeptOutline &kept) {
    return std::ranges::equal(keptEntries(document.root()), kept.entries, isSameEntry);
}

LostTargets recoverOutline(OutlineDocument &document, const KeptOutline &kept) {
    const bool fits = isForFileOf(document, kept);
    const PDFDocument &pdf = *document.pdfDoc();
    std::vector<KeptEntry> entries = kept.entries;
    if (fits) {
        forgetWhatIsNotIn(pdf, entries);
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
    if (fits) return {};
    return relinkOutline(edits, LabelsOfKept(kept), pdf, pdf.outlineRoot());
}

}  // namespace leafwright
