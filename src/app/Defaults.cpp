#include "app/Defaults.h"

#include "document/MyDocument.h"
#include "platform/UserDefaults.h"

namespace leafwright {

const std::vector<DefaultSetting> &defaultSettings() {
    static const std::vector<DefaultSetting> settings{
        {QStringLiteral("autotocMaxDepth"), 3},
        {QStringLiteral("LeafwrightAllowPDFReadingInBackground"), false},
        {QStringLiteral("autotocIgnoreHighFrequencyFonts"), true},
        {QStringLiteral("LeafwrightShouldFindMOIPointInAutoTOC"), true},
        {QStringLiteral("LeafwrightShowHelpOnStart"), true},
        {QStringLiteral("LeafwrightEnableDoubleClickEditing"), false},
        {QStringLiteral("LeafwrightAlwaysPreviewBeforeSave"), false},
        {QStringLiteral("LeafwrightShouldWarnAboutPDFVersion"), false},
        {QStringLiteral("LeafwrightShouldRedoMOIGenericPoints"), true},
        {QStringLiteral("autotocIgnoreLowFrequencyFonts"), true},
    };
    return settings;
}

const QStringList &laterSettings() {
    static const QStringList keys{MyDocument::keepPagesKey};
    return keys;
}

void registerDefaults(UserDefaults &defaults) {
    QHash<QString, QVariant> values;
    for (const DefaultSetting &setting : defaultSettings())
        values.insert(setting.key, setting.value);
    defaults.registerDefaults(values);
}

}  // namespace leafwright
