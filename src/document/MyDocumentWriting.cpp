#include "document/MyDocument.h"
#include "document/commands/OtherPrograms.h"
#include "document/window/DocumentWindow.h"
#include "document/window/EntriesElsewhereNotice.h"
#include "document/window/SaveProgress.h"
#include "texts/CountText.h"
#include "tree/TreeController.h"
#include "widgets/NoticeBars.h"

#include <QLoggingCategory>

namespace leafwright {

namespace {

Q_LOGGING_CATEGORY(log, "leafwright.document", QtInfoMsg)

// The names of notices in the window.
const QString failedWriteNotice = QStringLiteral("failedWrite");
const QString lossesNotice = QStringLiteral("losses");

}  // namespace

const QString &MyDocument::savePreviewPDF = OutlineDocument::savePreviewPDF;
const QString &MyDocument::saveFinalPDF = OutlineDocument::saveFinalPDF;

std::optional<PDFError> MyDocument::writeNewPDFOutline(const QString &path, const QString &type) {
    const Busy busy(*this);  // the progress is drawn amid the write
    if (saveProgress_) {
        saveProgress_->setText(type == savePreviewPDF ? tr("Generating Temporary PDF...")
                                                      : tr("Saving PDF..."));
    }
    if (entriesElsewhereNotice_) entriesElsewhereNotice_->show();
    outline_.write(path, type);
    showWriteError(type);
    if (type == saveFinalPDF) showLosses();
    if (type == saveFinalPDF && !writeError())
        tell(tr("Saved, %1").arg(entryCountText(treecontroller_->nodeCount())));
    otherPrograms_->tell();
    return writeError();
}

/// Until the next final write. A preview is nobody's old file.
void MyDocument::showLosses() const {
    if (!myWindow()) return;
    const QStringList &losses = outline_.losses();
    if (losses.isEmpty()) return myWindow()->notices()->removeNotice(lossesNotice);
    myWindow()->notices()->setNotice(lossesNotice, {losses.join(u'\n')});
}

/// Shows in the window why the last write failed, until the next one.
void MyDocument::showWriteError(const QString &type) {
    const std::optional<PDFError> &error = writeError();
    if (error) qCWarning(log).noquote() << error->message;
    if (!myWindow()) return;
    if (!error) return myWindow()->notices()->removeNotice(failedWriteNotice);
    Notice notice{error->message};
    // No other place would do for what can't be read, nor does a preview have one that the user chose.
    const bool canBeRead = error->kind != PDFError::Kind::Locked && pdfDoc()->canBeWritten() &&
                           outline_.stateOnDisk() != FileOnDisk::State::Overwritten;
    if (type == saveFinalPDF && canBeRead) {
        notice.buttons.append({actionTitle(*actionDescription(QStringLiteral("saveDocumentAs:"))),
                               [this] { actions_.perform(QStringLiteral("saveDocumentAs:")); }});
    }
    myWindow()->notices()->setNotice(failedWriteNotice, notice);
}

}  // namespace leafwright
