#include "document/MyDocument.h"

#include "app/layout/PrioritySplitViewDelegate.h"
#include "document/HeadingMapGuess.h"
#include "document/commands/AutoTOCCommands.h"
#include "document/commands/BatchRenaming.h"
#include "document/commands/ContentsCommands.h"
#include "document/commands/EditMenuCommands.h"
#include "document/commands/ExchangeCommands.h"
#include "document/commands/FindCommands.h"
#include "document/commands/HeadingMapCommands.h"
#include "document/commands/NavigationCommands.h"
#include "document/commands/OtherPrograms.h"
#include "document/commands/OutlineCopy.h"
#include "document/commands/PrintedPageCommands.h"
#include "document/commands/SavingCommands.h"
#include "document/commands/SelectionCommands.h"
#include "document/commands/StepCommands.h"
#include "document/commands/StructuralEdits.h"
#include "document/commands/StyleCommands.h"
#include "document/commands/TargetCommands.h"
#include "document/window/CurrentEntry.h"
#include "document/window/DocumentStatusBar.h"
#include "document/window/DocumentWindow.h"
#include "document/window/EntriesElsewhereNotice.h"
#include "document/window/HeadingMapModel.h"
#include "document/window/OutlineDelegate.h"
#include "document/window/OutlineFilter.h"
#include "document/window/SaveProgress.h"
#include "outlineview/OKNSOutlineView.h"
#include "outlineview/OutlineViewExtensions.h"
#include "pageview/ThumbnailView.h"
#include "pdf/ReadAhead.h"
#include "platform/Settings.h"
#include "platform/UserDefaults.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"
#include "widgets/NoticeBars.h"
#include "widgets/SplitView.h"

namespace leafwright {

MyDocument::MyDocument(Platform &platform)
    : Document(platform),
      treecontroller_(std::make_unique<TreeController>(outline_.edits())),
      headingMapModel_(std::make_unique<HeadingMapModel>(listH1H2H3Config_)),
      navigation_(std::make_unique<NavigationCommands>(*this)),
      outlineCopy_(std::make_unique<OutlineCopy>(*this)),
      outlineDelegate_(std::make_unique<OutlineDelegate>(*this)),
      saving_(std::make_unique<SavingCommands>(*this)),
      otherPrograms_(std::make_unique<OtherPrograms>(*this)),
      structuralEdits_(std::make_unique<StructuralEdits>(*this)),
      batchRenaming_(std::make_unique<BatchRenaming>(*this)),
      selectionCommands_(std::make_unique<SelectionCommands>(*this)),
      styleCommands_(std::make_unique<StyleCommands>(*this)),
      targetCommands_(std::make_unique<TargetCommands>(*this)),
      printedPageCommands_(std::make_unique<PrintedPageCommands>(*this)),
      headingMapCommands_(std::make_unique<HeadingMapCommands>(*this)),
      autoTOCCommands_(std::make_unique<AutoTOCCommands>(*this)),
      contentsCommands_(std::make_unique<ContentsCommands>(*this)),
      editMenuCommands_(std::make_unique<EditMenuCommands>(*this)),
      exchangeCommands_(std::make_unique<ExchangeCommands>(*this)),
      stepCommands_(std::make_unique<StepCommands>(*this)),
      findCommands_(std::make_unique<FindCommands>(*this)) {
    actions_.setGate([this] { return !isBusy(); });
    actions_.setCondition([this](Needs needs) { return isThere(needs); });
    treecontroller_->setLabelCheck([this](const MyOutlineItem &item) { return outline_.hasLostLabel(item); });
    outline_.edits().setEditedHandler([this](bool edited) { Q_EMIT editedChanged(edited); });
    outline_.edits().setHistoryHandler([this] { Q_EMIT historyChanged(); });
    outline_.setKeepsPages(
        [this] { return this->platform().userDefaults().boolForKey(setting::keepPagesOfEntries); });
    actions_.setWhenOutOfMemory([self = QPointer(this)] {
        if (self && self->myWindow())
            self->myWindow()->notices()->setNotice(QStringLiteral("memory"),
                                                   {tr("There is not enough memory.")});
    });
}

MyDocument::~MyDocument() {
    undoSupport_->stopObservingOutlineItemsForUndoSupport();
}

bool MyDocument::readFromURL(const QString &path) {
    if (outline_.open(path)) return true;
    if (openError()->kind != PDFError::Kind::FileMissing)
        showAlert(tr("Unable to open PDF"), tr("Unfortunately, Leafwright cannot display this PDF."));
    return false;
}

void MyDocument::updateChangeCount(Change change) {
    if (change == Change::Done) {
        edits().countChange();
    } else {
        edits().setSavedRevision(edits().revision());
    }
}

QWidget *MyDocument::window() const {
    return myWindow();
}

LabelPDFView *MyDocument::pdfview() const {
    return myWindow() ? myWindow()->pdfview() : nullptr;
}

ThumbnailView *MyDocument::pdfthumbs() const {
    return myWindow() ? myWindow()->pdfthumbs() : nullptr;
}

OKNSOutlineView *MyDocument::outlineview() const {
    return myWindow() ? myWindow()->outlineview() : nullptr;
}

SplitView *MyDocument::splitViewTopLevel() const {
    return myWindow() ? myWindow()->splitViewTopLevel() : nullptr;
}

std::vector<TreeNode *> MyDocument::selectedNodes() const {
    return myWindow() ? selectedItems(*outlineview()) : std::vector<TreeNode *>();
}

bool MyDocument::hasSelectedItems() const {
    return myWindow() && outlineview()->hasSelectedRows();
}

bool MyDocument::hasSelectedText() const {
    return myWindow() && pdfview()->currentSelection() && !pdfview()->currentSelection()->isEmpty();
}

/// Whether what a command needs is there.
bool MyDocument::isThere(Needs needs) const {
    switch (needs) {
        case Needs::Nothing:
            return true;
        case Needs::Entries:
            return hasSelectedItems();
        case Needs::OneEntry:
            return myWindow() && outlineview()->onlySelectedItem();
        case Needs::OneParent: {
            const TreeNode *node = myWindow() ? outlineview()->onlySelectedItem() : nullptr;
            return node && node->childCount() > 0;
        }
        case Needs::Text:
            return hasSelectedText();
        case Needs::PageBehind:
            return myWindow() && pdfview()->canGoBack();
        case Needs::PageAhead:
            return myWindow() && pdfview()->canGoForward();
        case Needs::StepBehind:
            return stepCommands_->canStepBack();
        case Needs::StepAhead:
            return stepCommands_->canStepForward();
        case Needs::RoomForProposal:
            return contentsCommands_->mayPropose();
        case Needs::EntriesToComplete:
            return contentsCommands_->mayPropose() && !outline_.root().children().empty();
        case Needs::AnyEntries:
            return exchangeCommands_->canExport();
        case Needs::EditableOutline:
            return exchangeCommands_->canImport();
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
    myWindow()->showPanel(*panel);
    panel->beginInPlace([panel, didEnd = std::move(didEnd)](int returnCode) {
        panel->deleteLater();
        didEnd(returnCode);
    });
}

void MyDocument::setPdfURL(const QString &path) {
    if (path == pdfURL()) return;
    outline_.setPdfURL(path);
    Q_EMIT fileURLChanged();
}

void MyDocument::reloadHeadingMap() {
    headingMapModel_->reloadData();
}

void MyDocument::finishSearches() {
    findCommands_->finish();
    if (!myWindow()) return;
    myWindow()->outlineFilter()->finish();
    myWindow()->currentEntry()->finish();
}

bool MyDocument::saveBeforeClosing() {
    return saving_->saveFinal();
}

void MyDocument::prepareForEditing() {
    outline_.prepareForEditing();
    listH1H2H3Config_.clear();
}

void MyDocument::tell(const QString &text) const {
    if (myWindow()) myWindow()->status().tell(text);
}

void MyDocument::tellReadProblem() const {
    const auto problem = pdfDoc() ? pdfDoc()->readProblem() : std::nullopt;
    if (!problem || !myWindow()) return;
    const QString text =
        pdfDoc()->canBeWritten()
            ? tr("Not all of this PDF could be read: %1. What is made of its text may not be all.")
            : tr("Not all of this PDF could be read: %1. It can't be saved, for what is missing would be "
                 "lost.");
    myWindow()->notices()->setNotice(QStringLiteral("readProblem"), {text.arg(problem->message)});
}

}  // namespace leafwright
