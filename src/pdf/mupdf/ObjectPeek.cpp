#include "pdf/mupdf/ObjectPeek.h"

#include <charconv>

namespace leafwright::mupdf {

namespace {

/// Reads the next integer behind white space. @return whether there is one
bool readInteger(const char *&position, const char *end, int &value) {
    while (position < end &&
           (*position == '\0' || *position == ' ' || (*position >= '\t' && *position <= '\r')))
        ++position;
    const auto [next, error] = std::from_chars(position, end, value);
    position = next;
    return error == std::errc() && value >= 0;
}

}  // namespace

ObjectPeek::~ObjectPeek() {
    close();
}

Object ObjectPeek::object(const Object &reference) {
    const int number = reference.objectNumber();
    const int stream = number != 0 ? streamOf(number) : 0;
    if (stream == 0 || (stream != openStream_ && !open(stream))) return reference;
    const auto offset = offsets_.constFind(number);
    if (offset == offsets_.constEnd()) return reference;
    Object object = parse(*offset);
    return object ? object : reference;
}

int ObjectPeek::streamOf(int objectNumber) const {
    fz_context *ctx = reader_.context();
    if (objectNumber >= pdf_xref_len(ctx, reader_.document())) return 0;
    const pdf_xref_entry *entry =
        guarded(ctx, [&] { return pdf_get_xref_entry_no_null(ctx, reader_.document(), objectNumber); });
    const bool inStream = entry && entry->type == 'o' && !entry->obj;
    return inStream ? static_cast<int>(entry->ofs) : 0;
}

bool ObjectPeek::open(int streamNumber) {
    close();
    if (seenStreams_.contains(streamNumber)) return false;
    seenStreams_.insert(streamNumber);
    fz_context *ctx = reader_.context();
    pdf_document *doc = reader_.document();
    int count = 0;
    int first = 0;
    try {
        content_ = guarded(ctx, [&] {
            pdf_obj *dictionary = pdf_load_object(ctx, doc, streamNumber);
            count = pdf_dict_get_int(ctx, dictionary, PDF_NAME(N));
            first = pdf_dict_get_int(ctx, dictionary, PDF_NAME(First));
            pdf_drop_obj(ctx, dictionary);
            return pdf_load_stream_number(ctx, doc, streamNumber);
        });
    } catch (const Error &) {
        return false;  // MuPDF will find out what is wrong with it
    }
    openStream_ = streamNumber;
    unsigned char *data = nullptr;
    const size_t size = fz_buffer_storage(ctx, content_, &data);
    const QByteArrayView text(data, static_cast<qsizetype>(size));
    const char *position = text.begin();
    const char *const end = text.end();
    int number = 0;
    int offset = 0;
    for (int i = 0; i < count && readInteger(position, end, number) && readInteger(position, end, offset);
         ++i) {
        const qsizetype at = qsizetype{first} + offset;
        if (at >= 0 && at < static_cast<qsizetype>(size)) offsets_.insert(number, at);
    }
    return true;
}

void ObjectPeek::close() {
    fz_drop_buffer(reader_.context(), content_);
    content_ = nullptr;
    openStream_ = 0;
    offsets_.clear();
}

Object ObjectPeek::parse(qsizetype offset) {
    fz_context *ctx = reader_.context();
    unsigned char *data = nullptr;
    const size_t size = fz_buffer_storage(ctx, content_, &data);
    pdf_lexbuf lexbuf;
    pdf_lexbuf_init(ctx, &lexbuf, PDF_LEXBUF_SMALL);
    fz_stream *stream = nullptr;
    pdf_obj *raw = nullptr;
    try {
        raw = guarded(ctx, [&] {
            stream = fz_open_memory(ctx, data + offset, size - static_cast<size_t>(offset));
            return pdf_parse_stm_obj(ctx, reader_.document(), stream, &lexbuf);
        });
    } catch (const Error &) {
        raw = nullptr;  // broken here; MuPDF may know how to repair it
    }
    fz_drop_stream(ctx, stream);
    pdf_lexbuf_fin(ctx, &lexbuf);
    Object object(ctx, raw);
    pdf_drop_obj(ctx, raw);
    return object;
}

}  // namespace leafwright::mupdf
