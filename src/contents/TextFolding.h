#pragma once

#include "texts/CharacterKinds.h"

#include <QString>
#include <QStringList>

namespace leafwright {

/// A title as it is compared: compatibility forms and accents resolved (NFKC, Unicode Annex 15), case folded,
/// without blanks, quotes, invisible characters, and full stops and colons at its ends; dashes of any kind
/// are one "-", and an underscore counts as a blank, since some programs draw it as a line.
QString foldedTitle(const QString &title);

/// The folded forms that two titles must share to be the same: the whole, and what follows its number ("1.2",
/// "Chapter 3:", "A.", ...). Without empty ones and without doubles.
QStringList titleForms(const QString &title);

/// The titleForms() that say enough to be searched for: those of two characters at least, or all where there
/// is none.
QStringList searchForms(const QString &title);

/// Whether two lists of forms share one.
bool shareForm(const QStringList &a, const QStringList &b);

/// A text with every stretch of blanks and control characters as one blank, and none at its ends.
QString withSingleBlanks(const QString &text);

/// Whether any character isIdeographic().
bool hasIdeographs(QStringView text);
/// Whether no blank belongs between two texts, because one of the characters that meet is ideographic.
bool meetWithoutBlank(QStringView before, QStringView after);

/// Letters and digits; what counts when a style is measured.
int countLettersAndDigits(QStringView text);
int countLetters(QStringView text);
/// Whether all are digits of any script; not for an empty text.
bool isDecimalNumber(QStringView text);
/// The value of digits of any script; stops at what is none, and at nine digits.
int decimalValue(QStringView text);
/// Whether a text begins with a word: with two letters of ASCII that are no roman number. No number of digits
/// or single letters stands before it then.
bool startsWithWord(QStringView text);
/// Whether a text begins with a small letter.
bool startsLowercase(QStringView text);

}  // namespace leafwright
