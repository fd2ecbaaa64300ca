#include "pdf/mupdf/FileWriter.h"

#include "pdf/mupdf/OutlineWriter.h"

#include <QCoreApplication>

#include <cerrno>
#include <system_error>

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

/// Where MuPDF writes to: the output file, which may already hold the original bytes.
struct Sink {
    QIODevice &out;
    qint64 position;
    PageProgress &progress;
    std::shared_ptr<const FileHandle> original;
    bool failed = false;
};

void writeToSink(fz_context *ctx, void *state, const void *data, size_t length) {
    auto *sink = static_cast<Sink *>(state);
    const auto size = static_cast<qint64>(length);
    sink->failed = sink->failed || sink->out.write(static_cast<const char *>(data), size) != size;
    if (sink->failed) fz_throw(ctx, FZ_ERROR_GENERIC, "write error");
    sink->position += size;
    sink->progress.reached(sink->position);
}

int64_t positionInSink(fz_context * /*ctx*/, void *state) {
    return static_cast<Sink *>(state)->position;
}

/// MuPDF only ever asks to go on where the original ends, which is where an appending sink stands.
void seekInSink(fz_context *ctx, void *state, int64_t offset, int whence) {
    const bool stays = whence == SEEK_END ? offset == 0 : offset == static_cast<Sink *>(state)->position;
    if (!stays) fz_throw(ctx, FZ_ERROR_GENERIC, "the output can only grow");
}

void truncateSink(fz_context * /*ctx*/, void * /*state*/) {
    // There is never anything behind the position.
}

/// MuPDF compares what is in the output with the original before it appends, and copies it there if it
/// differs. What is in the output is the original, just copied; so the original is shown to it.
fz_stream *contentOfSink(fz_context *ctx, void *state) {
    return openFileStream(ctx, static_cast<Sink *>(state)->original);
}

/// MuPDF does not append to a file that has cross-reference sections of both kinds, because it would not
/// know which to write. Either will do (ISO 32000-1, 7.5.8.4): we go on with the kind of the newest.
void settleOnOneKindOfXref(Reader &reader) {
    const bool newestIsStream = reader.trailer().get(PDF_NAME(Type)).toName() == "XRef";
    reader.document()->has_xref_streams = newestIsStream ? 1 : 0;
    reader.document()->has_old_style_xrefs = newestIsStream ? 0 : 1;
}

void writeChanges(Reader &reader, Sink &sink, bool append) {
    fz_context *ctx = reader.context();
    if (append) settleOnOneKindOfXref(reader);
    pdf_write_options options = pdf_default_write_options;
    options.do_incremental = append ? 1 : 0;
    options.dont_regenerate_id = 1;
    fz_output *output =
        guarded(ctx, [&] { return fz_new_output(ctx, 1 << 16, &sink, writeToSink, nullptr, nullptr); });
    output->tell = positionInSink;
    output->seek = seekInSink;
    output->truncate = truncateSink;
    output->as_stream = contentOfSink;
    try {
        guarded(ctx, [&] {
            pdf_write_document(ctx, reader.document(), output, &options);
            fz_close_output(ctx, output);
        });
    } catch (const Error &) {
        fz_drop_output(ctx, output);
        throw;
    }
    fz_drop_output(ctx, output);
}

std::optional<QString> copyOriginal(const FileHandle &file, QIODevice &out, PageProgress &progress) {
    std::vector<char> buffer(1 << 16);
    for (qint64 offset = 0; offset < file.size();) {
        const qint64 count =
            file.readAt(offset, buffer.data(), std::min<qint64>(file.size() - offset, std::ssize(buffer)));
        if (count < 0) return QString::fromLocal8Bit(std::generic_category().message(errno).c_str());
        if (count == 0) {
            return QCoreApplication::translate("FileWriter", "the original was cut short by another program");
        }
        if (out.write(buffer.data(), count) != count) return out.errorString();
        offset += count;
        progress.reached(offset);
    }
    return std::nullopt;
}

}  // namespace

std::optional<PDFError> writeWithOutline(Reader &reader, const PDFOutline &root, QIODevice &out,
                                         const std::function<void(int)> &progress) {
    const auto failure = [](const QString &reason) { return PDFError{PDFError::Kind::WriteFailed, reason}; };
    const FileHandle &file = *reader.file();
    PageProgress pages(reader.pages().count(), file.size(), progress);
    installOutline(reader, root);
    // Asked after the outline is in: the reading it took may have brought damage to light.
    const bool append = !reader.wasRepaired();
    Sink sink{out, 0, pages, reader.file()};
    if (append) {
        if (const auto reason = copyOriginal(file, out, pages)) return failure(*reason);
        sink.position = file.size();
    }
    try {
        writeChanges(reader, sink, append);
    } catch (const Error &) {
        if (sink.failed) return failure(out.errorString());
        throw;
    }
    pages.finish();
    return std::nullopt;
}

}  // namespace leafwright::mupdf
