#include "pdf/mupdf/WrittenFile.h"

#include "pdf/ObjectSyntax.h"
#include "pdf/TextString.h"
#include "pdf/mupdf/FactsReader.h"
#include "pdf/mupdf/OutlineReader.h"
#include "pdf/mupdf/Reader.h"
#include "texts/Translated.h"

#include <cmath>
#include <memory>
#include <system_error>

namespace leafwright::mupdf {

namespace {

constexpr Translated translated{"WrittenFile"};

[[noreturn]] void fail(const QString &reason) {
    throw Error(translated("what was written does not read back as it should: %1").arg(reason).toStdString());
}

/// A coordinate as it is read back: rounded as it is written.
bool isCoordinate(double read, double wanted) {
    const double written = numberSyntax(wanted).toDouble();
    constexpr double rounding = 1e-6;  // of single precision
    return std::abs(read - written) <= std::max(1.0, std::abs(written)) * rounding;
}

bool isTarget(const std::optional<PDFDestination> &read, const std::optional<PDFDestination> &wanted,
              int pageCount) {
    const bool isThere = wanted && wanted->pageIndex >= 0 && wanted->pageIndex < pageCount;
    if (!read || !isThere) return !read && !isThere;
    return read->pageIndex == wanted->pageIndex && isCoordinate(read->point.x(), wanted->point.x()) &&
           isCoordinate(read->point.y(), wanted->point.y());
}

bool isColor(const std::optional<OutlineEntry::Color> &read,
             const std::optional<OutlineEntry::Color> &wanted) {
    if (!read || !wanted) return !read && !wanted;
    return isCoordinate((*read)[0], (*wanted)[0]) && isCoordinate((*read)[1], (*wanted)[1]) &&
           isCoordinate((*read)[2], (*wanted)[2]);
}

bool isWhatElse(const OutlineEntry &read, const PDFOutline &outline) {
    const OutlineEntry &wanted = outline.entry();
    // Without children there is nothing to be open, and only some actions can be made anew.
    const bool opens = outline.numberOfChildren() > 0;
    const bool acts = !outline.destination() && wanted.action && wanted.action->isKnownInFull();
    return read.bold == wanted.bold && read.italic == wanted.italic && isColor(read.color, wanted.color) &&
           (!opens || read.open == wanted.open) && (!acts || read.action == wanted.action);
}

bool isEntry(const PDFOutline &read, const PDFOutline &wanted, int pageCount) {
    return read.numberOfChildren() == wanted.numberOfChildren() &&
           read.label() == decodeTextString(encodeTextString(wanted.label())) &&
           isTarget(read.destination(), wanted.destination(), pageCount) && isWhatElse(read.entry(), wanted);
}

bool isOutline(const PDFOutline &read, const PDFOutline &wanted, int pageCount) {
    if (read.numberOfChildren() != wanted.numberOfChildren()) return false;
    struct Pair {
        const PDFOutline *read;
        const PDFOutline *wanted;
    };
    std::vector<Pair> pending{{&read, &wanted}};  // no recursion: outlines nest as deep as they like
    while (!pending.empty()) {
        const auto [ofFile, inMemory] = pending.back();
        pending.pop_back();
        for (int i = 0; i < ofFile->numberOfChildren(); ++i) {
            const Pair child{&ofFile->childAtIndex(i), &inMemory->childAtIndex(i)};
            if (!isEntry(*child.read, *child.wanted, pageCount)) return false;
            pending.push_back(child);
        }
    }
    return true;
}

bool arePages(const PageTree &read, const PageTree &wanted) {
    if (read.count() != wanted.count()) return false;
    for (int i = 0; i < read.count(); ++i)
        if (read.numberOf(i) != wanted.numberOf(i)) return false;
    return true;
}

/// Throws Error where the file shows anything but what it was to be.
void compare(Reader &reader, const PageTree &pages, PageTree::Kids kids, const PDFOutline &outline) {
    if (reader.isLocked()) fail(translated("it is locked"));
    const Object tree = reader.catalog().get(PDF_NAME(Pages));
    auto read = std::make_shared<const PageTree>(tree, kids);
    if (!arePages(*read, pages)) read = std::make_shared<const PageTree>(tree, PageTree::Kids::LookedAt);
    if (!arePages(*read, pages)) fail(translated("its pages are others"));
    reader.setPages(read);
    // As whoever opens the file does; that may bring damage to light, in which the outline is lost.
    if (!readGeometry(reader)) fail(translated("its pages are others"));
    if (!isOutline(*readOutline(reader), outline, pages.count())) fail(translated("its outline is another"));
    // Last: all reading may bring damage to light.
    if (reader.wasRepaired()) fail(translated("it needs repair"));
}

/// Throws ReadProblem when the system refuses.
std::shared_ptr<const FileHandle> handleOf(int descriptor) {
    try {
        return std::make_shared<const FileHandle>(descriptor);
    } catch (const std::system_error &error) {
        throw ReadProblem(readFailureError(error.code().value()));
    }
}

}  // namespace

void expectAsWritten(int descriptor, const PageTree &pages, PageTree::Kids kids, const PDFOutline &outline) {
    Reader reader(handleOf(descriptor));
    try {
        compare(reader, pages, kids, outline);
    } catch (const Error &) {
        reader.throwProblem();  // MuPDF may have taken it for damage
        throw;
    }
    reader.throwProblem();
}

}  // namespace leafwright::mupdf
