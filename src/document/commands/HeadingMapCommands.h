#pragma once

#include "autotoc/HeadingLevelMap.h"

#include <optional>

namespace leafwright {

class MyDocument;

/// The heading level map and its table: fonts from selected text, map files, deleted rows, and the runs of
/// the selected row's font marked on the pages.
class HeadingMapCommands {
public:
    /// Registers the commands. @param document must outlive this
    explicit HeadingMapCommands(MyDocument &document);

    /// Maps the font that most of the selected text is set in to a level, unless it is mapped already.
    /// @param level 1 is the top level
    void processSelectedTextForHLevel(int level);
    /// Writes the map to a file the user chooses. No alert tells that it failed; a bar and the log do.
    void buttonClickedSaveH1H2H3Map();
    /// Why the map was not written when it was last to be; absent where it was, and where that was cancelled.
    const std::optional<QString> &saveProblem() const { return saveProblem_; }
    /// Loads a map file the user chooses, and remembers its text. Beeps if it holds no map, and tells in a
    /// bar if it can't be read.
    void buttonClickedLoadH1H2H3Map();
    /// Loads the map that was remembered. @return whether there is one
    bool loadH1H2H3MapSavedInUserDefaults();
    void resetH1H2H3FontsMap();
    void buttonDeleteSelectedH1H2H3RowsClicked();
    /// Gives the fonts of the selected rows another level; the rows stay selected. @param level 1 is the top
    void setLevelOfSelectedRows(int level);
    /// The same for other rows, which become the selected ones. Those that do not exist are passed over.
    void setLevelOfRows(const std::vector<int> &rows, int level);
    /// Shows where text in a row's font stands next, and marks it as tableViewSelectionDidChange() does: from
    /// the current page on, or behind what this showed there last; the end is followed by the beginning.
    /// Beeps where no text has the font.
    void showNextOccurrence(int row);
    /// Selects the runs of the selected row's font on the pages that can be seen; without a row, nothing.
    void tableViewSelectionDidChange();

    /// Where text begins.
    struct Place {
        int pageIndex = 0;
        int location = 0;  ///< In the page's text.
    };

    /// Counts the fonts of all pages on other threads, while the window is drawn and its input waits.
    FontCensus census() const;
    /// The heading map, with the document's fonts for the records that have a font string only.
    HeadingLevelMap mapWithFonts() const;

    /// Logs the current page's runs with their fonts.
    void dumpFontsOnCurrentPage() const;
    /// Counts the fonts and drops what came of it.
    void debugPrintFontsInDocument() const;
    /// Finds where the selected text begins and drops that.
    void debugSelectedText() const;

private:
    std::vector<int> selectedRows() const;
    bool loadMapText(const QString &text);
    void tellFailure(const QString &message) const;
    void mapChanged();
    /// Where the keys of the table go on from, whatever is selected; the last row if there are fewer.
    void setCurrentRow(int row);

    MyDocument &document_;
    std::optional<QString> saveProblem_;
    /// What showNextOccurrence() showed last.
    struct Occurrence {
        QString font;
        Place place;
    };
    Occurrence occurrence_;
};

}  // namespace leafwright
