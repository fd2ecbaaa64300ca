#pragma once

#include <QJsonObject>
#include <QString>

namespace leafwright::test {

/// Makes the PDF that a script case describes:
///
///     {"pages": 9,                        pages that say "Page 1" and so on, or an array of pages
///      "outline": "a (b c) d",            titles of one word, or an array of entries
///      "labels": "0 << /S /r >> 4 << /S /D >>",
///      "version": "1.4", "userPassword": "", "ownerPassword": ""}
///
/// Those that many cases have stand in tests/documents: {"like": "two-entries"} is two-entries.json of there,
/// with what else is given in place of what it says.
///
/// A page is an array of pieces of text, each [font, size, x, y, text] with a font of PdfBuilder, or an
/// object
/// {"text": pieces, "entries": "/Rotate 90"}. An entry is {"title", "page", "point", "children"}; without a
/// point it leads to the page as a whole, without a page nowhere. The entries of the short form lead to (72,
/// 700) on page 1. All but "pages" may be left out.
void saveCaseDocument(const QJsonObject &description, const QString &path);

}  // namespace leafwright::test
