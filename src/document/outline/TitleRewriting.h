#pragma once

#include <QString>

namespace leafwright {

// New titles from old ones; what the renaming commands do to each selected item.

/// How titles are numbered: prefix, first separator, number, second separator, old title.
struct SequentialNumbering {
    QString prefix;  ///< Absent (null): no first separator either. Empty: the first separator leads.
    QString firstSeparator;
    QString secondSeparator;
};
QString numberedTitle(const QString &title, const SequentialNumbering &numbering, qint32 number);

/// Every occurrence of a term replaced, left to right. @param findTerm not empty
QString titleWithReplacement(const QString &title, const QString &findTerm,
                             Qt::CaseSensitivity caseSensitivity, const QString &replaceTerm);

/// The prefix, a blank, the title; also when one of them is empty.
QString prefixedTitle(const QString &title, const QString &prefix);

/// All letters in upper case or in lower case, as the whole text wants it: "ß" becomes "SS", and a sigma that
/// ends a word the final one.
QString uppercaseString(const QString &text);
QString lowercaseString(const QString &text);

/// The first letter of every word in upper case, all other letters in lower case, likewise. Words are those
/// of Unicode (UAX 29), so that an apostrophe does not end one.
QString capitalizedString(const QString &text);

}  // namespace leafwright
