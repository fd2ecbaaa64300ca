#pragma once

#include <QString>

#include <source_location>
#include <stdexcept>

namespace leafwright {

/// A condition that the program takes for granted did not hold. Raised by failAssertion(); whoever calls
/// what asserts decides whether to go on without it.
class AssertionFailure : public std::logic_error {
public:
    AssertionFailure(const QString &description, const std::source_location &where);

    /// What is wrong, in the words of who asserted it; what() is the same in UTF-8.
    const QString &description() const { return description_; }
    /// The source file's name without folder and extension.
    QString sourceFile() const;
    const std::source_location &where() const { return where_; }

private:
    QString description_;
    std::source_location where_;
};

/// Reports a failed assertion: raises AssertionFailure.
[[noreturn]] void failAssertion(const QString &description,
                                const std::source_location &where = std::source_location::current());

}  // namespace leafwright
