#pragma once

#include "contents/PageLines.h"

namespace leafwright {

/// What the running text of a document looks like.
struct BodyStyle {
    double size = 10;  ///< Rounded to half points.
    QString family;
    bool bold = false;
    double leading = 12;  ///< From baseline to baseline.
};

/// The style that most characters have; those of fixed width count only where there are no others.
/// Marks the lines in that style.
BodyStyle findBodyStyle(std::vector<PageLines> &pages);

}  // namespace leafwright
