#include "pdf/mupdf/ObjectPeek.h"

namespace leafwright::mupdf {

Object ObjectPeek::object(const Object &reference) {
    const int number = reference.objectNumber();
    const int stream = number != 0 ? streamOf(number) : 0;
    if (stream == 0 || (stream != openStream_ && !open(stream))) return reference;
    const QByteArrayView text = stream_->textFrom(number);
    if (text.isEmpty()) return reference;
    Object object = parse(text);
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
    stream_.reset();
    openStream_ = 0;
    if (seenStreams_.contains(streamNumber)) return false;
    seenStreams_.insert(streamNumber);
    try {
        stream_ = std::make_unique<ObjectStream>(reader_, streamNumber);
    } catch (const Error &) {
        return false;  // MuPDF will find out what is wrong with it
    }
    openStream_ = streamNumber;
    return true;
}

Object ObjectPeek::parse(QByteArrayView text) {
    fz_context *ctx = reader_.context();
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): MuPDF's bytes have no sign
    const auto *data = reinterpret_cast<const unsigned char *>(text.data());
    pdf_lexbuf lexbuf;
    pdf_lexbuf_init(ctx, &lexbuf, PDF_LEXBUF_SMALL);
    fz_stream *stream = nullptr;
    pdf_obj *raw = nullptr;
    try {
        raw = guarded(ctx, [&] {
            stream = fz_open_memory(ctx, data, static_cast<size_t>(text.size()));
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
