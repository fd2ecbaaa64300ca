#pragma once

#include "model/MyOutlineItem.h"
#include "pdf/PDFOutline.h"
#include "pdf/TextPages.h"

#include <QByteArray>
#include <QHash>

#include <variant>

namespace leafwright {

/// Why a text holds no outline: where, and what is wrong there.
struct TreeError {
    QString where;  ///< Such as "line 12" or "[3].children[0]"; empty for the whole.
    QString message;
};

/// The entries of a file, by their object numbers.
using OutlineEntries = QHash<int, OutlineEntry>;

/// Lists the entries of an outline that was read from a file.
OutlineEntries entriesByNumber(const PDFOutline &root);

/// Reads an outline given as the JSON or the plus lines that the `outline` command prints.
///
/// A JSON node needs a "title"; its page is its "pageLabel" or, without one, that of its "pageIndex";
/// with neither it leads to no page. With the "entry" of one of the file, it is that entry but for what the
/// node says. A plus line goes below the nearest line before it with fewer "+".
/// @param pages tells the label of a page index
/// @param inFile the entries of the file, by object number
/// @return a root item whose children are the top level
std::variant<std::unique_ptr<MyOutlineItem>, TreeError> parseOutlineTree(const QByteArray &text,
                                                                         const TextPages &pages,
                                                                         const OutlineEntries &inFile);

}  // namespace leafwright
