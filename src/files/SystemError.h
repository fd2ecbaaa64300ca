#pragma once

#include <QString>

namespace leafwright {

/// Why a system call failed, in the words of the system and the user's language: "No space left on device".
/// @param error the value of errno
QString reasonOfSystem(int error);

}  // namespace leafwright
