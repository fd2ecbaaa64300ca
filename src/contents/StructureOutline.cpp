#include "contents/ContentsStages.h"

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
                entry.sources |= PrintedSource | (printed->link ? LinkSource : 0U);
        }
    }

private:
    const ContentsAnalysis::Stages &stages_;
    QHash<LineRef, int> candidateAt_;
    QHash<LineRef, const PrintedEntry *> printedAt_;
};

}  // namespace

std::vector<ProposedEntry> structureOutline(const ContentsAnalysis::Stages &stages) {
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

}  // namespace leafwright
