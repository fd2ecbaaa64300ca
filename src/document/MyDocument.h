#pragma once

#include "autotoc/HeadingLevelMap.h"
#include "document/commands/ActionTable.h"
#include "document/outline/OutlineDocument.h"
#include "document/outline/UndoSupport.h"
#include "system/Document.h"
#include "widgets/Sheet.h"

#include <QPointer>

#include <functional>
#include <thread>

namespace leafwright {

class AutoTOCCommands;
class BatchRenaming;
class ContentsCommands;
class DocumentWindow;
class EditMenuCommands;
class EntriesElsewhereNotice;
class ExchangeCommands;
class FindCommands;
class HeadingMapCommands;
class HeadingMapGuess;
class HeadingMapModel;
class LabelPDFView;
class NavigationCommands;
class OKNSOutlineView;
class OutlineCopy;
class OtherPrograms;
class OutlineDelegate;
class PageWarmer;
class PrioritySplitViewDelegate;
class PrintedPageCommands;
class SaveProgress;
class SavingCommands;
class SelectionCommands;
class StyleCommands;
class StepCommands;
class SplitView;
class StructuralEdits;
class TargetCommands;
class ThumbnailView;
class TreeController;
class TreeNode;

/// One open PDF with the outline that is being edited: an OutlineDocument with a window on it, its tree,
/// heading map and commands. What can be done to it stands in classes by subject, which register in its
/// action table. Used on the main thread.
class MyDocument final : public Document {
    Q_OBJECT

public:
    /// What a write is for. Passed to writeNewPDFOutline().
    static const QString &savePreviewPDF;  ///< A preview copy; the edited state stays as it is.
    static const QString &saveFinalPDF;    ///< The real save; the document is clean afterwards.

    /// @param platform must outlive the document
    explicit MyDocument(Platform &platform);
    /// Stops the background work.
    ~MyDocument() override;

    /// The outline without the window, which has all that needs none.
    OutlineDocument &outline() { return outline_; }
    const OutlineDocument &outline() const { return outline_; }
    /// Every change of the items goes through these.
    OutlineEdits &edits() { return outline_.edits(); }

    /// Opens the PDF at a path. When there is no file, false, without an alert; when it can't be opened,
    /// beep, alert, false. openError() tells why in detail.
    bool readFromURL(const QString &path) override;
    const std::optional<PDFError> &openError() const { return outline_.openError(); }

    QString fileURL() const override { return pdfURL(); }
    bool isDocumentEdited() const override { return outline_.edits().isEdited(); }
    void updateChangeCount(Change change) override;
    /// Makes the window, runs the load sequence, and shows the window.
    void makeWindowControllers() override;
    QWidget *window() const override;

    /// What happens once the window is there: alerts, views, label map, outline, background work, in an order
    /// that is fixed. The window is shown in the course of it.
    void windowControllerDidLoadNib(DocumentWindow &window);
    /// Waits for the map that loading guesses in the background, if it is not there yet. Meanwhile the window
    /// is drawn, but what the user types and clicks waits.
    void finishHeadingMap();
    /// Waits for what loading has left to the background or to a later moment, so that nothing is pending.
    void finishLoading();

    /// Waits for what is being looked for on the pages and in the outline, so that nothing is pending.
    void finishSearches();

    /// Decides whether the file that was read may be edited (not when locked or encrypted), and builds the
    /// page label map. For use without a window.
    void prepareForEditing();
    /// Makes the file's outline the tree below the root, which must be empty.
    void importOutline() { outline_.importOutline(); }

    MyOutlineItem &root() { return outline_.root(); }
    PDFDocument *pdfDoc() const { return outline_.pdfDoc(); }
    /// The same for who reads it on another thread; it may outlive the document.
    std::shared_ptr<const PDFDocument> sharedPdfDoc() const { return outline_.sharedPdfDoc(); }
    const QString &pdfURL() const { return outline_.pdfURL(); }
    void setPdfURL(const QString &path);
    const PageLabelMap &pdfMapPageLabelToIndex() const { return outline_.pdfMapPageLabelToIndex(); }

    bool allowTOCediting() const { return outline_.allowTOCediting(); }
    void setAllowTOCediting(bool allow) { outline_.setAllowTOCediting(allow); }
    bool lockTOCediting() const { return outline_.lockTOCediting(); }
    void setLockTOCediting(bool lock) { outline_.setLockTOCediting(lock); }
    /// Set while a command moves items.
    bool shouldIgnoreKVO() const { return shouldIgnoreKVO_; }
    void setShouldIgnoreKVO(bool ignore) { shouldIgnoreKVO_ = ignore; }

    // Of the outline document, which says more about them.

    quint64 printedPageOffset() const { return outline_.printedPageOffset(); }
    void setPrintedPageOffset(quint64 offset) { outline_.setPrintedPageOffset(offset); }
    bool userHasCheckedPrintedPageNumbers() const { return outline_.userHasCheckedPrintedPageNumbers(); }
    void setUserHasCheckedPrintedPageNumbers(bool checked) {
        outline_.setUserHasCheckedPrintedPageNumbers(checked);
    }
    void estimatePrintedPageOffset() { outline_.estimatePrintedPageOffset(); }
    void setPrintedPageNumbersHandler(std::function<void()> handler) {
        outline_.setPrintedPageNumbersHandler(std::move(handler));
    }
    std::optional<int> getRealPageArrayIndex(const QString &label) const {
        return outline_.getRealPageArrayIndex(label);
    }
    void addOutlineChildren(const PDFOutline &entry, MyOutlineItem &item) {
        outline_.addOutlineChildren(entry, item);
    }

    /// Makes the tree the PDF's outline and writes the PDF to a path.
    /// @return why the writing failed; the outline in memory is the new one all the same
    std::optional<PDFError> writeNewPDFOutline(const QString &path, const QString &type);
    /// What becomes of the outline when the file is read anew.
    enum class Reload { KeepOutline, TakeOutline };
    /// Shows the pages that the file has now; see OutlineDocument::keepOutlineFor() and takeOutlineOf(). What
    /// can't be read is told, and all stays as it is. @return whether it was read
    bool reload(Reload kind);
    /// Shows a file that is locked, to be looked at, by its password.
    /// @return why it can't be; of the kind Locked where that is not the password
    std::optional<PDFError> unlock(const QString &password);
    /// Why the last write failed, whichever command asked for it; absent where it did not, and before any.
    const std::optional<PDFError> &writeError() const { return outline_.writeError(); }
    /// Tells the user, in the window, that not all of the PDF could be read, if that is so, and whether it
    /// can be saved all the same.
    void tellReadProblem() const;
    /// Tells in passing, at the foot of the window, what was done; nothing happens without a window.
    void tell(const QString &text) const;
    /// Documents are written when the user says so, never by themselves.
    static bool autosavesInPlace() { return false; }
    /// Who is told of every write; the window's progress sheet once there is a window. May be null.
    void setWriteObserver(PDFWriteObserver *observer) { outline_.setWriteObserver(observer); }
    /// Shows the writing while there is a window; null without one.
    SaveProgress *saveProgress() const { return saveProgress_.get(); }

    /// The heading map, sorted by level. Call reloadHeadingMap() after a change.
    HeadingLevelMap &listH1H2H3Config() { return listH1H2H3Config_; }
    /// Shows the heading map as it is now.
    void reloadHeadingMap();

    /// What the renaming sheets start from.
    struct RenamingDefaults {
        QString sequentialNumberingPrefix;
        qint32 sequentialNumberingFirstNumber = 0;
        qint32 sequentialNumberingStepValue = 0;
        QString addPrefixPrefixTerm;
    };
    RenamingDefaults &renamingDefaults() { return renamingDefaults_; }

    /// Every command of the document.
    ActionTable &actions() { return actions_; }
    const ActionTable &actions() const { return actions_; }
    UndoSupport &undoSupport() { return *undoSupport_; }
    /// Has other hooks called from now on.
    void setUndoSupport(std::unique_ptr<UndoSupport> support) { undoSupport_ = std::move(support); }
    SavingCommands &saving() { return *saving_; }
    OtherPrograms &otherPrograms() { return *otherPrograms_; }
    BatchRenaming &batchRenaming() { return *batchRenaming_; }
    SelectionCommands &selectionCommands() { return *selectionCommands_; }
    StyleCommands &styleCommands() { return *styleCommands_; }
    HeadingMapCommands &headingMapCommands() { return *headingMapCommands_; }
    AutoTOCCommands &autoTOCCommands() { return *autoTOCCommands_; }
    ContentsCommands &contentsCommands() { return *contentsCommands_; }
    PrintedPageCommands &printedPageCommands() { return *printedPageCommands_; }
    StructuralEdits &structuralEdits() { return *structuralEdits_; }
    NavigationCommands &navigation() { return *navigation_; }
    StepCommands &stepCommands() { return *stepCommands_; }
    OutlineCopy &outlineCopy() { return *outlineCopy_; }
    ExchangeCommands &exchangeCommands() { return *exchangeCommands_; }
    FindCommands &findCommands() { return *findCommands_; }

    /// The outline's selected items, as tree nodes, in the order of their rows.
    std::vector<TreeNode *> selectedNodes() const;
    /// Whether any outline item is selected, as selectedNodes() counts them.
    bool hasSelectedItems() const;
    /// Whether text is selected on the pages.
    bool hasSelectedText() const;
    /// Opens a sheet on the window and deletes it when it has ended. @param didEnd gets the return code; 0 is
    /// cancel
    void beginSheet(Sheet *sheet, std::function<void(int returnCode)> didEnd);
    /// The sheet that is open; null if there is none.
    Sheet *openSheet() const { return openSheet_; }
    /// Opens a sheet below the outline, in the window, which can be used meanwhile, and deletes it when it
    /// has ended.
    void beginPanel(Sheet *panel, std::function<void(int returnCode)> didEnd);
    /// The one that is open there; null if there is none.
    Sheet *openPanel() const { return openPanel_; }
    /// What the outline view asks.
    OutlineDelegate &outlineDelegate() { return *outlineDelegate_; }

    // The window's views; null before there is a window. The window owns them.
    LabelPDFView *pdfview() const;
    ThumbnailView *pdfthumbs() const;
    OKNSOutlineView *outlineview() const;
    SplitView *splitViewTopLevel() const;
    DocumentWindow *myWindow() const { return readers_.window.get(); }
    /// The tree as views see it. The document owns it.
    TreeController &treecontroller() { return *treecontroller_; }
    HeadingMapModel &headingMapModel() { return *headingMapModel_; }
    PrioritySplitViewDelegate *splitViewDelegate() const { return splitViewDelegate_.get(); }

Q_SIGNALS:
    /// The window is there, and about to be filled.
    void windowMade();
    /// All is shown as a file is shown that was just opened, also what comes a moment after the window.
    void loaded();
    /// What can be taken back or done again is something else.
    void historyChanged();

protected:
    bool saveBeforeClosing() override;

private:
    bool isThere(Needs needs) const;
    // Steps of the load sequence.
    void refuseEditingWhereImpossible();
    void warnAboutVersion();
    void showPages();
    void showOutline();
    void estimatePrintedPageOffsetInBackground();
    void setUpSplitView();
    void documentDidLoad();
    void bindThumbnails();
    void showFromTheTop(const PDFPage &first);
    void guessHeadingMap();
    void takeGuessedHeadingMap();
    void showAlert(const QString &message, const QString &informativeText);
    void showWriteError(const QString &type);
    void showLosses() const;
    void showOtherPages(const std::function<void()> &exchange);
    void showLostTargets(const LostTargets &lost) const;

    OutlineDocument outline_;
    bool shouldIgnoreKVO_ = false;
    HeadingLevelMap listH1H2H3Config_;
    RenamingDefaults renamingDefaults_;
    std::unique_ptr<UndoSupport> undoSupport_ = std::make_unique<UndoSupport>(outline_.root());

    ActionTable actions_;
    std::unique_ptr<TreeController> treecontroller_;
    std::unique_ptr<HeadingMapModel> headingMapModel_;
    std::unique_ptr<NavigationCommands> navigation_;
    std::unique_ptr<OutlineCopy> outlineCopy_;
    std::unique_ptr<OutlineDelegate> outlineDelegate_;
    std::unique_ptr<SavingCommands> saving_;
    std::unique_ptr<OtherPrograms> otherPrograms_;
    std::unique_ptr<StructuralEdits> structuralEdits_;
    std::unique_ptr<BatchRenaming> batchRenaming_;
    std::unique_ptr<SelectionCommands> selectionCommands_;
    std::unique_ptr<StyleCommands> styleCommands_;
    std::unique_ptr<TargetCommands> targetCommands_;
    std::unique_ptr<PrintedPageCommands> printedPageCommands_;
    std::unique_ptr<HeadingMapCommands> headingMapCommands_;
    std::unique_ptr<AutoTOCCommands> autoTOCCommands_;
    std::unique_ptr<ContentsCommands> contentsCommands_;
    std::unique_ptr<EditMenuCommands> editMenuCommands_;
    std::unique_ptr<ExchangeCommands> exchangeCommands_;
    std::unique_ptr<StepCommands> stepCommands_;
    std::unique_ptr<FindCommands> findCommands_;
    std::unique_ptr<PrioritySplitViewDelegate> splitViewDelegate_;
    bool thumbnailsBound_ = false;
    bool headingMapIsThere_ = false;  ///< It has been guessed once.
    QPointer<Sheet> openSheet_;
    QPointer<Sheet> openPanel_;

    /// All who read the PDF. They go before it does: the window first, then the threads.
    struct Readers {
        std::unique_ptr<PageWarmer> warmer;
        std::unique_ptr<HeadingMapGuess> headingMapGuess;
        std::jthread estimate;
        std::unique_ptr<DocumentWindow> window;
    };
    Readers readers_;
    std::unique_ptr<SaveProgress> saveProgress_;
    std::unique_ptr<EntriesElsewhereNotice> entriesElsewhereNotice_;
};

}  // namespace leafwright
