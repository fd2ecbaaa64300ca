#pragma once

#include "categories/CharacterSet.h"

#include <QString>

namespace leafwright {

/// Makes the run-cleaning set, which comes to the newline characters.
CharacterSet charactersToTrim();

/// The run-cleaning step: every member of the set becomes one blank.
QString cleanedRun(const QString &text, const CharacterSet &set);

/// Whether more than a quarter of the UTF-16 units are letters; reckoned in single precision.
/// Numbers, rules and blanks are not text that a heading is made of.
bool hasLetters(QStringView text);

/// The text without leading and trailing blanks and with one blank for each run of them.
/// Newline characters are no blanks here.
QString trimSpacesString(const QString &text);

/// The text without blanks and newline characters at both ends.
QString trimmedBlanksAndNewlines(const QString &text);

}  // namespace leafwright
