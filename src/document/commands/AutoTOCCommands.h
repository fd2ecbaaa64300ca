#pragma once

#include "autotoc/FontCalibration.h"
#include "model/MyOutlineItem.h"

#include <memory>

namespace leafwright {

class AutoTOCProgress;
class MyDocument;

/// Outlines made from the fonts of headings. The pages are read on other threads, while the window is drawn
/// and its input waits.
class AutoTOCCommands {
public:
    /// Registers the commands. @param document must outlive this
    explicit AutoTOCCommands(MyDocument &document);

    /// Asks, and half a second after a yes runs runAutoTOCWithFeedback().
    void runGuessPDF();
    /// Guesses the heading map if it is empty, and makes the outline, with a sheet that shows the three
    /// steps.
    void runAutoTOCWithFeedback();
    /// Adds a top-level item with the headings below it, as the map and the setting autotocMaxDepth say.
    void runAutoTOCwithH1H2H3Map();
    /// Makes an outline by the map loaded last, with the headings at the top level. Beeps if there is none.
    void buttonClickedBotForAutoTOC();
    /// Adds a top-level item with every place below it that is set in the fonts of the selected text, in
    /// their order. Does nothing without selected text.
    void runMiniTOC();
    /// Makes a heading map from how often fonts occur, and an outline by it whose levels are corrected as
    /// headings appear, with the sheet of three steps. Does nothing where editing is not allowed; tells when
    /// the text has too few fonts.
    void testPageStructureKnowledge();

private:
    /// Half a second after a return code of 1, runAutoTOCWithFeedback().
    void guessPDFSheetDidEnd(int returnCode);
    /// The setting autotocMaxDepth.
    int maxDepth() const;
    std::optional<CalibratedLevels> calibrate(AutoTOCProgress &progress) const;
    /// A detached item with the headings below it, as the map and the setting autotocMaxDepth say.
    std::unique_ptr<MyOutlineItem> headingsByMap();
    /// Adds an item at the end of the top level, selected; a change. @param command the selector of what asks
    void insertTopItem(std::unique_ptr<MyOutlineItem> top, const QString &command);

    MyDocument &document_;
};

}  // namespace leafwright
