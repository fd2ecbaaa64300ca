#include "contents/FindContents.h"

#include "contents/ContentsLevels.h"
#include "contents/ContentsStages.h"
#include "contents/RunningHeads.h"
#include "contents/SizeClasses.h"
#include "contents/TextFolding.h"
#include "pdf/ReadAhead.h"

#include <QRegularExpression>
#include <QSet>

namespace leafwright {

namespace {

using Stages = ContentsAnalysis::Stages;

bool isFromTeX(const QString &producer) {
    static const QRegularExpression tex(QStringLiteral("tex|dvips|dvipdf"),
                                        QRegularExpression::CaseInsensitiveOption);
    return tex.match(producer).hasMatch();
}

/// Whether there is something to be read. A document without pages lacks none.
bool hasEnoughText(const std::vector<PageLines> &pages) {
    constexpr double fewestLetters = 50;  // a page
    if (pages.empty()) return true;
    const double enough = fewestLetters * static_cast<double>(pages.size());
    double letters = 0;
    for (const PageLines &page : pages) {
        for (const TextLine &line : page.lines)
            letters += countLetters(line.text);
        if (letters >= enough) return true;
    }
    return false;
}

/// Nothing, but what there is to read.
FoundContents nothingOf(const Stages &stages) {
    FoundContents found;
    found.hasText = stages.hasText;
    found.pageCount = static_cast<int>(stages.pages.size());
    found.pagesWithoutText = static_cast<int>(std::count_if(
        stages.pages.begin(), stages.pages.end(), [](const PageLines &page) { return page.lines.empty(); }));
    return found;
}

/// Applies what the user says to styles and entries. Rejected entries are marked.
std::vector<ProposedEntry> withChoices(const Stages &stages, std::vector<ProposedEntry> entries,
                                       const ContentsChoices &choices) {
    QSet<int> present;
    for (const ProposedEntry &entry : entries) {
        if (entry.candidate >= 0) present.insert(entry.candidate);
    }
    std::vector<size_t> added;
    for (size_t i = 0; i < stages.headings.candidates.size(); ++i) {
        const int style = stages.headings.candidates[i].style;
        const bool wanted =
            choices.styles.value(style).accepted.value_or(false) || choices.accepts(idOfCandidate(i));
        if (wanted && !present.contains(static_cast<int>(i))) added.push_back(i);
    }
    int deepest = 0;
    QHash<int, int> levelOfStyle;
    for (const ProposedEntry &entry : entries) {
        deepest = std::max(deepest, entry.level);
        if (!levelOfStyle.contains(entry.style)) levelOfStyle.insert(entry.style, entry.level);
    }
    for (const size_t i : added) {
        const int style = stages.headings.candidates[i].style;
        entries.push_back(proposedHeading(stages, i, levelOfStyle.value(style, deepest + 1)));
    }
    std::erase_if(entries, [&choices](const ProposedEntry &entry) {
        return !choices.accepts(entry.id) && !choices.styles.value(entry.style).accepted.value_or(true);
    });
    for (ProposedEntry &entry : entries) {
        entry.isRejected = choices.rejects(entry.id);
        entry.level = choices.styles.value(entry.style).level.value_or(entry.level);
    }
    if (!added.empty()) {
        std::stable_sort(entries.begin(), entries.end(), [](const ProposedEntry &a, const ProposedEntry &b) {
            return std::make_tuple(a.page, a.column, a.y.value_or(-1)) <
                   std::make_tuple(b.page, b.column, b.y.value_or(-1));
        });
    }
    return entries;
}

/// An entry as it is given: in page space.
ContentsEntry finished(const Stages &stages, const ProposedEntry &proposed) {
    const PageLines &page = stages.pages[static_cast<size_t>(proposed.page)];
    ContentsEntry entry;
    entry.id = proposed.id;
    entry.title = proposed.title;
    entry.pageIndex = proposed.page;
    entry.level = proposed.level;
    entry.sources = proposed.sources;
    entry.confidence = std::clamp(proposed.confidence, 0.0, 1.0);
    entry.style = proposed.style;
    entry.isRejected = proposed.isRejected;
    QRectF box;
    for (const int index : proposed.lines) {
        const TextLine &line = page.line(index);
        box |= QRectF(line.left, line.top, line.width(), line.bottom - line.top);
    }
    if (!box.isNull()) entry.box = page.frame.toShown(box);
    if (proposed.y) entry.point = page.frame.toPage(QPointF(box.left(), *proposed.y));
    return entry;
}

/// Puts rejected entries beside what follows them, lest what is taken seem to be below them.
void placeRejected(std::vector<ContentsEntry> &entries) {
    int next = 1;  // level of what follows and is taken
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        if (entry->isRejected) entry->level = std::max(entry->level, next);
        next = entry->isRejected ? next : entry->level;
    }
    int above = 0;
    for (ContentsEntry &entry : entries) {
        entry.level = std::min(entry.level, above + 1);
        above = entry.level;
    }
}

/// The entries without doubles, with levels that never go down by more than one, and no deeper than wanted.
std::vector<ContentsEntry> finishedEntries(const Stages &stages, const std::vector<ProposedEntry> &proposed,
                                           int maxDepth, bool keepsRejected) {
    std::vector<ContentsEntry> entries;
    QSet<std::pair<int, QString>> seen;
    LevelNesting all;  // with the rejected ones, so that what they hid is not brought up
    LevelNesting taken;
    for (const ProposedEntry &proposal : proposed) {
        const std::pair key(proposal.page, foldedTitle(proposal.title));
        if (seen.contains(key)) continue;
        seen.insert(key);
        const auto isTooDeep = [maxDepth](int level) { return maxDepth != 0 && level > maxDepth; };
        ContentsEntry entry = finished(stages, proposal);
        const int depth = all.nested(entry.level);
        if (isTooDeep(depth) || (entry.isRejected && !keepsRejected)) continue;
        entry.level = entry.isRejected ? depth : taken.nested(entry.level);
        if (!isTooDeep(entry.level)) entries.push_back(std::move(entry));
    }
    placeRejected(entries);
    return entries;
}

std::vector<HeadingStyle> stylesOf(const Stages &stages, const std::vector<ContentsEntry> &entries) {
    const HeadingCandidates &headings = stages.headings;
    std::vector<Tally<int>> levels(headings.styles.size());
    constexpr double weightOfRejected = 1e-6;  // they tell where no other does
    for (const ContentsEntry &entry : entries) {
        if (entry.style >= 0)
            levels[static_cast<size_t>(entry.style)].add(entry.level,
                                                         entry.isRejected ? weightOfRejected : 1);
    }
    const std::vector<std::vector<size_t>> members = headings.byStyle();
    std::vector<HeadingStyle> styles;
    for (size_t i = 0; i < members.size(); ++i) {
        const StyleKey &key = headings.styles[i];
        HeadingStyle style;
        style.id = static_cast<int>(i);
        style.sample = headings.candidates[members[i].front()].block.text;
        style.family = key.family;
        style.size = key.size;
        style.bold = key.bold;
        style.italic = key.italic;
        style.capitals = key.capitals;
        style.count = static_cast<int>(members[i].size());
        style.accepted = !levels[i].isEmpty();
        style.level = style.accepted ? levels[i].heaviest().first : 0;
        styles.push_back(std::move(style));
    }
    std::stable_sort(styles.begin(), styles.end(), [](const HeadingStyle &a, const HeadingStyle &b) {
        return std::pair(-a.size, !a.bold) < std::pair(-b.size, !b.bold);
    });
    return styles;
}

/// Concludes from the lines what there is.
void analyseLines(Stages &stages, const ContentsPages &pages, bool textOnly,
                  const std::function<void(double)> &progress) {
    settleRecognisedSizes(stages.pages);
    DocumentEvidence document;
    const std::function<void()> independent[] = {[&] { document = pages.documentEvidence(); },
                                                 [&] { stages.body = findBodyStyle(stages.pages); },
                                                 [&] { markRunningHeads(stages.pages); }};
    onAllCores(static_cast<int>(std::size(independent)), [&](int i) { independent[i](); });
    stages.isFromTeX = isFromTeX(document.producer);
    stages.numbers.emplace(stages.pages, textOnly ? QStringList() : document.pageLabels);
    progress(0.2);
    stages.printed = findPrintedContents(
        stages.pages, findContentsPages(stages.pages, !textOnly), *stages.numbers, stages.body,
        textOnly ? std::vector<std::vector<StructureItem>>() : document.contents);
    onAllCores(static_cast<int>(stages.pages.size()),
               [&stages](int page) { dropSpans(stages.pages[static_cast<size_t>(page)]); });
    progress(0.6);
    stages.headings = findHeadingCandidates(makeBlocks(stages.pages, stages.body), stages.pages, stages.body);
    scoreHeadings(stages.headings, stages.body);
    progress(0.9);
    if (textOnly) return;
    stages.named = findNamedHeadings(document.namedPlaces, stages.pages, stages.headings, stages.body);
    stages.structure = findStructureHeadings(document.headings, stages.pages, stages.body);
}

}  // namespace

ContentsAnalysis::ContentsAnalysis() : stages_(std::make_unique<Stages>()) {}

ContentsAnalysis::~ContentsAnalysis() = default;

FoundContents ContentsAnalysis::choose(const ContentsOptions &options, const ContentsChoices &choices) const {
    FoundContents found = nothingOf(*stages_);
    if (!found.hasText) return found;
    const std::vector<ProposedEntry> proposed =
        withChoices(*stages_, combineStages(*stages_, options.depth), choices);
    found.entries = finishedEntries(*stages_, proposed, options.maxDepth, choices.keepsRejected);
    found.styles = stylesOf(*stages_, found.entries);
    return found;
}

FoundContents ContentsAnalysis::complete(const std::vector<ExistingEntry> &existing,
                                         const ContentsOptions &options,
                                         const ContentsChoices &choices) const {
    FoundContents found = nothingOf(*stages_);
    if (!found.hasText) return found;
    found.entries = finishedEntries(*stages_, completeEntries(*stages_, existing, choices), options.maxDepth,
                                    choices.keepsRejected);
    found.styles = stylesOf(*stages_, found.entries);
    return found;
}

QString ContentsAnalysis::explanation(const ContentsOptions &options) const {
    return explainStages(*stages_) + explainOutline(*stages_, options.depth, choose(options));
}

std::unique_ptr<ContentsAnalysis> analyseContents(const ContentsPages &pages, bool textOnly,
                                                  const std::stop_token &stop,
                                                  const ContentsProgress &progress) {
    constexpr double readingShare = 0.8;  // of the time
    const auto tell = [&progress](double done) {
        if (progress) progress(done);
    };
    auto analysis = std::make_unique<ContentsAnalysis>();
    Stages &stages = analysis->stages();
    const int count = pages.pageCount();
    // Printed contents alone need what their lines were made of.
    const int frontPages = endOfFrontPages(count);
    stages.pages = readAllLines(
        pages, stop, [&](int done) { tell(readingShare * done / count); }, frontPages);
    if (stop.stop_requested()) return nullptr;
    stages.hasText = hasEnoughText(stages.pages);
    if (!stages.hasText) return analysis;
    analyseLines(stages, pages, textOnly,
                 [&](double done) { tell(readingShare + (1 - readingShare) * done); });
    tell(1);
    return analysis;
}

FoundContents findContents(const ContentsPages &pages, const ContentsOptions &options,
                           const std::stop_token &stop, const ContentsProgress &progress) {
    const std::unique_ptr<ContentsAnalysis> analysis =
        analyseContents(pages, options.textOnly, stop, progress);
    if (analysis) return analysis->choose(options);
    FoundContents cancelled;
    cancelled.cancelled = true;
    return cancelled;
}

}  // namespace leafwright
