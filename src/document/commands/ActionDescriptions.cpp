#include "document/commands/ActionTable.h"

#include <QCoreApplication>

#include <array>

namespace leafwright {

namespace {

constexpr const char *context = "ActionTable";

// What lupdate collects for translation is marked with QT_TRANSLATE_NOOP.
#define TITLE(text) QT_TRANSLATE_NOOP("ActionTable", text)
constexpr bool group = true;
constexpr bool bar = true;

// clang-format off
constexpr auto descriptions = std::to_array<ActionDescription>({
    {"openDocument:", Menu::File, TITLE("Open…"), "Ctrl+O", false, bar},
    {"performClose:", Menu::File, TITLE("Close"), "Ctrl+W", group, false},
    {"saveDocument:", Menu::File, TITLE("Save"), "Ctrl+S", false, bar},
    {"saveDocumentAs:", Menu::File, TITLE("Save As…"), "Ctrl+Shift+S", false, false},
    {"openPDFInDefaultApp:", Menu::File, TITLE("Open in Default Application"), "", group, bar},
    {"revertOutlineToSaved:", Menu::File, TITLE("Revert Outline to Saved"), "", false, false},
    {"terminate:", Menu::File, TITLE("Quit"), "Ctrl+Q", group, false},

    {"undo:", Menu::Edit, TITLE("Undo"), "Ctrl+Z", false, false},
    {"redo:", Menu::Edit, TITLE("Redo"), "Ctrl+Shift+Z", false, false},
    {"copy:", Menu::Edit, TITLE("Copy"), "Ctrl+C", group, false},
    {"selectTOCAll:", Menu::Edit, TITLE("Select All"), "Ctrl+A", group, false},
    {"selectTOCOnlyLevel1:", Menu::Edit, TITLE("Select Level 1"), "Ctrl+1", false, false},
    {"selectTOCOnlyLevel2:", Menu::Edit, TITLE("Select Level 2"), "Ctrl+2", false, false},
    {"selectTOCOnlyLevel3:", Menu::Edit, TITLE("Select Level 3"), "Ctrl+3", false, false},
    {"runSearchSelectSheet:", Menu::Edit, TITLE("Search and Select…"), "Ctrl+F", false, false},
    {"showPreferences:", Menu::Edit, TITLE("Preferences…"), "Ctrl+,", group, false},

    {"addSiblingOutlineItem:", Menu::Outline, TITLE("Add Sibling"), "Ctrl+B", false, bar},
    {"addChildOutlineItem:", Menu::Outline, TITLE("Add Child"), "Ctrl+Shift+B", false, bar},
    {"addSelectedTextAsTOCSibling:", Menu::Outline, TITLE("Add Selected Text as Sibling"), "Ctrl+T", false, false},
    {"addSelectedTextAsTOCChild:", Menu::Outline, TITLE("Add Selected Text as Child"), "Ctrl+Shift+T", false, false},
    {"removeOutlineItems:", Menu::Outline, TITLE("Remove"), "Del", group, bar},
    {"promoteChildrenOutlineItem:", Menu::Outline, TITLE("Promote Children"), "", false, false},
    {"moveLeft:", Menu::Outline, TITLE("Move Left"), "Alt+Left", group, bar},
    {"moveRight:", Menu::Outline, TITLE("Move Right"), "Alt+Right", false, bar},
    {"moveUp:", Menu::Outline, TITLE("Move Up"), "Alt+Up", false, bar},
    {"moveDown:", Menu::Outline, TITLE("Move Down"), "Alt+Down", false, bar},
    {"applyTOCExpand:", Menu::Outline, TITLE("Expand"), "Ctrl+Right", group, false},
    {"applyTOCCollapse:", Menu::Outline, TITLE("Collapse"), "Ctrl+Left", false, false},

    {"renameSequentialNumbering:", Menu::Titles, TITLE("Number Sequentially…"), "", false, false},
    {"renameFindReplace:", Menu::Titles, TITLE("Find and Replace…"), "Ctrl+H", false, false},
    {"renameAddPrefix:", Menu::Titles, TITLE("Add Prefix…"), "", false, false},
    {"changeCaseToTitleCase:", Menu::Titles, TITLE("Title Case"), "", group, false},
    {"changeCaseToUpperCase:", Menu::Titles, TITLE("UPPER CASE"), "", false, false},
    {"changeCaseToLowerCase:", Menu::Titles, TITLE("lower case"), "", false, false},
    {"changeOutlineItemToTitleCase:", Menu::Titles, TITLE("Title Case Selected Row"), "", group, false},

    {"findContents:", Menu::Contents, TITLE("Find Contents…"), "Ctrl+Shift+G", false, bar},
    {"completeContents:", Menu::Contents, TITLE("Complete from Existing Entries"), "", false, false},
    {"runGuessPDF:", Menu::Contents, TITLE("AutoTOC…"), "Ctrl+G", group, bar},
    {"buttonClickedBotForAutoTOC:", Menu::Contents, TITLE("AutoTOC with Last Map"), "", false, false},
    {"testPageStructureKnowledge:", Menu::Contents, TITLE("Self-Calibrating AutoTOC"), "", false, false},
    {"runMiniTOC:", Menu::Contents, TITLE("MiniTOC from Selection"), "", group, false},
    {"useSelectionforH1:", Menu::Contents, TITLE("Use Selection for H1"), "Ctrl+Alt+1", group, false},
    {"useSelectionforH2:", Menu::Contents, TITLE("Use Selection for H2"), "Ctrl+Alt+2", false, false},
    {"useSelectionforH3:", Menu::Contents, TITLE("Use Selection for H3"), "Ctrl+Alt+3", false, false},
    {"useSelectionforH4:", Menu::Contents, TITLE("Use Selection for H4"), "Ctrl+Alt+4", false, false},
    {"buttonClickedLoadH1H2H3Map:", Menu::Contents, TITLE("Load Heading Map…"), "", group, false},
    {"buttonClickedSaveH1H2H3Map:", Menu::Contents, TITLE("Save Heading Map…"), "", false, false},
    {"buttonDeleteSelectedH1H2H3RowsClicked:", Menu::Contents, TITLE("Delete Selected Headings"), "", false, false},
    {"resetH1H2H3FontsMap:", Menu::Contents, TITLE("Reset Heading Map"), "", false, false},

    {"zoomIn:", Menu::View, TITLE("Zoom In"), "Ctrl++", false, bar},
    {"zoomOut:", Menu::View, TITLE("Zoom Out"), "Ctrl+-", false, bar},
    {"zoomToFit:", Menu::View, TITLE("Zoom to Fit"), "Ctrl+0", false, bar},
    {"zoomToPage:", Menu::View, TITLE("Fit Page"), "", false, false},
    {"zoomToActualSize:", Menu::View, TITLE("Actual Size"), "", false, false},
    {"nextPage:", Menu::View, TITLE("Next Page"), "Ctrl+PgDown", group, false},
    {"prevPage:", Menu::View, TITLE("Previous Page"), "Ctrl+PgUp", false, false},
    {"goToPageLabel:", Menu::View, TITLE("Go to Page…"), "Ctrl+L", false, false},
    {"goBack:", Menu::View, TITLE("Back"), "", false, false},
    {"goForward:", Menu::View, TITLE("Forward"), "", false, false},
    {"moveToPageOfOutlineItem:", Menu::View, TITLE("Show Target of Selected Item"), "Ctrl+J", group, false},
    {"nextPageLabelLocation:", Menu::View, TITLE("Next Page Label Corner"), "Ctrl+Shift+L", group, false},
    {"runPrintedPageSheet:", Menu::View, TITLE("Printed Page Number…"), "", false, false},

    {"openHelpFile:", Menu::Help, TITLE("User Guide"), "F1", false, false},
    {"openTutorial:", Menu::Help, TITLE("Tutorials"), "", false, false},
    {"openLeafwrightOnline:", Menu::Help, TITLE("Leafwright Online"), "", group, false},
    {"openLeafwrightMacAppStore:", Menu::Help, TITLE("Leafwright in the App Store"), "", false, false},
    {"emailCustomerSupport:", Menu::Help, TITLE("Email Customer Support"), "", group, false},
    {"emailFeedback:", Menu::Help, TITLE("Send Feedback"), "", false, false},
    {"appMenuCheckForUpdates:", Menu::Help, TITLE("Check for Updates…"), "", group, false},
    {"orderFrontStandardAboutPanel:", Menu::Help, TITLE("About"), "", false, false},

    {"doubleClickAction:", Menu::None, TITLE("Open Clicked Row"), "", false, false},
    {"dumpFontsOnCurrentPage:", Menu::None, TITLE("Log Fonts of Current Page"), "", false, false},
    {"debugPrintFontsInDocument:", Menu::None, TITLE("Count Fonts of Document"), "", false, false},
    {"debugSelectedText:", Menu::None, TITLE("Locate Selected Text"), "", false, false},
});
// clang-format on
#undef TITLE

}  // namespace

std::span<const ActionDescription> actionDescriptions() {
    return descriptions;
}

QString actionTitle(const ActionDescription &description) {
    return QCoreApplication::translate(context, description.title);
}

QString menuTitle(Menu menu) {
    switch (menu) {
        case Menu::File:
            return QCoreApplication::translate(context, "&File");
        case Menu::Edit:
            return QCoreApplication::translate(context, "&Edit");
        case Menu::Outline:
            return QCoreApplication::translate(context, "&Outline");
        case Menu::Titles:
            return QCoreApplication::translate(context, "&Titles");
        case Menu::Contents:
            return QCoreApplication::translate(context, "&Contents");
        case Menu::View:
            return QCoreApplication::translate(context, "&View");
        case Menu::Help:
            return QCoreApplication::translate(context, "&Help");
        case Menu::None:
            break;
    }
    return {};
}

}  // namespace leafwright
