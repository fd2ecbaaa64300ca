#include "document/outline/OutlineDocument.h"

#include "document/outline/OutlineExport.h"
#include "document/outline/OutlineImport.h"
#include "document/outline/PrintedPageOffset.h"
#include "texts/Translated.h"

#include <new>

namespace leafwright {

namespace {

constexpr Translated translated{"OutlineDocument"};

}  // namespace

const QString OutlineDocument::savePreviewPDF = QStringLiteral("SavePreviewPDF");
const QString OutlineDocument::saveFinalPDF = QStringLiteral("SaveFinalPDF");

bool OutlineDocument::open(const QString &path) {
    openError_.reset();
    std::shared_ptr<const FileSnapshot> asItWas;
    auto opened = PDFDocument::open(path, &asItWas);
    if (auto *error = std::get_if<PDFError>(&opened)) {
        openError_ = std::move(*error);
        if (openError_->kind == PDFError::Kind::FileMissing) return false;
        pdfURL_ = path;
        pdfDoc_.reset();
        onDisk_.reset();
        return false;
    }
    pdfURL_ = path;
    pdfDoc_ = std::get<std::unique_ptr<PDFDocument>>(std::move(opened));
    onDisk_ = std::make_unique<FileOnDisk>(std::move(asItWas), path);
    outlineOfFile_.reset();
    return true;
}

void OutlineDocument::setPdfURL(const QString &path) {
    pdfURL_ = path;
    if (onDisk_) onDisk_->setPlace(path);
}

std::optional<FileMark> OutlineDocument::markOfFile() const {
    return onDisk_ ? onDisk_->mark() : std::nullopt;
}

FileOnDisk::State OutlineDocument::stateOnDisk() const {
    return onDisk_ ? onDisk_->state() : FileOnDisk::State::Unchanged;
}

void OutlineDocument::acceptFileOnDisk(const QString &path, FileOnDisk::Seen seen) {
    if (onDisk_) onDisk_->accept(path, std::move(seen));
}

Result<OutlineDocument::Reopened> OutlineDocument::reopen() const {
    std::shared_ptr<const FileSnapshot> asItWas;
    auto opened = PDFDocument::open(pdfURL_, &asItWas);
    if (auto *error = std::get_if<PDFError>(&opened)) return std::move(*error);
    auto pdf = std::get<std::unique_ptr<PDFDocument>>(std::move(opened));
    if (auto problem = pdf->readProblem()) return std::move(*problem);
    if (pdf->isLocked() || pdf->isEncrypted())
        return PDFError{
            PDFError::Kind::Locked,
            translated("The file is locked or encrypted now, and its outline could not be saved.")};
    return Reopened{std::move(pdf), std::make_unique<FileOnDisk>(std::move(asItWas), pdfURL_)};
}

void OutlineDocument::takePages(Reopened file) {
    pdfDoc_ = std::move(file.pdf);
    onDisk_ = std::move(file.onDisk);
    outlineOfFile_.reset();
    writeError_.reset();
    prepareForEditing();
}

LostTargets OutlineDocument::keepOutlineFor(Reopened file) {
    LostTargets lost =
        relinkOutline(edits_, *pdfDoc_, *file.pdf, entriesInFile(outlineOfFile()), file.pdf->outlineRoot());
    // What is away stands for entries and pages of the file before.
    edits_.forgetHistory();
    takePages(std::move(file));
    return lost;
}

void OutlineDocument::takeOutlineOf(Reopened file) {
    takePages(std::move(file));
    takeOutlineOfPages();
}

void OutlineDocument::takeUnlocked(std::shared_ptr<PDFDocument> pdf) {
    takePages({std::move(pdf), std::move(onDisk_)});
    takeOutlineOfPages();
    edits_.setSavedRevision(edits_.revision());
}

void OutlineDocument::takeOutlineOfPages() {
    edits_.setSavedRevision(edits_.revision());
    {
        const OutlineEdits::Transaction edit(edits_, QStringLiteral("reloadFromDisk:"),
                                             OutlineEdits::Counting::No);
        edits_.removeAll(root_);
    }
    importOutline();
}

void OutlineDocument::prepareForEditing() {
    allowTOCediting_ = !pdfDoc_->isLocked() && !pdfDoc_->isEncrypted();
    lockTOCediting_ = false;
    mapPageLabels();
    forgetPrintedPageOffset();
    userHasCheckedPrintedPageNumbers_ = false;
}

void OutlineDocument::mapPageLabels() {
    pdfMapPageLabelToIndex_ = pageLabelMap(*pdfDoc_);
}

MyOutlineItem::Children OutlineDocument::itemsOfOutlineInMemory() {
    const PDFOutline &outline = pdfDoc_->outlineRoot();
    MyOutlineItem::Children items;
    for (int i = 0; i < outline.numberOfChildren(); ++i) {
        items.push_back(std::make_unique<MyOutlineItem>());
        addOutlineChildren(outline.childAtIndex(i), *items.back());
    }
    return items;
}

void OutlineDocument::importOutline() {
    MyOutlineItem::Children items = itemsOfOutlineInMemory();
    {
        const OutlineEdits::Transaction edit(edits_, QStringLiteral("Import"), OutlineEdits::Counting::No);
        for (size_t i = 0; i < items.size(); ++i)
            edits_.insert(root_, i, std::move(items[i]));
    }
    edits_.forgetHistory();
}

void OutlineDocument::addOutlineChildren(const PDFOutline &entry, MyOutlineItem &item) {
    if (leafwright::addOutlineChildren(entry, item, *pdfDoc_)) edits_.countChange();
}

std::optional<int> OutlineDocument::getRealPageArrayIndex(const QString &label) const {
    if (lookUp(label).needsOffset && printedPageNumbersHandler_) printedPageNumbersHandler_();
    return lookUp(label).index;  // again, since the handler may have set the offset
}

bool OutlineDocument::hasLostLabel(const MyOutlineItem &item) const {
    if (item.pageLabel().isNull() || knownPageIndexOfItem(item)) return false;
    return !lookUp(item.pageLabel()).needsOffset;
}

PageLookUp OutlineDocument::lookUp(const QString &label) const {
    return lookUpPage(pdfMapPageLabelToIndex_, label, static_cast<qint32>(printedPageOffset_.load()),
                      userHasCheckedPrintedPageNumbers_);
}

std::optional<int> OutlineDocument::pageIndexOfItem(const MyOutlineItem &item) const {
    if (keepsPages() && item.importedPage()) return item.importedPage();
    return getRealPageArrayIndex(item.pageLabel());
}

std::optional<int> OutlineDocument::knownPageIndexOfItem(const MyOutlineItem &item) const {
    if (keepsPages() && item.importedPage()) return item.importedPage();
    return lookUp(item.pageLabel()).index;
}

void OutlineDocument::setPrintedPageOffset(quint64 offset) {
    const std::lock_guard lock(printedPageOffsetMutex_);
    printedPageOffset_ = offset;
    printedPageOffsetIsStated_ = true;
}

void OutlineDocument::forgetPrintedPageOffset() {
    const std::lock_guard lock(printedPageOffsetMutex_);
    printedPageOffset_ = 0;
    printedPageOffsetIsStated_ = false;
}

void OutlineDocument::estimatePrintedPageOffset() {
    try {
        const auto offset = leafwright::estimatePrintedPageOffset(*pdfDoc_);
        const std::lock_guard lock(printedPageOffsetMutex_);
        if (offset && !printedPageOffsetIsStated_) printedPageOffset_ = static_cast<quint64>(qint64{*offset});
    } catch (const std::bad_alloc &) {
        qWarning("leafwright: there is not enough memory to estimate the printed page numbers");
    }
}

void OutlineDocument::setPrintedPageNumbersHandler(std::function<void()> handler) {
    printedPageNumbersHandler_ = std::move(handler);
}

EntriesElsewhere OutlineDocument::entriesElsewhere() const {
    if (keepsPages()) return {};
    return leafwright::entriesElsewhere(root_, [this](const QString &label) { return lookUp(label).index; });
}

std::optional<PDFError> OutlineDocument::write(const QString &path, const QString &type) {
    const OutlineExport outlineExport({[this](const QString &label) { return getRealPageArrayIndex(label); },
                                       [this](int index) -> std::optional<Rect> {
                                           const PDFPage *page = pdfDoc_->page(index);
                                           return page ? std::optional(page->mediaBox()) : std::nullopt;
                                       },
                                       keepsPages()});
    writeError_.reset();
    losses_.clear();
    const quint64 exported = edits_.revision();
    auto before = pdfDoc_->setOutlineRoot(outlineExport.run(root_));
    if (!outlineOfFile_) outlineOfFile_ = std::move(before);
    tellOfEntriesElsewhere(type);
    writeError_ = pdfDoc_->writeToFile(path, writeObserver_, &losses_, onDisk_.get());
    if (type == saveFinalPDF && !writeError_) outlineOfFile_.reset();
    lockTOCediting_ = false;
    if (type == saveFinalPDF && lossesHandler_ && !losses_.isEmpty()) lossesHandler_(losses_);
    if (type == saveFinalPDF && !writeError_) edits_.setSavedRevision(exported);
    return writeError_;
}

void OutlineDocument::tellOfEntriesElsewhere(const QString &type) const {
    if (!entriesElsewhereHandler_ || type != saveFinalPDF) return;
    if (const EntriesElsewhere entries = entriesElsewhere(); !entries.isEmpty())
        entriesElsewhereHandler_(entries);
}

void OutlineDocument::setLossesHandler(std::function<void(const QStringList &)> handler) {
    lossesHandler_ = std::move(handler);
}

void OutlineDocument::setEntriesElsewhereHandler(std::function<void(const EntriesElsewhere &)> handler) {
    entriesElsewhereHandler_ = std::move(handler);
}

}  // namespace leafwright
