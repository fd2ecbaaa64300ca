#include "contents/RunningHeads.h"

#include "contents/RomanNumbers.h"
#include "contents/TextFolding.h"

#include <QRegularExpression>
#include <QSet>

#include <cmath>
#include <map>

namespace leafwright {

namespace {

constexpr int fewestPages = 3;    // that a running head is on
constexpr double edgeZone = 0.2;  // of the page's height
constexpr size_t edgeRows = 3;
constexpr double mateZone = 0.15;   // where whatever shares a row with a running line is running, too
constexpr double numberZone = 0.1;  // where a row of one number is a page number

/// A line near the top or bottom of its page.
struct EdgeLine {
    TextLine *line = nullptr;
    bool isOutermost = false;
};
/// Whether at the top, and the text with "#" for numbers.
using EdgeKey = std::pair<bool, QString>;
using EdgeGroups = std::map<EdgeKey, std::vector<EdgeLine>>;

int roundedBaseline(const TextLine &line) {
    return static_cast<int>(std::nearbyint(line.baseline));
}

QString withoutNumbers(const QString &text) {
    static const QRegularExpression number(QStringLiteral("\\d+|\\b[ivxlcdm]+\\b"),
                                           QRegularExpression::UseUnicodePropertiesOption);
    return foldedTitle(text).replace(number, QStringLiteral("#"));
}

std::vector<int> baselinesOf(const PageLines &page) {
    std::vector<int> baselines;
    for (const TextLine &line : page.lines)
        baselines.push_back(roundedBaseline(line));
    std::sort(baselines.begin(), baselines.end());
    baselines.erase(std::unique(baselines.begin(), baselines.end()), baselines.end());
    return baselines;
}

void addEdgeLines(PageLines &page, EdgeGroups &groups) {
    if (page.lines.empty()) return;
    const std::vector<int> baselines = baselinesOf(page);
    const size_t rows = std::min(edgeRows, baselines.size());
    const int lastTop = baselines[rows - 1];
    const int firstBottom = baselines[baselines.size() - rows];
    for (TextLine &line : page.lines) {
        const int y = roundedBaseline(line);
        const bool atTop = y <= lastTop && line.baseline < edgeZone * page.height();
        const bool atBottom = y >= firstBottom && line.baseline > (1 - edgeZone) * page.height();
        if (!atTop && !atBottom) continue;
        groups[{atTop, withoutNumbers(line.text)}].push_back(
            {&line, y == baselines.front() || y == baselines.back()});
    }
}

/// How far a page number is from the page that it stands on; roman numbers count apart.
std::optional<std::pair<bool, int>> numberOffset(const TextLine &line) {
    if (isDecimalNumber(line.text)) return std::pair(false, line.page - decimalValue(line.text));
    if (isRomanNumber(line.text)) return std::pair(true, line.page - romanValue(line.text));
    return std::nullopt;
}

/// Numbers that don't advance with the pages are rows of a printed contents, for example.
void markPageNumbers(const std::vector<EdgeLine> &lines) {
    std::map<std::pair<bool, int>, QSet<int>> pages;
    for (const EdgeLine &edge : lines) {
        if (const auto offset = numberOffset(*edge.line)) pages[*offset].insert(edge.line->page);
    }
    for (const EdgeLine &edge : lines) {
        const auto offset = numberOffset(*edge.line);
        if (offset && pages[*offset].size() >= fewestPages) edge.line->isRunning = true;
    }
}

void markRepeatedTexts(const std::vector<EdgeLine> &lines) {
    const auto height = [](const TextLine &line) {
        return static_cast<int>(std::nearbyint(line.baseline / 2));
    };
    std::map<int, int> heights;
    for (const EdgeLine &edge : lines)
        ++heights[height(*edge.line)];
    for (const EdgeLine &edge : lines) {
        const int y = height(*edge.line);
        int near = 0;
        for (int k = y - 1; k <= y + 1; ++k) {
            const auto found = heights.find(k);
            near += found == heights.end() ? 0 : found->second;
        }
        if (near >= fewestPages) edge.line->isRunning = true;
    }
}

int countPages(const std::vector<EdgeLine> &lines) {
    QSet<int> pages;
    for (const EdgeLine &edge : lines)
        pages.insert(edge.line->page);
    return static_cast<int>(pages.size());
}

/// The heads of short chapters come once or twice only, but at a place where most others are running heads.
void markBands(const EdgeGroups &groups, size_t pageCount) {
    constexpr int fewestBandPages = 4;
    constexpr double fewestOfAllPages = 0.12;
    constexpr double markedShare = 0.6;
    constexpr double repeatedShare = 0.7;
    struct Band {
        std::vector<EdgeLine> lines;
        double marked = 0;
        double repeated = 0;
    };
    std::map<std::tuple<bool, int, int, bool>, Band> bands;
    for (const auto &[key, lines] : groups) {
        std::map<std::tuple<bool, int, int, bool>, int> counts;
        const auto bandOf = [top = key.first](const TextLine &line) {
            return std::make_tuple(top, static_cast<int>(std::nearbyint(line.baseline / 2)),
                                   static_cast<int>(std::nearbyint(line.look.size)), line.look.italic);
        };
        for (const EdgeLine &edge : lines) {
            if (!edge.isOutermost) continue;
            Band &band = bands[bandOf(*edge.line)];
            band.lines.push_back(edge);
            band.marked += edge.line->isRunning ? 1 : 0;
            ++counts[bandOf(*edge.line)];
        }
        for (const auto &[band, count] : counts)
            bands[band].repeated += count >= 2 ? count : 0;
    }
    for (const auto &[key, band] : bands) {
        const int pages = countPages(band.lines);
        const auto all = static_cast<double>(band.lines.size());
        if (pages < fewestBandPages || pages < fewestOfAllPages * static_cast<double>(pageCount)) continue;
        if (band.marked < markedShare * all && band.repeated < repeatedShare * all) continue;
        for (const EdgeLine &edge : band.lines)
            edge.line->isRunning = true;
    }
}

/// What stands beside a running line, and numbers alone at the very edge.
void markRowMates(PageLines &page) {
    constexpr double sameRow = 1.5;
    static const QRegularExpression leaders(QStringLiteral("[.·…]{4}|(?:[.·…] ){4}"));
    static const QRegularExpression pageNumber(
        QStringLiteral(
            "^(?:\\d{1,4}|[ivxlcdm]{1,8}|[IVXLCDM]{1,8}|[A-Z]{0,2}\\d{1,3}[-–]\\d{1,4}|[A-Z][-–.]\\d{1,3}|"
            "[xivl]+[-–]\\d+)$"),
        QRegularExpression::UseUnicodePropertiesOption);
    const double height = page.height();
    const auto isAtEdge = [height](const TextLine &line, double zone) {
        return line.baseline < zone * height || line.baseline > (1 - zone) * height;
    };
    std::vector<double> running;
    for (const TextLine &line : page.lines) {
        if (line.isRunning) running.push_back(line.baseline);
    }
    for (TextLine &line : page.lines) {
        if (line.isRunning || !isAtEdge(line, mateZone)) continue;
        const bool beside = std::any_of(running.begin(), running.end(),
                                        [&line](double y) { return std::abs(y - line.baseline) < sameRow; });
        if (beside && !leaders.match(line.text).hasMatch()) line.isRunning = true;
    }
    for (TextLine &line : page.lines) {
        if (line.isRunning || !isAtEdge(line, numberZone) || !pageNumber.match(line.text).hasMatch())
            continue;
        const std::vector<int> &row = page.rows[static_cast<size_t>(line.row)];
        line.isRunning = std::all_of(row.begin(), row.end(), [&](int other) {
            return &page.line(other) == &line || page.line(other).isRunning;
        });
    }
}

}  // namespace

void markRunningHeads(std::vector<PageLines> &pages) {
    EdgeGroups groups;
    for (PageLines &page : pages)
        addEdgeLines(page, groups);
    for (const auto &[key, lines] : groups) {
        if (countPages(lines) < fewestPages) continue;
        if (key.second == u"#") {
            markPageNumbers(lines);
        } else {
            markRepeatedTexts(lines);
        }
    }
    markBands(groups, pages.size());
    for (PageLines &page : pages)
        markRowMates(page);
}

}  // namespace leafwright
