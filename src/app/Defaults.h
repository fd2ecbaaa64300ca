#pragma once

#include <QString>
#include <QStringList>
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

/// Further settings of the preferences: booleans that are off, and stored nowhere, until the user turns them
/// on.
const QStringList &laterSettings();

/// Registers the value that each setting has until the user changes it.
void registerDefaults(UserDefaults &defaults);

}  // namespace leafwright
