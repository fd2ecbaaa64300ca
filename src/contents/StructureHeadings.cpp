#include "contents/ContentsStages.h"
#include "contents/TextFolding.h"

#include <map>

namespace leafwright {

namespace {

constexpr double fairScore = 60;
constexpr double nextPageScore = 90;

std::optional<TitlePlace> placeOf(const StructureHeading &heading, const QString &title,
                                  TitleSearch &search) {
    const QStringList forms = searchForms(title);
    const std::optional<TitlePlace> here = search.locate(forms, heading.pageIndex);
    if (here && here->score >= fairScore) return here;
    const std::optional<TitlePlace> next = search.locate(forms, heading.pageIndex + 1);
    return next && next->score >= nextPageScore ? next : std::nullopt;
}

}  // namespace

std::vector<LocatedStructureHeading> findStructureHeadings(const std::vector<StructureHeading> &headings,
                                                           const std::vector<PageLines> &pages,
                                                           const BodyStyle &body) {
    constexpr size_t fewest = 3;
    constexpr double foundShare = 0.7;
    if (headings.size() < fewest) return {};
    TitleSearch search(pages, body);
    std::vector<LocatedStructureHeading> found;
    std::map<int, int> ranks;
    double located = 0;
    for (const StructureHeading &heading : headings) {
        const QString title = withSingleBlanks(heading.text);
        if (title.isEmpty() || heading.pageIndex < 0 || heading.pageIndex >= static_cast<int>(pages.size()))
            continue;
        const std::optional<TitlePlace> place = placeOf(heading, title, search);
        located += place ? 1 : 0;
        const int level = std::max(1, heading.level);
        ranks[level] = 0;
        found.push_back(
            {title, place ? place->line.page : heading.pageIndex, place ? place->line : LineRef(), level});
    }
    if (located < foundShare * static_cast<double>(found.size())) return {};
    int rank = 0;
    for (auto &[level, value] : ranks)
        value = ++rank;
    for (LocatedStructureHeading &heading : found)
        heading.level = ranks[heading.level];
    return found;
}

}  // namespace leafwright
