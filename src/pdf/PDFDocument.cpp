#include "pdf/PDFDocument.h"

#include "files/FileReplacement.h"
#include "pdf/mupdf/MuPDFEngine.h"
#include "texts/Translated.h"

#include <QScopeGuard>

#include <utility>

namespace leafwright {

namespace {

constexpr Translated translated{"PDFDocument"};

}  // namespace

Result<std::unique_ptr<PDFDocument>> PDFDocument::open(const QString &path,
                                                       std::shared_ptr<const FileSnapshot> *asItWas) {
    auto engine = openWithMuPDF(path, asItWas);
    if (auto *error = std::get_if<PDFError>(&engine)) return std::move(*error);
    return std::make_unique<PDFDocument>(std::get<std::unique_ptr<PDFEngine>>(std::move(engine)));
}

Result<std::unique_ptr<PDFDocument>> PDFDocument::unlocked(const QString &password) const {
    auto engine = engine_->unlocked(password);
    if (auto *error = std::get_if<PDFError>(&engine)) return std::move(*error);
    return std::make_unique<PDFDocument>(std::get<std::unique_ptr<PDFEngine>>(std::move(engine)));
}

PDFDocument::PDFDocument(std::unique_ptr<PDFEngine> engine) : engine_(std::move(engine)) {
    const PDFFacts &facts = engine_->facts();
    const int count = static_cast<int>(facts.pages.size());
    pages_.reserve(count);
    for (int i = 0; i < count; ++i)
        pages_.emplace_back(PDFPage(*this, i, facts.labels[i], facts.pages[i]));
    texts_.resize(count);
    isReadingText_.resize(count);
}

PDFDocument::~PDFDocument() = default;

const PDFPage *PDFDocument::page(int index) const {
    return index >= 0 && index < pageCount() ? &pages_[index] : nullptr;
}

QString PDFDocument::pageLabel(int index) const {
    return pages_.at(index).label();
}

std::shared_ptr<const PageText> PDFDocument::pageText(int index) const {
    std::unique_lock lock(textMutex_);
    textRead_.wait(lock, [&] { return texts_.at(index) || !isReadingText_[index]; });
    if (texts_[index]) return texts_[index];
    isReadingText_[index] = true;
    const auto doneReading = qScopeGuard([&] {  // also where memory runs out: then the next to ask reads it
        isReadingText_[index] = false;
        textRead_.notify_all();
    });
    // Read without the lock, so that threads read different pages side by side.
    std::shared_ptr<const PageText> text;
    {
        lock.unlock();
        const auto lockAgain = qScopeGuard([&] { lock.lock(); });
        text = engine_->pageText(index);
    }
    texts_[index] = text;
    return text;
}

bool PDFDocument::hasReadPageText(int index) const {
    const std::lock_guard lock(textMutex_);
    return texts_.at(index) != nullptr;
}

const PDFOutline &PDFDocument::outlineRoot() const {
    if (!outlineRoot_) {
        auto outline = engine_->readOutline();
        auto *const root = std::get_if<std::unique_ptr<PDFOutline>>(&outline);
        outlineRoot_ = root ? std::move(*root) : std::make_unique<PDFOutline>();
    }
    return *outlineRoot_;
}

std::unique_ptr<PDFOutline> PDFDocument::setOutlineRoot(std::unique_ptr<PDFOutline> root) {
    return std::exchange(outlineRoot_, std::move(root));
}

std::optional<PDFError> PDFDocument::writeToFile(const QString &path, PDFWriteObserver *observer,
                                                 QStringList *notices, FileOnDisk *onDisk) const {
    if (!observer)
        return writeAndReplace(
            path, [](int) {}, notices, onDisk);
    observer->documentBeginWrite(pageCount());
    auto error = writeAndReplace(
        path, [observer](int page) { observer->documentEndPageWrite(page); }, notices, onDisk);
    observer->documentEndWrite();
    return error;
}

std::optional<PDFError> PDFDocument::writeAndReplace(const QString &path,
                                                     const std::function<void(int)> &progress,
                                                     QStringList *notices, FileOnDisk *onDisk) const {
    const auto failure = [&path](const QString &reason) {
        return PDFError{PDFError::Kind::WriteFailed,
                        translated("%1 could not be written: %2").arg(path, reason)};
    };
    // Nothing of it could be read, so an outline that it has would be lost.
    if (isLocked()) {
        return PDFError{PDFError::Kind::Locked,
                        translated("%1 could not be written: it is locked, and without its "
                                   "password nothing of it can be read")
                            .arg(path)};
    }
    if (isEncrypted()) return failure(translated("it is encrypted"));
    FileReplacement file(path);
    file.setIsPdf();
    if (onDisk) file.heed(*onDisk);
    const auto notWritten = [&file] {
        return PDFError{file.metObjection() ? PDFError::Kind::FileChanged : PDFError::Kind::WriteFailed,
                        file.message()};
    };
    if (!file.start()) return notWritten();
    if (auto error = engine_->write(outlineRoot(), file.descriptor(), progress))
        return failure(error->message);
    const FileReplacement::Outcome outcome = file.commit();
    if (outcome == FileReplacement::Outcome::NotWritten) return notWritten();
    if (notices) *notices += file.notices();
    if (notices && wasRepaired())
        notices->append(translated("%1: it was damaged and has been written new").arg(path));
    if (outcome == FileReplacement::Outcome::Written) return std::nullopt;
    return PDFError{PDFError::Kind::NotDurable, file.message()};
}

}  // namespace leafwright
