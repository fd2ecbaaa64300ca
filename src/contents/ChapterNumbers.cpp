#include "contents/ChapterNumbers.h"

#include "contents/TextFolding.h"

#include <map>

namespace leafwright {

namespace {

/// Neighbouring entries whose numbers do not begin again, by their indices.
using Chapter = std::vector<size_t>;

std::vector<Chapter> chaptersOf(const std::vector<PrintedEntry *> &entries) {
    constexpr int firstPages = 3;
    std::vector<Chapter> chapters;
    int last = 0;
    for (size_t i = 0; i < entries.size(); ++i) {
        if (!isDecimalNumber(entries[i]->number)) continue;
        const int number = decimalValue(entries[i]->number);
        if (chapters.empty() || (number < last && number <= firstPages)) chapters.emplace_back();
        chapters.back().push_back(i);
        last = number;
    }
    return chapters;
}

/// What speaks for a distance between the numbers of a chapter and its pages.
struct OffsetVotes {
    int titles = 0;   ///< Titles that stand on the page which bears their number then.
    int printed = 0;  ///< Numbers that are printed on their pages then.

    /// Printed numbers decide where no title does.
    double weight() const { return titles + 0.1 * printed; }
};

using VotesByOffset = std::map<int, OffsetVotes>;

QSet<int> pagesOfTitle(const PrintedEntry &entry, const PagesOfForms &pagesOfForms) {
    QSet<int> pages;
    for (const QString &form : searchForms(entry.title))
        pages |= pagesOfForms.value(form);
    return pages;
}

VotesByOffset votesOf(const Chapter &chapter, const std::vector<PrintedEntry *> &entries,
                      const PrintedNumbers &numbers, const PagesOfForms &pagesOfForms) {
    VotesByOffset votes;
    for (const size_t i : chapter) {
        const int number = decimalValue(entries[i]->number);
        for (const int page : pagesOfTitle(*entries[i], pagesOfForms))
            ++votes[page - number].titles;
        for (const int page : numbers.decimal().value(number))
            ++votes[page - number].printed;
    }
    return votes;
}

/// A way through the chapters: where the last one lies that it has come to, and the way before that.
struct Step {
    double weight = 0;
    size_t chapter = 0;
    int offset = 0;
    int before = -1;  ///< Index of the step before; -1 for the first.
};

/// The steps with the heaviest ways; offsets rise, since each chapter lies behind the one before.
std::vector<Step> heaviestWay(const std::vector<VotesByOffset> &votes) {
    std::vector<Step> steps;
    std::map<int, int> best;  // by offset, the step of the heaviest way to there; weights rise
    for (size_t chapter = 0; chapter < votes.size(); ++chapter) {
        const auto first = static_cast<int>(steps.size());
        for (const auto &[offset, own] : votes[chapter]) {
            const auto behind = best.lower_bound(offset);
            const int before = behind == best.begin() ? -1 : std::prev(behind)->second;
            const double weight = before < 0 ? 0 : steps[static_cast<size_t>(before)].weight;
            steps.push_back({weight + own.weight(), chapter, offset, before});
        }
        const auto weightOf = [&steps](int step) { return steps[static_cast<size_t>(step)].weight; };
        for (int step = first; step < static_cast<int>(steps.size()); ++step) {
            const int offset = steps[static_cast<size_t>(step)].offset;
            auto next = best.upper_bound(offset);
            if (next != best.begin() && weightOf(std::prev(next)->second) >= weightOf(step)) continue;
            best[offset] = step;
            while (next != best.end() && weightOf(next->second) <= weightOf(step))
                next = best.erase(next);
        }
    }
    std::vector<Step> way;
    for (int step = best.empty() ? -1 : best.rbegin()->second; step >= 0; step = way.back().before)
        way.push_back(steps[static_cast<size_t>(step)]);
    return way;
}

/// How many titles are found if pages are counted through. Entries of one title and number are one then.
int titlesAtOneOffset(const std::vector<PrintedEntry *> &entries, const PagesOfForms &pagesOfForms) {
    QSet<std::pair<QString, int>> seen;
    std::map<int, int> titles;
    int most = 0;
    for (const PrintedEntry *entry : entries) {
        if (!isDecimalNumber(entry->number)) continue;
        const int number = decimalValue(entry->number);
        const std::pair key(foldedTitle(entry->title), number);
        if (seen.contains(key)) continue;
        seen.insert(key);
        for (const int page : pagesOfTitle(*entry, pagesOfForms))
            most = std::max(most, ++titles[page - number]);
    }
    return most;
}

}  // namespace

bool beginAgain(const std::vector<PrintedEntry *> &entries) {
    return chaptersOf(entries).size() > 1;
}

std::vector<std::optional<int>> offsetsByChapter(const std::vector<PrintedEntry *> &entries,
                                                 const PrintedNumbers &numbers,
                                                 const PagesOfForms &pagesOfForms) {
    constexpr double trusted = 0.5;  // of the entries
    const std::vector<Chapter> chapters = chaptersOf(entries);
    std::vector<VotesByOffset> votes;
    for (const Chapter &chapter : chapters)
        votes.push_back(votesOf(chapter, entries, numbers, pagesOfForms));
    std::vector<std::optional<int>> offsets(entries.size());
    int titles = 0;
    for (const Step &step : heaviestWay(votes)) {
        titles += votes[step.chapter][step.offset].titles;
        for (const size_t i : chapters[step.chapter])
            offsets[i] = step.offset;
    }
    const bool isCountedAnew = titles > titlesAtOneOffset(entries, pagesOfForms) &&
                               titles >= trusted * static_cast<double>(entries.size());
    return isCountedAnew ? offsets : std::vector<std::optional<int>>();
}

}  // namespace leafwright
