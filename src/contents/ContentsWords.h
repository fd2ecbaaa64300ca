#pragma once

#include <QString>

namespace leafwright {

/// Whether a line is the heading of a printed contents: "Contents", "Inhaltsverzeichnis", "目次", ...
bool isContentsTitle(const QString &text);
/// Whether a line is the heading of a list beside the contents: "List of Figures", "Tabellenverzeichnis", ...
bool isListTitle(const QString &text);
/// Whether a text begins as captions and numbered statements do: "Figure 3", "Tab. 1", "Theorem 2", ...
bool startsAsCaption(const QString &text);
/// Whether a title is of what follows the last part of a book: references, index, glossary.
bool isBackMatter(const QString &title);

/// What a font's name says of its look.
struct FontLook {
    bool bold = false;
    bool italic = false;
    bool mono = false;
    QString family;  ///< The name without a subset's prefix, words for weight and slant, and digits; small
                     ///< letters.
};
FontLook lookOfFontName(const QString &fontName);

}  // namespace leafwright
