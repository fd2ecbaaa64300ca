#include "contents/BodyStyle.h"

#include <cmath>

namespace leafwright {

namespace {

using Style = std::tuple<double, QString, bool>;

Tally<Style> countStyles(const std::vector<PageLines> &pages, bool withMono) {
    Tally<Style> styles;
    for (const PageLines &page : pages) {
        for (const TextLine &line : page.lines) {
            if (line.look.mono && !withMono) continue;
            styles.add({roundedToHalf(line.look.size), line.look.family, line.look.bold},
                       static_cast<double>(line.text.size()));
        }
    }
    return styles;
}

bool isInStyle(const TextLine &line, const BodyStyle &body) {
    constexpr double sameSize = 0.3;
    return std::abs(line.look.size - body.size) <= sameSize && line.look.family == body.family &&
           line.look.bold == body.bold && !line.look.mono;
}

}  // namespace

BodyStyle findBodyStyle(std::vector<PageLines> &pages) {
    constexpr double usualLeading = 1.2;  // of the size
    constexpr double widestLeading = 4;
    Tally<Style> styles = countStyles(pages, false);
    if (styles.isEmpty()) styles = countStyles(pages, true);
    BodyStyle body;
    if (styles.isEmpty()) return body;
    Tally<double> sizes;
    for (const auto &[style, weight] : styles.entries())
        sizes.add(std::get<0>(style), weight);
    body.size = sizes.heaviest().first;
    Tally<Style> ofThatSize;
    for (const auto &[style, weight] : styles.entries()) {
        if (std::get<0>(style) == body.size) ofThatSize.add(style, weight);
    }
    std::tie(std::ignore, body.family, body.bold) = ofThatSize.heaviest().first;

    Tally<double> leadings;
    for (PageLines &page : pages) {
        for (TextLine &line : page.lines) {
            line.isBody = isInStyle(line, body);
            const TextLine *above = page.previousOf(line);
            if (line.isBody && above && above->isBody && line.gapAbove < widestLeading * body.size)
                leadings.add(roundedToHalf(line.gapAbove), static_cast<double>(line.text.size()));
        }
    }
    body.leading = leadings.isEmpty() ? usualLeading * body.size : leadings.heaviest().first;
    return body;
}

}  // namespace leafwright
