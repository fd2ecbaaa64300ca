#pragma once

namespace leafwright {

class MyDocument;

/// Outlines made from the fonts of headings.
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

private:
    MyDocument &document_;
};

}  // namespace leafwright
