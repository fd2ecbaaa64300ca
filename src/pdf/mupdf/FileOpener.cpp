#include "pdf/mupdf/FileOpener.h"

#include "pdf/mupdf/FactsReader.h"

#include <future>
#include <thread>

namespace leafwright::mupdf {

namespace {

/// From how many pages on a second reader is worth its opening.
constexpr int manyPages = 300;

using Geometry = std::optional<std::vector<PageGeometry>>;

void givePages(OpenedFile &opened, PageTree::Kids kids) {
    const Object root = opened.readers.front()->catalog().get(PDF_NAME(Pages));
    opened.pages = std::make_shared<const PageTree>(root, kids);
    for (const auto &reader : opened.readers)
        reader->setPages(opened.pages);
}

/// The geometry of the second half of the pages, by a reader of its own, which is added to the opened file's.
Geometry secondHalf(OpenedFile &opened, const std::shared_ptr<const FileHandle> &file, int begin) {
    auto reader = std::make_unique<Reader>(file);
    reader->setPages(opened.pages);
    Geometry geometry = readGeometry(*reader, begin, opened.pages->count());
    opened.readers.push_back(std::move(reader));
    return geometry;
}

Geometry readAllGeometry(OpenedFile &opened, const std::shared_ptr<const FileHandle> &file) {
    Reader &first = *opened.readers.front();
    const int count = opened.pages->count();
    const bool alone = count < manyPages || std::thread::hardware_concurrency() < 2;
    const int half = alone ? count : count / 2;
    std::future<Geometry> rest;
    // While the helper runs, this thread keeps to `first`, and away from `opened`.
    if (!alone) rest = std::async(std::launch::async, secondHalf, std::ref(opened), file, half);
    Geometry geometry = readGeometry(first, 0, half);
    if (!alone) {
        const Geometry more = rest.get();
        if (!geometry || !more) return std::nullopt;
        geometry->insert(geometry->end(), more->begin(), more->end());
    }
    return geometry;
}

}  // namespace

OpenedFile openFile(const std::shared_ptr<const FileHandle> &file) {
    OpenedFile opened;
    opened.readers.push_back(std::make_unique<Reader>(file));
    opened.facts = readFacts(*opened.readers.front());
    opened.pages = std::make_shared<const PageTree>();
    if (opened.facts.locked) return opened;

    givePages(opened, PageTree::Kids::Presumed);
    Geometry geometry = readAllGeometry(opened, file);
    if (!geometry) {
        givePages(opened, PageTree::Kids::LookedAt);
        geometry = readGeometry(*opened.readers.front(), 0, opened.pages->count());
    }
    opened.facts.pages = std::move(geometry).value_or(std::vector<PageGeometry>());
    opened.facts.labels = readLabels(*opened.readers.front());
    // A wrong key can pass for a right one; then nothing in the file makes sense.
    opened.facts.locked = opened.facts.encrypted && opened.facts.pages.empty();
    // Last, since reading may have brought damage to light.
    opened.facts.repaired = opened.readers.front()->wasRepaired();
    return opened;
}

}  // namespace leafwright::mupdf
