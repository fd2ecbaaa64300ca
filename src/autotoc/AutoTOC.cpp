#include "autotoc/AutoTOC.h"

#include "autotoc/HeadingTree.h"

namespace leafwright {

namespace {

QHash<Font, int> levelTable(const HeadingLevelMap &map) {
    QHash<Font, int> levels;
    for (const LevelRecord &record : map) {
        if (record.font) levels.insert(*record.font, record.levelNumber);
    }
    return levels;
}

}  // namespace

std::unique_ptr<MyOutlineItem> runAutoTOCwithH1H2H3Map(const TextPages &pages, const HeadingLevelMap &map,
                                                       int maxDepth) {
    auto top = makeTopItem(pages, autoTOCTitle(maxDepth));
    HeadingTree tree(*top, maxDepth);
    const QHash<Font, int> levels = levelTable(map);
    const auto levelOf = [&levels](const Font &font) {
        const auto level = levels.constFind(font);
        return level == levels.constEnd() ? std::nullopt : std::optional(*level);
    };
    walkHeadings(pages, levelOf, [&tree](const Heading &heading, int level) { tree.place(heading, level); });
    return top;
}

}  // namespace leafwright
