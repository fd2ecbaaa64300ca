#pragma once

#include "cli/Command.h"

#include <memory>
#include <variant>

class QCoreApplication;

namespace leafwright::cli {

/// What `run` is asked for.
struct ScriptRequest {
    QString steps;  ///< "-" is standard input.
    QString file;
    QString out;     ///< Empty for none.
    QString report;  ///< Empty for none; "-" for the results.
    bool keepPages = false;
};

/// Plays scripts in windows. It stands in the library of the windows, which is loaded when a script is to be
/// played: all other commands start without, and need nothing that draws.
class ScriptLibrary {
public:
    ScriptLibrary(const ScriptLibrary &) = delete;
    ScriptLibrary &operator=(const ScriptLibrary &) = delete;
    virtual ~ScriptLibrary() = default;

    /// The application that windows need, on a screen that nobody sees. For main(), before anything else that
    /// asks for an application.
    virtual std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv) const = 0;
    /// Prints what `run --list` promises.
    virtual void listActions(Console &console) const = 0;
    /// Reads and plays a script, and says what went wrong. The files it names are no two names of one.
    virtual ExitCode play(const ScriptRequest &request, Console &console) const = 0;

protected:
    ScriptLibrary() = default;
};

/// The function of the library by which it is reached: `const ScriptLibrary *leafwrightScripts()`, of C
/// linkage.
inline constexpr char scriptLibraryFunction[] = "leafwrightScripts";

/// The library, which the first call loads, for the rest of the program. It is looked for beside the library
/// that this function is in, and nowhere else. @return why it is not there: a line for people
std::variant<const ScriptLibrary *, QString> scriptLibrary();

}  // namespace leafwright::cli
