#pragma once

class QStyleOptionViewItem;

namespace leafwright {

/// Dims what is selected in a view that has not the keyboard: in the colours of an item that is about to be
/// drawn, a shade of the highlight takes its place, and usual text stands on it. A desktop whose palette
/// tells such views apart by itself keeps its colours. Views do that for each item, as a palette of their own
/// would stay in memory for all that is below them.
void dimSelection(QStyleOptionViewItem &option);

}  // namespace leafwright
