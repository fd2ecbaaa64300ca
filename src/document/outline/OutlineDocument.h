#pragma once

#include "document/outline/EntriesElsewhere.h"
#include "document/outline/OutlineRelinking.h"
#include "document/outline/PageLabelMap.h"
#include "files/FileOnDisk.h"
#include "model/MyOutlineItem.h"
#include "model/OutlineEdits.h"
#include "pdf/PDFDocument.h"
#include "pdf/PDFOutline.h"

#include <QStringList>

#include <atomic>
#include <functional>
#include <mutex>

namespace leafwright {

/// The outline of one open PDF, without a window: the items under a hidden root, what their labels mean, how
/// they come from the file and get there again. `MyDocument` shows one; programs without a display need no
/// more. Used on the main thread, estimatePrintedPageOffset() aside.
class OutlineDocument {
public:
    /// What a write is for. Passed to write().
    static const QString savePreviewPDF;  ///< A preview copy; the edited state stays as it is.
    static const QString saveFinalPDF;    ///< The real save; the document is clean afterwards.

    OutlineDocument() = default;
    OutlineDocument(const OutlineDocument &) = delete;
    OutlineDocument &operator=(const OutlineDocument &) = delete;

    // The file

    /// Opens the PDF at a path. Where there is no file, what was open stays. @return whether it is open;
    /// openError() tells why it is not
    bool open(const QString &path);
    const std::optional<PDFError> &openError() const { return openError_; }
    PDFDocument *pdfDoc() const { return pdfDoc_.get(); }
    /// The same for who reads it on another thread; it may outlive the document.
    std::shared_ptr<const PDFDocument> sharedPdfDoc() const { return pdfDoc_; }
    const QString &pdfURL() const { return pdfURL_; }
    void setPdfURL(const QString &path);

    /// Decides whether the file that was opened may be edited (not when locked or encrypted), builds the page
    /// label map, and forgets what was known of another file's printed page numbers.
    void prepareForEditing();
    /// Builds the page label map.
    void mapPageLabels();
    bool allowTOCediting() const { return allowTOCediting_; }
    void setAllowTOCediting(bool allow) { allowTOCediting_ = allow; }
    bool lockTOCediting() const { return lockTOCediting_; }
    void setLockTOCediting(bool lock) { lockTOCediting_ = lock; }

    // Other programs

    /// What became of the file since it was read, or written by us. No write changes what another program
    /// has.
    FileOnDisk::State stateOnDisk() const;
    /// The mark of the file that was read, or of what it was last saved as, wherever that is by now; absent
    /// where nobody can tell any more.
    std::optional<FileMark> markOfFile() const;
    /// Whether the outline that the PDF has in memory, to which an outline is reverted, is the file's. It is
    /// another one after a preview, and after a save that failed, in a document whose outline was imported.
    bool hasOutlineOfFileInMemory() const { return !outlineOfFile_; }
    /// The file's own outline, whatever the PDF has in memory. For a document whose outline was imported.
    const PDFOutline &outlineOfFile() const {
        return outlineOfFile_ ? *outlineOfFile_ : pdfDoc_->outlineRoot();
    }
    /// Lets the next write to a path replace what was seen there, though it is not what was read.
    void acceptFileOnDisk(const QString &path, FileOnDisk::Seen seen);
    /// The file at the document's place, opened anew.
    struct Reopened {
        std::shared_ptr<PDFDocument> pdf;
        std::unique_ptr<FileOnDisk> onDisk;
    };
    /// Opens the file anew; what is open stays. One that may not be edited is a failure too.
    Result<Reopened> reopen() const;
    /// Goes on with a file opened anew, and keeps the outline, whose items are found again by their page
    /// labels. It counts as edited, and no change before can be taken back. Nobody must be reading the pages.
    LostTargets keepOutlineFor(Reopened file);
    /// Goes on with a file opened anew and its outline, as if it had just been opened. Nobody must be reading
    /// the pages.
    void takeOutlineOf(Reopened file);
    /// Goes on with the file that was locked, opened by its password, and its outline, to be looked at: it
    /// can't be edited, and counts as it was saved. Nobody must be reading the pages.
    void takeUnlocked(std::shared_ptr<PDFDocument> pdf);

    // The outline

    MyOutlineItem &root() { return root_; }
    const MyOutlineItem &root() const { return root_; }
    /// Every change of what is below the root goes through these.
    OutlineEdits &edits() { return edits_; }
    const OutlineEdits &edits() const { return edits_; }
    /// New items for the outline that the PDF has in memory: the file's until another is written. Counts a
    /// change for each at the top level that addOutlineChildren() counts one for.
    MyOutlineItem::Children itemsOfOutlineInMemory();
    /// Makes the file's outline the tree below the root, which must be empty.
    void importOutline();
    /// Adds an entry of a PDF's outline, with all below it, to a detached item. Counts a change where an
    /// entry leads to no particular spot of its page.
    void addOutlineChildren(const PDFOutline &entry, MyOutlineItem &item);

    // Pages

    const PageLabelMap &pdfMapPageLabelToIndex() const { return pdfMapPageLabelToIndex_; }
    /// The index of the page with a label, which may be a printed page number such as "p12". Calls the
    /// handler of printed page numbers first, if that needs an offset which is not known.
    std::optional<int> getRealPageArrayIndex(const QString &label) const;
    /// The same for the page that an item leads to: the one that it came with if pages are kept.
    std::optional<int> pageIndexOfItem(const MyOutlineItem &item) const;
    /// The same as far as it is known; asks nobody where a printed page number is not.
    std::optional<int> knownPageIndexOfItem(const MyOutlineItem &item) const;

    /// Whether no page has an item's label, so that a save leads it to the first page. Not told of a printed
    /// page number as long as nobody knows what page it stands for.
    bool hasLostLabel(const MyOutlineItem &item) const;

    /// Page label number minus printed page number, sign-extended; 0 is unknown, and also no shift.
    quint64 printedPageOffset() const { return printedPageOffset_; }
    /// Sets the offset that the user has stated. From then on no estimate changes it.
    void setPrintedPageOffset(quint64 offset);
    /// Forgets the offset; it may be estimated again.
    void forgetPrintedPageOffset();
    bool userHasCheckedPrintedPageNumbers() const { return userHasCheckedPrintedPageNumbers_; }
    void setUserHasCheckedPrintedPageNumbers(bool checked) { userHasCheckedPrintedPageNumbers_ = checked; }
    /// Sets the offset if it can be estimated from the pages' text, and the user has not stated it meanwhile.
    /// May run on another thread.
    void estimatePrintedPageOffset();
    /// Called when a printed page number has to be resolved while the offset is unknown.
    void setPrintedPageNumbersHandler(std::function<void()> handler);

    /// Whether imported entries keep the page that they came with until their label is edited. Otherwise, as
    /// all entries do, they lead to the last page that has their label.
    bool keepsPages() const { return keepsPages_ && keepsPages_(); }
    /// Who is asked that, each time; nobody for no.
    void setKeepsPages(std::function<bool()> keepsPages) { keepsPages_ = std::move(keepsPages); }
    /// The imported entries that a write leads elsewhere; none if pages are kept.
    EntriesElsewhere entriesElsewhere() const;

    // Writing

    /// Makes the tree the PDF's outline and writes the PDF to a path. After a final write the outline counts
    /// as saved as it was at the start.
    /// @return why the writing failed; the outline in memory is the new one all the same
    std::optional<PDFError> write(const QString &path, const QString &type);
    /// Why the last write failed; absent where it did not, and before any.
    const std::optional<PDFError> &writeError() const { return writeError_; }
    /// What the file that the last write replaced had and the new one has not, a message each.
    const QStringList &losses() const { return losses_; }
    /// Called after a final write with its losses, if there are any.
    void setLossesHandler(std::function<void(const QStringList &)> handler);
    /// Called before a final write that leads entries elsewhere, for whoever has no window to see it in.
    void setEntriesElsewhereHandler(std::function<void(const EntriesElsewhere &)> handler);
    /// Who is told of every write. May be null.
    void setWriteObserver(PDFWriteObserver *observer) { writeObserver_ = observer; }

private:
    void takePages(Reopened file);
    void takeOutlineOfPages();
    PageLookUp lookUp(const QString &label) const;
    void tellOfEntriesElsewhere(const QString &type) const;

    std::shared_ptr<PDFDocument> pdfDoc_;
    QString pdfURL_;
    std::unique_ptr<PDFOutline> outlineOfFile_;  ///< While the PDF has another in memory.
    std::unique_ptr<FileOnDisk> onDisk_;         ///< There when the PDF is.
    std::optional<PDFError> openError_;
    bool allowTOCediting_ = true;
    bool lockTOCediting_ = false;

    MyOutlineItem root_;
    OutlineEdits edits_{root_};

    PageLabelMap pdfMapPageLabelToIndex_;
    std::atomic<quint64> printedPageOffset_ = 0;
    std::mutex printedPageOffsetMutex_;  ///< For setting the offset together with the next.
    bool printedPageOffsetIsStated_ = false;
    bool userHasCheckedPrintedPageNumbers_ = false;
    std::function<void()> printedPageNumbersHandler_;
    std::function<bool()> keepsPages_;

    std::optional<PDFError> writeError_;
    QStringList losses_;
    std::function<void(const QStringList &)> lossesHandler_;
    std::function<void(const EntriesElsewhere &)> entriesElsewhereHandler_;
    PDFWriteObserver *writeObserver_ = nullptr;
};

}  // namespace leafwright
