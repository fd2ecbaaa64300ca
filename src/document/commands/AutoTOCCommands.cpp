#include "document/commands/AutoTOCCommands.h"

#include "autotoc/AutoTOC.h"
#include "autotoc/CalibratingAutoTOC.h"
#include "autotoc/MiniTOC.h"
#include "document/MyDocument.h"
#include "document/commands/HeadingMapCommands.h"
#include "document/commands/StructuralEdits.h"
#include "document/window/AutoTOCProgress.h"
#include "document/window/DocumentWindow.h"
#include "model/TreeWalk.h"
#include "outlineview/OKNSOutlineView.h"
#include "pdf/ReadAhead.h"
#include "platform/Settings.h"
#include "platform/UserDefaults.h"
#include "system/InBackground.h"
#include "texts/CountText.h"
#include "texts/Translated.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"
#include "widgets/Sheet.h"

#include <algorithm>
#include <limits>

namespace leafwright {

namespace {

constexpr int delayBeforeStart = 500;  // milliseconds

constexpr Translated translated{"AutoTOCCommands"};

using SharedPDF = std::shared_ptr<const PDFDocument>;

}  // namespace

AutoTOCCommands::AutoTOCCommands(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    actions.handle("runGuessPDF:", [this](QObject *) { runGuessPDF(); });
    actions.handle("buttonClickedBotForAutoTOC:", [this](QObject *) { buttonClickedBotForAutoTOC(); });
    actions.handle("testPageStructureKnowledge:", [this](QObject *) { testPageStructureKnowledge(); });
    actions.handle("runMiniTOC:", [this](QObject *) { runMiniTOC(); });
}

void AutoTOCCommands::runGuessPDF() {
    auto *sheet = new Sheet(translated("AutoTOC"));
    sheet->setObjectName(QStringLiteral("guessPDFWindow"));
    sheet->addText(
        translated("Build an outline from the fonts of the headings?\n\nText in the fonts of the heading "
                   "map becomes entries under a new one at the end of the outline. What is there already "
                   "stays as it is."));
    sheet->addButton(translated("Cancel"), 0);
    sheet->addButton(translated("Build Outline"), 1);
    document_.beginSheet(sheet, [this](int returnCode) { guessPDFSheetDidEnd(returnCode); });
}

void AutoTOCCommands::guessPDFSheetDidEnd(int returnCode) {
    if (returnCode != 1) return;
    document_.performAfterDelay(delayBeforeStart, [this] { runAutoTOCWithFeedback(); });
}

void AutoTOCCommands::runAutoTOCWithFeedback() {
    AutoTOCProgress progress(document_);
    progress.guessPDFStep1Begins();
    document_.finishHeadingMap();
    HeadingLevelMap &map = document_.listH1H2H3Config();
    if (map.empty()) {
        const FontCensus fonts = document_.headingMapCommands().census();
        progress.guessPDFStep2Begins();
        map = headingsfromFonts(fonts);
        document_.reloadHeadingMap();
    } else {
        progress.guessPDFStep2Begins();
    }
    // Without heading fonts there is still the top item to be had, below which people put entries themselves.
    // So the run goes on, and what it shows at last is that it has ended.
    if (map.empty()) progress.guessPDFStep3Ends(QStringLiteral("Failed"));
    progress.guessPDFStep3Begins();
    runAutoTOCwithH1H2H3Map();
    progress.guessPDFStep3Ends();
}

void AutoTOCCommands::runAutoTOCwithH1H2H3Map() {
    insertTopItem(headingsByMap(), QStringLiteral("runGuessPDF:"));
}

std::unique_ptr<MyOutlineItem> AutoTOCCommands::headingsByMap() {
    const HeadingLevelMap fonts = document_.headingMapCommands().mapWithFonts();
    return inBackground(
        document_,
        [](const SharedPDF &pdf, const HeadingLevelMap &map, int depth) {
            readAllPages(*pdf);
            return leafwright::runAutoTOCwithH1H2H3Map(*pdf, map, depth);
        },
        document_.sharedPdfDoc(), fonts, maxDepth());
}

void AutoTOCCommands::buttonClickedBotForAutoTOC() {
    if (!document_.headingMapCommands().loadH1H2H3MapSavedInUserDefaults())
        return document_.platform().beep();
    auto top = headingsByMap();
    const QString command = QStringLiteral("buttonClickedBotForAutoTOC:");
    const OutlineEdits::Transaction edit(document_.edits(), command);
    insertTopItem(std::move(top), command);
    document_.structuralEdits().promoteChildrenOutlineItem();
    if (const auto path = document_.treecontroller().selectionIndexPath())
        document_.structuralEdits().removeNodeAtIndexPath(*path);
}

void AutoTOCCommands::runMiniTOC() {
    if (!document_.hasSelectedText()) return;
    insertTopItem(inBackground(
                      document_,
                      [](const SharedPDF &pdf, const QStringList &pattern) {
                          readAllPages(*pdf);
                          return leafwright::runMiniTOC(*pdf, pattern);
                      },
                      document_.sharedPdfDoc(),
                      fontPattern(document_.pdfview()->currentSelection()->attributedString())),
                  QStringLiteral("runMiniTOC:"));
}

void AutoTOCCommands::testPageStructureKnowledge() {
    if (!document_.allowTOCediting()) return;
    const bool findsPoints = document_.platform().userDefaults().boolForKey(setting::findMOIPointInAutoTOC);
    AutoTOCProgress progress(document_);
    progress.guessPDFStep1Begins();
    document_.finishHeadingMap();  // or the guess would come later and replace the map made here
    const std::optional<CalibratedLevels> levels = calibrate(progress);
    if (!levels) return progress.guessPDFStep3Ends(QStringLiteral("Failed"));
    document_.listH1H2H3Config() = levels->records();
    document_.reloadHeadingMap();
    progress.guessPDFStep3Begins();
    insertTopItem(inBackground(
                      document_,
                      [](const SharedPDF &pdf, const CalibratedLevels &fontLevels, int depth, bool points) {
                          return runCalibratingAutoTOC(*pdf, fontLevels, depth, points);
                      },
                      document_.sharedPdfDoc(), *levels, maxDepth(), findsPoints),
                  QStringLiteral("testPageStructureKnowledge:"));
    progress.guessPDFStep3Ends();
}

/// Steps 1 and 2 of the progress. Tells when the fonts say nothing.
std::optional<CalibratedLevels> AutoTOCCommands::calibrate(AutoTOCProgress &progress) const {
    Platform &platform = document_.platform();
    const FrequencyFilters filters{platform.userDefaults().boolForKey(setting::ignoreHighFrequencyFonts),
                                   platform.userDefaults().boolForKey(setting::ignoreLowFrequencyFonts)};
    const FontStringCensus counts = fontStringCensus(document_.headingMapCommands().census());
    if (!canCalibrate(counts)) {
        platform.beep();
        document_.runModal({translated("Unable to run AutoTOC"),
                            translated("Leafwright was unable to decipher the fonts used in this PDF."),
                            {translated("OK")}});
        return std::nullopt;
    }
    progress.guessPDFStep2Begins();
    return CalibratedLevels(headingFontStrings(counts, filters));
}

int AutoTOCCommands::maxDepth() const {
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    const double depth = document_.platform().userDefaults().doubleForKey(setting::autotocMaxDepth);
    return static_cast<int>(std::clamp(depth, lowest, highest));
}

void AutoTOCCommands::insertTopItem(std::unique_ptr<MyOutlineItem> top, const QString &command) {
    const OutlineEdits::Transaction edit(document_.edits(), command);
    TreeController &tree = document_.treecontroller();
    TreeNode &added = tree.insertObjectAtArrangedObjectIndexPath(
        std::move(top), IndexPath::indexPathWithIndex(tree.arrangedObjects().childCount()));
    document_.outlineview()->revealItems({&added});
    document_.outlineview()->setFocus();
    const MyOutlineItem &item = *added.representedObject();
    document_.tell(QStringLiteral("%1: %2").arg(item.pageTitle(), entryCountText(countBelow(item))));
    document_.tellReadProblem();
}

}  // namespace leafwright
