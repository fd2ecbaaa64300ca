#include "pdf/mupdf/MuPDFEngine.h"

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

#include <QCoreApplication>
#include <QLoggingCategory>

#include <system_error>
#include <thread>

namespace leafwright {

namespace {

using namespace mupdf;

Q_LOGGING_CATEGORY(log, "leafwright.mupdf", QtWarningMsg)

QString translated(const char *text) {
    return QCoreApplication::translate("MuPDFEngine", text);
}

class MuPDFEngine final : public PDFEngine {
public:
    MuPDFEngine(const std::shared_ptr<const FileHandle> &file, OpenedFile opened)
        : file_(file),
          facts_(std::move(opened.facts)),
          pages_(opened.pages),
          drawers_(file, opened.pages, std::max(1, static_cast<int>(std::thread::hardware_concurrency()))),
          pool_(file, std::move(opened.pages), std::move(opened.reader)) {}

    const PDFFacts &facts() const override { return facts_; }

    std::shared_ptr<const PageText> pageText(int index) const override {
        return std::make_shared<const PageText>(read(index, nullptr));
    }

    std::vector<Rect> characterBoxes(int index) const override {
        std::vector<Rect> boxes;
        read(index, &boxes);
        return boxes;
    }

    std::vector<TextSpan> textSpans(int index) const override {
        try {
            const ReaderPool::Lease reader = pool_.acquire();
            return readSpans(*reader, index);
        } catch (const Error &error) {
            qCWarning(log, "the text of page %d can't be read: %s", index + 1, error.what());
            return {};
        }
    }

    DocumentMarks marks() const override {
        if (facts_.locked) return {};
        try {
            const ReaderPool::Lease reader = pool_.acquire();
            return readMarks(*reader);
        } catch (const Error &error) {
            qCWarning(log, "what the file says of itself can't be read: %s", error.what());
            return {};
        }
    }

    std::vector<QString> markedText(int index, const std::vector<int> &identifiers) const override {
        try {
            const ReaderPool::Lease reader = pool_.acquire();
            return readMarkedText(*reader, index, identifiers);
        } catch (const Error &error) {
            qCWarning(log, "the marked content of page %d can't be read: %s", index + 1, error.what());
            return std::vector<QString>(identifiers.size());
        }
    }

    QImage renderPage(const RenderRequest &request, const std::stop_token &stop) const override {
        try {
            const ReaderPool::Lease reader = drawers_.acquire();
            return mupdf::renderPage(*reader, request, stop);
        } catch (const Error &error) {
            qCWarning(log, "page %d can't be drawn: %s", request.pageIndex + 1, error.what());
            return blankImage(request.clip);
        }
    }

    std::vector<PDFLink> links(int index) const override {
        try {
            const ReaderPool::Lease reader = pool_.acquire();
            return readLinks(*reader, index);
        } catch (const Error &error) {
            qCWarning(log, "the links of page %d can't be read: %s", index + 1, error.what());
            return {};
        }
    }

    std::unique_ptr<PDFOutline> readOutline() const override {
        if (facts_.locked) return std::make_unique<PDFOutline>();
        const ReaderPool::Lease reader = pool_.acquire();
        return mupdf::readOutline(*reader);
    }

    std::optional<PDFError> write(const PDFOutline &root, int descriptor,
                                  const std::function<void(int)> &progress) const override {
        try {
            // A reader of its own, gone after the write: the next write starts from the original again.
            Reader reader(file_);
            reader.setPages(pages_);
            writeWithOutline(reader, root, descriptor, progress);
            return std::nullopt;
        } catch (const std::system_error &error) {
            return PDFError{PDFError::Kind::WriteFailed,
                            QString::fromLocal8Bit(error.code().message().c_str())};
        } catch (const Error &error) {
            return PDFError{PDFError::Kind::WriteFailed, QString::fromUtf8(error.what())};
        }
    }

private:
    PageText read(int index, std::vector<Rect> *boxes) const {
        try {
            const ReaderPool::Lease reader = pool_.acquire();
            return extractText(*reader, faces_, index, boxes);
        } catch (const Error &error) {
            qCWarning(log, "the text of page %d can't be read: %s", index + 1, error.what());
            return {};
        }
    }

    std::shared_ptr<const FileHandle> file_;
    PDFFacts facts_;
    std::shared_ptr<const PageTree> pages_;
    /// Readers that draw are others than those that read text: a page may take seconds to draw, and nobody
    /// who wants text is to wait for that.
    mutable ReaderPool drawers_;
    mutable ReaderPool pool_;
    mutable FaceTable faces_;
};

PDFError unreadable(const std::system_error &error) {
    const bool missing =
        error.code() == std::errc::no_such_file_or_directory || error.code() == std::errc::not_a_directory;
    return {missing ? PDFError::Kind::FileMissing : PDFError::Kind::FileUnreadable,
            QString::fromLocal8Bit(error.code().message().c_str())};
}

}  // namespace

QString pdfEngineName() {
    return QStringLiteral("MuPDF " FZ_VERSION);
}

Result<std::unique_ptr<PDFEngine>> openWithMuPDF(const QString &path) {
    try {
        const auto file = std::make_shared<const FileHandle>(path);
        if (file->size() == 0) return PDFError{PDFError::Kind::NotAPDF, translated("the file is empty")};
        auto engine = std::make_unique<MuPDFEngine>(file, openFile(file));
        if (engine->facts().pages.empty() && !engine->facts().locked) {
            return PDFError{PDFError::Kind::NotAPDF, translated("it holds no pages")};
        }
        return std::unique_ptr<PDFEngine>(std::move(engine));
    } catch (const std::system_error &error) {
        return unreadable(error);
    } catch (const Error &error) {
        return PDFError{PDFError::Kind::NotAPDF, QString::fromUtf8(error.what())};
    }
}

}  // namespace leafwright
