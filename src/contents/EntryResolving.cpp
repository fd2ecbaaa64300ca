#include "contents/EntryResolving.h"

#include "contents/ChapterNumbers.h"
#include "contents/TextFolding.h"

#include <QSet>

#include <map>

namespace leafwright {

namespace {

constexpr double sureScore = 85;
constexpr double fairScore = 60;

void settle(PrintedEntry &entry, const TitlePlace &place, const std::vector<PageLines> &pages) {
    entry.page = place.line.page;
    entry.heading = place.line;
    entry.headingLines = place.lineCount;
    entry.score = place.score;
    entry.y = pages[static_cast<size_t>(place.line.page)].line(place.line.line).top;
}

class Resolver {
public:
    Resolver(std::vector<PrintedEntry> &entries, const std::vector<PageLines> &pages,
             const PrintedNumbers &numbers, TitleSearch &search)
        : entries_(entries), pages_(pages), numbers_(numbers), search_(search) {}

    void byLink(PrintedEntry &entry);
    /// @return whether pages are counted anew in each chapter
    bool byNumbers();
    void betweenNeighbours(size_t index);

private:
    std::map<int, int> votesAtNumbers(const std::vector<PrintedEntry *> &entries);
    PagesOfForms pagesOfForms();
    void voteAnywhere(const std::vector<PrintedEntry *> &entries, std::map<int, int> &votes);
    bool byChapters(const std::vector<PrintedEntry *> &entries);
    std::vector<int> candidatesOf(const PrintedEntry &entry, const std::vector<int> &offsets) const;
    void byNumber(PrintedEntry &entry, const std::vector<int> &offsets, const std::vector<int> &candidates);
    std::optional<TitlePlace> bestOf(const QStringList &forms, const std::vector<int> &candidates);
    std::optional<TitlePlace> bestNear(const QStringList &forms, const std::vector<int> &candidates);

    std::vector<PrintedEntry> &entries_;
    const std::vector<PageLines> &pages_;
    const PrintedNumbers &numbers_;
    TitleSearch &search_;
};

void Resolver::byLink(PrintedEntry &entry) {
    constexpr double linkedScore = 45;
    constexpr double nextPageScore = 90;
    const int page = entry.link->targetPage;
    if (page < 0 || page >= static_cast<int>(pages_.size())) return;
    std::optional<double> y;
    if (entry.link->targetPoint)
        y = pages_[static_cast<size_t>(page)].frame.toRead(*entry.link->targetPoint).y();
    const QStringList forms = searchForms(entry.title);
    const std::optional<TitlePlace> here = search_.locate(forms, page, y);
    if (here && here->score >= linkedScore) {
        settle(entry, *here, pages_);
        return;
    }
    // A destination a little above a page break: the title is on the next page.
    const std::optional<TitlePlace> next = here ? std::nullopt : search_.locate(forms, page + 1);
    if (next && next->score >= nextPageScore) {
        settle(entry, *next, pages_);
        return;
    }
    entry.page = page;
    entry.y = y;
}

/// How many titles are found at each distance between printed number and page.
std::map<int, int> Resolver::votesAtNumbers(const std::vector<PrintedEntry *> &entries) {
    constexpr size_t mostCandidates = 3;
    std::map<int, int> votes;
    for (const PrintedEntry *entry : entries) {
        if (!isDecimalNumber(entry->number)) continue;
        const QStringList forms = searchForms(entry->title);
        std::vector<int> candidates = numbers_.pagesOf(entry->number);
        candidates.resize(std::min(candidates.size(), mostCandidates));
        for (const int page : candidates) {
            const std::optional<TitlePlace> place = search_.locate(forms, page);
            if (!place || place->score < sureScore) continue;
            ++votes[page - decimalValue(entry->number)];
            break;
        }
    }
    return votes;
}

/// Where lines that may be titles stand.
PagesOfForms Resolver::pagesOfForms() {
    constexpr qsizetype shortest = 4;
    PagesOfForms pagesOfForm;
    for (size_t i = 0; i < pages_.size(); ++i) {
        const std::vector<QStringList> &forms = search_.formsOf(static_cast<int>(i));
        for (size_t k = 0; k < forms.size(); ++k) {
            const TextLine &line = pages_[i].lines[k];
            if (line.isRunning || line.inContents || forms[k].isEmpty() || forms[k].front().size() < shortest)
                continue;
            for (const QString &form : forms[k])
                pagesOfForm[form].insert(static_cast<int>(i));
        }
    }
    return pagesOfForm;
}

/// The numbers can't be trusted: lets the titles tell, wherever they stand.
void Resolver::voteAnywhere(const std::vector<PrintedEntry *> &entries, std::map<int, int> &votes) {
    constexpr qsizetype mostPages = 4;
    const PagesOfForms pagesOfForm = pagesOfForms();
    for (const PrintedEntry *entry : entries) {
        if (!isDecimalNumber(entry->number)) continue;
        QSet<int> pages;
        for (const QString &form : searchForms(entry->title))
            pages |= pagesOfForm.value(form);
        if (pages.size() > mostPages) continue;
        for (const int page : pages)
            ++votes[page - decimalValue(entry->number)];
    }
}

std::optional<TitlePlace> Resolver::bestOf(const QStringList &forms, const std::vector<int> &candidates) {
    constexpr double malusPerRank = 3;
    std::optional<TitlePlace> best;
    for (size_t rank = 0; rank < candidates.size(); ++rank) {
        std::optional<TitlePlace> place = search_.locate(forms, candidates[rank]);
        if (!place || place->score < fairScore) continue;
        place->score -= malusPerRank * static_cast<double>(rank);
        if (!best || place->score > best->score) best = place;
    }
    return best;
}

std::optional<TitlePlace> Resolver::bestNear(const QStringList &forms, const std::vector<int> &candidates) {
    constexpr size_t mostCandidates = 2;
    constexpr double nearbyMalus = 5;
    std::optional<TitlePlace> best;
    for (size_t rank = 0; rank < std::min(candidates.size(), mostCandidates); ++rank) {
        for (const int distance : {1, -1, 2, -2}) {
            std::optional<TitlePlace> place = search_.locate(forms, candidates[rank] + distance);
            if (!place || place->score < sureScore) continue;
            place->score -= nearbyMalus;
            if (!best || place->score > best->score) best = place;
        }
    }
    return best;
}

/// The pages that the number of an entry may mean, the likeliest first.
std::vector<int> Resolver::candidatesOf(const PrintedEntry &entry, const std::vector<int> &offsets) const {
    std::vector<int> candidates;
    const auto add = [&](int page) {
        const bool exists = page >= 0 && page < static_cast<int>(pages_.size());
        if (exists && std::find(candidates.begin(), candidates.end(), page) == candidates.end())
            candidates.push_back(page);
    };
    if (isDecimalNumber(entry.number)) {
        for (const int offset : offsets)
            add(decimalValue(entry.number) + offset);
    }
    for (const int page : numbers_.pagesOf(entry.number))
        add(page);
    return candidates;
}

/// @param candidates the pages that the entry's number may mean
void Resolver::byNumber(PrintedEntry &entry, const std::vector<int> &offsets,
                        const std::vector<int> &candidates) {
    if (entry.number.isEmpty()) return;
    const QStringList forms = searchForms(entry.title);
    std::optional<TitlePlace> best = bestOf(forms, candidates);
    if (!best) best = bestNear(forms, candidates);
    if (best) {
        settle(entry, *best, pages_);
    } else if (isDecimalNumber(entry.number) && !offsets.empty() &&
               decimalValue(entry.number) + offsets.front() >= static_cast<int>(pages_.size())) {
        entry.isBeyond = true;
    } else if (!candidates.empty()) {
        entry.page = candidates.front();
    }
}

/// Where pages are counted anew in each chapter, a number means a page of its chapter and no other.
/// @return whether they are
bool Resolver::byChapters(const std::vector<PrintedEntry *> &entries) {
    if (!beginAgain(entries)) return false;
    const std::vector<std::optional<int>> offsets = offsetsByChapter(entries, numbers_, pagesOfForms());
    for (size_t i = 0; i < offsets.size(); ++i) {
        PrintedEntry &entry = *entries[i];
        if (offsets[i]) {
            const int page = decimalValue(entry.number) + *offsets[i];
            const bool exists = page >= 0 && page < static_cast<int>(pages_.size());
            byNumber(entry, {*offsets[i]}, exists ? std::vector{page} : std::vector<int>());
        } else if (!isDecimalNumber(entry.number)) {
            byNumber(entry, {}, candidatesOf(entry, {}));
        }
    }
    return !offsets.empty();
}

bool Resolver::byNumbers() {
    constexpr double trusted = 0.5;
    constexpr size_t mostOffsets = 2;
    std::vector<PrintedEntry *> open;
    for (PrintedEntry &entry : entries_) {
        if (entry.page < 0) open.push_back(&entry);
    }
    if (open.empty()) return false;
    if (byChapters(open)) return true;
    std::map<int, int> votes = votesAtNumbers(open);
    int found = 0;
    for (const auto &[offset, count] : votes)
        found += count;
    if (found < trusted * static_cast<double>(open.size())) voteAnywhere(open, votes);
    std::vector<std::pair<int, int>> ranked(votes.begin(), votes.end());
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto &a, const auto &b) { return a.second > b.second; });
    std::vector<int> offsets;
    for (size_t i = 0; i < std::min(ranked.size(), mostOffsets); ++i)
        offsets.push_back(ranked[i].first);
    for (PrintedEntry *entry : open)
        byNumber(*entry, offsets, candidatesOf(*entry, offsets));
    return false;
}

/// A row without a number: its heading is between those of its neighbours.
void Resolver::betweenNeighbours(size_t index) {
    constexpr int mostPages = 60;
    PrintedEntry &entry = entries_[index];
    int first = 0;
    for (size_t k = index; k-- > 0;) {
        if (entries_[k].page < 0) continue;
        first = entries_[k].page;
        break;
    }
    int last = static_cast<int>(pages_.size()) - 1;
    const auto next = std::find_if(entries_.begin() + static_cast<std::ptrdiff_t>(index) + 1, entries_.end(),
                                   [](const PrintedEntry &e) { return e.page >= 0; });
    if (next != entries_.end()) last = next->page;
    std::optional<TitlePlace> best;
    if (last - first <= mostPages) {
        const QStringList forms = searchForms(entry.title);
        for (int page = first; page <= last; ++page) {
            const std::optional<TitlePlace> place = search_.locate(forms, page);
            if (place && place->score >= sureScore && (!best || place->score > best->score)) best = place;
        }
    }
    if (best) {
        settle(entry, *best, pages_);
    } else if (entry.numbering.kind == NumberKind::Part) {
        entry.page = last;
    }
}

}  // namespace

ResolvedEntries resolveEntries(std::vector<PrintedEntry> &entries, const std::vector<PageLines> &pages,
                               const PrintedNumbers &numbers, TitleSearch &search) {
    Resolver resolver(entries, pages, numbers, search);
    QSet<int> linked;
    for (const PrintedEntry &entry : entries) {
        const int page = entry.link ? entry.link->targetPage : -1;
        if (page >= 0 && page < static_cast<int>(pages.size())) linked.insert(page);
    }
    search.prepare(linked);
    for (PrintedEntry &entry : entries) {
        if (entry.link) resolver.byLink(entry);
    }
    ResolvedEntries result;
    result.areCountedByChapter = resolver.byNumbers();
    for (size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].page < 0 && !entries[i].isBeyond) resolver.betweenNeighbours(i);
    }
    result.lost =
        takenOut(entries, [](const PrintedEntry &entry) { return entry.page < 0 && !entry.isBeyond; });
    return result;
}

std::vector<PrintedEntry> takenOut(std::vector<PrintedEntry> &entries,
                                   const std::function<bool(const PrintedEntry &)> &which) {
    const auto out = std::stable_partition(entries.begin(), entries.end(), std::not_fn(which));
    std::vector<PrintedEntry> result(std::make_move_iterator(out), std::make_move_iterator(entries.end()));
    entries.erase(out, entries.end());
    return result;
}

int countLocated(const std::vector<PrintedEntry> &entries) {
    return static_cast<int>(std::count_if(entries.begin(), entries.end(),
                                          [](const PrintedEntry &entry) { return !entry.heading.isNull(); }));
}

bool areContents(const std::vector<PrintedEntry> &entries) {
    constexpr size_t fewest = 3;
    constexpr double risingShare = 0.8;
    constexpr double locatedShare = 0.5;
    constexpr double linkedShare = 0.8;
    constexpr double locatedShareOfLinked = 0.3;
    if (entries.size() < fewest) return false;
    const auto all = static_cast<double>(entries.size());
    const double located = countLocated(entries);
    double linked = 0;
    double rising = 0;
    for (size_t i = 0; i < entries.size(); ++i) {
        linked += entries[i].link ? 1 : 0;
        rising += i > 0 && entries[i].page >= entries[i - 1].page ? 1 : 0;
    }
    if (rising < risingShare * (all - 1)) return false;
    return located >= locatedShare * all ||
           (linked >= linkedShare * all && located >= locatedShareOfLinked * all);
}

}  // namespace leafwright
