#include "pdf/mupdf/ObjectStream.h"

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

ObjectStream::ObjectStream(Reader &reader, int number) : ctx_(reader.context()) {
    pdf_document *doc = reader.document();
    int count = 0;
    int first = 0;
    buffer_ = guarded(ctx_, [&] {
        pdf_obj *dictionary = pdf_load_object(ctx_, doc, number);
        count = pdf_dict_get_int(ctx_, dictionary, PDF_NAME(N));
        first = pdf_dict_get_int(ctx_, dictionary, PDF_NAME(First));
        pdf_drop_obj(ctx_, dictionary);
        return pdf_load_stream_number(ctx_, doc, number);
    });
    const QByteArrayView text = content();
    const char *position = text.begin();
    const char *const end = text.end();
    int object = 0;
    int offset = 0;
    for (int i = 0; i < count && readInteger(position, end, object) && readInteger(position, end, offset);
         ++i) {
        const qsizetype at = qsizetype{first} + offset;
        if (at >= 0 && at < text.size()) offsets_.insert(object, at);
    }
}

ObjectStream::~ObjectStream() {
    fz_drop_buffer(ctx_, buffer_);
}

QByteArrayView ObjectStream::content() const {
    unsigned char *data = nullptr;
    const size_t size = fz_buffer_storage(ctx_, buffer_, &data);
    return {data, static_cast<qsizetype>(size)};
}

QByteArrayView ObjectStream::textFrom(int objectNumber) const {
    const auto offset = offsets_.constFind(objectNumber);
    return offset == offsets_.constEnd() ? QByteArrayView() : content().sliced(*offset);
}

}  // namespace leafwright::mupdf
