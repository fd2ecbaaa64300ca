#include "app/layout/PrioritySplitViewDelegate.h"
#include "document/HeadingMapGuess.h"
#include "document/MyDocument.h"
#include "document/commands/NavigationCommands.h"
#include "document/commands/OtherPrograms.h"
#include "document/window/DocumentWindow.h"
#include "document/window/EntriesElsewhereNotice.h"
#include "document/window/HeadingMapModel.h"
#include "document/window/OutlineDelegate.h"
#include "document/window/PasswordBar.h"
#include "document/window/SaveProgress.h"
#include "outlineview/OKNSOutlineView.h"
#include "pageview/ThumbnailView.h"
#include "pdf/ReadAhead.h"
#include "platform/Settings.h"
#include "platform/UserDefaults.h"
#include "system/InBackground.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"
#include "widgets/SplitView.h"

#include <QTimer>

namespace leafwright {

namespace {

constexpr int indentationPerLevel = 17;  // points
constexpr int pageBegins = 200;          // points from the left, in a new window
constexpr int outlineBegins = 600;       // likewise
constexpr double thumbnailLabelSize = 17;
constexpr double thumbnailHeight = 170;
constexpr std::chrono::milliseconds thumbnailDelay{100};

}  // namespace

void MyDocument::makeWindowControllers() {
    readers_.window = std::make_unique<DocumentWindow>(*this);
    saveProgress_ = std::make_unique<SaveProgress>(myWindow());
    setWriteObserver(saveProgress_.get());
    entriesElsewhereNotice_ = std::make_unique<EntriesElsewhereNotice>(*this);
    Q_EMIT windowMade();
    windowControllerDidLoadNib(*myWindow());
}

void MyDocument::windowControllerDidLoadNib(DocumentWindow &window) {
    setAllowTOCediting(true);
    setLockTOCediting(false);
    refuseEditingWhereImpossible();
    if (pdfDoc()) {
        warnAboutVersion();
        showPages();
        outline_.mapPageLabels();
        showOutline();
        setUserHasCheckedPrintedPageNumbers(false);
        listH1H2H3Config_.clear();
    }
    outline_.forgetPrintedPageOffset();
    estimatePrintedPageOffsetInBackground();
    if (pdfDoc() && platform().userDefaults().boolForKey(setting::allowPDFReadingInBackground))
        readers_.warmer = std::make_unique<PageWarmer>(*pdfDoc());
    outlineview()->setIndentationPerLevel(indentationPerLevel);
    undoSupport_->startObservingOutlineItemsForUndoSupport();
    window.show();
    renamingDefaults_ = {QStringLiteral("Ch"), 1, 1, QStringLiteral("Ch")};
    setUpSplitView();
    documentDidLoad();
    tellReadProblem();
    if (pdfDoc() && pdfDoc()->isLocked()) window.passwordBar()->open();
}

void MyDocument::showAlert(const QString &message, const QString &informativeText) {
    platform().beep();
    runModal({message, informativeText, {tr("OK")}});
}

void MyDocument::refuseEditingWhereImpossible() {
    if (pdfDoc() && pdfDoc()->isLocked()) {
        showAlert(tr("This PDF is locked"),
                  tr("Unfortunately, Leafwright cannot edit Table of Contents in locked PDFs."));
        setAllowTOCediting(false);
    }
    if (pdfDoc() && pdfDoc()->isEncrypted()) {
        showAlert(tr("This PDF is encrypted"),
                  tr("Unfortunately, Leafwright cannot edit Table of Contents in encrypted PDFs."));
        setAllowTOCediting(false);
    }
}

void MyDocument::warnAboutVersion() {
    if (!platform().userDefaults().boolForKey(setting::warnAboutPDFVersion)) return;
    constexpr double newestWithoutWarning = 1.41;
    const PDFVersion claimed = pdfDoc()->version();
    // Through single precision, so that 1.4 is not a hair above itself.
    const double version = static_cast<float>(claimed.major + claimed.minor / 10.0);
    if (version <= newestWithoutWarning) return;
    showAlert(tr("This PDF (version %1) may not save correctly").arg(version, 0, 'f', 1),
              tr("Leafwright works best with PDF versions 1.4 and lower. Use the Preview feature to test the "
                 "embedded TOC before saving changes back to the original PDF."));
}

void MyDocument::showPages() {
    pdfview()->setPlaceholderText(pdfDoc()->isLocked()
                                      ? tr("This PDF is locked by a password, so its pages can’t be shown.")
                                      : tr("No page of this PDF can be read. The file may be damaged."));
    pdfview()->setDocument(pdfDoc());
    pdfview()->setPageLabelLocation(QStringLiteral("Q1"));
    QFont labelFont(QStringLiteral("Lucida Grande"));
    labelFont.setPointSizeF(thumbnailLabelSize);
    pdfthumbs()->setLabelFont(labelFont);
}

void MyDocument::showOutline() {
    importOutline();
    entriesElsewhereNotice_->show();
    outlineview()->registerForDraggedTypes(OutlineDelegate::draggedTypes());
    connect(outlineview(), &OutlineView::doubleAction, this,
            [this](int /*row*/, int /*column*/, Qt::KeyboardModifiers modifiers) {
                navigation_->doubleClickAction(modifiers);
            });
    if (!allowTOCediting()) outlineview()->setEnabled(false);
}

void MyDocument::estimatePrintedPageOffsetInBackground() {
    if (pdfDoc()) readers_.estimate = std::jthread([this] { estimatePrintedPageOffset(); });
}

void MyDocument::setUpSplitView() {
    splitViewDelegate_ = std::make_unique<PrioritySplitViewDelegate>();
    splitViewDelegate_->setPriority(3, 0);
    splitViewDelegate_->setPriority(1, 1);
    splitViewDelegate_->setPriority(2, 2);
    splitViewDelegate_->setMinimumLength(DocumentWindow::thumbnailsMinimum, 0);
    splitViewDelegate_->setMinimumLength(DocumentWindow::pageMinimum, 1);
    splitViewDelegate_->setMinimumLength(DocumentWindow::outlineMinimum, 2);
    splitViewTopLevel()->setDelegate(splitViewDelegate_.get());
    // The panes begin equally wide. With more than they need, the thumbnails would keep the other divider
    // from its place.
    splitViewTopLevel()->setPositionOfDividerAtIndex(DocumentWindow::thumbnailsMinimum, 0);
}

void MyDocument::documentDidLoad() {
    // The thumbnails take a fifth of a usual window, the page twice that, the outline what is left. The right
    // divider goes first, since the left one can't pass it.
    splitViewTopLevel()->setPositionOfDividerAtIndex(outlineBegins, 1);
    splitViewTopLevel()->setPositionOfDividerAtIndex(pageBegins, 0);
    pdfview()->setAutoScales(true);
    QTimer::singleShot(thumbnailDelay, this, [this] { whenIdle([this] { bindThumbnails(); }); });
    if (!pdfDoc()) return;
    guessHeadingMap();
    otherPrograms_->watch();
}

void MyDocument::guessHeadingMap() {
    // The census reads every page, which takes more than a second for thousands of them. So it is left to
    // other threads, and begins when the first page is on the screen.
    readers_.headingMapGuess = std::make_unique<HeadingMapGuess>(*pdfDoc());
    HeadingMapGuess *guess = readers_.headingMapGuess.get();
    connect(guess, &HeadingMapGuess::finished, guess,
            [this] { whenIdle([this] { takeGuessedHeadingMap(); }); });
    connect(pdfview(), &PDFView::visiblePagesRendered, guess, &HeadingMapGuess::start);
}

void MyDocument::bindThumbnails() {
    if (std::exchange(thumbnailsBound_, true)) return;
    pdfthumbs()->setPDFView(pdfview());
    pdfthumbs()->setMaximumNumberOfColumns(0);
    if (const PDFPage *first = pdfDoc() ? pdfDoc()->page(0) : nullptr) showFromTheTop(*first);
    Q_EMIT loaded();
}

/// Shows the first page, and thumbnails of its shape.
void MyDocument::showFromTheTop(const PDFPage &first) {
    // The middle of the top edge as it is shown, wherever that is in page space.
    const PageTransform transform = first.transform();
    pdfview()->goToDestination({0, transform.toPage(QPointF(transform.shownSize().width() * 0.5, 0))});
    const Rect crop = first.cropBox();
    if (crop.height > 0)
        pdfthumbs()->setThumbnailSize({thumbnailHeight * crop.width / crop.height, thumbnailHeight});
}

void MyDocument::takeGuessedHeadingMap() {
    if (!readers_.headingMapGuess) return;
    auto guess = readers_.headingMapGuess->take();
    // Of pages that are shown in the place of others, the uses are what is new: the map is the user's by now.
    const bool isFirst = !std::exchange(headingMapIsThere_, true);
    if (!guess) {
        if (isFirst) reloadHeadingMap();
        return;
    }
    headingMapModel_->setUses(std::move(guess->uses));
    if (!isFirst) return;
    listH1H2H3Config_ = std::move(guess->map);
    reloadHeadingMap();
}

void MyDocument::finishHeadingMap() {
    if (!readers_.headingMapGuess || headingMapIsThere_) return;
    // What takes long is reading the pages; the guess finds them read then.
    inBackground(
        *this,
        [](const std::shared_ptr<const PDFDocument> &pdf) {
            readAllPages(*pdf);
            return true;
        },
        sharedPdfDoc());
    takeGuessedHeadingMap();
}

void MyDocument::finishLoading() {
    takeGuessedHeadingMap();
    bindThumbnails();
    if (readers_.estimate.joinable()) readers_.estimate.join();
}

}  // namespace leafwright
