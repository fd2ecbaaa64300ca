#pragma once

#include <QString>
#include <QVariant>

#include <vector>

namespace leafwright {

class UserDefaults;

/// A setting, and the value that it has until the user changes it.
struct DefaultSetting {
    QString key;
    QVariant value;
};

/// The settings that the user can change in the preferences.
const std::vector<DefaultSetting> &defaultSettings();

/// Registers the value that each setting has until the user changes it.
void registerDefaults(UserDefaults &defaults);

}  // namespace leafwright
