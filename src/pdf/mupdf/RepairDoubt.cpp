#include "pdf/mupdf/RepairDoubt.h"

#include "pdf/ObjectSyntax.h"
#include "pdf/mupdf/ObjectSource.h"
#include "pdf/mupdf/ObjectStream.h"
#include "texts/Translated.h"

#include <algorithm>
#include <vector>

namespace leafwright::mupdf {

namespace {

constexpr Translated translated{"RepairDoubt"};

/// The number that ends before a position and the white space in front of it; where it begins then is the
/// position. Nothing where there is none.
std::optional<int> numberBefore(QByteArrayView text, qsizetype &position) {
    constexpr qsizetype mostDigits = 9;
    qsizetype end = position;
    while (end > 0 && isWhiteSpace(text[end - 1]))
        --end;
    qsizetype begin = end;
    while (begin > 0 && isDigit(text[begin - 1]) && end - begin <= mostDigits)
        --begin;
    if (end == position || begin == end || end - begin > mostDigits) return std::nullopt;
    position = begin;
    return text.sliced(begin, end - begin).toByteArray().toInt();
}

/// Where each object stands last that stands by itself, by its number; -1 for none. What a stream contains is
/// looked at like anything else.
std::vector<qint64> lastPlaces(const FileHandle &file, int size) {
    constexpr qint64 blockSize = 1 << 20;
    constexpr qint64 overlap = 64;
    constexpr QByteArrayView word("obj");
    std::vector<qint64> places(static_cast<size_t>(size), -1);
    QByteArray block(blockSize, Qt::Uninitialized);
    for (qint64 begin = 0; begin < file.end(); begin += blockSize - overlap) {
        qint64 count = 0;
        while (count < blockSize) {
            const qint64 more = file.readOrThrow(begin + count, block.data() + count, blockSize - count);
            if (more == 0) break;
            count += more;
        }
        const QByteArrayView text = QByteArrayView(block).first(count);
        for (qsizetype at = text.indexOf(word); at >= 0; at = text.indexOf(word, at + 1)) {
            qsizetype position = at;
            if (!numberBefore(text, position)) continue;
            const auto number = numberBefore(text, position);
            if (number && *number < size) places[static_cast<size_t>(*number)] = begin + position;
        }
    }
    return places;
}

/// An object that stands by itself and is a stream; null for any other, and where damage keeps it from being
/// read.
Object streamOf(Reader &reader, const ObjectSource &source, int number) {
    if (source.offsetOf(number) < 0) return {};
    fz_context *ctx = reader.context();
    pdf_document *doc = reader.document();
    try {
        if (!guarded(ctx, [&] { return pdf_obj_num_is_stream(ctx, doc, number) != 0; })) return {};
        pdf_obj *object = guarded(ctx, [&] { return pdf_load_object(ctx, doc, number); });
        Object stream(ctx, object);
        pdf_drop_obj(ctx, object);
        return stream;
    } catch (const Error &) {
        return {};
    }
}

/// The objects that an object stream has; none where damage keeps it from being unpacked.
QList<int> numbersIn(Reader &reader, int number) {
    try {
        return ObjectStream(reader, number).objectNumbers();
    } catch (const Error &) {
        return {};
    }
}

/// For each object, where the object stream stands that has it and that is the last one in the file; -1 for
/// none.
std::vector<qint64> lastStreams(Reader &reader, const ObjectSource &source, int size) {
    std::vector<qint64> places(static_cast<size_t>(size), -1);
    for (int number = 1; number < size; ++number) {
        if (streamOf(reader, source, number).get(PDF_NAME(Type)).toName() != "ObjStm") continue;
        for (const int held : numbersIn(reader, number)) {
            if (held < 0 || held >= size) continue;
            qint64 &place = places[static_cast<size_t>(held)];
            place = std::max(place, source.offsetOf(number));
        }
    }
    return places;
}

[[noreturn]] void refuseVersion(int number) {
    throw Error(translated("it is damaged: which of several versions of object %1 is meant can’t be told")
                    .arg(number)
                    .toStdString());
}

void refuseOlderVersions(Reader &reader, const ObjectSource &source, int size) {
    const std::vector<qint64> alone = lastPlaces(*reader.file(), size);
    const std::vector<qint64> inStreams = lastStreams(reader, source, size);
    for (int number = 1; number < size; ++number) {
        const ObjectPlace place = source.placeOf(number);
        if (place.kind != ObjectPlace::Kind::InStream) continue;
        const qint64 taken = source.offsetOf(static_cast<int>(place.offset));
        const auto i = static_cast<size_t>(number);
        if (alone[i] > taken || inStreams[i] > taken) refuseVersion(number);
    }
}

/// How long a stream is by its dictionary as it stands in the file; -1 where that does not say. Repair gives
/// the one that is in memory another length.
qint64 lengthInFile(Reader &reader, const ObjectSource &source, int number) {
    const std::optional<DictionarySyntax> dictionary = source.streamDictionary(number);
    const QByteArray length = dictionary ? dictionary->value("Length") : QByteArray();
    bool isNumber = false;
    const qint64 direct = length.toLongLong(&isNumber);
    if (isNumber) return direct;
    fz_context *ctx = reader.context();
    pdf_document *doc = reader.document();
    const int object = length.left(length.indexOf(' ')).toInt();
    if (!length.endsWith('R') || source.placeOf(object).kind == ObjectPlace::Kind::Free) return -1;
    try {
        pdf_obj *reference = guarded(ctx, [&] { return pdf_new_indirect(ctx, doc, object, 0); });
        const Object value(ctx, reference);
        pdf_drop_obj(ctx, reference);
        return value.isInt() ? value.toInt() : -1;
    } catch (const Error &) {
        return -1;
    }
}

/// Whether a stream ends at an offset.
bool endsAt(const FileHandle &file, qint64 offset) {
    constexpr QByteArrayView word("endstream");
    constexpr int lineEnd = 2;
    QByteArray text(word.size() + lineEnd, Qt::Uninitialized);
    const qint64 count = file.readOrThrow(offset, text.data(), text.size());
    text.truncate(std::max<qint64>(0, count));
    const qsizetype at = text.indexOf(word);
    return at >= 0 && std::all_of(text.cbegin(), text.cbegin() + at, isWhiteSpace);
}

void refuseCutStreams(Reader &reader, const ObjectSource &source, int size) {
    fz_context *ctx = reader.context();
    for (int number = 1; number < size; ++number) {
        const Object stream = streamOf(reader, source, number);
        if (!stream.isDict()) continue;
        const qint64 begin =
            guarded(ctx, [&] { return pdf_get_xref_entry_no_null(ctx, reader.document(), number)->stm_ofs; });
        const qint64 taken = stream.get(PDF_NAME(Length)).toInt();
        const qint64 length = lengthInFile(reader, source, number);
        if (length <= taken || !endsAt(*reader.file(), begin + length)) continue;
        throw Error(translated("it is damaged: where the stream of object %1 ends can’t be told")
                        .arg(number)
                        .toStdString());
    }
}

}  // namespace

void refuseDoubtfulRepair(Reader &reader) {
    const ObjectSource source(reader);
    fz_context *ctx = reader.context();
    const int size = guarded(ctx, [&] { return pdf_xref_len(ctx, reader.document()); });
    refuseOlderVersions(reader, source, size);
    refuseCutStreams(reader, source, size);
}

}  // namespace leafwright::mupdf
