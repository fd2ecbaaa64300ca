#include "document/SavingCommands.h"

#include "document/MyDocument.h"

namespace leafwright {

SavingCommands::SavingCommands(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    actions.handle("saveDocument:", [this](QObject *) { saveDocument(); });
    actions.handle("saveDocumentAs:", [this](QObject *) { saveDocumentAs(); });
}

void SavingCommands::saveDocument() {
    document_.writeNewPDFOutline(document_.pdfURL(), MyDocument::saveFinalPDF);
}

void SavingCommands::saveDocumentAs() {
    const auto path = document_.platform().runSavePanel({.title = MyDocument::tr("Save PDF As"),
                                                         .path = document_.pdfURL(),
                                                         .allowedFileTypes = {QStringLiteral("pdf")}});
    if (!path) return;
    document_.setPdfURL(*path);
    saveDocument();
}

bool SavingCommands::saveBeforeClosing() {
    saveDocument();
    return !document_.isDocumentEdited();
}

}  // namespace leafwright
