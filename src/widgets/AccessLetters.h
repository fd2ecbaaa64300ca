#pragma once

#include <QStringList>

namespace leafwright {

/// The titles of a menu, each with an ampersand before the letter that chooses it: the first of a word if one
/// is free, or any other, in whatever language they are. No two share one, and as many titles as can be have
/// one: one that can do with another letter leaves its own to one that can't.
QStringList withAccessLetters(const QStringList &titles);

}  // namespace leafwright
