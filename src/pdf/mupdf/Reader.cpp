#include "pdf/mupdf/Reader.h"

#include "pdf/mupdf/DestinationReader.h"
#include "pdf/mupdf/XrefGuard.h"

namespace leafwright::mupdf {

Reader::Reader(std::shared_ptr<const FileHandle> file) : context_(file->memory()), file_(std::move(file)) {
    // MuPDF then finds out at once that the section is damaged, and rebuilds the table.
    const qint64 hidden = absurdFieldWidths(*file_).value_or(-1);
    fz_stream *stream = guarded(context_, [&] { return openFileStream(context_, file_, hidden); });
    try {
        document_ = guarded(context_, [&] { return pdf_open_document_with_stream(context_, stream); });
    } catch (const Error &) {
        fz_drop_stream(context_, stream);
        throw;
    }
    fz_drop_stream(context_, stream);  // the document keeps its own reference
    locked_ = guarded(context_, [this] { return pdf_needs_password(context_, document_); });
    if (!file_->password().isNull()) unlock();
}

/// With the password of the file, if that is the right one. Whoever reads the file has to, each for itself.
void Reader::unlock() {
    const char *password = file_->password().constData();
    unlocked_ =
        guarded(context_, [&] { return pdf_authenticate_password(context_, document_, password) != 0; });
    locked_ = !unlocked_;
}

Reader::~Reader() {
    // They hold objects of the document.
    destinations_.reset();
    directPages_.clear();
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

Object Reader::page(int index) {
    const int number = pages_->numberOf(index);
    if (number == 0) {
        // One walk finds all of them.
        if (directPages_.empty()) directPages_ = pagesWithoutNumber(catalog().get(PDF_NAME(Pages)));
        return index < std::ssize(directPages_) ? directPages_[static_cast<size_t>(index)] : Object();
    }
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
