#include "autotoc/HeadingLevelMap.h"

#include "categories/FontIdentity.h"

namespace leafwright {

LevelRecord levelRecord(int levelNumber, const Font &font) {
    return {levelNumber, u'H' + QString::number(levelNumber), customFontIDString(font), font};
}

QString fontIDOf(const LevelRecord &record) {
    return record.font ? fontIDString(*record.font) : record.fontText;
}

HeadingLevelMap headingsfromFonts(const FontCensus &census) {
    const FontCensus::Entry *body = census.bodyFont();
    const double bodySize = body ? body->font.pointSize() : 0;

    std::vector<const FontCensus::Entry *> candidates;
    for (const FontCensus::Entry &entry : census.entries()) {
        if (entry.font.pointSize() > bodySize) candidates.push_back(&entry);
    }
    std::stable_sort(candidates.begin(), candidates.end(), [](const auto *a, const auto *b) {
        return adjustedPointSize(a->font) > adjustedPointSize(b->font);
    });

    HeadingLevelMap map;
    int level = 1;
    for (const FontCensus::Entry *candidate : candidates) {
        map.push_back(levelRecord(level, candidate->font));
        if (candidate->record.instances > 1) ++level;
    }
    return map;
}

HeadingLevelMap withFontsOf(const FontCensus &census, const HeadingLevelMap &map) {
    HeadingLevelMap result;
    for (const LevelRecord &record : map) {
        const size_t before = result.size();
        for (const FontCensus::Entry &entry : census.entries()) {
            if (!record.font && fontString(entry.font) == record.fontText)
                result.push_back(levelRecord(record.levelNumber, entry.font));
        }
        if (result.size() == before) result.push_back(record);
    }
    return result;
}

void sortByLevel(HeadingLevelMap &map) {
    std::stable_sort(map.begin(), map.end(), [](const LevelRecord &a, const LevelRecord &b) {
        return a.levelNumber < b.levelNumber;
    });
}

}  // namespace leafwright
