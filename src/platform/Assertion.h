#pragma once

#include <QString>

#include <stdexcept>

namespace leafwright {

/// A place in the source.
struct SourcePlace {
    const char *file = "";
    const char *function = "";
    int line = 0;

    /// Where this is called; as a default argument, where the function with that argument is. (The standard's
    /// own is not there for every compiler that reads this.)
    static constexpr SourcePlace current(const char *file = __builtin_FILE(),
                                         const char *function = __builtin_FUNCTION(),
                                         int line = __builtin_LINE()) {
        return {file, function, line};
    }
};

/// A condition that the program takes for granted did not hold. Raised by failAssertion(); whoever calls
/// what asserts decides whether to go on without it.
class AssertionFailure : public std::logic_error {
public:
    AssertionFailure(const QString &description, const SourcePlace &where);

    /// What is wrong, in the words of who asserted it; what() is the same in UTF-8.
    const QString &description() const { return description_; }
    /// The source file's name without folder and extension.
    QString sourceFile() const;
    const SourcePlace &where() const { return where_; }

private:
    QString description_;
    SourcePlace where_;
};

/// Reports a failed assertion: raises AssertionFailure.
[[noreturn]] void failAssertion(const QString &description,
                                const SourcePlace &where = SourcePlace::current());

/// Asserts that an argument that a function can't do without was given.
/// @param name the argument's, for the description
void assertParameter(bool isGiven, const char *name, const SourcePlace &where = SourcePlace::current());

}  // namespace leafwright
