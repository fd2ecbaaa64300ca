#include "document/commands/SavingCommands.h"

#include "document/MyDocument.h"
#include "document/commands/OtherPrograms.h"
#include "document/window/DocumentWindow.h"
#include "model/TreeWalk.h"
#include "platform/Settings.h"
#include "platform/UserDefaults.h"
#include "texts/CountText.h"

#include <QDir>
#include <QFileInfo>

namespace leafwright {

SavingCommands::SavingCommands(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    actions.handle("saveDocument:", [this](QObject *) { saveDocument(); });
    actions.handle("saveDocumentAs:", [this](QObject *) { saveDocumentAs(); });
    actions.handle("openPDFInDefaultApp:", [this](QObject *) { openPDFInDefaultApp(); });
    actions.handle("revertOutlineToSaved:", [this](QObject *) { revertOutlineToSaved(); });
}

void SavingCommands::saveDocument() {
    Platform &platform = document_.platform();
    if (!isPreviewDue() || !platform.userDefaults().boolForKey(setting::alwaysPreviewBeforeSave)) {
        saveFinal();
        return;
    }
    platform.beep();
    const int answer = document_.runModal(
        {MyDocument::tr("Would you like to preview the TOC?"),
         MyDocument::tr(
             "Before saving changes to original PDF, do you want to generate a temporary PDF to review "
             "the TOC created by Leafwright?"),
         {MyDocument::tr("Generate Temporary PDF"), MyDocument::tr("Save PDF")},
         Alert::Style::Warning,
         false});
    if (answer != 0) {
        saveFinal();
    } else if (generatePreview()) {
        platform.revealFile(previewPath());
    }
}

void SavingCommands::saveDocumentAs() {
    const auto path = document_.runSavePanel({.title = MyDocument::tr("Save PDF As"),
                                              .path = document_.pdfURL(),
                                              .allowedFileTypes = {QStringLiteral("pdf")}});
    if (!path) return;
    // The panel has asked whether what is there may be replaced.
    document_.outline().acceptFileOnDisk(*path, FileOnDisk::seenAt(*path));
    if (!document_.writeNewPDFOutline(*path, MyDocument::saveFinalPDF)) document_.setPdfURL(*path);
}

void SavingCommands::openPDFInDefaultApp() {
    if (!document_.isDocumentEdited()) {
        document_.platform().openFile(document_.pdfURL());
    } else if (generatePreview()) {
        document_.platform().openFile(previewPath());
    }
}

void SavingCommands::revertOutlineToSaved() {
    // Every write leaves its outline with the PDF in memory, so this is the one last written.
    OutlineEdits &edits = document_.edits();
    const OutlineEdits::Transaction edit(edits, QStringLiteral("revertOutlineToSaved:"));
    MyOutlineItem::Children items = document_.outline().itemsOfOutlineInMemory();
    edits.removeAll(document_.root());
    for (size_t i = 0; i < items.size(); ++i)
        edits.insert(document_.root(), i, std::move(items[i]));
    document_.tell(MyDocument::tr("Reverted, %1").arg(entryCountText(countBelow(document_.root()))));
}

bool SavingCommands::saveFinal() {
    if (!document_.otherPrograms().letWrite()) return false;
    return !document_.writeNewPDFOutline(document_.pdfURL(), MyDocument::saveFinalPDF);
}

QString SavingCommands::previewPath() const {
    return QDir(document_.platform().temporaryDirectory()).filePath(QFileInfo(document_.pdfURL()).fileName());
}

bool SavingCommands::isPreviewDue() const {
    if (!lastTimeTemporaryPDFGenerated_) return true;
    constexpr qint64 millisecondsInASecond = 1000;
    return document_.platform().now() - *lastTimeTemporaryPDFGenerated_ >
           previewFreshness * millisecondsInASecond;
}

bool SavingCommands::generatePreview() {
    // Without a folder the preview's path would be that of a file of the user's.
    if (document_.platform().temporaryDirectory().isNull()) {
        document_.runModal({MyDocument::tr("The preview could not be made"),
                            MyDocument::tr("No folder for temporary files can be made."),
                            {MyDocument::tr("OK")}});
        return false;
    }
    if (document_.writeNewPDFOutline(previewPath(), MyDocument::savePreviewPDF)) return false;
    lastTimeTemporaryPDFGenerated_ = document_.platform().now();
    return true;
}

}  // namespace leafwright
