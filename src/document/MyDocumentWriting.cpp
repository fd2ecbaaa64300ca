#include "document/MyDocument.h"
#include "document/outline/OutlineExport.h"
#include "document/window/DocumentWindow.h"
#include "document/window/SaveProgress.h"
#include "platform/Settings.h"
#include "platform/UserDefaults.h"
#include "widgets/NoticeBars.h"

#include <QLoggingCategory>

#include <stdexcept>

namespace leafwright {

namespace {

Q_LOGGING_CATEGORY(log, "leafwright.document", QtInfoMsg)

// The names of notices in the window.
const QString failedWriteNotice = QStringLiteral("failedWrite");
const QString lossesNotice = QStringLiteral("losses");
const QString entriesElsewhereNotice = QStringLiteral("entriesElsewhere");

}  // namespace

const QString MyDocument::savePreviewPDF = QStringLiteral("SavePreviewPDF");
const QString MyDocument::saveFinalPDF = QStringLiteral("SaveFinalPDF");

bool MyDocument::keepsPages() const {
    return platform().userDefaults().boolForKey(setting::keepPagesOfEntries);
}

EntriesElsewhere MyDocument::entriesElsewhere() const {
    if (keepsPages()) return {};
    return leafwright::entriesElsewhere(*root_,
                                        [this](const QString &label) { return knownPageIndex(label); });
}

void MyDocument::setEntriesElsewhereHandler(std::function<void(const EntriesElsewhere &)> handler) {
    entriesElsewhereHandler_ = std::move(handler);
}

void MyDocument::tellOfEntriesElsewhere(const QString &type) const {
    showEntriesElsewhere();
    if (!entriesElsewhereHandler_ || type != saveFinalPDF) return;
    if (const EntriesElsewhere entries = entriesElsewhere(); entries.count > 0)
        entriesElsewhereHandler_(entries);
}

void MyDocument::showEntriesElsewhere() const {
    if (!window_) return;
    NoticeBars &notices = *window_->notices();
    const EntriesElsewhere entries = entriesElsewhere();
    if (entries.count == 0) return notices.removeNotice(entriesElsewhereNotice);
    notices.setNotice(entriesElsewhereNotice,
                      {tr("Some pages of this PDF have the same label, and saving leads these entries to the "
                          "last page with theirs: %1.")
                           .arg(entries.list()),
                       {{tr("Keep Their Pages"), [this] {
                             platform().userDefaults().setValue(setting::keepPagesOfEntries, true);
                         }}}});
}

std::optional<PDFError> MyDocument::writeNewPDFOutline(const QString &path, const QString &type) {
    const Busy busy(*this);  // the progress is drawn amid the write
    if (saveProgress_) {
        saveProgress_->setText(type == savePreviewPDF ? tr("Generating Temporary PDF...")
                                                      : tr("Saving PDF..."));
    }
    OutlineExport outlineExport({[this](const QString &label) { return getRealPageArrayIndex(label); },
                                 [this](int index) -> std::optional<Rect> {
                                     const PDFPage *page = pdfDoc_->page(index);
                                     return page ? std::optional(page->mediaBox()) : std::nullopt;
                                 },
                                 keepsPages()});
    writeError_.reset();
    QStringList losses;
    const quint64 exported = revision();
    try {
        pdfDoc_->setOutlineRoot(outlineExport.run(*root_));
        tellOfEntriesElsewhere(type);
        writeError_ = pdfDoc_->writeToFile(path, writeObserver_, &losses);
    } catch (const std::length_error &) {
        writeError_ = PDFError{PDFError::Kind::WriteFailed,
                               tr("%1 was not written: its outline is more than %2 levels deep")
                                   .arg(path)
                                   .arg(OutlineExport::deepestLevel)};
    }
    showWriteError(type);
    tellOfLosses(type, losses);
    lockTOCediting_ = false;
    if (type == saveFinalPDF && !writeError_) setSavedRevision(exported);
    return writeError_;
}

void MyDocument::setLossesHandler(std::function<void(const QStringList &)> handler) {
    lossesHandler_ = std::move(handler);
}

/// Shows them in the window until the next final write. A preview is nobody's old file.
void MyDocument::tellOfLosses(const QString &type, const QStringList &losses) const {
    if (type != saveFinalPDF) return;
    if (lossesHandler_ && !losses.isEmpty()) lossesHandler_(losses);
    if (!window_) return;
    if (losses.isEmpty()) return window_->notices()->removeNotice(lossesNotice);
    window_->notices()->setNotice(lossesNotice, {losses.join(u'\n')});
}

/// Shows in the window why the last write failed, until the next one.
void MyDocument::showWriteError(const QString &type) {
    if (writeError_) qCWarning(log).noquote() << writeError_->message;
    if (!window_) return;
    if (!writeError_) return window_->notices()->removeNotice(failedWriteNotice);
    Notice notice{writeError_->message};
    // No other place would do for what can't be read, nor does a preview have one that the user chose.
    if (type == saveFinalPDF && writeError_->kind != PDFError::Kind::Locked) {
        notice.buttons.append({actionTitle(*actionDescription(QStringLiteral("saveDocumentAs:"))),
                               [this] { actions_.perform(QStringLiteral("saveDocumentAs:")); }});
    }
    window_->notices()->setNotice(failedWriteNotice, notice);
}

}  // namespace leafwright
