#include "document/MyDocument.h"

#include "app/layout/PrioritySplitViewDelegate.h"
#include "document/HeadingMapGuess.h"
#include "document/commands/AutoTOCCommands.h"
#include "document/commands/BatchRenaming.h"
#include "document/commands/ContentsCommands.h"
#include "document/commands/EditMenuCommands.h"
#include "document/commands/HeadingMapCommands.h"
#include "document/commands/NavigationCommands.h"
#include "document/commands/OutlineCopy.h"
#include "document/commands/PrintedPageCommands.h"
#include "document/commands/SavingCommands.h"
#include "document/commands/SelectionCommands.h"
#include "document/commands/StructuralEdits.h"
#include "document/outline/OutlineImport.h"
#include "document/outline/PrintedPageOffset.h"
#include "document/window/DocumentWindow.h"
#include "document/window/HeadingMapModel.h"
#include "document/window/OutlineDelegate.h"
#include "document/window/SaveProgress.h"
#include "outlineview/OKNSOutlineView.h"
#include "outlineview/OutlineViewExtensions.h"
#include "pageview/ThumbnailView.h"
#include "pdf/ReadAhead.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"
#include "widgets/NoticeBars.h"
#include "widgets/SplitView.h"

#include <new>

namespace leafwright {

MyDocument::MyDocument(Platform &platform)
    : Document(platform),
      treecontroller_(std::make_unique<TreeController>(*root_)),
      headingMapModel_(std::make_unique<HeadingMapModel>(listH1H2H3Config_)),
      navigation_(std::make_unique<NavigationCommands>(*this)),
      outlineCopy_(std::make_unique<OutlineCopy>(*this)),
      outlineDelegate_(std::make_unique<OutlineDelegate>(*this)),
      saving_(std::make_unique<SavingCommands>(*this)),
      structuralEdits_(std::make_unique<StructuralEdits>(*this)),
      batchRenaming_(std::make_unique<BatchRenaming>(*this)),
      selectionCommands_(std::make_unique<SelectionCommands>(*this)),
      printedPageCommands_(std::make_unique<PrintedPageCommands>(*this)),
      headingMapCommands_(std::make_unique<HeadingMapCommands>(*this)),
      autoTOCCommands_(std::make_unique<AutoTOCCommands>(*this)),
      contentsCommands_(std::make_unique<ContentsCommands>(*this)),
      editMenuCommands_(std::make_unique<EditMenuCommands>(*this)) {
    actions_.setGate([this] { return !isBusy(); });
    actions_.setCondition([this](Needs needs) { return isThere(needs); });
    connect(treecontroller_.get(), &TreeController::itemEdited, this,
            [this] { updateChangeCount(Change::Done); });
    actions_.setWhenOutOfMemory([self = QPointer(this)] {
        if (self && self->window_)
            self->window_->notices()->setNotice(QStringLiteral("memory"),
                                                {tr("There is not enough memory.")});
    });
}

MyDocument::~MyDocument() {
    undoSupport_->stopObservingOutlineItemsForUndoSupport();
}

bool MyDocument::readFromURL(const QString &path) {
    openError_.reset();
    auto opened = PDFDocument::open(path);
    if (auto *error = std::get_if<PDFError>(&opened)) {
        openError_ = std::move(*error);
        if (openError_->kind == PDFError::Kind::FileMissing) return false;
        pdfURL_ = path;
        pdfDoc_.reset();
        showAlert(tr("Unable to open PDF"), tr("Unfortunately, Leafwright cannot display this PDF."));
        return false;
    }
    pdfURL_ = path;
    pdfDoc_ = std::get<std::unique_ptr<PDFDocument>>(std::move(opened));
    return true;
}

QWidget *MyDocument::window() const {
    return window_.get();
}

LabelPDFView *MyDocument::pdfview() const {
    return window_ ? window_->pdfview() : nullptr;
}

ThumbnailView *MyDocument::pdfthumbs() const {
    return window_ ? window_->pdfthumbs() : nullptr;
}

OKNSOutlineView *MyDocument::outlineview() const {
    return window_ ? window_->outlineview() : nullptr;
}

SplitView *MyDocument::splitViewTopLevel() const {
    return window_ ? window_->splitViewTopLevel() : nullptr;
}

std::vector<TreeNode *> MyDocument::selectedNodes() const {
    return window_ ? selectedItems(*outlineview()) : std::vector<TreeNode *>();
}

bool MyDocument::hasSelectedItems() const {
    return window_ && outlineview()->hasSelectedRows();
}

bool MyDocument::hasSelectedText() const {
    return window_ && pdfview()->currentSelection() && !pdfview()->currentSelection()->isEmpty();
}

/// Whether what a command needs is there.
bool MyDocument::isThere(Needs needs) const {
    switch (needs) {
        case Needs::Nothing:
            return true;
        case Needs::Entries:
            return hasSelectedItems();
        case Needs::OneParent: {
            const auto nodes = selectedNodes();
            return nodes.size() == 1 && nodes.front()->childCount() > 0;
        }
        case Needs::Text:
            return hasSelectedText();
        case Needs::PageBehind:
            return window_ && pdfview()->canGoBack();
        case Needs::PageAhead:
            return window_ && pdfview()->canGoForward();
        case Needs::RoomForProposal:
            return contentsCommands_->mayPropose();
        case Needs::EntriesToComplete:
            return contentsCommands_->mayPropose() && !root_->children().empty();
    }
    return false;
}

void MyDocument::beginSheet(Sheet *sheet, std::function<void(int returnCode)> didEnd) {
    openSheet_ = sheet;
    sheet->begin(window(), [sheet, didEnd = std::move(didEnd)](int returnCode) {
        sheet->deleteLater();
        didEnd(returnCode);
    });
}

void MyDocument::beginPanel(Sheet *panel, std::function<void(int returnCode)> didEnd) {
    openPanel_ = panel;
    window_->showPanel(*panel);
    panel->beginInPlace([panel, didEnd = std::move(didEnd)](int returnCode) {
        panel->deleteLater();
        didEnd(returnCode);
    });
}

void MyDocument::setPdfURL(const QString &path) {
    if (path == pdfURL_) return;
    pdfURL_ = path;
    Q_EMIT fileURLChanged();
}

void MyDocument::reloadHeadingMap() {
    headingMapModel_->reloadData();
}

bool MyDocument::saveBeforeClosing() {
    return saving_->saveFinal();
}

void MyDocument::prepareForEditing() {
    allowTOCediting_ = !pdfDoc_->isLocked() && !pdfDoc_->isEncrypted();
    lockTOCediting_ = false;
    pdfMapPageLabelToIndex_ = pageLabelMap(*pdfDoc_);
    forgetPrintedPageOffset();
    userHasCheckedPrintedPageNumbers_ = false;
    listH1H2H3Config_.clear();
}

MyOutlineItem::Children MyDocument::itemsOfOutlineInMemory() {
    const PDFOutline &outline = pdfDoc_->outlineRoot();
    MyOutlineItem::Children items;
    for (int i = 0; i < outline.numberOfChildren(); ++i) {
        items.push_back(std::make_unique<MyOutlineItem>());
        addOutlineChildren(outline.childAtIndex(i), *items.back());
    }
    return items;
}

void MyDocument::importOutline() {
    MyOutlineItem::Children items = itemsOfOutlineInMemory();
    for (size_t i = 0; i < items.size(); ++i)
        root_->insertObjectInChildrenAtIndex(std::move(items[i]), i);
}

void MyDocument::forgetPrintedPageOffset() {
    const std::lock_guard lock(printedPageOffsetMutex_);
    printedPageOffset_ = 0;
    printedPageOffsetIsStated_ = false;
}

void MyDocument::setPrintedPageOffset(quint64 offset) {
    const std::lock_guard lock(printedPageOffsetMutex_);
    printedPageOffset_ = offset;
    printedPageOffsetIsStated_ = true;
}

void MyDocument::estimatePrintedPageOffset() {
    try {
        const auto offset = leafwright::estimatePrintedPageOffset(*pdfDoc_);
        const std::lock_guard lock(printedPageOffsetMutex_);
        if (offset && !printedPageOffsetIsStated_) printedPageOffset_ = static_cast<quint64>(qint64{*offset});
    } catch (const std::bad_alloc &) {
        qWarning("leafwright: there is not enough memory to estimate the printed page numbers");
    }
}

void MyDocument::setPrintedPageNumbersHandler(std::function<void()> handler) {
    printedPageNumbersHandler_ = std::move(handler);
}

std::optional<int> MyDocument::getRealPageArrayIndex(const QString &label) const {
    if (isPrintedPageNumber(label) && printedPageOffset_ == 0 && !userHasCheckedPrintedPageNumbers_ &&
        printedPageNumbersHandler_) {
        printedPageNumbersHandler_();
    }
    return knownPageIndex(label);
}

std::optional<int> MyDocument::pageIndexOfItem(const MyOutlineItem &item) const {
    if (keepsPages() && item.importedPage()) return item.importedPage();
    return getRealPageArrayIndex(item.pageLabel());
}

std::optional<int> MyDocument::knownPageIndex(const QString &label) const {
    if (label.isNull())
        return std::nullopt;  // The map would take it for the empty label, which pages may have.
    const auto offset = static_cast<qint32>(printedPageOffset_.load());
    const auto index = pdfMapPageLabelToIndex_.constFind(pageLabelKey(label, offset));
    return index == pdfMapPageLabelToIndex_.constEnd() ? std::nullopt : std::optional(*index);
}

std::optional<int> MyDocument::knownPageIndexOfItem(const MyOutlineItem &item) const {
    if (keepsPages() && item.importedPage()) return item.importedPage();
    return knownPageIndex(item.pageLabel());
}

void MyDocument::addOutlineChildren(const PDFOutline &entry, MyOutlineItem &item) {
    if (leafwright::addOutlineChildren(entry, item, *pdfDoc_)) updateChangeCount(Change::Done);
}

void MyDocument::tellReadProblem() {
    const auto problem = pdfDoc_ ? pdfDoc_->readProblem() : std::nullopt;
    if (!problem || !window_) return;
    window_->notices()->setNotice(
        QStringLiteral("readProblem"),
        {tr("Not all of this PDF could be read: %1. It can't be saved, for what is missing would be lost.")
             .arg(problem->message)});
}

}  // namespace leafwright
