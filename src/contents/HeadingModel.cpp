#include "contents/HeadingModel.h"

#include <QSet>

#include <cmath>

namespace leafwright {

namespace {

using enum HeadingFeature;

/// A heading by its features: positive weights speak for it. What they mean stands with the features.
struct Weight {
    HeadingFeature feature;
    double weight;
};
constexpr double constantWeight = -7.4224;
constexpr Weight weights[] = {
    {AtMargin, 0.8127},
    {Bigger, 0.5132},
    {Bold, 0.4904},
    {Caption, -0.9019},
    {Capitals, 0.4545},
    {Centred, 0.7662},
    {HeadingFeature::Chapter, 1.1169},
    {Coloured, 0.7737},
    {EndsInColon, -0.7099},
    {EndsInStop, -1.124},
    {OtherFamily, 0.7714},
    {GapAbove, 0.3566},
    {Italic, -1.6217},
    {Length, -1.0604},
    {StartsLowercase, -1.6248},
    {HasRowMate, -0.6438},
    {Mono, -0.6035},
    {BodyBelow, 0.5684},
    {NothingBelow, 0.4945},
    {SmallerBelow, 0.2481},
    {HeadingFeature::Dotted, 3.387},
    {SingleNumber, 0.571},
    {Outdented, 1.7135},
    {FirstPage, -0.5495},
    {InSequence, 1.1164},
    {Smaller, -0.9814},
    {Symbols, -0.4159},
    {StyleAtMargin, -0.5588},
    {StyleCaption, -0.9624},
    {StyleCentred, 0.9674},
    {StyleChapter, 1.0713},
    {StyleCrowding, -1.4664},
    {StyleEndsInColon, -1.6606},
    {StyleEndsInStop, 1.4926},
    {StyleGapAbove, 0.8766},
    {StyleGapBelow, -0.6542},
    {StyleIndented, -1.1149},
    {StyleLength, -0.2939},
    {StyleStartsLowercase, -0.9613},
    {StyleHasRowMate, -1.3897},
    {StyleSingle, -0.7799},
    {StyleFew, -0.6498},
    {StyleBodyBelow, 0.7101},
    {StyleNothingBelow, 1.0967},
    {StyleSmallerBelow, 0.2761},
    {StyleDotted, -0.5177},
    {StyleFrequency, 1.2779},
    {StyleInSequence, -0.5113},
    {StyleShare, 0.9433},
    {StyleSpread, -0.3194},
    {StyleSymbols, -0.4937},
    {StyleUnique, 2.1961},
};

double probabilityOf(double logit) {
    return 1 / (1 + std::exp(-logit));
}

double logitOf(double probability) {
    constexpr double least = 1e-6;
    const double p = std::clamp(probability, least, 1 - least);
    return std::log(p / (1 - p));
}

/// A candidate is more like the others of its style than its own features tell.
void pullTowardsStyle(std::vector<HeadingCandidate> &all, const std::vector<size_t> &members) {
    constexpr double mostWeight = 0.5;
    constexpr double enoughMembers = 4;
    double mean = 0;
    const auto count = static_cast<double>(members.size());
    for (const size_t member : members)
        mean += logitOf(all[member].probability) / count;
    const double weight = mostWeight * std::min(1.0, count / enoughMembers);
    for (const size_t member : members) {
        double &probability = all[member].probability;
        probability = probabilityOf((1 - weight) * logitOf(probability) + weight * mean);
    }
}

/// A style made of numbered lines in sequence, set apart, on several pages: headings, whatever else they look
/// like.
void trustNumbered(std::vector<HeadingCandidate> &all, const std::vector<size_t> &members) {
    constexpr double trusted = 0.6;
    constexpr double leastGap = 0.3;
    constexpr double longest = 1.5;
    constexpr double leastShare = 0.6;
    constexpr size_t fewest = 3;
    std::vector<size_t> numbered;
    QSet<int> pages;
    for (const size_t member : members) {
        const HeadingFeatures &f = all[member].features;
        const NumberKind kind = all[member].block.numbering.kind;
        const bool isNumbered =
            kind == NumberKind::Dotted || kind == NumberKind::Single || kind == NumberKind::Chapter;
        if (!isNumbered || f[InSequence] == 0 || f[GapAbove] < leastGap || f[EndsInStop] != 0 ||
            f[Length] > longest || f[Caption] != 0)
            continue;
        numbered.push_back(member);
        pages.insert(all[member].block.page);
    }
    const bool enough =
        numbered.size() >= fewest && pages.size() >= 2 &&
        static_cast<double>(numbered.size()) >= leastShare * static_cast<double>(members.size());
    if (!enough) return;
    for (const size_t member : numbered)
        all[member].probability = std::max(all[member].probability, trusted);
}

/// A font that the running text does not use, and that is used for headings nearly alone, makes headings of
/// what else is set in it.
void trustRelatedStyles(HeadingCandidates &headings, const BodyStyle &body) {
    constexpr double bonus = 1.5;
    constexpr double leastShare = 0.35;
    constexpr double fewest = 5;
    struct FontUse {
        double lines = 0;
        double accepted = 0;
    };
    QHash<std::pair<QString, bool>, FontUse> uses;
    const auto fontOf = [&headings](const HeadingCandidate &candidate) {
        const StyleKey &style = headings.styles[static_cast<size_t>(candidate.style)];
        return std::pair(style.family, style.bold);
    };
    for (const HeadingCandidate &candidate : headings.candidates) {
        FontUse &use = uses[fontOf(candidate)];
        const auto lines = static_cast<double>(candidate.block.lines.size());
        use.lines += lines / std::max(candidate.features[StyleShare], 0.01);
        if (candidate.probability >= acceptedProbability) use.accepted += lines;
    }
    for (HeadingCandidate &candidate : headings.candidates) {
        const FontUse &use = uses[fontOf(candidate)];
        const bool isOfBody = fontOf(candidate).first == body.family;
        if (isOfBody || use.accepted < fewest || use.accepted < leastShare * use.lines) continue;
        candidate.probability = probabilityOf(logitOf(candidate.probability) + bonus);
    }
}

}  // namespace

double headingProbability(const HeadingFeatures &features) {
    constexpr double furthest = 30;
    double sum = constantWeight;
    for (const Weight &weight : weights)
        sum += weight.weight * features[weight.feature];
    return probabilityOf(std::clamp(sum, -furthest, furthest));
}

void scoreHeadings(HeadingCandidates &headings, const BodyStyle &body) {
    for (HeadingCandidate &candidate : headings.candidates)
        candidate.probability = headingProbability(candidate.features);
    for (const std::vector<size_t> &members : headings.byStyle()) {
        pullTowardsStyle(headings.candidates, members);
        trustNumbered(headings.candidates, members);
    }
    trustRelatedStyles(headings, body);
}

}  // namespace leafwright
