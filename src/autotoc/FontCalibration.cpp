#include "autotoc/FontCalibration.h"

#include "autotoc/FontStrings.h"

#include <algorithm>

namespace leafwright {

namespace {

/// The share of the most frequent heading font's characters below which a font is too rare.
constexpr double rareShare = 0.02;

/// The adjusted size, as it stands at the beginning of the font string.
double sizeOf(const QString &fontString) {
    return fontString.left(fontString.indexOf(u' ')).toDouble();
}

/// The first of the greatest count; null for an empty census.
const FontStringCount *mostFrequent(const FontStringCensus &census) {
    const auto most = std::ranges::max_element(census, {}, &FontStringCount::charCount);
    return most == census.end() ? nullptr : &*most;
}

void dropHighFrequencyFonts(FontStringCensus &census) {
    const FontStringCount *most = mostFrequent(census);
    if (!most) return;
    const FontStringCount body = *most;
    const double bodySize = sizeOf(body.fontString);
    std::erase_if(census, [&](const FontStringCount &each) {
        return sizeOf(each.fontString) <= bodySize || each.charCount >= body.charCount;
    });
}

void dropLowFrequencyFonts(FontStringCensus &census) {
    const FontStringCount *most = mostFrequent(census);
    const double threshold = most ? static_cast<double>(most->charCount) * rareShare : 0;
    std::erase_if(census, [threshold](const FontStringCount &each) {
        return static_cast<double>(each.charCount) < threshold;
    });
}

}  // namespace

FontStringCensus fontStringCensus(const FontCensus &census) {
    FontStringCensus sums;
    for (const FontCensus::Entry &entry : census.entries()) {
        const QString name = fontString(entry.font);
        auto sum = std::ranges::find(sums, name, &FontStringCount::fontString);
        if (sum == sums.end()) sum = sums.insert(sum, {name, 0});
        sum->charCount += entry.record.charCount;
    }
    return sums;
}

bool canCalibrate(const FontStringCensus &census) {
    constexpr size_t fewestFonts = 2;
    return census.size() >= fewestFonts;
}

QStringList headingFontStrings(const FontStringCensus &census, const FrequencyFilters &filters) {
    FontStringCensus candidates = census;
    if (filters.ignoreHighFrequencyFonts) dropHighFrequencyFonts(candidates);
    if (filters.ignoreLowFrequencyFonts) dropLowFrequencyFonts(candidates);
    QStringList fonts;
    for (const FontStringCount &candidate : candidates)
        fonts.prepend(candidate.fontString);
    std::ranges::stable_sort(fonts, {}, sizeOf);
    return fonts;
}

CalibratedLevels::CalibratedLevels(QStringList orderedFonts) : orderedFonts_(std::move(orderedFonts)) {
    if (!orderedFonts_.isEmpty()) rerank(orderedFonts_.last(), 1);
}

std::optional<int> CalibratedLevels::level(const QString &fontString) const {
    const auto level = levels_.constFind(fontString);
    return level == levels_.constEnd() ? std::nullopt : std::optional(*level);
}

void CalibratedLevels::rerank(const QString &fontString, int level) {
    for (auto font = orderedFonts_.indexOf(fontString); font >= 0; --font)
        levels_[orderedFonts_[font]] = level++;
}

HeadingLevelMap CalibratedLevels::records() const {
    HeadingLevelMap map;
    for (const QString &font : orderedFonts_) {
        const int level = levels_[font];
        map.push_back({level, u'H' + QString::number(level), font, std::nullopt});
    }
    sortByLevel(map);
    return map;
}

}  // namespace leafwright
