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

    std::vector<ProposedEntry> outline(const ContentsChoices &choices) const;

private:
    LineRef headingOf(const ExistingEntry &existing);
    void learn(const ExistingEntry &existing, ProposedEntry &entry);
    bool belongs(const HeadingCandidate &candidate) const;
    int levelOf(const HeadingCandidate &candidate) const;
    std::vector<ProposedEntry> added(const ContentsChoices &choices) const;

    const ContentsAnalysis::Stages &stages_;
    TitleSearch search_;
    QHash<LineRef, int> candidateAt_;
    std::vector<ProposedEntry> entries_;
    int deepest_ = 0;                          // of the existing levels
    std::map<int, StyleLesson> styles_;        // by the style's index
    std::map<int, Tally<int>> levelsOfDepth_;  // by the depth of dotted numbers
    std::vector<bool> isKnown_;                // the candidates that are entries already
};

Completer::Completer(const ContentsAnalysis::Stages &stages, const std::vector<ExistingEntry> &existing)
    : stages_(stages),
      search_(stages.pages, stages.body),
      candidateAt_(stages.headings.byLine()),
      isKnown_(stages.headings.candidates.size()) {
    const auto pageCount = static_cast<int>(stages.pages.size());
    for (size_t i = 0; i < existing.size(); ++i) {
        if (existing[i].pageIndex < 0 || existing[i].pageIndex >= pageCount) continue;
        ProposedEntry entry;
        entry.id = -1 - static_cast<int>(i);
        entry.title = existing[i].title;
        entry.page = existing[i].pageIndex;
        entry.level = existing[i].level;
        entry.confidence = 1;
        deepest_ = std::max(deepest_, entry.level);
        learn(existing[i], entry);
        entries_.push_back(std::move(entry));
    }
}

/// The line that has an entry's title; else, for titles get changed, that of the heading at its spot.
LineRef Completer::headingOf(const ExistingEntry &existing) {
    constexpr double fairScore = 60;
    const std::optional<TitlePlace> place = search_.locate(searchForms(existing.title), existing.pageIndex);
    if (place && place->score >= fairScore) return place->line;
    if (isZeroPoint(existing.point)) return {};
    const PageLines &page = stages_.pages[static_cast<size_t>(existing.pageIndex)];
    const NamedPlace spot{{}, existing.pageIndex, page.frame.shown.toShown(existing.point)};
    const LineRef line = headingAt(spot, stages_.pages, stages_.body);
    return line.page == existing.pageIndex && candidateAt_.contains(line) ? line : LineRef();
}

void Completer::learn(const ExistingEntry &existing, ProposedEntry &entry) {
    const LineRef heading = headingOf(existing);
    if (heading.isNull()) return;
    const TextLine &line = stages_.pages[static_cast<size_t>(heading.page)].line(heading.line);
    entry.y = line.top;
    entry.column = line.column;
    entry.lines = {heading.line};
    entry.candidate = candidateAt_.value(heading, -1);
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
    const auto lesson = styles_.find(candidate.style);
    return lesson == styles_.end() ? deepest_ + 1 : lesson->second.levels.heaviest().first;
}

/// The candidates that are wanted beside the entries that are there.
std::vector<ProposedEntry> Completer::added(const ContentsChoices &choices) const {
    std::vector<ProposedEntry> added;
    for (size_t i = 0; i < isKnown_.size(); ++i) {
        if (isKnown_[i]) continue;
        const HeadingCandidate &candidate = stages_.headings.candidates[i];
        const StyleChoice style = choices.styles.value(candidate.style);
        ProposedEntry entry = proposedHeading(stages_, i, style.level.value_or(levelOf(candidate)));
        entry.isRejected = choices.rejects(entry.id);
        if (choices.accepts(entry.id) || style.accepted.value_or(belongs(candidate)))
            added.push_back(std::move(entry));
    }
    return added;
}

std::vector<ProposedEntry> Completer::outline(const ContentsChoices &choices) const {
    return merged(entries_, added(choices));
}

}  // namespace

std::vector<ProposedEntry> completeEntries(const ContentsAnalysis::Stages &stages,
                                           const std::vector<ExistingEntry> &existing,
                                           const ContentsChoices &choices) {
    return Completer(stages, existing).outline(choices);
}

}  // namespace leafwright
