#pragma once

#include "pdf/TextPages.h"

#include <QHash>

#include <optional>

namespace leafwright {

/// Page label to 0-based page index. Of pages that share a label the last is in the map.
using PageLabelMap = QHash<QString, int>;

PageLabelMap pageLabelMap(const TextPages &pages);

/// The key under which a label stands in the map. A label that begins with "p" or "P" is a printed page
/// number, "p12": its key is the number plus the offset. Any other label is its own key.
/// @param printedPageOffset page label number minus printed page number
QString pageLabelKey(const QString &label, qint32 printedPageOffset);

/// Whether the label is a printed page number, so that it needs the offset.
bool isPrintedPageNumber(const QString &label);

/// What is known of the page that a label stands for.
struct PageLookUp {
    std::optional<int> index;  ///< 0-based; absent for a label that no page has.
    bool needsOffset = false;  ///< Whether that is by an offset which nobody knows yet.
};

/// Looks a label up, which may be a printed page number. No page for an absent label.
/// @param printedPageOffset 0 is unknown, and also no shift
/// @param isOffsetChecked whether the user has stated the offset, so that 0 is no shift
PageLookUp lookUpPage(const PageLabelMap &map, const QString &label, qint32 printedPageOffset,
                      bool isOffsetChecked);

/// The value of the decimal number at the start of a text, after blanks and with an optional sign; 0 if
/// there is none. Numbers beyond 32 bits stop at the largest or smallest.
qint32 integerValue(QStringView text);

}  // namespace leafwright
