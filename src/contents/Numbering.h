#pragma once

#include <QString>
#include <QStringList>

namespace leafwright {

/// How a title is numbered.
enum class NumberKind {
    None,
    Part,          ///< "Part II", "第一部"
    Chapter,       ///< "Chapter 3", "Appendix A", "第3章"
    Dotted,        ///< "1.2", "A.1", "3-12"
    Single,        ///< "3", "B.", "IV"
    PerhapsSingle  ///< "A" or "I" before a blank: a number, an article or a pronoun
};

/// The number that a title begins with.
struct Numbering {
    NumberKind kind = NumberKind::None;
    int depth = 0;  ///< The number of its components; 1 for chapters, 0 for parts and without number.
    QStringList components;  ///< "1.2" is "1", "2"; of a chapter its number in capitals; empty for parts.

    bool isSingle() const { return kind == NumberKind::Single || kind == NumberKind::PerhapsSingle; }
    friend bool operator==(const Numbering &, const Numbering &) = default;
};

Numbering numberingOf(const QString &title);

/// Whether a text is a number and nothing else, with or without a word such as "Chapter" before it.
bool isNumberLabel(const QString &text);
/// Whether a text is a word such as "Chapter" or "Part" and its number, and nothing else.
bool isChapterLabel(const QString &text);
/// Whether a text is a number, letter, roman number or spelled number alone, as chapters have above their
/// title.
bool isBareNumber(const QString &text);

/// Where in its sequence a number is: 3 for "3", "C" and "III"; 0 where it can't be told.
int ordinalOf(const QString &component);

}  // namespace leafwright
