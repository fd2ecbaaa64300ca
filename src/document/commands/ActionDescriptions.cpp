#include "document/commands/ActionTable.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <string_view>

namespace leafwright {

namespace {

constexpr const char *context = "ActionTable";

// What lupdate collects for translation is marked with QT_TRANSLATE_NOOP.
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): lupdate collects what the macro it knows marks.
#define TITLE(text) QT_TRANSLATE_NOOP("ActionTable", text)
constexpr unsigned none = 0;
constexpr unsigned group = ActionDescription::StartsGroup;
constexpr unsigned bar = ActionDescription::InToolBar;
constexpr unsigned sheet = ActionDescription::HasSheet;

// clang-format off
constexpr auto descriptions = std::to_array<ActionDescription>({
    {"openDocument:", Menu::File, TITLE("Open…"), "Ctrl+O", bar},
    {"performClose:", Menu::File, TITLE("Close"), "Ctrl+W", group},
    {"saveDocument:", Menu::File, TITLE("Save"), "Ctrl+S", bar},
    {"saveDocumentAs:", Menu::File, TITLE("Save As…"), "Ctrl+Shift+S"},
    {"openPDFInDefaultApp:", Menu::File, TITLE("Open in Default Application"), "", group | bar},
    {"revertOutlineToSaved:", Menu::File, TITLE("Revert Outline to Saved"), ""},
    {"reloadFromDisk:", Menu::File, TITLE("Reload"), "F5"},
    {"importOutline:", Menu::File, TITLE("Import Outline…"), "", group, Needs::EditableOutline},
    {"exportOutline:", Menu::File, TITLE("Export Outline…"), "", none, Needs::AnyEntries},
    {"terminate:", Menu::File, TITLE("Quit"), "Ctrl+Q", group},

    {"undo:", Menu::Edit, TITLE("Undo"), "Ctrl+Z"},
    {"redo:", Menu::Edit, TITLE("Redo"), "Ctrl+Shift+Z"},
    {"stepBack:", Menu::Edit, TITLE("Step Back"), "Ctrl+Alt+Z", none, Needs::StepBehind},
    {"stepForward:", Menu::Edit, TITLE("Step Forward"), "Ctrl+Alt+Shift+Z", none, Needs::StepAhead},
    {"copy:", Menu::Edit, TITLE("Copy"), "Ctrl+C", group},
    {"selectTOCAll:", Menu::Edit, TITLE("Select All"), "Ctrl+A", group},
    {"selectTOCOnlyLevel1:", Menu::Edit, TITLE("Select Level 1"), "Ctrl+1"},
    {"selectTOCOnlyLevel2:", Menu::Edit, TITLE("Select Level 2"), "Ctrl+2"},
    {"selectTOCOnlyLevel3:", Menu::Edit, TITLE("Select Level 3"), "Ctrl+3"},
    {"runSearchSelectSheet:", Menu::Edit, TITLE("Search and Select…"), "Ctrl+F", sheet},
    {"findOnPages:", Menu::Edit, TITLE("Find in Pages…"), "Ctrl+Shift+F", group},
    {"findNext:", Menu::Edit, TITLE("Find Next"), "F3"},
    {"findPrevious:", Menu::Edit, TITLE("Find Previous"), "Shift+F3"},
    {"showPreferences:", Menu::Edit, TITLE("Preferences…"), "Ctrl+,", group},

    {"addSiblingOutlineItem:", Menu::Outline, TITLE("Add Sibling"), "Ctrl+B", bar},
    {"addChildOutlineItem:", Menu::Outline, TITLE("Add Child"), "Ctrl+Shift+B", bar},
    {"addSelectedTextAsTOCSibling:", Menu::Outline, TITLE("Add Selected Text as Sibling"), "Ctrl+T", none, Needs::Text},
    {"addSelectedTextAsTOCChild:", Menu::Outline, TITLE("Add Selected Text as Child"), "Ctrl+Shift+T", none, Needs::Text},
    {"removeOutlineItems:", Menu::Outline, TITLE("Remove"), "Del", group | bar, Needs::Entries},
    {"promoteChildrenOutlineItem:", Menu::Outline, TITLE("Promote Children"), "Alt+Shift+Left", none, Needs::OneParent},
    {"moveLeft:", Menu::Outline, TITLE("Move Left"), "Alt+Left", group | bar, Needs::Entries},
    {"moveRight:", Menu::Outline, TITLE("Move Right"), "Alt+Right", bar, Needs::Entries},
    {"moveUp:", Menu::Outline, TITLE("Move Up"), "Alt+Up", bar, Needs::Entries},
    {"moveDown:", Menu::Outline, TITLE("Move Down"), "Alt+Down", bar, Needs::Entries},
    {"applyTOCExpand:", Menu::Outline, TITLE("Expand"), "Ctrl+Right", group, Needs::Entries},
    {"applyTOCCollapse:", Menu::Outline, TITLE("Collapse"), "Ctrl+Left", none, Needs::Entries},
    {"pointSelectedEntryHere:", Menu::Outline, TITLE("Point Selected Entry Here"), "Ctrl+Shift+P", group, Needs::OneEntry},
    {"toggleOpenInViewers:", Menu::Outline, TITLE("Open in Viewers"), "", none, Needs::Entries},
    {"filterOutline:", Menu::Outline, TITLE("Filter…"), "Ctrl+K", group},
    {"revealCurrentEntry:", Menu::Outline, TITLE("Reveal Current Entry"), ""},

    {"renameSequentialNumbering:", Menu::Titles, TITLE("Number Sequentially…"), "", sheet, Needs::Entries},
    {"renameFindReplace:", Menu::Titles, TITLE("Find and Replace…"), "Ctrl+H", sheet, Needs::Entries},
    {"renameAddPrefix:", Menu::Titles, TITLE("Add Prefix…"), "", sheet, Needs::Entries},
    {"changeCaseToTitleCase:", Menu::Titles, TITLE("Title Case"), "", group, Needs::Entries},
    {"changeCaseToUpperCase:", Menu::Titles, TITLE("UPPER CASE"), "", none, Needs::Entries},
    {"changeCaseToLowerCase:", Menu::Titles, TITLE("lower case"), "", none, Needs::Entries},
    {"toggleBold:", Menu::Titles, TITLE("Bold"), "", group, Needs::Entries},
    {"toggleItalic:", Menu::Titles, TITLE("Italic"), "", none, Needs::Entries},
    {"chooseTitleColor:", Menu::Titles, TITLE("Colour…"), "", sheet, Needs::Entries},
    {"changeOutlineItemToTitleCase:", Menu::Titles, TITLE("Title Case Selected Row"), "", group},

    {"findContents:", Menu::Contents, TITLE("Find Contents…"), "Ctrl+Shift+G", bar | sheet, Needs::RoomForProposal},
    {"completeContents:", Menu::Contents, TITLE("Complete from Existing Entries"), "", sheet, Needs::EntriesToComplete},
    {"runGuessPDF:", Menu::Contents, TITLE("AutoTOC…"), "Ctrl+G", group | bar | sheet},
    {"buttonClickedBotForAutoTOC:", Menu::Contents, TITLE("AutoTOC with Last Map"), ""},
    {"testPageStructureKnowledge:", Menu::Contents, TITLE("Self-Calibrating AutoTOC"), ""},
    {"runMiniTOC:", Menu::Contents, TITLE("MiniTOC from Selection"), "", group, Needs::Text},
    {"useSelectionforH1:", Menu::Contents, TITLE("Use Selection for H1"), "Ctrl+Alt+1", group, Needs::Text},
    {"useSelectionforH2:", Menu::Contents, TITLE("Use Selection for H2"), "Ctrl+Alt+2", none, Needs::Text},
    {"useSelectionforH3:", Menu::Contents, TITLE("Use Selection for H3"), "Ctrl+Alt+3", none, Needs::Text},
    {"useSelectionforH4:", Menu::Contents, TITLE("Use Selection for H4"), "Ctrl+Alt+4", none, Needs::Text},
    {"buttonClickedLoadH1H2H3Map:", Menu::Contents, TITLE("Load Heading Map…"), "", group},
    {"buttonClickedSaveH1H2H3Map:", Menu::Contents, TITLE("Save Heading Map…"), ""},
    {"buttonDeleteSelectedH1H2H3RowsClicked:", Menu::Contents, TITLE("Delete Selected Headings"), ""},
    {"resetH1H2H3FontsMap:", Menu::Contents, TITLE("Reset Heading Map"), ""},

    {"zoomIn:", Menu::View, TITLE("Zoom In"), "Ctrl++", bar},
    {"zoomOut:", Menu::View, TITLE("Zoom Out"), "Ctrl+-", bar},
    {"zoomToFit:", Menu::View, TITLE("Zoom to Fit"), "Ctrl+0", bar},
    {"zoomToPage:", Menu::View, TITLE("Fit Page"), ""},
    {"zoomToActualSize:", Menu::View, TITLE("Actual Size"), ""},
    {"nextPage:", Menu::View, TITLE("Next Page"), "Ctrl+PgDown", group},
    {"prevPage:", Menu::View, TITLE("Previous Page"), "Ctrl+PgUp"},
    {"goToPageLabel:", Menu::View, TITLE("Go to Page…"), "Ctrl+L", sheet},
    {"goBack:", Menu::View, TITLE("Back"), "", none, Needs::PageBehind},
    {"goForward:", Menu::View, TITLE("Forward"), "", none, Needs::PageAhead},
    {"moveToPageOfOutlineItem:", Menu::View, TITLE("Show Target of Selected Item"), "Ctrl+J", group},
    {"nextPageLabelLocation:", Menu::View, TITLE("Next Page Label Corner"), "Ctrl+Shift+L", group},
    {"runPrintedPageSheet:", Menu::View, TITLE("Printed Page Number…"), "", sheet},

    {"openHelpFile:", Menu::Help, TITLE("User Guide"), "F1"},
    {"openTutorial:", Menu::Help, TITLE("Tutorials"), ""},
    {"openLeafwrightOnline:", Menu::Help, TITLE("Leafwright Online"), "", group},
    {"openLeafwrightMacAppStore:", Menu::Help, TITLE("Leafwright in the App Store"), ""},
    {"emailCustomerSupport:", Menu::Help, TITLE("Email Customer Support"), "", group},
    {"emailFeedback:", Menu::Help, TITLE("Send Feedback"), ""},
    {"appMenuCheckForUpdates:", Menu::Help, TITLE("Check for Updates…"), "", group},
    {"orderFrontStandardAboutPanel:", Menu::Help, TITLE("About"), ""},

    {"doubleClickAction:", Menu::None, TITLE("Open Clicked Row"), ""},
    {"dumpFontsOnCurrentPage:", Menu::None, TITLE("Log Fonts of Current Page"), ""},
    {"debugPrintFontsInDocument:", Menu::None, TITLE("Count Fonts of Document"), ""},
    {"debugSelectedText:", Menu::None, TITLE("Locate Selected Text"), ""},
});
// clang-format on
#undef TITLE

using Selectors = std::span<const char *const>;

/// Stands between groups.
constexpr const char *separator = "";

constexpr auto onEntries =
    std::to_array<const char *>({"moveToPageOfOutlineItem:", "pointSelectedEntryHere:", separator,
                                 "addSiblingOutlineItem:", "addChildOutlineItem:", separator,
                                 "copy:", "removeOutlineItems:", "promoteChildrenOutlineItem:", separator,
                                 "moveLeft:", "moveRight:", "moveUp:", "moveDown:", separator,
                                 "applyTOCExpand:", "applyTOCCollapse:", "toggleOpenInViewers:"});
constexpr auto besideEntries = std::to_array<const char *>(
    {"addSiblingOutlineItem:", separator,
     "selectTOCAll:", "runSearchSelectSheet:", "filterOutline:", separator, "runGuessPDF:"});
constexpr auto onText = std::to_array<const char *>(
    {"copy:", separator, "addSelectedTextAsTOCSibling:", "addSelectedTextAsTOCChild:", separator,
     "useSelectionforH1:", "useSelectionforH2:", "useSelectionforH3:", "useSelectionforH4:", "runMiniTOC:"});
constexpr auto onPages = std::to_array<const char *>(
    {"addSiblingOutlineItem:", "addChildOutlineItem:", "pointSelectedEntryHere:", separator,
     "goToPageLabel:", "goBack:", "goForward:", "findOnPages:", "revealCurrentEntry:", separator,
     "zoomIn:", "zoomOut:", "zoomToFit:", "zoomToPage:", "zoomToActualSize:", separator,
     "nextPageLabelLocation:", "runPrintedPageSheet:"});
constexpr auto onThumbnails = std::to_array<const char *>(
    {"addSiblingOutlineItem:", "addChildOutlineItem:", separator, "goToPageLabel:", "runPrintedPageSheet:"});
constexpr auto onMapRows = std::to_array<const char *>(
    {"buttonDeleteSelectedH1H2H3RowsClicked:", "resetH1H2H3FontsMap:", separator,
     "buttonClickedLoadH1H2H3Map:", "buttonClickedSaveH1H2H3Map:", separator, "runGuessPDF:"});

/// A slip in a name would leave the command out of the menu, so the compiler looks for it.
constexpr bool areCommands(Selectors selectors) {
    return std::ranges::all_of(selectors, [](std::string_view selector) {
        return selector == separator || std::ranges::any_of(descriptions, [&](const ActionDescription &each) {
                   return selector == each.selector;
               });
    });
}
static_assert(areCommands(onEntries) && areCommands(besideEntries) && areCommands(onText) &&
              areCommands(onPages) && areCommands(onThumbnails) && areCommands(onMapRows));

}  // namespace

std::span<const ActionDescription> actionDescriptions() {
    return descriptions;
}

std::span<const char *const> commandsIn(Place place) {
    switch (place) {
        case Place::OnEntries:
            return onEntries;
        case Place::BesideEntries:
            return besideEntries;
        case Place::OnText:
            return onText;
        case Place::OnPages:
            return onPages;
        case Place::OnThumbnails:
            return onThumbnails;
        case Place::OnMapRows:
            return onMapRows;
    }
    return {};
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
