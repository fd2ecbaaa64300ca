#pragma once

#include <QStringList>

namespace leafwright {

/// The titles of a menu, each with an ampersand before the letter that chooses it: the first of a word if one
/// is free, or any other, in whatever language they are. No two share one; a title of which none is left has
/// none.
QStringList withAccessLetters(const QStringList &titles);

}  // namespace leafwright
