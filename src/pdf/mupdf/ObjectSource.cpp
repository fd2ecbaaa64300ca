#include "pdf/mupdf/ObjectSource.h"

#include "pdf/ObjectSyntax.h"

namespace leafwright::mupdf {

namespace {

/// The dictionary of "12 0 obj << ... >> endobj", or of another word at the end. Nothing where that is not
/// what the text begins with.
std::optional<DictionarySyntax> dictionaryOf(QByteArrayView text, int objectNumber, QByteArrayView lastWord) {
    qsizetype position = 0;
    const QByteArrayView wanted[] = {{}, {}, QByteArrayView("obj")};
    for (int i = 0; i < 3; ++i) {
        const auto token = tokenAt(text, position);
        if (!token) return std::nullopt;
        const QByteArrayView read = text.sliced(token->begin, token->end - token->begin);
        if (i == 0 && read.toByteArray().toInt() != objectNumber) return std::nullopt;
        if (!wanted[i].isEmpty() && read != wanted[i]) return std::nullopt;
        position = token->end;
    }
    const auto object = objectAt(text, position);
    const auto end = object ? tokenAt(text, object->end) : std::nullopt;
    if (!end || !text.sliced(end->begin).startsWith(lastWord)) return std::nullopt;
    return DictionarySyntax::parse(text.sliced(object->begin, object->end - object->begin));
}

}  // namespace

const pdf_xref_entry *ObjectSource::entryOf(int objectNumber) const {
    fz_context *ctx = reader_.context();
    pdf_document *doc = reader_.document();
    if (objectNumber <= 0 || objectNumber >= pdf_xref_len(ctx, doc)) return nullptr;
    return guarded(ctx, [&] { return pdf_get_xref_entry_no_null(ctx, doc, objectNumber); });
}

int ObjectSource::generationOf(int objectNumber) const {
    const pdf_xref_entry *entry = entryOf(objectNumber);
    return entry && entry->type == 'n' ? entry->gen : 0;  // in a stream, it is the place
}

ObjectPlace ObjectSource::placeOf(int objectNumber) const {
    using Kind = ObjectPlace::Kind;
    const pdf_xref_entry *entry = entryOf(objectNumber);
    const char type = entry ? entry->type : 'f';
    if (type != 'n' && type != 'o') return {Kind::Free, 0, 0};
    return {type == 'n' ? Kind::InFile : Kind::InStream, entry->ofs, entry->gen};
}

qint64 ObjectSource::offsetOf(int objectNumber) const {
    const pdf_xref_entry *entry = entryOf(objectNumber);
    return entry && entry->type == 'n' ? entry->ofs : -1;
}

QByteArray ObjectSource::reference(int objectNumber) const {
    return referenceSyntax(objectNumber, generationOf(objectNumber));
}

DictionarySyntax ObjectSource::dictionary(const Object &reference) {
    if (!reference.isDict()) throw Error("a dictionary is missing");
    const int number = reference.objectNumber();
    std::optional<DictionarySyntax> found;
    if (const pdf_xref_entry *entry = entryOf(number)) {
        const char type = entry->type;
        const qint64 place = entry->ofs;
        if (type == 'n') found = inFile(number, place, "endobj");
        if (type == 'o') found = inStream(number, static_cast<int>(place));
    }
    if (!found) {
        fz_context *ctx = reader_.context();
        const Object resolved(ctx,
                              guarded(ctx, [&] { return pdf_resolve_indirect_chain(ctx, reference.get()); }));
        found = DictionarySyntax::parse(spelled(resolved));
    }
    if (!found) throw Error("a dictionary can't be spelled");
    return *std::move(found);
}

QByteArray ObjectSource::spelled(const Object &value) const {
    fz_context *ctx = reader_.context();
    size_t length = 0;
    char *text = guarded(ctx, [&] { return pdf_sprint_obj(ctx, nullptr, 0, &length, value.get(), 1, 1); });
    QByteArray bytes(text, static_cast<qsizetype>(length));
    fz_free(ctx, text);
    return bytes;
}

std::optional<DictionarySyntax> ObjectSource::streamDictionary(int objectNumber) const {
    const qint64 offset = offsetOf(objectNumber);
    return offset < 0 ? std::nullopt : inFile(objectNumber, offset, "stream");
}

std::optional<DictionarySyntax> ObjectSource::inFile(int objectNumber, qint64 offset,
                                                     QByteArrayView lastWord) const {
    const FileHandle &file = *reader_.file();
    constexpr qsizetype first = 1 << 12;
    constexpr qsizetype longest = 1 << 24;  // more than any dictionary of an outline or a catalog
    QByteArray text;
    for (qsizetype wanted = first; wanted <= longest; wanted *= 4) {
        const qsizetype have = text.size();
        text.resize(wanted);
        const qint64 count = file.readOrThrow(offset + have, text.data() + have, wanted - have);
        text.truncate(have + count);
        if (auto dictionary = dictionaryOf(text, objectNumber, lastWord)) return dictionary;
        if (count == 0) break;
    }
    return std::nullopt;
}

std::optional<DictionarySyntax> ObjectSource::inStream(int objectNumber, int streamNumber) {
    if (streamNumber != streamNumber_) {
        stream_.reset();
        streamNumber_ = streamNumber;
        try {
            stream_ = std::make_unique<ObjectStream>(reader_, streamNumber);
        } catch (const Error &) {
            stream_.reset();  // spelled as MuPDF has repaired it
        }
    }
    return stream_ ? DictionarySyntax::parse(stream_->textFrom(objectNumber)) : std::nullopt;
}

}  // namespace leafwright::mupdf
