#include "contents/StyleLevels.h"

#include <map>
#include <set>

namespace leafwright {

namespace {

/// What levels differ by; in the order of importance, from large to small, bold before regular.
struct LevelClass {
    double smallness = 0;  ///< The size, negative.
    bool isRegular = false;
    bool isMixedCase = true;  ///< Only small text may be in capitals.
    bool isItalic = false;

    friend auto operator<=>(const LevelClass &, const LevelClass &) = default;
};

LevelClass classOf(const TextBlock &block, const BodyStyle &body) {
    constexpr double small = 1.1;  // of the body's size
    const LineLook &look = block.look;
    const bool capitals = look.capitals && look.size <= body.size * small;
    return {-roundedToHalf(look.size), !look.bold, !capitals, look.italic};
}

using Members = std::vector<const TextBlock *>;

bool hasNumberedSections(const std::map<LevelClass, Members> &classes) {
    constexpr int fewest = 3;
    int dotted = 0;
    for (const auto &[key, members] : classes) {
        for (const TextBlock *block : members)
            dotted += block->numbering.kind == NumberKind::Dotted ? 1 : 0;
    }
    return dotted >= fewest;
}

/// The depth that most numbers of a class have, if enough are numbered and agree.
std::optional<int> numberedDepth(const Members &members, bool hasSections) {
    constexpr double numberedShare = 0.3;
    constexpr double agreeingShare = 0.7;
    Tally<int> depths;
    for (const TextBlock *block : members) {
        switch (block->numbering.kind) {
            case NumberKind::Dotted:
                depths.add(block->numbering.depth);
                break;
            case NumberKind::Chapter:
                depths.add(1);
                break;
            case NumberKind::Part:
                depths.add(0);
                break;
            case NumberKind::Single:
                if (hasSections) depths.add(1);
                break;
            default:
                break;
        }
    }
    if (depths.isEmpty()) return std::nullopt;
    const auto &[depth, count] = depths.heaviest();
    const bool enough = count >= numberedShare * static_cast<double>(members.size()) &&
                        count >= agreeingShare * depths.total();
    return enough ? std::optional(depth) : std::nullopt;
}

/// The level of a class without numbers among numbered ones.
int levelAmong(const LevelClass &own, const std::map<LevelClass, int> &numbered) {
    constexpr double sameSize = 0.6;
    std::optional<int> alike;
    std::optional<int> above;
    std::optional<int> below;
    for (const auto &[key, level] : numbered) {
        const bool isAlike =
            std::abs(key.smallness - own.smallness) <= sameSize && key.isRegular == own.isRegular;
        if (isAlike) alike = std::min(level, alike.value_or(level));
        if (key < own) above = std::max(level, above.value_or(level));
        if (own < key) below = std::min(level, below.value_or(level));
    }
    if (alike) return *alike;
    if (above) return *above + 1;
    return *below <= 1 ? *below : *below - 1;
}

std::map<LevelClass, int> levelsByNumbers(const std::map<LevelClass, Members> &classes,
                                          const std::map<LevelClass, int> &numbered) {
    constexpr int mostBelow = 2;
    int deepest = 0;
    for (const auto &[key, level] : numbered)
        deepest = std::max(deepest, level);
    std::map<LevelClass, int> levels;
    int below = 0;  // styles without numbers under the deepest numbers: a level each
    for (const auto &[key, members] : classes) {
        const auto own = numbered.find(key);
        int &level = levels[key];
        level = own != numbered.end() ? own->second : levelAmong(key, numbered);
        if (own == numbered.end() && level > deepest) level = deepest + 1 + std::min(below++, mostBelow);
    }
    return levels;
}

std::map<LevelClass, int> levelsByRank(const std::map<LevelClass, Members> &classes) {
    constexpr double sameSize = 0.6;
    std::map<LevelClass, int> levels;
    int level = 0;
    std::optional<LevelClass> previous;
    for (const auto &[key, members] : classes) {
        const bool isNext = !previous || key.smallness - previous->smallness > sameSize ||
                            previous->isRegular != key.isRegular ||
                            previous->isMixedCase != key.isMixedCase || previous->isItalic != key.isItalic;
        level += isNext ? 1 : 0;
        levels[key] = level;
        previous = key;
    }
    return levels;
}

}  // namespace

std::vector<int> styleLevels(const HeadingCandidates &candidates, const std::vector<size_t> &headings,
                             const BodyStyle &body) {
    std::map<LevelClass, Members> classes;
    for (const size_t heading : headings) {
        const TextBlock &block = candidates.candidates[heading].block;
        classes[classOf(block, body)].push_back(&block);
    }
    const bool hasSections = hasNumberedSections(classes);
    std::map<LevelClass, int> numbered;
    for (const auto &[key, members] : classes) {
        if (const auto depth = numberedDepth(members, hasSections)) numbered[key] = *depth;
    }
    const std::map<LevelClass, int> byClass =
        numbered.empty() ? levelsByRank(classes) : levelsByNumbers(classes, numbered);
    std::vector<int> levels;
    int least = 1;
    for (const size_t heading : headings) {
        const TextBlock &block = candidates.candidates[heading].block;
        int level = byClass.at(classOf(block, body));
        if (block.numbering.kind == NumberKind::Part) level = 0;
        if (!numbered.empty() && block.numbering.kind == NumberKind::Dotted) level = block.numbering.depth;
        if (!numbered.empty() && block.numbering.kind == NumberKind::Chapter) level = 1;
        least = levels.empty() ? level : std::min(least, level);
        levels.push_back(level);
    }
    for (int &level : levels)
        level += 1 - least;
    return levels;
}

}  // namespace leafwright
