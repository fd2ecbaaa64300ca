#include "document/commands/FindCommands.h"

#include "document/MyDocument.h"
#include "document/PageFinder.h"
#include "document/window/DocumentWindow.h"
#include "document/window/FindBar.h"
#include "texts/Translated.h"
#include "view/LabelPDFView.h"

#include <QLocale>

namespace leafwright {

namespace {

/// As much of what is selected is taken for words that somebody looks for.
constexpr qsizetype mostSelected = 100;

constexpr Translated translated{"FindCommands"};

QString numberText(size_t number) {
    return QLocale().toString(static_cast<qulonglong>(number));
}

}  // namespace

FindCommands::FindCommands(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    actions.handle("findOnPages:", [this](QObject *) { findOnPages(); });
    actions.handle("findNext:", [this](QObject *) { findNext(); });
    actions.handle("findPrevious:", [this](QObject *) { findPrevious(); });
}

FindCommands::~FindCommands() = default;

FindBar &FindCommands::bar() const {
    return *document_.myWindow()->findBar();
}

void FindCommands::connectBar() {
    if (std::exchange(isConnected_, true)) return;
    const FindBar *bar = &this->bar();
    QObject::connect(bar, &FindBar::textChanged, bar, [this](const QString &text) { searchFor(text); });
    QObject::connect(bar, &FindBar::nextRequested, bar, [this] { findNext(); });
    QObject::connect(bar, &FindBar::previousRequested, bar, [this] { findPrevious(); });
    QObject::connect(bar, &FindBar::closed, bar, [this] { close(); });
}

/// The selected text, if it is one that somebody may look for and has not been found that way.
QString FindCommands::selectedWords() const {
    const auto &selection = document_.pdfview()->currentSelection();
    if (!selection || selection->isEmpty() || selection->pages().size() > 1) return {};
    const PDFPage &page = *selection->pages().front();
    const auto ranges = selection->rangesOnPage(page);
    if (ranges.size() != 1 || ranges.front().length > mostSelected) return {};
    if (current_ && finder_->hits().at(*current_) == FoundHits::Hit{page.index(), ranges.front()}) return {};
    const QString text = selection->string().trimmed();
    return text.contains(u'\n') ? QString() : text;
}

void FindCommands::findOnPages() {
    connectBar();
    const PDFPage *page = document_.pdfview()->currentPage();
    firstPage_ = page ? page->index() : 0;
    hasLeft_ = false;
    const bool wasOpen = bar().isOpen();
    const QString before = bar().text();
    bar().open(selectedWords());
    // The field tells of another text by itself.
    if (wasOpen || bar().text() != before) return;
    if (!current_) return searchFor(before);
    for (const PageHits &each : finder_->hits().pages())
        document_.pdfview()->addMarkedText(each.pageIndex, each.ranges);
    tell();
}

void FindCommands::makeFinder() {
    if (finder_ || !document_.pdfDoc()) return;
    finder_ = std::make_unique<PageFinder>(*document_.pdfDoc());
    QObject::connect(finder_.get(), &PageFinder::found, document_.pdfview(), [this](const PageHits &page) {
        if (bar().isOpen()) document_.pdfview()->addMarkedText(page.pageIndex, page.ranges);
    });
    QObject::connect(finder_.get(), &PageFinder::changed, document_.pdfview(), [this] { foundMore(); });
}

void FindCommands::searchFor(const QString &text) {
    text_ = text;
    current_.reset();
    way_ = Way::Direct;
    isGivenUp_ = false;
    document_.pdfview()->clearMarkedText();
    makeFinder();
    if (finder_) finder_->start(text);
    tell();
}

void FindCommands::foundMore() {
    if (document_.isBusy()) {
        // No command finds another selection at its end than at its beginning.
        if (!std::exchange(waits_, true)) document_.whenIdle([this] { foundMore(); });
        return;
    }
    waits_ = false;
    if (!finder_ || !document_.myWindow()) return;
    if (!current_) showFirst();
    tell();
    if (!finder_->isSearching()) tellProblem();
}

/// Goes to the first hit from the page where the search began, if it is known by now.
void FindCommands::showFirst() {
    const FoundHits &hits = finder_->hits();
    const PDFPage *shown = document_.pdfview()->currentPage();
    if (const auto first = hits.firstFrom(firstPage_)) {
        goTo(*first, Way::Direct);
    } else if (!finder_->isSearching() && hits.count() > 0) {
        goTo(0, Way::AroundTheEnd);
    }
    // Who types on goes from page to page, and back in one step.
    if (current_ && shown && hits.at(*current_).pageIndex != shown->index()) hasLeft_ = true;
}

/// Tells once if not all pages could be read.
void FindCommands::tellProblem() {
    if (!document_.pdfDoc()->readProblem() || std::exchange(isProblemTold_, true)) return;
    document_.tellReadProblem();
}

void FindCommands::step(Direction direction) {
    if (text_.isEmpty()) return findOnPages();
    if (!finder_ || isGivenUp_) searchAgain();
    const size_t count = finder_ ? finder_->hits().count() : 0;
    const bool isSearching = finder_ && finder_->isSearching();
    if (count == 0 && !isSearching) return document_.platform().beep();
    // The first hit is shown as soon as it is found; and what is behind the last is not known before the end.
    if (!current_) return;
    const bool isNext = direction == Direction::Next;
    const bool isAtEnd = isNext ? *current_ + 1 == count : *current_ == 0;
    if (isAtEnd && isSearching) return;
    hasLeft_ = false;
    if (isAtEnd) {
        goTo(isNext ? 0 : count - 1, isNext ? Way::AroundTheEnd : Way::AroundTheStart);
    } else {
        goTo(isNext ? *current_ + 1 : *current_ - 1, Way::Direct);
    }
    // Who types on looks from here.
    firstPage_ = finder_->hits().at(*current_).pageIndex;
    tell();
    if (!bar().isOpen()) document_.tell(result());
}

void FindCommands::goTo(size_t number, Way way) {
    current_ = number;
    way_ = way;
    const FoundHits::Hit hit = finder_->hits().at(number);
    const PDFPage *page = document_.pdfDoc()->page(hit.pageIndex);
    document_.pdfview()->setCurrentSelection(page->selectionForRange(hit.range));
    document_.pdfview()->showText(hit.pageIndex, hit.range,
                                  hasLeft_ ? PDFView::Leaving::Unnoted : PDFView::Leaving::Noted);
}

QString FindCommands::result() const {
    const bool isSearching = finder_ && finder_->isSearching();
    const size_t count = finder_ ? finder_->hits().count() : 0;
    if (text_.isEmpty()) return {};
    if (finder_ && finder_->lacksMemory()) return translated("Not enough memory to search all pages");
    if (count == 0) return isSearching ? translated("Searching…") : translated("Not found");
    if (!current_) return translated("%1 found so far").arg(numberText(count));
    const QString text = (isSearching ? translated("%1 of %2 so far") : translated("%1 of %2"))
                             .arg(numberText(*current_ + 1), numberText(count));
    if (way_ == Way::AroundTheEnd) return translated("%1, from the beginning again").arg(text);
    if (way_ == Way::AroundTheStart) return translated("%1, from the end again").arg(text);
    return text;
}

void FindCommands::tell() {
    const bool mayBeFound = finder_ && (finder_->isSearching() || finder_->hits().count() > 0);
    const bool isFailure = !text_.isEmpty() && (!mayBeFound || finder_->lacksMemory());
    bar().setResult(result(), isFailure);
}

void FindCommands::close() {
    document_.pdfview()->clearMarkedText();
    if (current_ || !finder_) return;
    // Nothing is shown any more to who has gone on to something else.
    isGivenUp_ = true;
    finder_->start({});
}

void FindCommands::forgetPages() {
    finder_.reset();
    current_.reset();
    isProblemTold_ = false;
}

void FindCommands::searchAgain() {
    if (text_.isEmpty()) return;
    const PDFPage *page = document_.pdfview()->currentPage();
    firstPage_ = page ? page->index() : 0;
    searchFor(text_);
}

void FindCommands::finish() {
    if (finder_) finder_->finish();
}

}  // namespace leafwright
