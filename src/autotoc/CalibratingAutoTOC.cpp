#include "autotoc/CalibratingAutoTOC.h"

#include "autotoc/FontStrings.h"
#include "autotoc/HeadingTree.h"

namespace leafwright {

namespace {

/// How far a heading's level may be below the depth at hand to be corrected.
constexpr int farthestCorrection = 3;

}  // namespace

bool LevelGate::pass(int level) {
    constexpr int farthestLevel = 5;
    if (level > previousLevel_ + farthestLevel) return false;
    previousLevel_ = level;
    return true;
}

std::unique_ptr<MyOutlineItem> runCalibratingAutoTOC(const TextPages &pages, CalibratedLevels levels,
                                                     int maxDepth, bool findsPoints) {
    auto top = makeTopItem(pages, autoTOCTitle(maxDepth));
    HeadingTree tree(*top, maxDepth);
    FontStrings fontStrings;
    const auto levelOf = [&](const Font &font) { return levels.level(fontStrings.of(font)); };
    LevelGate gate;
    walkHeadings(pages, levelOf, [&](Heading heading, int level) {
        const int depth = tree.currentDepth();
        if (!gate.pass(level) || level > depth + farthestCorrection) return;
        if (level > depth) levels.rerank(fontStrings.of(heading.font), depth + 1);
        if (!findsPoints) heading.point = {};
        tree.place(heading, level);
    });
    return top;
}

}  // namespace leafwright
