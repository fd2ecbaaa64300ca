#pragma once

#include "contents/PageLines.h"

namespace leafwright {

/// The number at the end of a row, as of a printed contents.
struct RowEnd {
    QString title;   ///< What is before number and leaders.
    QString number;  ///< "12", "iv", "3-12".
    bool hasLeaders = false;
    double gap = 0;  ///< Before the number; 0 where the title goes on to it.
};

/// A row of a page that may be one of a printed contents.
struct ContentsRow {
    TextLine line;  ///< All of the row, or of its part in a column.
    int page = 0;
    int column = 0;             ///< 1 in the second of two columns.
    std::optional<RowEnd> end;  ///< Of any row that ends in a number.
    bool isEntry = false;  ///< The number is a page number, by leaders, alignment, links or the other rows.
    std::vector<ContentsLink> links;  ///< That lie on the row, in the order of the file.

    /// The row's number, if it is an entry.
    const RowEnd *entryEnd() const { return isEntry ? &*end : nullptr; }
    bool hasOneTarget() const;
};

/// Whether a page number follows another in a contents: pages may be counted anew in each chapter.
inline bool mayFollow(int number, int before) {
    return number >= before || number == 1;
}

/// What a row ends in; nothing for one without number or without a letter before it.
std::optional<RowEnd> rowEnd(const TextLine &row);

/// The links that lie on a line, in their order.
std::vector<ContentsLink> linksOn(const TextLine &line, const std::vector<ContentsLink> &links);

/// The x at which a page of a contents is parted into two columns; nothing for one column.
std::optional<double> contentsGutter(const PageLines &page);

/// The rows of a page without running heads, column by column.
/// @param withLinks whether links are looked at
std::vector<ContentsRow> contentsRows(const PageLines &page, int index, bool withLinks);

}  // namespace leafwright
