#include "pdf/mupdf/FileWriter.h"

#include "pdf/mupdf/OutlineWriter.h"
#include "pdf/mupdf/OutputFile.h"
#include "pdf/mupdf/OwnSection.h"
#include "pdf/mupdf/WholeFileWriter.h"
#include "pdf/mupdf/WrittenFile.h"

#include <QSet>

#include <limits>

namespace leafwright::mupdf {

namespace {

/// Turns bytes written into pages written: the file's size stands for all pages.
class PageProgress {
public:
    PageProgress(int pageCount, qint64 expectedBytes, const std::function<void(int)> &report)
        : pageCount_(pageCount), expectedBytes_(std::max<qint64>(1, expectedBytes)), report_(report) {}

    void reached(qint64 bytes) {
        const auto share = static_cast<double>(bytes) / static_cast<double>(expectedBytes_);
        reportUpTo(static_cast<int>(std::min(1.0, share) * pageCount_));
    }
    void finish() { reportUpTo(pageCount_); }

private:
    void reportUpTo(int pages) {
        while (reported_ < pages)
            report_(reported_++);
    }

    int pageCount_;
    qint64 expectedBytes_;
    const std::function<void(int)> &report_;
    int reported_ = 0;
};

/// A file identifier is two strings (ISO 32000-1, 14.4).
bool isIdentifier(const Object &id) {
    return id.size() == 2 && id.at(0).isString() && id.at(1).isString();
}

/// What the new section's trailer takes over from the one before: all but what tells where that has its
/// objects (ISO 32000-1, 7.5.6 and 7.5.8.2), and a damaged identifier, which nobody could do anything with.
DictionarySyntax trailerToGoOnWith(Reader &reader) {
    static const QSet<QByteArray> own{"Size",  "Prev",    "XRefStm",      "Type", "W",
                                      "Index", "Length",  "DecodeParms",  "DP",   "Filter",
                                      "F",     "FFilter", "FDecodeParms", "DL",   ownSectionKey};
    const ObjectSource source(reader);
    const Object old = reader.trailer();
    DictionarySyntax trailer;
    for (int i = 0; i < old.size(); ++i) {
        if (own.contains(old.keyAt(i))) continue;
        if (old.keyAt(i) == "ID" && !isIdentifier(old.valueAt(i))) continue;
        trailer.set(old.keyAt(i), source.spelled(old.valueAt(i)));
    }
    return trailer;
}

/// What has to stand between the original and what is appended to it.
QByteArray separatorBehind(const FileHandle &file, qint64 end) {
    char last = 0;
    return file.readOrThrow(end - 1, &last, 1) == 1 && last == '\n' ? "" : "\n";
}

/// Xref streams came with this version, and with them room for offsets of any size.
constexpr int versionOfStreams = 15;

/// MuPDF and others read where the previous section is as 32 bits. One that is farther away must not be
/// needed.
constexpr qint64 farthestPrevious = std::numeric_limits<qint32>::max();

/// Lists all objects that stay where they are. @return whether some are where only a stream can tell: in an
/// object stream, or farther away than a table has digits for
bool keepOthers(Reader &reader, const OwnSection &original, SectionWriter &section) {
    using Kind = ObjectPlace::Kind;
    const ObjectSource source(reader);
    bool needStream = false;
    const int size = sizeOf(reader);
    for (int number = 1; number < size; ++number) {
        const ObjectPlace place = source.placeOf(number);
        const bool isLeftBehind = place.kind == Kind::InFile && place.offset >= original.begin;
        if (place.kind == Kind::Free || isLeftBehind) continue;
        section.keep(number, place);
        needStream =
            needStream || place.kind == Kind::InStream || place.offset > SectionWriter::farthestInTable;
    }
    return needStream;
}

void append(Reader &reader, const PDFOutline &root, OutputFile &out) {
    using CrossReference = SectionWriter::CrossReference;
    const FileHandle &file = *reader.file();
    const OwnSection original = findOwnSection(reader).value_or(
        OwnSection{file.size(), sizeOf(reader), reader.document()->startxref});
    out.copyFrom(file, file.start() + original.begin);
    SectionWriter section(out, file.start(), separatorBehind(file, original.begin));
    OutlineWriter writer(
        reader, [&section](const NewObject &object) { section.add(object); }, original);
    writer.writeEntries(root);
    // A file may have sections of both kinds (ISO 32000-1, 7.5.8.4): we go on with the kind of the newest.
    const bool newestIsStream = reader.trailer().get(PDF_NAME(Type)).toName() == "XRef";
    bool asStream = newestIsStream || !section.tableIsWideEnough();
    fz_context *ctx = reader.context();
    const int version = guarded(ctx, [&] { return pdf_version(ctx, reader.document()); });
    const bool raisesVersion =
        writer.hasChanges() && asStream && !newestIsStream && version < versionOfStreams;
    writer.writeCatalog(raisesVersion ? "1.5" : QByteArray());
    if (!writer.hasChanges()) {
        out.restart();
        out.copyFrom(file, file.start() + file.size());
        return;
    }
    const bool standsAlone = original.previous > farthestPrevious;
    if (standsAlone) asStream = keepOthers(reader, original, section) || asStream;
    DictionarySyntax trailer = trailerToGoOnWith(reader);
    trailer.set("Root", writer.catalogReference());
    section.end(asStream ? CrossReference::Stream : CrossReference::Table, std::move(trailer), original,
                writer.size(), standsAlone);
}

}  // namespace

void writeWithOutline(Reader &reader, const PDFOutline &root, int descriptor,
                      const std::function<void(int)> &progress) {
    PageProgress pages(reader.pages().count(), reader.file()->size(), progress);
    OutputFile out(descriptor, [&pages](qint64 bytes) { pages.reached(bytes); });
    try {
        if (!reader.wasRepaired()) append(reader, root, out);
    } catch (const Error &) {
        if (!reader.wasRepaired()) throw;
    }
    // Asked again: the reading that it took may have brought damage to light.
    const bool isNew = reader.wasRepaired();
    if (isNew) {
        out.restart();
        writeWhole(reader, root, out);
    }
    out.flush();
    // MuPDF may spell pages that are hardly any so that they read as something else.
    expectAsWritten(descriptor, reader.pages(), isNew ? PageTree::Kids::LookedAt : PageTree::Kids::Presumed,
                    root);
    pages.finish();
}

}  // namespace leafwright::mupdf
