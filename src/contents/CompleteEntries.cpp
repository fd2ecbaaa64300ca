#include "contents/ContentsStages.h"
#include "contents/TextFolding.h"

#include <map>

namespace leafwright {

namespace {

/// What the existing entries say of a heading style.
struct StyleLesson {
    Tally<int> levels;
    double entries = 0;
    double numbered = 0;
};

bool isNumbered(const TextBlock &block) {
    const NumberKind kind = block.numbering.kind;
    return kind != NumberKind::None && kind != NumberKind::PerhapsSingle;
}

/// Learns from an outline that is there, and finds what belongs to it.
class Completer {
public:
    Completer(const ContentsAnalysis::Stages &stages, const std::vector<ExistingEntry> &existing);

    std::vector<ProposedEntry> outline() const;

private:
    void learn(const ExistingEntry &existing, ProposedEntry &entry);
    bool belongs(const HeadingCandidate &candidate) const;
    int levelOf(const HeadingCandidate &candidate) const;

    const ContentsAnalysis::Stages &stages_;
    TitleSearch search_;
    QHash<LineRef, int> candidateAt_;
    std::vector<ProposedEntry> entries_;
    std::map<int, StyleLesson> styles_;        // by the style's index
    std::map<int, Tally<int>> levelsOfDepth_;  // by the depth of dotted numbers
    std::vector<bool> isKnown_;                // the candidates that are entries already
};

Completer::Completer(const ContentsAnalysis::Stages &stages, const std::vector<ExistingEntry> &existing)
    : stages_(stages), search_(stages.pages, stages.body), isKnown_(stages.headings.candidates.size()) {
    for (size_t i = 0; i < stages.headings.candidates.size(); ++i) {
        const TextBlock &block = stages.headings.candidates[i].block;
        for (const int line : block.lines)
            candidateAt_.insert({block.page, line}, static_cast<int>(i));
    }
    const auto pageCount = static_cast<int>(stages.pages.size());
    for (size_t i = 0; i < existing.size(); ++i) {
        if (existing[i].pageIndex < 0 || existing[i].pageIndex >= pageCount) continue;
        ProposedEntry entry;
        entry.id = -1 - static_cast<int>(i);
        entry.title = existing[i].title;
        entry.page = existing[i].pageIndex;
        entry.level = existing[i].level;
        entry.confidence = 1;
        learn(existing[i], entry);
        entries_.push_back(std::move(entry));
    }
}

void Completer::learn(const ExistingEntry &existing, ProposedEntry &entry) {
    constexpr double fairScore = 60;
    const std::optional<TitlePlace> place = search_.locate(searchForms(existing.title), existing.pageIndex);
    if (!place || place->score < fairScore) return;
    const TextLine &line = stages_.pages[static_cast<size_t>(place->line.page)].line(place->line.line);
    entry.y = line.top;
    entry.column = line.column;
    entry.lines = {place->line.line};
    entry.candidate = candidateAt_.value(place->line, -1);
    if (entry.candidate < 0) return;
    isKnown_[static_cast<size_t>(entry.candidate)] = true;
    const HeadingCandidate &candidate = stages_.headings.candidates[static_cast<size_t>(entry.candidate)];
    entry.lines = candidate.block.lines;
    entry.style = candidate.style;
    entry.sources = StyleSource;
    StyleLesson &lesson = styles_[candidate.style];
    lesson.levels.add(existing.level);
    ++lesson.entries;
    lesson.numbered += isNumbered(candidate.block) ? 1 : 0;
    if (candidate.block.numbering.kind == NumberKind::Dotted)
        levelsOfDepth_[candidate.block.numbering.depth].add(existing.level);
}

/// Whether a candidate is like the entries of its style. That some are there makes others likely.
bool Completer::belongs(const HeadingCandidate &candidate) const {
    constexpr double likely = 0.1;
    constexpr double numberedShare = 0.7;
    const auto lesson = styles_.find(candidate.style);
    if (lesson == styles_.end() || candidate.probability < likely) return false;
    return lesson->second.numbered < numberedShare * lesson->second.entries || isNumbered(candidate.block);
}

int Completer::levelOf(const HeadingCandidate &candidate) const {
    const Numbering &numbering = candidate.block.numbering;
    const auto byDepth = levelsOfDepth_.find(numbering.depth);
    if (numbering.kind == NumberKind::Dotted && byDepth != levelsOfDepth_.end())
        return byDepth->second.heaviest().first;
    return styles_.at(candidate.style).levels.heaviest().first;
}

std::vector<ProposedEntry> Completer::outline() const {
    std::vector<ProposedEntry> added;
    for (size_t i = 0; i < isKnown_.size(); ++i) {
        const HeadingCandidate &candidate = stages_.headings.candidates[i];
        if (!isKnown_[i] && belongs(candidate))
            added.push_back(proposedHeading(stages_, i, levelOf(candidate)));
    }
    const auto placeOf = [](const ProposedEntry &entry) {
        return std::make_tuple(entry.page, entry.column, entry.y.value_or(-1));
    };
    std::vector<ProposedEntry> result;
    auto next = added.begin();
    for (const ProposedEntry &entry : entries_) {
        for (; next != added.end() && placeOf(*next) < placeOf(entry); ++next)
            result.push_back(std::move(*next));
        result.push_back(entry);
    }
    result.insert(result.end(), next, added.end());
    return result;
}

}  // namespace

std::vector<ProposedEntry> completeEntries(const ContentsAnalysis::Stages &stages,
                                           const std::vector<ExistingEntry> &existing) {
    return Completer(stages, existing).outline();
}

}  // namespace leafwright
