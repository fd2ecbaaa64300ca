#pragma once

#include "pdf/PDFEngine.h"
#include "pdf/PDFPage.h"
#include "pdf/TextPages.h"

#include <condition_variable>
#include <mutex>

namespace leafwright {

class FileOnDisk;
class FileSnapshot;

/// Told about a file while it is written. All calls come from the writing thread.
class PDFWriteObserver {
public:
    virtual ~PDFWriteObserver() = default;
    virtual void documentBeginWrite(int pageCount) = 0;
    /// @param pageIndex 0-based, rising.
    virtual void documentEndPageWrite(int pageIndex) = 0;
    /// Comes at the end in any case, also when the writing failed.
    virtual void documentEndWrite() = 0;
};

/// An open PDF file: its pages, labels and text, and an outline that can be replaced and written.
///
/// The file is kept open for the document's life, so that it stays readable when another takes its name.
/// Facts, pages and text may be asked for from any thread; the outline belongs to one thread.
class PDFDocument final : public TextPages {
public:
    /// Opens a file. A locked or encrypted file opens too, see isLocked().
    /// @param asItWas gets the file as it was before anything was read of it; may be null
    static Result<std::unique_ptr<PDFDocument>> open(const QString &path,
                                                     std::shared_ptr<const FileSnapshot> *asItWas = nullptr);
    /// The same file, opened with the password that it is locked by; this document stays as it is. The
    /// password is kept in memory as long as the new one lives, and nowhere else.
    /// @return an error of the kind Locked where that is not the password
    Result<std::unique_ptr<PDFDocument>> unlocked(const QString &password) const;
    /// A document on an engine that has opened its file.
    explicit PDFDocument(std::unique_ptr<PDFEngine> engine);
    ~PDFDocument() override;
    PDFDocument(const PDFDocument &) = delete;
    PDFDocument &operator=(const PDFDocument &) = delete;

    int pageCount() const override { return static_cast<int>(pages_.size()); }
    /// The page at a 0-based index, owned by the document; null out of range.
    const PDFPage *page(int index) const;
    QString pageLabel(int index) const override;
    /// Read at the first call and kept from then on. Who asks while another thread reads the page waits for
    /// that.
    std::shared_ptr<const PageText> pageText(int index) const override;
    /// Whether a page's text has been read by now. @param index 0-based, of a page that is there
    bool hasReadPageText(int index) const;

    /// Draws part of a page, see PDFEngine::renderPage(); takes a while, so not on the main thread.
    PageImage renderPage(const RenderRequest &request, const std::stop_token &stop) const {
        return engine_->renderPage(request, stop);
    }

    bool isLocked() const { return engine_->facts().locked; }
    bool isEncrypted() const { return engine_->facts().encrypted; }
    /// Whether it needs a password and has been opened with it. It is encrypted then, and not written.
    bool isUnlocked() const { return engine_->facts().unlocked; }
    bool wasRepaired() const { return engine_->facts().repaired; }
    bool isSigned() const { return engine_->facts().isSigned; }
    bool hasOutline() const { return engine_->facts().hasOutline; }
    PDFVersion version() const { return engine_->facts().version; }
    /// Why some of the file could not be read that is there: what has been asked for may not be all. Absent
    /// as long as all is well. May be asked from any thread.
    std::optional<PDFError> readProblem() const { return engine_->readProblem(); }
    /// Whether nothing is missing of what is written again. It is not written otherwise.
    bool canBeWritten() const { return engine_->canBeWritten(); }

    /// The outline in memory: the file's own until another is set. Its root has no label. Empty where the
    /// file's can't be read, see readProblem().
    const PDFOutline &outlineRoot() const;
    /// @return the one that was in memory; null where nobody has asked for the file's yet
    std::unique_ptr<PDFOutline> setOutlineRoot(std::unique_ptr<PDFOutline> root);

    /// Writes the document with its outline in memory to a path, which may be the file's own: a new file
    /// is made beside it and takes its place when complete. On failure what was there is unchanged, unless it
    /// is said to be written, but not durable. A locked document is not written.
    /// @param notices gets what the old file had and the new one has not, and that a damaged file was written
    /// new, a message each; may be null
    /// @param onDisk knows whether another program has changed the file that was read: then nothing is
    /// written. It is told of the new file; may be null
    std::optional<PDFError> writeToFile(const QString &path, PDFWriteObserver *observer = nullptr,
                                        QStringList *notices = nullptr, FileOnDisk *onDisk = nullptr) const;

    const PDFEngine &engine() const { return *engine_; }

private:
    std::optional<PDFError> writeAndReplace(const QString &path, const std::function<void(int)> &progress,
                                            QStringList *notices, FileOnDisk *onDisk) const;

    std::unique_ptr<PDFEngine> engine_;
    std::vector<PDFPage> pages_;
    mutable std::unique_ptr<PDFOutline> outlineRoot_;
    mutable std::mutex textMutex_;
    mutable std::condition_variable textRead_;
    mutable std::vector<std::shared_ptr<const PageText>> texts_;  ///< By page; null until read.
    mutable std::vector<bool> isReadingText_;                     ///< By page.
};

}  // namespace leafwright
