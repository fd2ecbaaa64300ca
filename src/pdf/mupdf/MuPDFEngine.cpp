#include "pdf/mupdf/MuPDFEngine.h"

#include "files/FileSnapshot.h"
#include "files/SystemError.h"
#include "pdf/mupdf/Context.h"
#include "pdf/mupdf/FileOpener.h"
#include "pdf/mupdf/FileWriter.h"
#include "pdf/mupdf/LinkReader.h"
#include "pdf/mupdf/MarksReader.h"
#include "pdf/mupdf/OutlineReader.h"
#include "pdf/mupdf/PageRenderer.h"
#include "pdf/mupdf/ReaderPool.h"
#include "pdf/mupdf/SpanReader.h"
#include "pdf/mupdf/TextExtractor.h"
#include "texts/Translated.h"

#include <QLoggingCategory>

#include <cerrno>
#include <system_error>
#include <thread>

namespace leafwright {

namespace {

using namespace mupdf;

Q_LOGGING_CATEGORY(log, "leafwright.mupdf", QtWarningMsg)

constexpr Translated translated{"MuPDFEngine"};

/// Who reads needs a thread of its own.
PDFError noThread(const std::system_error &error) {
    return {PDFError::Kind::OutOfMemory,
            translated("no thread can be started: %1").arg(reasonOfSystem(error.code().value()))};
}

size_t sizeOf(const PageText &text) {
    return static_cast<size_t>(text.attributedString.string.size()) * sizeof(QChar) +
           text.attributedString.runs.size() * (sizeof(FontRun) + sizeof(Rect));
}

/// How many readers of one kind there may be: one a core, as long as those of both kinds fit into the memory
/// of the file once they have read all of it.
int mostReaders(const Reader &reader) {
    constexpr size_t bytesAnObject = 400;
    fz_context *ctx = reader.context();
    const int objects = guarded(ctx, [&] { return pdf_xref_len(ctx, reader.document()); });
    const size_t size = bytesAnObject * static_cast<size_t>(std::max(objects, 1));
    const size_t fitting = std::max<size_t>(1, MemoryBudget::most / 2 / size);
    return static_cast<int>(std::clamp<size_t>(std::thread::hardware_concurrency(), 1, fitting));
}

Result<std::unique_ptr<PDFEngine>> openEngine(
    const std::function<std::shared_ptr<const FileHandle>()> &handle);

class MuPDFEngine final : public PDFEngine {
public:
    MuPDFEngine(const std::shared_ptr<const FileHandle> &file, OpenedFile opened)
        : file_(file),
          facts_(std::move(opened.facts)),
          pages_(opened.pages),
          drawers_(file, opened.pages, mostReaders(*opened.reader)),
          pool_(file, opened.pages, drawers_.most(), std::move(opened.reader)),
          problem_(opened.problem),
          problemForWriting_(std::move(opened.problem)) {}

    const PDFFacts &facts() const override { return facts_; }

    Result<std::unique_ptr<PDFEngine>> unlocked(const QString &password) const override {
        auto engine = openEngine(
            [&] { return std::make_shared<const FileHandle>(file_->descriptor(), password.toUtf8()); });
        const auto *opened = std::get_if<std::unique_ptr<PDFEngine>>(&engine);
        if (!opened || (*opened)->facts().unlocked) return engine;
        return PDFError{PDFError::Kind::Locked, translated("This is not the password.")};
    }

    std::optional<PDFError> readProblem() const override {
        const std::lock_guard lock(problemMutex_);
        return problem_;
    }

    bool canBeWritten() const override { return !problemForWriting(); }

    std::shared_ptr<const PageText> pageText(int index) const override {
        auto text = std::make_unique<const PageText>(read(index, nullptr));
        const size_t bytes = sizeOf(*text);
        const std::shared_ptr<MemoryBudget> &memory = file_->memory();
        if (!memory->take(bytes)) {
            noted(tooMuchMemoryError(), Shortage::EndsReading);
            return std::make_shared<const PageText>();
        }
        return {text.release(), [memory, bytes](const PageText *read) {
                    delete read;
                    memory->giveBack(bytes);
                }};
    }

    std::vector<Rect> characterBoxes(int index) const override {
        std::vector<Rect> boxes;
        read(index, &boxes);
        return boxes;
    }

    std::vector<TextSpan> textSpans(int index) const override {
        return attempt(pool_, Shortage::EndsReading, std::vector<TextSpan>(),
                       [&](Reader &reader) { return readSpans(reader, index); });
    }

    DocumentMarks marks() const override {
        if (facts_.locked) return {};
        return attempt(pool_, Shortage::EndsReading, DocumentMarks(),
                       [](Reader &reader) { return readMarks(reader); });
    }

    std::vector<QString> markedText(int index, const std::vector<int> &identifiers) const override {
        return attempt(pool_, Shortage::EndsReading, std::vector<QString>(identifiers.size()),
                       [&](Reader &reader) { return readMarkedText(reader, index, identifiers); });
    }

    PageImage renderPage(const RenderRequest &request, const std::stop_token &stop) const override {
        return attempt(drawers_, Shortage::IsPassedOver, blankImage(request.clip),
                       [&](Reader &reader) { return mupdf::renderPage(reader, request, stop); });
    }

    std::vector<PDFLink> links(int index) const override {
        return attempt(pool_, Shortage::IsPassedOver, std::vector<PDFLink>(),
                       [&](Reader &reader) { return readLinks(reader, index); });
    }

    Result<std::unique_ptr<PDFOutline>> readOutline() const override {
        if (facts_.locked) return std::make_unique<PDFOutline>();
        try {
            const ReaderPool::Lease reader = pool_.acquire();
            return mupdf::readOutline(*reader);
        } catch (const ReadProblem &problem) {
            return noted(problem.problem(), Shortage::EndsWriting);
        } catch (const std::bad_alloc &) {
            return noted(outOfMemoryError(), Shortage::EndsWriting);
        } catch (const Error &error) {
            return noted({PDFError::Kind::NotAPDF, QString::fromUtf8(error.what())}, Shortage::EndsWriting);
        }
    }

    std::optional<PDFError> write(const PDFOutline &root, int descriptor,
                                  const std::function<void(int)> &progress) const override {
        if (const auto problem = problemForWriting()) return refusal(*problem);
        try {
            const std::unique_ptr<Reader> reader = readerToWriteFrom();
            writeWithOutline(*reader, root, descriptor, progress);
            if (const auto problem = reader->problem()) return refusal(*problem);
            return std::nullopt;
        } catch (const std::system_error &error) {
            return PDFError{PDFError::Kind::WriteFailed, reasonOfSystem(error.code().value())};
        } catch (const ReadProblem &problem) {
            return refusal(problem.problem());
        } catch (const std::bad_alloc &) {
            return refusal(outOfMemoryError());
        } catch (const Error &error) {
            return PDFError{PDFError::Kind::WriteFailed, QString::fromUtf8(error.what())};
        }
    }

private:
    /// A reader of its own, gone after the write: the next write starts from the original again.
    std::unique_ptr<Reader> readerToWriteFrom() const {
        // Where opening the file brought damage to light, opening it again does so too.
        std::unique_ptr<Reader> reader =
            facts_.repaired ? openFile(file_).reader : std::make_unique<Reader>(file_);
        reader->setPages(pages_);
        return reader;
    }

    /// What it means that memory or time ran out. That the file can't be read always means that nothing is
    /// written.
    enum class Shortage {
        EndsWriting,  ///< What was asked for is part of what is written.
        EndsReading,  ///< It is not, but whoever asked has to know that it is not all.
        IsPassedOver
    };

    /// Remembers the first problem of those that matter. @return the problem
    PDFError noted(PDFError problem, Shortage shortage) const {
        const bool isShortage =
            problem.kind == PDFError::Kind::OutOfMemory || problem.kind == PDFError::Kind::TakesTooLong;
        if (isShortage && shortage == Shortage::IsPassedOver) return problem;
        const std::lock_guard lock(problemMutex_);
        if (!problem_) problem_ = problem;
        if (!problemForWriting_ && !(isShortage && shortage == Shortage::EndsReading))
            problemForWriting_ = problem;
        return problem;
    }

    std::optional<PDFError> problemForWriting() const {
        const std::lock_guard lock(problemMutex_);
        return problemForWriting_;
    }

    static PDFError refusal(const PDFError &problem) {
        return {PDFError::Kind::WriteFailed,
                translated("the file could not be read whole, and nothing is to be lost: %1")
                    .arg(problem.message)};
    }

    /// Lets a reader read. @param otherwise what to return when nothing can be
    template <typename Value, typename Read>
    Value attempt(ReaderPool &pool, Shortage shortage, Value otherwise, Read &&read) const {
        try {
            const ReaderPool::Lease reader = pool.acquire();
            Value value = read(*reader);
            if (const auto problem = reader->problem()) noted(*problem, shortage);
            return value;
        } catch (const ReadProblem &problem) {
            noted(problem.problem(), shortage);
        } catch (const std::system_error &error) {
            noted(noThread(error), shortage);
        } catch (const std::bad_alloc &) {
            noted(outOfMemoryError(), shortage);
        } catch (const Error &error) {
            qCWarning(log, "something can't be read: %s", error.what());
        }
        return otherwise;
    }

    PageText read(int index, std::vector<Rect> *boxes) const {
        return attempt(pool_, Shortage::EndsReading, PageText(),
                       [&](Reader &reader) { return extractText(reader, faces_, index, boxes); });
    }

    std::shared_ptr<const FileHandle> file_;
    PDFFacts facts_;
    std::shared_ptr<const PageTree> pages_;
    /// Readers that draw are others than those that read text: a page may take seconds to draw, and nobody
    /// who wants text is to wait for that.
    mutable ReaderPool drawers_;
    mutable ReaderPool pool_;
    mutable FaceTable faces_;
    mutable std::mutex problemMutex_;
    mutable std::optional<PDFError> problem_;
    mutable std::optional<PDFError> problemForWriting_;
};

PDFError unreadable(const std::system_error &error) {
    const bool missing =
        error.code() == std::errc::no_such_file_or_directory || error.code() == std::errc::not_a_directory;
    return {missing ? PDFError::Kind::FileMissing : PDFError::Kind::FileUnreadable,
            reasonOfSystem(error.code().value())};
}

/// Opens a file. @param asItWas gets the file as it was before the handle looked at it; may be null
std::shared_ptr<const FileHandle> handleOf(const QString &path,
                                           std::shared_ptr<const FileSnapshot> *asItWas) {
    auto file = std::make_shared<const FileHandle>(path);
    if (!asItWas) return file;
    *asItWas = FileSnapshot::of(file->descriptor());
    if (!*asItWas) throw std::system_error(errno, std::generic_category());
    return std::make_shared<const FileHandle>(file->descriptor());
}

/// @param handle opens the file, or takes one that is open; throws std::system_error where it can't
Result<std::unique_ptr<PDFEngine>> openEngine(
    const std::function<std::shared_ptr<const FileHandle>()> &handle) {
    try {
        const std::shared_ptr<const FileHandle> file = handle();
        if (file->size() == 0) return PDFError{PDFError::Kind::NotAPDF, translated("the file is empty")};
        OpenedFile opened = openFile(file);
        const bool mayLackPages = opened.facts.locked || opened.isMeantEmpty;
        auto engine = std::make_unique<MuPDFEngine>(file, std::move(opened));
        if (engine->facts().pages.empty() && !mayLackPages) {
            if (const auto problem = engine->readProblem()) return *problem;
            return PDFError{PDFError::Kind::NotAPDF, translated("it holds no pages")};
        }
        return std::unique_ptr<PDFEngine>(std::move(engine));
    } catch (const std::system_error &error) {
        return unreadable(error);
    } catch (const ReadProblem &problem) {
        return problem.problem();
    } catch (const std::bad_alloc &) {
        return outOfMemoryError();
    } catch (const Error &error) {
        return PDFError{PDFError::Kind::NotAPDF, QString::fromUtf8(error.what())};
    }
}

}  // namespace

QString pdfEngineName() {
    return QStringLiteral("MuPDF " FZ_VERSION);
}

Result<std::unique_ptr<PDFEngine>> openWithMuPDF(const QString &path,
                                                 std::shared_ptr<const FileSnapshot> *asItWas) {
    return openEngine([&] { return handleOf(path, asItWas); });
}

}  // namespace leafwright
