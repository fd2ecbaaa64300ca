#include "contents/ContentsStages.h"
#include "contents/StyleLevels.h"
#include "contents/TextFolding.h"

#include <QSet>

#include <map>

namespace leafwright {

namespace {

/// Ids of entries say what they were made of, so that they stay the same whatever is chosen.
enum class Origin { Candidate, Printed, Structure, Count };

int idOf(Origin origin, size_t index) {
    return static_cast<int>(index) * static_cast<int>(Origin::Count) + static_cast<int>(origin);
}

int levelMapped(const std::map<int, Tally<int>> &levels, int depth) {
    const auto found = levels.find(depth);
    if (found != levels.end()) return found->second.heaviest().first;
    const auto &[deepest, tally] = *levels.rbegin();
    return tally.heaviest().first + depth - deepest;
}

std::vector<ProposedEntry> headingsOutline(const ContentsAnalysis::Stages &stages,
                                           const std::vector<size_t> &headings,
                                           const std::vector<int> &levels) {
    std::vector<ProposedEntry> result;
    for (size_t i = 0; i < headings.size(); ++i)
        result.push_back(proposedHeading(stages, headings[i], levels[i]));
    return result;
}

/// What the printed contents say of a heading style.
struct StyleUse {
    int blocks = 0;
    int printed = 0;

    bool isOfContents() const { return 2 * printed >= blocks || printed >= 5; }
};

/// Adds to the printed contents what they leave out.
class Completion {
public:
    Completion(const ContentsAnalysis::Stages &stages, ContentsDepth depth);

    std::vector<ProposedEntry> outline() const;

    /// The entry that each candidate is, or -1.
    const std::vector<int> &printedOf() const { return printedOf_; }

private:
    void matchCandidates();
    bool isShallow() const { return deepest_ == 1; }
    bool isLostRow(const HeadingCandidate &candidate) const;
    bool extendsNumbers(const HeadingCandidate &candidate) const;
    std::vector<size_t> additionsOf(const std::vector<size_t> &open, const StyleUse &use) const;
    std::vector<size_t> additions() const;
    std::vector<int> levelsOf(const std::vector<size_t> &additions) const;
    ProposedEntry printedEntry(size_t index) const;

    const ContentsAnalysis::Stages &stages_;
    const std::vector<PrintedEntry> &entries_;
    ContentsDepth depth_;
    int deepest_ = 0;
    QSet<QStringList> numbers_;  // of the entries
    qsizetype longestNumber_ = 0;
    std::vector<int> printedOf_;
    std::vector<int> candidateOf_;
    std::vector<StyleUse> uses_;
};

Completion::Completion(const ContentsAnalysis::Stages &stages, ContentsDepth depth)
    : stages_(stages),
      entries_(stages.printed.entries),
      depth_(depth),
      printedOf_(stages.headings.candidates.size(), -1),
      candidateOf_(entries_.size(), -1),
      uses_(stages.headings.styles.size()) {
    for (const PrintedEntry &entry : entries_) {
        deepest_ = std::max(deepest_, entry.level);
        const NumberKind kind = entry.numbering.kind;
        if (kind == NumberKind::None || kind == NumberKind::Part) continue;
        numbers_.insert(entry.numbering.components);
        longestNumber_ = std::max(longestNumber_, entry.numbering.components.size());
    }
    matchCandidates();
}

void Completion::matchCandidates() {
    QHash<LineRef, int> byLine;
    QHash<std::pair<int, QString>, int> byTitle;
    for (size_t i = 0; i < entries_.size(); ++i) {
        if (!entries_[i].heading.isNull()) byLine.insert(entries_[i].heading, static_cast<int>(i));
        for (const QString &form : titleForms(entries_[i].title))
            byTitle.insert({entries_[i].page, form}, static_cast<int>(i));
    }
    for (size_t i = 0; i < printedOf_.size(); ++i) {
        const HeadingCandidate &candidate = stages_.headings.candidates[i];
        int &entry = printedOf_[i];
        for (const int line : candidate.block.lines)
            entry = byLine.value({candidate.block.page, line}, entry);
        if (entry < 0) {
            for (const QString &form : titleForms(candidate.block.text))
                entry = byTitle.value({candidate.block.page, form}, entry);
        }
        StyleUse &use = uses_[static_cast<size_t>(candidate.style)];
        ++use.blocks;
        if (entry < 0) continue;
        ++use.printed;
        candidateOf_[static_cast<size_t>(entry)] = static_cast<int>(i);
    }
}

/// Whether a candidate's number is missing in the contents, although its parent's is there.
bool Completion::isLostRow(const HeadingCandidate &candidate) const {
    const QStringList &components = candidate.block.numbering.components;
    return candidate.block.numbering.kind == NumberKind::Dotted && !numbers_.contains(components) &&
           numbers_.contains(components.mid(0, components.size() - 1));
}

/// Whether a candidate's number is that of a section below one of the contents.
bool Completion::extendsNumbers(const HeadingCandidate &candidate) const {
    const QStringList &components = candidate.block.numbering.components;
    const bool isBelow = candidate.block.numbering.kind == NumberKind::Dotted &&
                         components.size() > longestNumber_ &&
                         numbers_.contains(components.mid(0, longestNumber_));
    return isBelow || isLostRow(candidate);
}

/// Which candidates of a style, none of them in the contents, belong into the outline.
std::vector<size_t> Completion::additionsOf(const std::vector<size_t> &open, const StyleUse &use) const {
    constexpr double lostRow = 0.6;
    constexpr double inContentsStyle = 0.4;
    constexpr double extendingShare = 0.6;
    constexpr size_t fewest = 3;
    constexpr int deepestOfBrief = 2;
    const auto &candidates = stages_.headings.candidates;
    std::vector<size_t> extending;
    std::vector<size_t> lost;
    std::vector<size_t> likely;
    for (const size_t i : open) {
        if (extendsNumbers(candidates[i])) extending.push_back(i);
        if (isLostRow(candidates[i]) && candidates[i].probability >= lostRow) lost.push_back(i);
        if (candidates[i].probability >= inContentsStyle) likely.push_back(i);
    }
    if (depth_ == ContentsDepth::Deeper) return open;
    const bool mayGoDeeper = depth_ != ContentsDepth::AsPrinted;
    if (use.isOfContents())
        return isShallow() && mayGoDeeper && open.size() > static_cast<size_t>(use.printed) ? likely : lost;
    if (!mayGoDeeper) return {};
    const bool isBrief = !stages_.isFromTeX || deepest_ <= deepestOfBrief;
    const bool extends = extending.size() >= fewest && static_cast<double>(extending.size()) >=
                                                           extendingShare * static_cast<double>(open.size());
    if (isBrief && extends) return open;
    if (isShallow() && open.size() >= fewest) return open;
    return {};
}

std::vector<size_t> Completion::additions() const {
    constexpr double likely = 0.5;
    constexpr double likelyBelowShallow = 0.3;
    const double least = isShallow() && depth_ != ContentsDepth::AsPrinted ? likelyBelowShallow : likely;
    std::vector<std::vector<size_t>> open(uses_.size());
    for (size_t i = 0; i < printedOf_.size(); ++i) {
        const HeadingCandidate &candidate = stages_.headings.candidates[i];
        if (printedOf_[i] < 0 && candidate.probability >= least)
            open[static_cast<size_t>(candidate.style)].push_back(i);
    }
    std::vector<size_t> result;
    for (size_t style = 0; style < open.size(); ++style) {
        const std::vector<size_t> own = additionsOf(open[style], uses_[style]);
        result.insert(result.end(), own.begin(), own.end());
    }
    std::sort(result.begin(), result.end());
    return result;
}

/// Levels of additions: by their numbers as the contents have them, or below the deepest of the contents.
std::vector<int> Completion::levelsOf(const std::vector<size_t> &additions) const {
    const auto &candidates = stages_.headings.candidates;
    std::vector<size_t> all = additions;
    for (size_t i = 0; i < printedOf_.size(); ++i) {
        if (printedOf_[i] >= 0) all.push_back(i);
    }
    std::sort(all.begin(), all.end());
    const std::vector<int> byStyle = styleLevels(stages_.headings, all, stages_.body);
    std::map<int, Tally<int>> levelsOfDepth;
    for (const PrintedEntry &entry : entries_) {
        const NumberKind kind = entry.numbering.kind;
        if (kind == NumberKind::Dotted || kind == NumberKind::Single || kind == NumberKind::Chapter)
            levelsOfDepth[entry.numbering.depth].add(entry.level);
    }
    Tally<int> shifts;  // from levels by style to those of the contents, and of the numbers below them
    for (size_t k = 0; k < all.size(); ++k) {
        const int entry = printedOf_[all[k]];
        const Numbering &numbering = candidates[all[k]].block.numbering;
        if (entry >= 0) {
            shifts.add(entries_[static_cast<size_t>(entry)].level - byStyle[k]);
        } else if (numbering.kind == NumberKind::Dotted && !levelsOfDepth.empty()) {
            shifts.add(levelMapped(levelsOfDepth, numbering.depth) - byStyle[k]);
        }
    }
    const int shift = shifts.isEmpty() ? 0 : shifts.heaviest().first;
    std::vector<int> levels;
    for (const size_t i : additions) {
        const auto k = static_cast<size_t>(std::lower_bound(all.begin(), all.end(), i) - all.begin());
        const Numbering &numbering = candidates[i].block.numbering;
        int level = byStyle[k] + shift;
        if (numbering.kind == NumberKind::Dotted && !levelsOfDepth.empty()) {
            level = levelMapped(levelsOfDepth, numbering.depth);
        } else if (uses_[static_cast<size_t>(candidates[i].style)].printed == 0) {
            level = std::max(level, deepest_ + 1);
        } else if (isShallow() && numbering.kind == NumberKind::None) {
            level = deepest_ + 1;
        }
        levels.push_back(level);
    }
    return levels;
}

ProposedEntry Completion::printedEntry(size_t index) const {
    constexpr double exactScore = 95;
    constexpr double fairScore = 60;
    const PrintedEntry &entry = entries_[index];
    ProposedEntry proposed;
    proposed.id = idOf(Origin::Printed, index);
    proposed.title = entry.title;
    proposed.page = entry.page;
    proposed.y = entry.y;
    proposed.level = entry.level;
    proposed.sources = printedSources(stages_.printed, entry);
    proposed.confidence = entry.link ? 0.45 : 0.3;
    if (!entry.heading.isNull()) {
        const PageLines &page = stages_.pages[static_cast<size_t>(entry.heading.page)];
        proposed.column = page.line(entry.heading.line).column;
        int line = entry.heading.line;
        for (int k = 0; k < entry.headingLines && line >= 0; ++k, line = page.line(line).next)
            proposed.lines.push_back(line);
        proposed.confidence = entry.score >= exactScore ? 0.95 : entry.score >= fairScore ? 0.8 : 0.6;
    }
    proposed.candidate = candidateOf_[index];
    if (proposed.candidate < 0) return proposed;
    const HeadingCandidate &candidate = stages_.headings.candidates[static_cast<size_t>(proposed.candidate)];
    proposed.style = candidate.style;
    if (candidate.probability >= acceptedProbability) {
        proposed.sources |= StyleSource;
        proposed.confidence += (1 - proposed.confidence) * candidate.probability;
    }
    if (stages_.named.contains(proposed.candidate)) proposed.sources |= NameSource;
    return proposed;
}

std::vector<ProposedEntry> Completion::outline() const {
    const std::vector<size_t> added = additions();
    const std::vector<int> levels = added.empty() ? std::vector<int>() : levelsOf(added);
    std::vector<ProposedEntry> printed;
    for (size_t i = 0; i < entries_.size(); ++i)
        printed.push_back(printedEntry(i));
    return merged(std::move(printed), headingsOutline(stages_, added, levels));
}

std::vector<size_t> likelyHeadings(const HeadingCandidates &headings) {
    std::vector<size_t> likely;
    for (size_t i = 0; i < headings.candidates.size(); ++i) {
        if (headings.candidates[i].probability >= acceptedProbability) likely.push_back(i);
    }
    return likely;
}

}  // namespace

ContentsSources printedSources(const PrintedContents &printed, const PrintedEntry &entry) {
    return PrintedSource | (entry.link ? LinkSource : 0U) | (printed.isTagged ? StructureSource : 0U);
}

int idOfCandidate(size_t candidate) {
    return idOf(Origin::Candidate, candidate);
}

int idOfTagged(size_t heading) {
    return idOf(Origin::Structure, heading);
}

ProposedEntry proposedHeading(const ContentsAnalysis::Stages &stages, size_t index, int level) {
    const HeadingCandidate &candidate = stages.headings.candidates[index];
    const int key = static_cast<int>(index);
    ProposedEntry entry;
    entry.id = idOfCandidate(index);
    entry.title = candidate.block.text;
    entry.page = candidate.block.page;
    entry.column = candidate.block.column;
    entry.y = candidate.block.y;
    entry.lines = candidate.block.lines;
    entry.level = level;
    entry.candidate = key;
    entry.style = candidate.style;
    entry.sources = StyleSource;
    entry.confidence = candidate.probability;
    if (stages.named.contains(key)) {
        entry.sources |= NameSource;
        entry.confidence = std::max(entry.confidence, (1 + entry.confidence) / 2);
    }
    return entry;
}

std::vector<ProposedEntry> merged(std::vector<ProposedEntry> entries, std::vector<ProposedEntry> added) {
    const auto placeOf = [](const ProposedEntry &entry) {
        return std::make_tuple(entry.page, entry.column, entry.y.value_or(-1));
    };
    std::vector<ProposedEntry> result;
    auto next = added.begin();
    for (ProposedEntry &entry : entries) {
        for (; next != added.end() && placeOf(*next) < placeOf(entry); ++next)
            result.push_back(std::move(*next));
        result.push_back(std::move(entry));
    }
    std::move(next, added.end(), std::back_inserter(result));
    return result;
}

ContentsBasis basisOf(const ContentsAnalysis::Stages &stages, ContentsDepth depth) {
    constexpr double enoughStructure = 0.8;  // of the printed entries
    constexpr double trustedShare = 0.8;     // of the entries found on their pages
    constexpr double enoughHeadings = 0.7;   // of the printed entries
    const auto printed = static_cast<double>(stages.printed.entries.size());
    const bool agrees = stages.printed.locatedShare() >= trustedShare;
    const bool isAsPrinted = depth == ContentsDepth::AsPrinted && printed > 0 && agrees;
    if (!stages.structure.empty() && !isAsPrinted &&
        static_cast<double>(stages.structure.size()) >= std::max(3.0, enoughStructure * printed))
        return ContentsBasis::Structure;
    // Contents that do not agree with the pages are out of date or damaged.
    const bool areReplaced =
        !agrees && static_cast<double>(likelyHeadings(stages.headings).size()) >= enoughHeadings * printed;
    return printed == 0 || areReplaced ? ContentsBasis::Headings : ContentsBasis::Printed;
}

std::vector<ProposedEntry> combineStages(const ContentsAnalysis::Stages &stages, ContentsDepth depth) {
    const ContentsBasis basis = basisOf(stages, depth);
    if (basis == ContentsBasis::Structure) return structureOutline(stages, depth);
    if (basis == ContentsBasis::Printed) return Completion(stages, depth).outline();
    if (stages.printed.entries.empty()) {
        const std::optional<NamedOutline> named = outlineByNames(stages.headings, stages.named, stages.body);
        if (named) return headingsOutline(stages, named->headings, named->levels);
    }
    const std::vector<size_t> likely = likelyHeadings(stages.headings);
    return headingsOutline(stages, likely, styleLevels(stages.headings, likely, stages.body));
}

}  // namespace leafwright
