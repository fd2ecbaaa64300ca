#include "app/SettingBindings.h"

#include "platform/UserDefaults.h"

#include <QCheckBox>
#include <QSignalBlocker>
#include <QSpinBox>

namespace leafwright {

namespace {

/// Shows a setting in a control, now and at each change.
template <typename Show>
void keepShown(QWidget &control, UserDefaults &defaults, const QString &key, const Show &show) {
    control.setObjectName(key);
    show();
    QObject::connect(&defaults, &UserDefaults::valueChanged, &control, [key, show](const QString &changed) {
        if (changed == key) show();
    });
}

}  // namespace

void bindToSetting(QCheckBox &checkBox, UserDefaults &defaults, const QString &key) {
    keepShown(checkBox, defaults, key,
              [&checkBox, &defaults, key] { checkBox.setChecked(defaults.boolForKey(key)); });
    // A click is the user's, a change of state need not be.
    QObject::connect(&checkBox, &QCheckBox::clicked, &defaults,
                     [&defaults, key](bool checked) { defaults.setValue(key, checked); });
}

void bindToSetting(QSpinBox &spinBox, UserDefaults &defaults, const QString &key) {
    keepShown(spinBox, defaults, key, [&spinBox, &defaults, key] {
        const QSignalBlocker blocker(spinBox);
        // Whoever reads the setting takes the whole part of a fraction.
        const auto value = defaults.doubleForKey(key);
        spinBox.setValue(
            static_cast<int>(std::clamp(value, double(spinBox.minimum()), double(spinBox.maximum()))));
    });
    QObject::connect(&spinBox, &QSpinBox::valueChanged, &defaults,
                     [&defaults, key](int value) { defaults.setValue(key, value); });
}

}  // namespace leafwright
