#pragma once

#include <QString>

class QCheckBox;
class QSpinBox;

namespace leafwright {

class UserDefaults;

// Bindings make a control show a setting, also when that is changed elsewhere, and store what the user sets
// with it. Showing stores nothing.

/// Binds a check box to a setting that is a boolean. @param defaults must outlive the control
void bindToSetting(QCheckBox &checkBox, UserDefaults &defaults, const QString &key);
/// Binds a spin box to a setting that is a whole number; one out of its range is shown as the nearest within.
/// @param defaults must outlive the control
void bindToSetting(QSpinBox &spinBox, UserDefaults &defaults, const QString &key);

}  // namespace leafwright
