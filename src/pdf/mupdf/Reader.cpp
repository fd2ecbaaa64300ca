#include "pdf/mupdf/Reader.h"

#include "pdf/mupdf/DestinationReader.h"

namespace leafwright::mupdf {

Reader::Reader(std::shared_ptr<const FileHandle> file) : file_(std::move(file)) {
    fz_stream *stream = guarded(context_, [this] { return openFileStream(context_, file_); });
    try {
        document_ = guarded(context_, [&] { return pdf_open_document_with_stream(context_, stream); });
    } catch (const Error &) {
        fz_drop_stream(context_, stream);
        throw;
    }
    fz_drop_stream(context_, stream);  // the document keeps its own reference
    locked_ = guarded(context_, [this] { return pdf_needs_password(context_, document_); });
}

Reader::~Reader() {
    destinations_.reset();  // holds objects of the document
    pdf_drop_document(context_, document_);
}

bool Reader::isEncrypted() const {
    return static_cast<bool>(trailer().get(PDF_NAME(Encrypt)));
}

bool Reader::wasRepaired() const {
    return pdf_was_repaired(context_, document_);
}

Object Reader::trailer() const {
    return {context_, guarded(context_, [this] { return pdf_trailer(context_, document_); })};
}

Object Reader::page(int index) const {
    const int number = pages_->numberOf(index);
    if (number == 0) return pageWithoutNumber(catalog().get(PDF_NAME(Pages)), index);
    pdf_obj *raw = guarded(context_, [&] { return pdf_new_indirect(context_, document_, number, 0); });
    Object page(context_, raw);
    pdf_drop_obj(context_, raw);
    return page;
}

DestinationReader &Reader::destinations() {
    if (!destinations_) destinations_ = std::make_unique<DestinationReader>(*this);
    return *destinations_;
}

}  // namespace leafwright::mupdf
