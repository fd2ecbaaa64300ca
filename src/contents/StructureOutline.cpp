#include "contents/ContentsStages.h"
#include "contents/StyleLevels.h"

namespace leafwright {

namespace {

/// What stands where, of all that may agree with the structure.
class Witnesses {
public:
    explicit Witnesses(const ContentsAnalysis::Stages &stages)
        : stages_(stages), candidateAt_(stages.headings.byLine()) {
        for (const PrintedEntry &entry : stages.printed.entries) {
            if (!entry.heading.isNull()) printedAt_.insert(entry.heading, &entry);
        }
    }

    /// Tells an entry of a line what style it has, and what speaks for it.
    void complete(ProposedEntry &entry, const LineRef &line) const {
        entry.candidate = candidateAt_.value(line, -1);
        if (entry.candidate >= 0) {
            const auto index = static_cast<size_t>(entry.candidate);
            const HeadingCandidate &candidate = stages_.headings.candidates[index];
            entry.style = candidate.style;
            entry.lines = candidate.block.lines;
            if (candidate.probability >= acceptedProbability) entry.sources |= StyleSource;
            if (stages_.named.contains(entry.candidate)) entry.sources |= NameSource;
        }
        for (const int index : entry.lines) {
            if (const PrintedEntry *printed = printedAt_.value({line.page, index}))
                entry.sources |= printedSources(stages_.printed, *printed);
        }
    }

private:
    const ContentsAnalysis::Stages &stages_;
    QHash<LineRef, int> candidateAt_;
    QHash<LineRef, const PrintedEntry *> printedAt_;
};

std::vector<ProposedEntry> taggedEntries(const ContentsAnalysis::Stages &stages) {
    constexpr double found = 0.95;
    constexpr double notFound = 0.6;
    const Witnesses witnesses(stages);
    std::vector<ProposedEntry> result;
    for (size_t i = 0; i < stages.structure.size(); ++i) {
        const LocatedStructureHeading &heading = stages.structure[i];
        ProposedEntry entry;
        entry.id = idOfTagged(i);
        entry.title = heading.title;
        entry.page = heading.page;
        entry.level = heading.level;
        entry.sources = StructureSource;
        entry.confidence = heading.line.isNull() ? notFound : found;
        if (!heading.line.isNull()) {
            const TextLine &line = stages.pages[static_cast<size_t>(heading.page)].line(heading.line.line);
            entry.lines = {heading.line.line};
            entry.y = line.top;
            entry.column = line.column;
            witnesses.complete(entry, heading.line);
        }
        result.push_back(std::move(entry));
    }
    return result;
}

/// The likely headings that are not tagged, in reading order: at the level of tagged ones in their style, or
/// below the deepest.
std::vector<ProposedEntry> untaggedEntries(const ContentsAnalysis::Stages &stages,
                                           const std::vector<ProposedEntry> &tagged) {
    constexpr double likely = 0.5;
    const std::vector<HeadingCandidate> &candidates = stages.headings.candidates;
    std::vector<Tally<int>> levels(stages.headings.styles.size());
    std::vector<bool> isTagged(candidates.size());
    int deepest = 0;
    for (const ProposedEntry &entry : tagged) {
        deepest = std::max(deepest, entry.level);
        if (entry.candidate < 0) continue;
        isTagged[static_cast<size_t>(entry.candidate)] = true;
        levels[static_cast<size_t>(entry.style)].add(entry.level);
    }
    std::vector<size_t> others;
    for (size_t i = 0; i < candidates.size(); ++i) {
        if (!isTagged[i] && candidates[i].probability >= likely) others.push_back(i);
    }
    const std::vector<int> byStyle = styleLevels(stages.headings, others, stages.body);
    std::vector<ProposedEntry> result;
    for (size_t k = 0; k < others.size(); ++k) {
        const Tally<int> &own = levels[static_cast<size_t>(candidates[others[k]].style)];
        const int level = own.isEmpty() ? deepest + byStyle[k] : own.heaviest().first;
        result.push_back(proposedHeading(stages, others[k], level));
    }
    return result;
}

}  // namespace

std::vector<ProposedEntry> structureOutline(const ContentsAnalysis::Stages &stages, ContentsDepth depth) {
    std::vector<ProposedEntry> tagged = taggedEntries(stages);
    if (depth != ContentsDepth::Deeper) return tagged;
    std::vector<ProposedEntry> untagged = untaggedEntries(stages, tagged);
    return merged(std::move(tagged), std::move(untagged));
}

}  // namespace leafwright
