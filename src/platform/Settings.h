#pragma once

#include <QLatin1String>

/// The keys by which settings are stored (UserDefaults). What those of the preferences are until the user
/// changes them stands in app/Defaults.cpp.
namespace leafwright::setting {

// Those of the preferences.
inline constexpr QLatin1String autotocMaxDepth(
    "autotocMaxDepth");  ///< How many levels of headings; a number.
inline constexpr QLatin1String allowPDFReadingInBackground("LeafwrightAllowPDFReadingInBackground");
inline constexpr QLatin1String ignoreHighFrequencyFonts("autotocIgnoreHighFrequencyFonts");
inline constexpr QLatin1String ignoreLowFrequencyFonts("autotocIgnoreLowFrequencyFonts");
inline constexpr QLatin1String findMOIPointInAutoTOC("LeafwrightShouldFindMOIPointInAutoTOC");
inline constexpr QLatin1String showHelpOnStart("LeafwrightShowHelpOnStart");
inline constexpr QLatin1String enableDoubleClickEditing("LeafwrightEnableDoubleClickEditing");
inline constexpr QLatin1String alwaysPreviewBeforeSave("LeafwrightAlwaysPreviewBeforeSave");
inline constexpr QLatin1String warnAboutPDFVersion("LeafwrightShouldWarnAboutPDFVersion");
/// Shown, stored, and read by nothing.
inline constexpr QLatin1String redoMOIGenericPoints("LeafwrightShouldRedoMOIGenericPoints");
/// Whether entries lead to the pages they led to in the file, even where page labels repeat.
inline constexpr QLatin1String keepPagesOfEntries("LeafwrightKeepPagesOfEntries");
/// Whether Undo and Redo step back and forward where they have nothing else to do.
inline constexpr QLatin1String undoStepsBack("LeafwrightUndoStepsBack");

// What the program keeps for itself.
inline constexpr QLatin1String lastUsedHeadingMap("LastUsedH1H2H3MapString");  ///< The map as text.
inline constexpr QLatin1String windowGeometry("documentWindowGeometry");  ///< Of QWidget::saveGeometry().
inline constexpr QLatin1String lastFolder("lastFolder");            ///< Where a file was chosen last; a path.
inline constexpr QLatin1String recentDocuments("recentDocuments");  ///< Paths, one a line.

}  // namespace leafwright::setting
