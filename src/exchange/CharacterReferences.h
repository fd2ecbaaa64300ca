#pragma once

#include <QString>

#include <optional>

namespace leafwright {

// Character references as HTML and XML have them: "&amp;", "&#10;", "&#xA;". With them, texts that know no
// other way can hold line ends, control characters and the lone surrogates that titles of PDFs may have.

/// "&#10;" for a line feed.
QString numericReference(char16_t unit);

/// What UTF-8, a line or a reader of lines would not let through as it is: control characters and the halves
/// of surrogate pairs that stand alone. @param index of a character of the text
bool needsReference(QStringView text, qsizetype index);

/// A reference that a text has somewhere.
struct CharacterReference {
    QString text;          ///< What it stands for.
    qsizetype length = 0;  ///< Of itself.
};
/// The reference that a text begins with, which must be numeric, or one of the names of XML, of Latin-1 and
/// of the usual punctuation.
std::optional<CharacterReference> referenceAt(QStringView text);

/// The text with all references replaced; a "&" that begins none stays.
QString withoutReferences(QStringView text);

}  // namespace leafwright
