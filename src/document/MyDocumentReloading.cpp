#include "document/HeadingMapGuess.h"
#include "document/MyDocument.h"
#include "document/commands/FindCommands.h"
#include "document/commands/OtherPrograms.h"
#include "document/window/DocumentWindow.h"
#include "document/window/EntriesElsewhereNotice.h"
#include "document/window/FindBar.h"
#include "document/window/HeadingMapModel.h"
#include "document/window/LostTargetsNotice.h"
#include "outlineview/OKNSOutlineView.h"
#include "pdf/ReadAhead.h"
#include "view/LabelPDFView.h"
#include "widgets/NoticeBars.h"

namespace leafwright {

bool MyDocument::reload(Reload kind) {
    if (!pdfDoc()) return false;
    auto reopened = outline_.reopen();
    if (const auto *error = std::get_if<PDFError>(&reopened)) {
        showAlert(tr("Unable to load “%1”").arg(displayName()), error->message);
        return false;
    }
    auto &file = std::get<OutlineDocument::Reopened>(reopened);
    // What is proposed is about pages that go.
    if (openPanel()) openPanel()->end(0);
    LostTargets lost;
    showOtherPages([&] {
        if (kind == Reload::KeepOutline) {
            lost = outline_.keepOutlineFor(std::move(file));
        } else {
            outline_.takeOutlineOf(std::move(file));
        }
    });
    if (!myWindow()) return true;
    outlineview()->setEnabled(true);
    showWriteError(saveFinalPDF);  // None of the file that is shown now.
    entriesElsewhereNotice_->show();
    showLostTargets(lost);
    tellReadProblem();
    otherPrograms_->tell();
    return true;
}

std::optional<PDFError> MyDocument::unlock(const QString &password) {
    if (!pdfDoc() || !pdfDoc()->isLocked()) return std::nullopt;
    auto unlocked = pdfDoc()->unlocked(password);
    if (auto *error = std::get_if<PDFError>(&unlocked)) return std::move(*error);
    if (listH1H2H3Config_.empty()) headingMapIsThere_ = false;  // It was guessed from no page.
    showOtherPages(
        [&] { outline_.takeUnlocked(std::get<std::unique_ptr<PDFDocument>>(std::move(unlocked))); });
    if (!myWindow()) return std::nullopt;
    tellReadProblem();
    if (std::exchange(thumbnailsBound_, false)) bindThumbnails();
    return std::nullopt;
}

/// Has the document's pages exchanged, which nobody may be reading then. @param exchange does that
void MyDocument::showOtherPages(const std::function<void()> &exchange) {
    const PDFPage *shown = myWindow() ? pdfview()->currentPage() : nullptr;
    const QString label = shown ? shown->label() : QString();
    const bool warms = readers_.warmer != nullptr;
    readers_.estimate = std::jthread();
    readers_.warmer.reset();
    readers_.headingMapGuess.reset();
    headingMapModel_->setUses(std::nullopt);
    findCommands_->forgetPages();
    if (myWindow()) pdfview()->setDocument(nullptr);
    exchange();
    if (!myWindow()) return;
    pdfview()->setDocument(pdfDoc());
    outlineview()->reloadItem(nullptr);
    if (const PDFPage *page = pdfDoc()->page(pdfMapPageLabelToIndex().value(label, 0)))
        pdfview()->goToPage(page);
    if (myWindow()->findBar()->isOpen()) findCommands_->searchAgain();
    estimatePrintedPageOffsetInBackground();
    if (warms) readers_.warmer = std::make_unique<PageWarmer>(*pdfDoc());
    guessHeadingMap();
}

/// Until the next reload.
void MyDocument::showLostTargets(const LostTargets &lost) const {
    leafwright::showLostTargets(*myWindow()->notices(), lost);
}

}  // namespace leafwright
