// A whole PDF: opened, read, its contents found, written with an outline, and read back.

#include "MemoryFile.h"
#include "contents/FindContents.h"
#include "contents/PDFContentsPages.h"
#include "pdf/PDFDocument.h"

#include <cstdio>

namespace {

using namespace leafwright;

std::unique_ptr<PDFDocument> open(const QString &path) {
    auto opened = PDFDocument::open(path);
    auto *const document = std::get_if<std::unique_ptr<PDFDocument>>(&opened);
    return document ? std::move(*document) : nullptr;
}

/// The titles of an outline with their depths and pages.
QStringList linesOf(const PDFOutline &root) {
    QStringList lines;
    std::vector<std::pair<const PDFOutline *, int>> pending{{&root, 0}};
    while (!pending.empty()) {
        const auto [entry, depth] = pending.back();
        pending.pop_back();
        const auto &destination = entry->destination();
        lines += QStringLiteral("%1 %2 ").arg(depth).arg(destination ? destination->pageIndex : -1) +
                 entry->label();
        for (int i = entry->numberOfChildren(); i-- > 0;)
            pending.emplace_back(&entry->childAtIndex(i), depth + 1);
    }
    return lines;
}

/// An outline as the window would write it: a copy of the one there is, and one entry more.
std::unique_ptr<PDFOutline> longer(const PDFOutline &from) {
    auto root = std::make_unique<PDFOutline>();
    root->setEntry(from.entry());
    std::vector<std::pair<const PDFOutline *, PDFOutline *>> pending{{&from, root.get()}};
    while (!pending.empty()) {
        const auto [source, target] = pending.back();
        pending.pop_back();
        for (int i = 0; i < source->numberOfChildren(); ++i) {
            const PDFOutline &child = source->childAtIndex(i);
            auto copy = std::make_unique<PDFOutline>(child.label());
            copy->setDestination(child.destination());
            copy->setEntry(child.entry());
            pending.emplace_back(&child, &target->insertChildAtIndex(std::move(copy), i));
        }
    }
    auto added = std::make_unique<PDFOutline>(QStringLiteral("Added"));
    added->setDestination(PDFDestination{0, {10, 20}});
    root->insertChildAtIndex(std::move(added), root->numberOfChildren());
    return root;
}

void expect(bool holds, const char *what) {
    if (holds) return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

/// Pages may be one page many times; they teach nothing new.
constexpr int mostPages = 10;

void readAll(const PDFDocument &document) {
    for (int i = 0; i < std::min(document.pageCount(), mostPages); ++i) {
        const PDFPage &page = *document.page(i);
        const auto text = page.text();
        expect(text->attributedString.runs.size() == text->runBounds.size(), "a run without bounds");
        page.characterBoxes();
        page.links();
    }
}

void findAll(const PDFDocument &document) {
    if (document.pageCount() > mostPages) return;
    const auto analysis = analyseContents(PDFContentsPages(document));
    analysis->explanation();
    for (const ContentsEntry &entry : analysis->choose({}).entries)
        expect(entry.pageIndex >= 0 && entry.pageIndex < document.pageCount(), "an entry without a page");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size) {
    const fuzz::MemoryFile input(QByteArrayView(data, static_cast<qsizetype>(size)));
    const auto document = open(input.path());
    if (!document || document->isLocked()) return 0;
    readAll(*document);
    findAll(*document);
    const auto outline = longer(document->outlineRoot());
    const QStringList wanted = linesOf(*outline);
    if (document->isEncrypted()) return 0;

    const fuzz::MemoryFile output;
    if (document->engine().write(*outline, output.descriptor(), [](int) {})) return 0;
    const auto written = open(output.path());
    expect(written != nullptr, "what was written does not open");
    expect(written->pageCount() == document->pageCount(), "pages were lost");
    expect(linesOf(written->outlineRoot()).size() == wanted.size(), "the outline is not the one written");
    return 0;
}
