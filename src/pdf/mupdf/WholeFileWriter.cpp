#include "pdf/mupdf/WholeFileWriter.h"

#include "pdf/mupdf/OutlineWriter.h"
#include "pdf/mupdf/RepairDoubt.h"
#include "pdf/mupdf/Walk.h"
#include "texts/Translated.h"

#include <exception>
#include <limits>

namespace leafwright::mupdf {

namespace {

constexpr Translated translated{"WholeFileWriter"};

/// MuPDF writes offsets modulo 2^32, half of them negative.
constexpr qint64 largestFile = std::numeric_limits<qint32>::max();

[[noreturn]] void throwTooLarge() {
    throw Error(translated("it is damaged, and too large (over 2 GiB) to be written new").toStdString());
}

/// Where MuPDF writes to. C++ exceptions must not pass through MuPDF; they wait here.
struct Sink {
    OutputFile &out;
    std::exception_ptr failure;
};

/// @return whether that went well
bool writeTo(Sink &sink, QByteArrayView bytes) {
    try {
        sink.out.write(bytes);
        if (sink.out.position() > largestFile) throwTooLarge();
    } catch (...) {
        sink.failure = std::current_exception();
    }
    return !sink.failure;
}

void writeToSink(fz_context *ctx, void *state, const void *data, size_t length) {
    auto &sink = *static_cast<Sink *>(state);
    if (!writeTo(sink, {static_cast<const char *>(data), static_cast<qsizetype>(length)}))
        fz_throw(ctx, FZ_ERROR_GENERIC, "write error");
}

int64_t positionInSink(fz_context * /*ctx*/, void *state) {
    return static_cast<Sink *>(state)->out.position();
}

/// Has MuPDF's copy of the document hold an object.
void install(Reader &reader, const NewObject &object) {
    fz_context *ctx = reader.context();
    pdf_document *doc = reader.document();
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): MuPDF's bytes have no sign
    const auto *bytes = reinterpret_cast<const unsigned char *>(object.syntax.constData());
    const auto size = static_cast<size_t>(object.syntax.size());
    fz_stream *stream = guarded(ctx, [&] { return fz_open_memory(ctx, bytes, size); });
    pdf_lexbuf lexbuf;
    pdf_lexbuf_init(ctx, &lexbuf, PDF_LEXBUF_SMALL);
    const auto clean = [&] {
        pdf_lexbuf_fin(ctx, &lexbuf);
        fz_drop_stream(ctx, stream);
    };
    try {
        guarded(ctx, [&] {
            while (pdf_xref_len(ctx, doc) <= object.number)
                pdf_create_object(ctx, doc);
            pdf_obj *parsed = pdf_parse_stm_obj(ctx, doc, stream, &lexbuf);
            pdf_update_object(ctx, doc, object.number, parsed);
            pdf_drop_obj(ctx, parsed);
        });
    } catch (const Error &) {
        clean();
        throw;
    }
    clean();
}

/// Takes out of an array what damage has left there and no reader can make anything of.
template <typename Predicate>
void keepOnly(Reader &reader, const Object &array, Predicate &&isSound) {
    fz_context *ctx = reader.context();
    for (int i = array.size() - 1; i >= 0; --i)
        if (!isSound(array.at(i))) guarded(ctx, [&] { pdf_array_delete(ctx, array.get(), i); });
}

/// Whether a stream's bytes, as they stand in the file, have the end of an object in them. One without bytes
/// has not.
bool hasSwallowedObjects(fz_context *ctx, const Object &stream) {
    fz_buffer *buffer = nullptr;
    try {
        buffer = guarded(ctx, [&] { return pdf_load_raw_stream(ctx, stream.get()); });
    } catch (const Error &) {
        return false;
    }
    unsigned char *bytes = nullptr;
    const size_t size = fz_buffer_storage(ctx, buffer, &bytes);
    const QByteArrayView raw(bytes, static_cast<qsizetype>(size));
    const bool has = raw.contains("endobj");
    fz_drop_buffer(ctx, buffer);
    return has;
}

/// Throws Error where damage has made a page's content run on into the objects behind it. Other readers find
/// these in the old file, and would no more in the new one.
void refuseSwallowedObjects(Reader &reader) {
    fz_context *ctx = reader.context();
    const auto check = [ctx](const Object &stream) {
        if (guarded(ctx, [&] { return pdf_is_stream(ctx, stream.get()) != 0; }) &&
            hasSwallowedObjects(ctx, stream)) {
            throw Error(
                translated("it is damaged: a page's content runs on into other objects").toStdString());
        }
    };
    Walk walk;
    for (int i = 0; i < reader.pages().count(); ++i) {
        const Object contents = reader.page(i).get(PDF_NAME(Contents));
        if (!walk.enter(contents)) continue;
        if (!contents.isArray()) check(contents);
        for (int k = 0; k < contents.size(); ++k)
            if (walk.enter(contents.at(k))) check(contents.at(k));
    }
}

/// Leaves nothing but pages in the lists of pages, and nothing but streams in a page's list of them.
void removeWhatIsNoPage(Reader &reader) {
    const auto isStream = [&reader](const Object &object) {
        fz_context *ctx = reader.context();
        return guarded(ctx, [&] { return pdf_is_stream(ctx, object.get()) != 0; });
    };
    Walk walk;
    std::vector<Object> pending;
    pending.push_back(reader.catalog().get(PDF_NAME(Pages)));
    while (!pending.empty()) {
        const Object node = std::move(pending.back());
        pending.pop_back();
        if (!walk.enter(node)) continue;
        const Object contents = node.get(PDF_NAME(Contents));
        if (contents.isArray() && walk.enter(contents)) keepOnly(reader, contents, isStream);
        const Object kids = node.get(PDF_NAME(Kids));
        if (!kids.isArray() || !walk.enter(kids)) continue;
        keepOnly(reader, kids, [](const Object &kid) { return kid.isDict(); });
        for (int i = 0; i < kids.size(); ++i) {
            walk.step();
            pending.push_back(kids.at(i));
        }
    }
}

void writeDocument(Reader &reader, Sink &sink) {
    fz_context *ctx = reader.context();
    pdf_write_options options = pdf_default_write_options;
    options.dont_regenerate_id = 1;
    fz_output *output =
        guarded(ctx, [&] { return fz_new_output(ctx, 1 << 16, &sink, writeToSink, nullptr, nullptr); });
    output->tell = positionInSink;
    try {
        guarded(ctx, [&] {
            pdf_write_document(ctx, reader.document(), output, &options);
            fz_close_output(ctx, output);
        });
    } catch (const Error &) {
        fz_drop_output(ctx, output);
        if (sink.failure) std::rethrow_exception(sink.failure);
        throw;
    }
    fz_drop_output(ctx, output);
}

}  // namespace

void writeWhole(Reader &reader, const PDFOutline &root, OutputFile &out) {
    if (reader.file()->size() > largestFile) throwTooLarge();
    refuseDoubtfulRepair(reader);
    refuseSwallowedObjects(reader);
    // Before new objects get the numbers of some that are missing.
    removeWhatIsNoPage(reader);
    const OwnSection all{reader.file()->size(), sizeOf(reader), 0};
    OutlineWriter writer(
        reader, [&reader](const NewObject &object) { install(reader, object); }, all);
    writer.writeEntries(root);
    writer.writeCatalog({});
    Sink sink{out, nullptr};
    writeDocument(reader, sink);
}

}  // namespace leafwright::mupdf
