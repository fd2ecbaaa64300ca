#include "document/AutoTOCCommands.h"

#include "autotoc/AutoTOC.h"
#include "autotoc/FontCensus.h"
#include "desktop/InBackground.h"
#include "desktop/OKNSOutlineView.h"
#include "desktop/Sheet.h"
#include "document/AutoTOCProgress.h"
#include "document/DocumentWindow.h"
#include "document/HeadingMapCommands.h"
#include "document/MyDocument.h"
#include "document/StructuralEdits.h"
#include "pdf/ReadAhead.h"
#include "platform/UserDefaults.h"
#include "tree/TreeController.h"

#include <QCoreApplication>

namespace leafwright {

namespace {

constexpr int delayBeforeStart = 500;  // milliseconds

QString translated(const char *text) {
    return QCoreApplication::translate("AutoTOCCommands", text);
}

}  // namespace

AutoTOCCommands::AutoTOCCommands(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    actions.handle("runGuessPDF:", [this](QObject *) { runGuessPDF(); });
    actions.handle("buttonClickedBotForAutoTOC:", [this](QObject *) { buttonClickedBotForAutoTOC(); });
}

void AutoTOCCommands::runGuessPDF() {
    auto *sheet = new Sheet(translated("AutoTOC"));
    sheet->addText(
        translated("Build an outline from the fonts of the headings?\n\nText in the fonts of the heading "
                   "map becomes entries under a new one at the end of the outline. What is there already "
                   "stays as it is."));
    sheet->addButton(translated("Cancel"), 0);
    sheet->addButton(translated("Build Outline"), 1);
    document_.beginSheet(sheet, [this](int returnCode) {
        if (returnCode != 1) return;
        document_.platform().performAfterDelay(delayBeforeStart, &document_,
                                               [this] { runAutoTOCWithFeedback(); });
    });
}

void AutoTOCCommands::runAutoTOCWithFeedback() {
    AutoTOCProgress progress(document_.myWindow(), document_.platform());
    progress.guessPDFStep1Begins();
    document_.finishHeadingMap();
    HeadingLevelMap &map = document_.listH1H2H3Config();
    if (map.empty()) {
        const PDFDocument &pdf = *document_.pdfDoc();
        const FontCensus census = inBackground([&pdf] {
            readAllPages(pdf);
            return calcFontsInDocument(pdf);
        });
        progress.guessPDFStep2Begins();
        map = headingsfromFonts(census);
        document_.reloadHeadingMap();
    } else {
        progress.guessPDFStep2Begins();
    }
    if (map.empty()) progress.guessPDFStep3Ends(QStringLiteral("Failed"));
    progress.guessPDFStep3Begins();
    runAutoTOCwithH1H2H3Map();
    progress.guessPDFStep3Ends();
}

void AutoTOCCommands::runAutoTOCwithH1H2H3Map() {
    const PDFDocument &pdf = *document_.pdfDoc();
    if (pdf.pageCount() == 0) return;
    const int maxDepth = document_.platform().userDefaults().integerForKey(QStringLiteral("autotocMaxDepth"));
    const HeadingLevelMap map = document_.listH1H2H3Config();
    auto top = inBackground([&pdf, &map, maxDepth] {
        readAllPages(pdf);
        return leafwright::runAutoTOCwithH1H2H3Map(pdf, map, maxDepth);
    });
    TreeController &tree = document_.treecontroller();
    tree.insertObjectAtArrangedObjectIndexPath(
        std::move(top), IndexPath::indexPathWithIndex(tree.arrangedObjects().childCount()));
    document_.outlineview()->setFocus();
    document_.updateChangeCount(Document::Change::Done);
}

void AutoTOCCommands::buttonClickedBotForAutoTOC() {
    if (!document_.headingMapCommands().loadH1H2H3MapSavedInUserDefaults())
        return document_.platform().beep();
    if (document_.pdfDoc()->pageCount() == 0) return;
    runAutoTOCwithH1H2H3Map();
    document_.structuralEdits().promoteChildrenOutlineItem();
    if (const auto path = document_.treecontroller().selectionIndexPath())
        document_.structuralEdits().removeNodeAtIndexPath(*path);
}

}  // namespace leafwright
