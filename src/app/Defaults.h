#pragma once

namespace leafwright {

class UserDefaults;

/// Registers the value that each setting has until the user changes it.
void registerDefaults(UserDefaults &defaults);

}  // namespace leafwright
