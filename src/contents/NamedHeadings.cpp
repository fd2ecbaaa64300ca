#include "contents/NamedHeadings.h"

#include "contents/StyleLevels.h"

#include <QRegularExpression>

#include <cmath>
#include <map>

namespace leafwright {

namespace {

constexpr int fewestNames = 5;

/// A destination whose name tells the kind of heading.
struct HeadingName {
    const NamedPlace *place = nullptr;
    QString kind;
    bool isStarred = false;
};

std::vector<HeadingName> headingNames(const std::vector<NamedPlace> &places) {
    static const QRegularExpression name(
        QStringLiteral("^(part|chapter|section|subsection|subsubsection|paragraph|subparagraph|appendix)"
                       "[.*]+[\\w.]+$"),
        QRegularExpression::CaseInsensitiveOption);
    std::vector<HeadingName> names;
    for (const NamedPlace &place : places) {
        if (!place.point) continue;
        const QRegularExpressionMatch match = name.match(place.name);
        if (match.hasMatch())
            names.push_back({&place, match.captured(1).toLower(), place.name.contains(u'*')});
    }
    return names;
}

int depthOf(const QString &kind, bool hasChapters) {
    static const QHash<QString, int> depths{
        {QStringLiteral("part"), 0},         {QStringLiteral("chapter"), 1},
        {QStringLiteral("section"), 2},      {QStringLiteral("subsection"), 3},
        {QStringLiteral("paragraph"), 5},    {QStringLiteral("subsubsection"), 4},
        {QStringLiteral("subparagraph"), 6},
    };
    if (kind == u"appendix") return hasChapters ? 1 : 2;
    return depths.value(kind);
}

/// The heading that a destination points at: the first line at or below y, or a larger one just below it.
LineRef lineAt(const PageLines &page, double y, double mostSizes, const BodyStyle &body) {
    constexpr double slack = 14;       // points
    constexpr double justBelow = 1.8;  // body sizes
    double first = noGap * noGap;
    const auto isNear = [&](const TextLine &line) {
        const double distance = line.baseline - y;
        return !line.isRunning && !line.inContents && distance > 1 &&
               distance < mostSizes * std::max(line.look.size, body.size) + slack;
    };
    for (const TextLine &line : page.lines) {
        if (isNear(line)) first = std::min(first, line.baseline);
    }
    LineRef best;
    std::tuple<double, bool, double> bestRank;
    for (int i = 0; i < static_cast<int>(page.lines.size()); ++i) {
        const TextLine &line = page.line(i);
        if (!isNear(line) || line.baseline >= first + justBelow * body.size) continue;
        const std::tuple rank(std::nearbyint(line.look.size), line.look.bold, -line.baseline);
        if (!best.isNull() && rank <= bestRank) continue;
        best = {line.page, i};
        bestRank = rank;
    }
    return best;
}

/// Whether a candidate is a heading, by its probability, name and number, and whether its style has names.
bool isAccepted(const HeadingCandidate &candidate, const NamedHeading *name, bool isNamedStyle) {
    constexpr double named = 0.05;
    constexpr double starred = 0.3;
    constexpr double numbered = 0.9;  // whatever bears a number has a name, too
    constexpr double inNamedStyle = 0.45;
    constexpr double inOtherStyle = 0.6;
    if (name) return candidate.probability >= (name->isStarred ? starred : named);
    const NumberKind kind = candidate.block.numbering.kind;
    if (kind == NumberKind::Dotted || kind == NumberKind::Chapter) return candidate.probability >= numbered;
    return candidate.probability >= (isNamedStyle ? inNamedStyle : inOtherStyle);
}

}  // namespace

LineRef headingAt(const NamedPlace &place, const std::vector<PageLines> &pages, const BodyStyle &body) {
    constexpr double mostSizes = 2.6;
    constexpr double mostSizesOnNextPage = 12;
    const auto index = static_cast<size_t>(place.pageIndex);
    if (place.pageIndex < 0 || index >= pages.size()) return {};
    const LineRef here = lineAt(pages[index], pages[index].frame.toRead(*place.point).y(), mostSizes, body);
    if (!here.isNull() || index + 1 >= pages.size()) return here;
    return lineAt(pages[index + 1], 0, mostSizesOnNextPage, body);
}

QHash<int, NamedHeading> findNamedHeadings(const std::vector<NamedPlace> &places,
                                           const std::vector<PageLines> &pages,
                                           const HeadingCandidates &headings, const BodyStyle &body) {
    std::vector<HeadingName> names = headingNames(places);
    const auto plain =
        std::count_if(names.begin(), names.end(), [](const HeadingName &n) { return !n.isStarred; });
    if (plain < fewestNames) return {};
    const bool hasChapters =
        std::any_of(names.begin(), names.end(), [](const HeadingName &n) { return n.kind == u"chapter"; });
    const QHash<LineRef, int> candidateAt = headings.byLine();
    std::stable_sort(names.begin(), names.end(), [](const HeadingName &a, const HeadingName &b) {
        return std::pair(a.place->pageIndex, a.place->point->y()) <
               std::pair(b.place->pageIndex, b.place->point->y());
    });
    QHash<int, NamedHeading> found;
    for (const HeadingName &name : names) {
        const auto candidate = candidateAt.constFind(headingAt(*name.place, pages, body));
        if (candidate == candidateAt.constEnd()) continue;
        const auto known = found.constFind(*candidate);
        if (known != found.constEnd() && (!known->isStarred || name.isStarred)) continue;
        found.insert(*candidate, {depthOf(name.kind, hasChapters), name.isStarred});
    }
    return found;
}

std::optional<NamedOutline> outlineByNames(const HeadingCandidates &headings,
                                           const QHash<int, NamedHeading> &named, const BodyStyle &body) {
    const auto plain =
        std::count_if(named.begin(), named.end(), [](const NamedHeading &n) { return !n.isStarred; });
    if (plain < fewestNames) return std::nullopt;
    const auto nameOf = [&named](size_t i) -> const NamedHeading * {
        const auto found = named.constFind(static_cast<int>(i));
        return found == named.constEnd() ? nullptr : &*found;
    };
    std::vector<bool> isNamedStyle(headings.styles.size());
    for (size_t i = 0; i < headings.candidates.size(); ++i) {
        const NamedHeading *name = nameOf(i);
        if (name && !name->isStarred) isNamedStyle[static_cast<size_t>(headings.candidates[i].style)] = true;
    }
    NamedOutline outline;
    std::map<int, Tally<int>> depthsOfStyle;
    int least = 1;
    for (size_t i = 0; i < headings.candidates.size(); ++i) {
        const HeadingCandidate &candidate = headings.candidates[i];
        const NamedHeading *name = nameOf(i);
        if (!isAccepted(candidate, name, isNamedStyle[static_cast<size_t>(candidate.style)])) continue;
        outline.headings.push_back(i);
        if (!name) continue;
        least = depthsOfStyle.empty() ? name->depth : std::min(least, name->depth);
        depthsOfStyle[candidate.style].add(name->depth);
    }
    outline.levels = styleLevels(headings, outline.headings, body);
    for (size_t k = 0; k < outline.headings.size(); ++k) {
        const size_t i = outline.headings[k];
        const NamedHeading *name = nameOf(i);
        const auto depths = depthsOfStyle.find(headings.candidates[i].style);
        if (name && !name->isStarred) {
            outline.levels[k] = name->depth - least + 1;
        } else if (depths != depthsOfStyle.end()) {
            outline.levels[k] = depths->second.heaviest().first - least + 1;
        }
    }
    return outline;
}

}  // namespace leafwright
