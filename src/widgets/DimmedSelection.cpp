#include "widgets/DimmedSelection.h"

#include "widgets/MixedColor.h"

#include <QStyleOptionViewItem>

namespace leafwright {

namespace {

/// How much of the highlight is left: enough to be seen on the ground, little enough for usual text on it.
constexpr double share = 0.35;

}  // namespace

void dimSelection(QStyleOptionViewItem &option) {
    if (option.state.testFlag(QStyle::State_Active)) return;
    constexpr auto group = QPalette::Inactive;
    QPalette &palette = option.palette;
    const QColor highlight = palette.color(QPalette::Active, QPalette::Highlight);
    if (palette.color(group, QPalette::Highlight) != highlight) return;
    palette.setColor(group, QPalette::Highlight,
                     mixed(palette.color(group, QPalette::Base), highlight, share));
    palette.setColor(group, QPalette::HighlightedText, palette.color(group, QPalette::Text));
}

}  // namespace leafwright
