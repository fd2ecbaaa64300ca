#pragma once

#include "contents/BodyStyle.h"
#include "contents/Numbering.h"

namespace leafwright {

/// Lines that follow each other in one style, as the lines of a heading or of a paragraph do.
struct TextBlock {
    int page = 0;
    std::vector<int> lines;  ///< Of the page, from top to bottom; those of a chapter label come first.
    bool hasLabel = false;   ///< The first line is a label such as "Chapter 3" above the title.
    int column = 0;
    double left = 0;
    double right = 0;
    double y = 0;   ///< Its top, for the order.
    LineLook look;  ///< Of the title's first line; capitals if all its lines are.
    QString text;   ///< Lines joined, hyphens at their ends resolved.
    double gapAbove = noGap;
    double gapBelow = noGap;
    Numbering numbering;

    LineRef lastLine() const { return {page, lines.back()}; }
    double centre() const { return (left + right) / 2; }
};

/// Whether a page has two columns of text; then each line's column is set.
bool assignColumns(PageLines &page);

/// Parts all lines but running heads and printed contents into blocks, in reading order.
std::vector<TextBlock> makeBlocks(std::vector<PageLines> &pages, const BodyStyle &body);

}  // namespace leafwright
