#pragma once

#include "autotoc/HeadingLevelMap.h"
#include "document/PageLabelMap.h"
#include "model/MyOutlineItem.h"
#include "pdf/PDFDocument.h"
#include "platform/Platform.h"

#include <atomic>
#include <functional>

namespace leafwright {

/// One open PDF with the outline that is being edited: the tree of items under a hidden root, the map from
/// page labels to pages, and whether there is something to save. Used on one thread.
class MyDocument {
public:
    /// How a change is counted.
    enum class Change {
        Done,    ///< One more change to save.
        Cleared  ///< All is saved.
    };
    /// What a write is for. Passed to writeNewPDFOutline().
    static const QString savePreviewPDF;  ///< A preview copy; the edited state stays as it is.
    static const QString saveFinalPDF;    ///< The real save; the document is clean afterwards.

    /// @param platform must outlive the document
    explicit MyDocument(Platform &platform);
    ~MyDocument();
    MyDocument(const MyDocument &) = delete;
    MyDocument &operator=(const MyDocument &) = delete;

    /// Opens the PDF at a path. When there is no file, false, without an alert; when it can't be opened,
    /// beep, alert, false. openError() tells why in detail.
    bool readFromURL(const QString &path);
    const std::optional<PDFError> &openError() const { return openError_; }

    /// Decides whether the file that was read may be edited (not when locked or encrypted), and builds the
    /// page label map.
    void prepareForEditing();
    /// Makes the file's outline the tree below the root, which must be empty.
    void importOutline();

    MyOutlineItem &root() { return *root_; }
    PDFDocument *pdfDoc() const { return pdfDoc_.get(); }
    const QString &pdfURL() const { return pdfURL_; }
    void setPdfURL(const QString &path) { pdfURL_ = path; }
    const PageLabelMap &pdfMapPageLabelToIndex() const { return pdfMapPageLabelToIndex_; }

    bool allowTOCediting() const { return allowTOCediting_; }
    void setAllowTOCediting(bool allow) { allowTOCediting_ = allow; }
    bool lockTOCediting() const { return lockTOCediting_; }
    void setLockTOCediting(bool lock) { lockTOCediting_ = lock; }

    bool isDocumentEdited() const { return edited_; }
    void updateChangeCount(Change change) { edited_ = change == Change::Done; }

    /// Page label number minus printed page number, sign-extended; 0 is unknown, and also no shift.
    quint64 printedPageOffset() const { return printedPageOffset_; }
    void setPrintedPageOffset(quint64 offset) { printedPageOffset_ = offset; }
    bool userHasCheckedPrintedPageNumbers() const { return userHasCheckedPrintedPageNumbers_; }
    void setUserHasCheckedPrintedPageNumbers(bool checked) { userHasCheckedPrintedPageNumbers_ = checked; }
    /// Sets the offset if it can be estimated from the pages' text. May run on another thread.
    void estimatePrintedPageOffset();
    /// Called when a printed page number has to be resolved while the offset is unknown.
    void setPrintedPageNumbersHandler(std::function<void()> handler);

    /// The index of the page with a label, which may be a printed page number such as "p12".
    std::optional<int> getRealPageArrayIndex(const QString &label) const;

    /// Adds an entry of a PDF's outline, with all below it, to an item that nobody watches yet.
    void addOutlineChildren(const PDFOutline &entry, MyOutlineItem &item);

    /// Makes the tree the PDF's outline and writes the PDF to a path.
    /// @return why the writing failed; the outline in memory is the new one all the same
    std::optional<PDFError> writeNewPDFOutline(const QString &path, const QString &type,
                                               PDFWriteObserver *observer = nullptr);

    HeadingLevelMap &listH1H2H3Config() { return listH1H2H3Config_; }

private:
    Platform &platform_;
    std::unique_ptr<MyOutlineItem> root_ = std::make_unique<MyOutlineItem>();
    std::unique_ptr<PDFDocument> pdfDoc_;
    QString pdfURL_;
    std::optional<PDFError> openError_;
    PageLabelMap pdfMapPageLabelToIndex_;
    bool allowTOCediting_ = true;
    bool lockTOCediting_ = false;
    bool edited_ = false;
    std::atomic<quint64> printedPageOffset_ = 0;
    bool userHasCheckedPrintedPageNumbers_ = false;
    std::function<void()> printedPageNumbersHandler_;
    HeadingLevelMap listH1H2H3Config_;
};

}  // namespace leafwright
