#include "app/Defaults.h"

#include "platform/UserDefaults.h"

namespace leafwright {

void registerDefaults(UserDefaults &defaults) {
    constexpr int deepestHeading = 3;
    defaults.registerDefaults({
        {QStringLiteral("autotocMaxDepth"), deepestHeading},
        {QStringLiteral("LeafwrightAllowPDFReadingInBackground"), false},
        {QStringLiteral("autotocIgnoreHighFrequencyFonts"), true},
        {QStringLiteral("LeafwrightShouldFindMOIPointInAutoTOC"), true},
        {QStringLiteral("LeafwrightShowHelpOnStart"), true},
        {QStringLiteral("LeafwrightEnableDoubleClickEditing"), false},
        {QStringLiteral("LeafwrightAlwaysPreviewBeforeSave"), false},
        {QStringLiteral("LeafwrightShouldWarnAboutPDFVersion"), false},
        {QStringLiteral("LeafwrightShouldRedoMOIGenericPoints"), true},
        {QStringLiteral("autotocIgnoreLowFrequencyFonts"), true},
    });
}

}  // namespace leafwright
