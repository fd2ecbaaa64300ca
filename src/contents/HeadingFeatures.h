#pragma once

#include "contents/HeadingBlocks.h"

#include <QHash>

#include <array>

namespace leafwright {

/// What speaks for or against a block's being a heading; each a number, most of them 0 or 1. Those that begin
/// with "Style" are means over all candidates of the block's style, or measures of the style.
enum class HeadingFeature {
    AtMargin,  ///< Begins where the body text does.
    Bigger,    ///< Larger than the body text.
    Bold,      ///< Where the body text is not.
    Caption,   ///< Begins as a caption does.
    Capitals,
    Centred,
    Chapter,  ///< Begins with a word for chapters or parts.
    Coloured,
    EndsInColon,
    EndsInStop,   ///< Ends in a full stop, semicolon or comma.
    OtherFamily,  ///< Another font than the body text's.
    GapAbove,     ///< In leadings, beyond the usual one.
    GapBelow,
    Indented,
    Italic,
    Length,  ///< Tens of words, at most 3.
    StartsLowercase,
    HasRowMate,  ///< Other text stands beside it in its column.
    Mono,
    BodyBelow,  ///< Body text follows.
    NothingBelow,
    SmallerBelow,  ///< Smaller text follows.
    Dotted,        ///< Numbered like "1.2".
    SingleNumber,
    Outdented,  ///< Begins left of the body text.
    FirstPage,
    InSequence,  ///< Its number follows the one before of its style.
    Smaller,     ///< Than the body text.
    Symbols,     ///< Has signs that are usual in code and formulas.

    StyleAtMargin,
    StyleCaption,
    StyleCentred,
    StyleChapter,
    StyleCrowding,  ///< Logarithm of the candidates on each page that has one.
    StyleEndsInColon,
    StyleEndsInStop,
    StyleGapAbove,
    StyleGapBelow,
    StyleIndented,
    StyleLength,
    StyleStartsLowercase,
    StyleHasRowMate,
    StyleSingle,  ///< There is only one candidate.
    StyleFew,     ///< There are three at most.
    StyleBodyBelow,
    StyleNothingBelow,
    StyleSmallerBelow,
    StyleDotted,
    StyleFrequency,  ///< 2 ln(1 + candidates a page), at most 3.
    StyleInSequence,
    StyleShare,   ///< How many of all lines in the style are candidates'.
    StyleSpread,  ///< Pages with one, in tenths of all pages; at most 1.
    StyleSymbols,
    StyleUnique,  ///< Share of different texts.
    Count
};

constexpr auto headingFeatureCount = static_cast<size_t>(HeadingFeature::Count);

struct HeadingFeatures {
    std::array<double, headingFeatureCount> values{};

    double &operator[](HeadingFeature feature) { return values[static_cast<size_t>(feature)]; }
    double operator[](HeadingFeature feature) const { return values[static_cast<size_t>(feature)]; }
};

/// What makes headings one style.
struct StyleKey {
    double size = 0;  ///< Rounded to half points.
    bool bold = false;
    bool italic = false;
    bool capitals = false;  ///< Only where they are no larger than the body text.
    QString family;

    friend bool operator==(const StyleKey &, const StyleKey &) = default;
    friend size_t qHash(const StyleKey &key, size_t seed = 0) {
        return qHashMulti(seed, key.size, key.bold, key.italic, key.capitals, key.family);
    }
};

/// A block that may be a heading.
struct HeadingCandidate {
    TextBlock block;
    int style = 0;  ///< Index among the styles.
    HeadingFeatures features;
    double probability = 0;
};

/// All that may be headings, and their styles.
struct HeadingCandidates {
    std::vector<HeadingCandidate> candidates;  ///< In reading order.
    std::vector<StyleKey> styles;              ///< In the order in which they come.

    std::vector<std::vector<size_t>> byStyle() const;
    /// The candidate that each of their lines is part of, by its index.
    QHash<LineRef, int> byLine() const;
};

/// Picks the blocks that stand out from the body text, and measures them.
HeadingCandidates findHeadingCandidates(std::vector<TextBlock> blocks, const std::vector<PageLines> &pages,
                                        const BodyStyle &body);

}  // namespace leafwright
