#pragma once

namespace leafwright {

/// Runs the program: opens the files named in the arguments, or hands them to the instance that runs already.
/// @return the exit code
int applicationMain(int argc, char **argv);

}  // namespace leafwright
