#include "app/Defaults.h"

#include "platform/Settings.h"
#include "platform/UserDefaults.h"

namespace leafwright {

const std::vector<DefaultSetting> &defaultSettings() {
    static const std::vector<DefaultSetting> settings{
        {setting::autotocMaxDepth, 3},
        {setting::allowPDFReadingInBackground, false},
        {setting::ignoreHighFrequencyFonts, true},
        {setting::findMOIPointInAutoTOC, true},
        {setting::showHelpOnStart, true},
        {setting::enableDoubleClickEditing, false},
        {setting::alwaysPreviewBeforeSave, false},
        {setting::warnAboutPDFVersion, false},
        {setting::redoMOIGenericPoints, true},
        {setting::ignoreLowFrequencyFonts, true},
    };
    return settings;
}

const QStringList &laterSettings() {
    static const QStringList keys{setting::keepPagesOfEntries, setting::undoStepsBack};
    return keys;
}

void registerDefaults(UserDefaults &defaults) {
    QHash<QString, QVariant> values;
    for (const DefaultSetting &setting : defaultSettings())
        values.insert(setting.key, setting.value);
    defaults.registerDefaults(values);
}

}  // namespace leafwright
