#pragma once

#include <QCoreApplication>
#include <QString>

namespace leafwright {

/// Translates the texts of a source file that has no QObject to do so. It stands at the file's top as
/// `constexpr Translated translated{"FileName"};`, which scripts/update-translations knows; then
/// `translated("Some text")` is that text in the user's language.
struct Translated {
    const char *context;  ///< By which translations are found: the file's name without the ending.

    QString operator()(const char *text) const { return QCoreApplication::translate(context, text); }
};

}  // namespace leafwright
