#include "contents/ContentsLevels.h"

#include "contents/ContentsWords.h"
#include "contents/TextFolding.h"

#include <QRegularExpression>

#include <cmath>
#include <map>
#include <set>

namespace leafwright {

namespace {

/// The look of a row, as far as levels differ by it.
struct RowLook {
    int size = 0;
    bool bold = false;

    friend auto operator<=>(const RowLook &, const RowLook &) = default;
};

RowLook lookOf(const PrintedEntry &entry) {
    const LineLook &look = entry.firstRow().look;
    return {static_cast<int>(std::nearbyint(look.size)), look.bold};
}

/// Entries that are of one level: those of one kind and, unless they are numbered by depth, one indent and
/// look.
struct RowClass {
    NumberKind kind = NumberKind::None;
    int depth = 0;
    size_t indent = 0;
    RowLook look;

    friend auto operator<=>(const RowClass &, const RowClass &) = default;
};

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Where the rows of a page or column stand.
struct RowMargins {
    std::optional<double> right;  ///< The common right edge of the numbers, if they are aligned.
    double left = 0;              ///< Of the leftmost row.
};

RowMargins marginsOf(const std::vector<size_t> &rows, const std::vector<PrintedEntry> &entries) {
    constexpr double step = 2;
    constexpr double alignedShare = 0.6;
    RowMargins margins{{}, noGap};
    Tally<int> rights;
    for (const size_t row : rows) {
        margins.left = std::min(margins.left, entries[row].firstRow().left);
        if (!entries[row].number.isEmpty())
            rights.add(static_cast<int>(std::nearbyint(entries[row].right() / step)));
    }
    if (rights.isEmpty()) return margins;
    const int key = rights.heaviest().first;
    const double aligned = rights.weight(key) + rights.weight(key - 1) + rights.weight(key + 1);
    if (aligned >= alignedShare * rights.total() && aligned >= 2) margins.right = step * key;
    return margins;
}

/// The rows' left edges, as if all pages and columns had the same margins.
std::vector<double> indentsOf(const std::vector<PrintedEntry> &entries) {
    std::vector<std::pair<std::pair<int, int>, std::vector<size_t>>> groups;
    for (size_t i = 0; i < entries.size(); ++i) {
        const std::pair key(entries[i].contentsPage, entries[i].column);
        if (groups.empty() || groups.back().first != key) groups.emplace_back(key, std::vector<size_t>());
        groups.back().second.push_back(i);
    }
    std::vector<double> indents(entries.size());
    const RowMargins first = marginsOf(groups.front().second, entries);
    for (const auto &[key, rows] : groups) {
        const RowMargins margins = marginsOf(rows, entries);
        double shift = 0;
        if (margins.right && first.right && rows.size() > 1) {
            shift = *margins.right - *first.right;
        } else if (!margins.right && rows.size() > 2) {
            shift = margins.left - first.left;
        }
        for (const size_t row : rows)
            indents[row] = entries[row].firstRow().left - shift;
    }
    return indents;
}

/// The places at which rows begin.
class Indents {
public:
    Indents(const std::vector<double> &indents, double tolerance, bool isNumbered) {
        constexpr double leastShare = 0.02;
        constexpr size_t mostClusters =
            5;  // more of them are centred or ragged rows, unless numbers say otherwise
        std::vector<double> sorted = indents;
        std::sort(sorted.begin(), sorted.end());
        std::vector<std::vector<double>> clusters;
        for (const double x : sorted) {
            if (clusters.empty() || x - clusters.back().back() > tolerance) clusters.emplace_back();
            clusters.back().push_back(x);
        }
        std::vector<double> all;
        for (const std::vector<double> &cluster : clusters) {
            double sum = 0;
            for (const double x : cluster)
                sum += x;
            all.push_back(sum / static_cast<double>(cluster.size()));
            if (static_cast<double>(cluster.size()) >=
                std::max(2.0, leastShare * static_cast<double>(indents.size())))
                centres_.push_back(all.back());
        }
        if (centres_.size() > mostClusters && !isNumbered) {
            centres_ = {all.front()};
        } else if (centres_.empty()) {
            centres_ = all;
        }
    }

    size_t indexOf(double x) const {
        const auto nearest = std::min_element(centres_.begin(), centres_.end(), [x](double a, double b) {
            return std::abs(a - x) < std::abs(b - x);
        });
        return static_cast<size_t>(nearest - centres_.begin());
    }

private:
    std::vector<double> centres_;
};

/// Roman numbers beside arabic chapters, or with many entries each, are those of parts.
void recogniseParts(std::vector<PrintedEntry> &entries) {
    constexpr size_t entriesPerPart = 4;
    static const QRegularExpression roman(QStringLiteral("^[IVX]+$"));
    std::vector<PrintedEntry *> found;
    bool hasArabic = false;
    for (PrintedEntry &entry : entries) {
        const Numbering &numbering = entry.numbering;
        if (numbering.isSingle() && roman.match(numbering.components[0]).hasMatch()) found.push_back(&entry);
        const bool isChapter = numbering.kind == NumberKind::Single || numbering.kind == NumberKind::Chapter;
        hasArabic = hasArabic || (isChapter && isDecimalNumber(numbering.components[0]));
    }
    if (found.size() < 2 || found[0]->numbering.components[0] != u"I" ||
        found[1]->numbering.components[0] != u"II")
        return;
    if (!hasArabic && entries.size() <= entriesPerPart * found.size()) return;
    for (PrintedEntry *entry : found)
        entry->numbering.kind = NumberKind::Part;
}

/// What the rows of one numbered level look like.
struct LevelProfile {
    double indent = 0;
    RowLook look;
};

class LevelFinder {
public:
    LevelFinder(const std::vector<PrintedEntry> &entries, const BodyStyle &body)
        : entries_(entries),
          tolerance_(std::max(2.0, 0.25 * body.size)),
          x_(indentsOf(entries)),
          indents_(x_, tolerance_, hasDotted(entries)) {
        for (size_t i = 0; i < entries_.size(); ++i) {
            if (entries_[i].numbering.kind != NumberKind::Part) classes_[classOf(i)].push_back(i);
        }
    }

    /// The level of each entry but parts, whose is 0.
    std::vector<int> levels() {
        constexpr int fewestDotted = 3;
        const auto dotted = std::count_if(entries_.begin(), entries_.end(), [](const PrintedEntry &e) {
            return e.numbering.kind == NumberKind::Dotted;
        });
        const std::map<RowClass, int> levels = dotted >= fewestDotted ? levelsByNumber() : levelsByIndent();
        std::vector<int> result(entries_.size(), 0);
        for (const auto &[rowClass, members] : classes_) {
            for (const size_t member : members)
                result[member] = levels.at(rowClass);
        }
        return result;
    }

private:
    static bool hasDotted(const std::vector<PrintedEntry> &entries) {
        return std::any_of(entries.begin(), entries.end(),
                           [](const PrintedEntry &e) { return e.numbering.kind == NumberKind::Dotted; });
    }

    RowClass classOf(size_t index) const {
        const Numbering &numbering = entries_[index].numbering;
        if (numbering.kind == NumberKind::Dotted) return {NumberKind::Dotted, numbering.depth, 0, {}};
        if (numbering.kind == NumberKind::Chapter) return {NumberKind::Chapter, 0, 0, {}};
        const NumberKind kind = numbering.isSingle() ? NumberKind::Single : NumberKind::None;
        return {kind, 0, indents_.indexOf(x_[index]), lookOf(entries_[index])};
    }

    double medianIndent(const std::vector<size_t> &members) const {
        std::vector<double> values;
        for (const size_t member : members)
            values.push_back(x_[member]);
        return median(values);
    }

    int shiftOfDepths() const;
    std::map<int, LevelProfile> profiles(int shift) const;
    int levelOfUnnumbered(double x, const RowLook &look, const std::map<int, LevelProfile> &profiles) const;
    int levelOfSingle(double x, const RowLook &look, const std::map<int, LevelProfile> &profiles) const;
    std::map<RowClass, int> levelsByNumber() const;
    std::map<RowClass, int> levelsByIndent() const;

    const std::vector<PrintedEntry> &entries_;
    double tolerance_;
    std::vector<double> x_;
    Indents indents_;
    std::map<RowClass, std::vector<size_t>> classes_;
};

/// What is added to the depth of a dotted number for its level: the least depth is 1, or 2 below unnumbered
/// rows.
int LevelFinder::shiftOfDepths() const {
    int least = 0;
    bool hasTop = false;
    for (const PrintedEntry &entry : entries_) {
        const Numbering &numbering = entry.numbering;
        hasTop = hasTop || numbering.isSingle() || numbering.kind == NumberKind::Chapter;
        if (numbering.kind == NumberKind::Dotted)
            least = least == 0 ? numbering.depth : std::min(least, numbering.depth);
    }
    if (hasTop || least == 1) return 0;
    double sum = 0;
    double count = 0;
    for (size_t i = 0; i < entries_.size(); ++i) {
        if (entries_[i].numbering.kind != NumberKind::Dotted || entries_[i].numbering.depth != least)
            continue;
        sum += x_[i];
        ++count;
    }
    int above = 0;
    for (size_t i = 0; i < entries_.size(); ++i)
        above += entries_[i].numbering.kind == NumberKind::None && x_[i] <= sum / count + tolerance_ ? 1 : 0;
    return above >= 2 && least >= 2 ? 2 - least : 1 - least;
}

std::map<int, LevelProfile> LevelFinder::profiles(int shift) const {
    std::map<int, std::vector<size_t>> members;
    for (size_t i = 0; i < entries_.size(); ++i) {
        const Numbering &numbering = entries_[i].numbering;
        if (numbering.kind == NumberKind::Dotted) members[numbering.depth + shift].push_back(i);
        if (numbering.isSingle() || numbering.kind == NumberKind::Chapter) members[1].push_back(i);
    }
    std::map<int, LevelProfile> result;
    for (const auto &[level, rows] : members) {
        Tally<RowLook> looks;
        for (const size_t row : rows)
            looks.add(lookOf(entries_[row]));
        result[level] = {medianIndent(rows), looks.heaviest().first};
    }
    return result;
}

int LevelFinder::levelOfUnnumbered(double x, const RowLook &look,
                                   const std::map<int, LevelProfile> &profiles) const {
    constexpr double boldDistance = 4;  // what another weight is worth, in points of indent
    constexpr double sizeDistance = 3;  // the same of a point of size
    const auto &[least, first] = *profiles.begin();
    if (least > 1 && x <= first.indent + tolerance_)
        return least - 1;  // chapters whose sections alone are numbered
    int level = 0;
    double nearest = 0;
    for (const auto &[candidate, profile] : profiles) {
        const double distance = std::abs(profile.indent - x) +
                                (profile.look.bold != look.bold ? boldDistance : 0) +
                                sizeDistance * std::abs(profile.look.size - look.size);
        if (level != 0 && distance >= nearest) continue;
        level = candidate;
        nearest = distance;
    }
    const auto &[deepest, last] = *profiles.rbegin();
    const bool isDeeper =
        x > last.indent + tolerance_ + 3 && last.indent > profiles.begin()->second.indent - 1;
    return isDeeper ? deepest + 1 : level;
}

/// A lone number deeper than the second level is that of an item; else of a chapter.
int LevelFinder::levelOfSingle(double x, const RowLook &look,
                               const std::map<int, LevelProfile> &profiles) const {
    constexpr double lookDistance = 3;
    const auto second = profiles.find(2);
    if (second == profiles.end() || x <= second->second.indent + tolerance_ || !profiles.contains(1))
        return 1;
    const auto distance = [&](const LevelProfile &profile) {
        return std::abs(profile.indent - x) + (profile.look != look ? lookDistance : 0);
    };
    return std::min_element(
               profiles.begin(), profiles.end(),
               [&](const auto &a, const auto &b) { return distance(a.second) < distance(b.second); })
        ->first;
}

std::map<RowClass, int> LevelFinder::levelsByNumber() const {
    const int shift = shiftOfDepths();
    const std::map<int, LevelProfile> all = profiles(shift);
    std::map<RowClass, int> levels;
    for (const auto &[rowClass, members] : classes_) {
        const double x = medianIndent(members);
        if (rowClass.kind == NumberKind::Dotted) {
            levels[rowClass] = rowClass.depth + shift;
        } else if (rowClass.kind == NumberKind::Chapter) {
            levels[rowClass] = 1;
        } else if (rowClass.kind == NumberKind::Single) {
            levels[rowClass] = levelOfSingle(x, rowClass.look, all);
        } else {
            levels[rowClass] = levelOfUnnumbered(x, rowClass.look, all);
        }
    }
    return levels;
}

std::map<RowClass, int> LevelFinder::levelsByIndent() const {
    constexpr size_t mostLooks = 4;
    std::map<RowClass, size_t> indentOf;
    std::set<size_t> used;
    std::set<std::pair<int, bool>> looks;  // from large to small, bold first
    const auto rankOf = [](const RowLook &look) { return std::pair(-look.size, !look.bold); };
    for (const auto &[rowClass, members] : classes_) {
        const bool hasIndent = rowClass.kind == NumberKind::None || rowClass.kind == NumberKind::Single;
        indentOf[rowClass] = hasIndent ? rowClass.indent : indents_.indexOf(medianIndent(members));
        used.insert(indentOf[rowClass]);
        if (hasIndent) looks.insert(rankOf(rowClass.look));
    }
    const bool byLook = used.size() == 1 && looks.size() > 1 && looks.size() <= mostLooks;
    std::map<RowClass, int> levels;
    for (const auto &[rowClass, indent] : indentOf) {
        const bool hasLook = rowClass.kind == NumberKind::None || rowClass.kind == NumberKind::Single;
        const auto rank = byLook && hasLook ? std::distance(looks.begin(), looks.find(rankOf(rowClass.look)))
                                            : std::distance(used.begin(), used.find(indent));
        levels[rowClass] = static_cast<int>(rank) + 1;
    }
    return levels;
}

}  // namespace

int LevelNesting::nested(int level) {
    while (!above_.empty() && above_.back() >= level)
        above_.pop_back();
    above_.push_back(level);
    return static_cast<int>(above_.size());
}

void assignPrintedLevels(std::vector<PrintedEntry> &entries, const BodyStyle &body) {
    if (entries.empty()) return;
    recogniseParts(entries);
    const std::vector<int> levels = LevelFinder(entries, body).levels();
    const auto isPart = [](const PrintedEntry &entry) { return entry.numbering.kind == NumberKind::Part; };
    const auto first = std::find_if(entries.begin(), entries.end(), isPart);
    const bool hasParts = std::count_if(entries.begin(), entries.end(), isPart) >= 2 ||
                          (first != entries.end() && first->number.isEmpty());
    const auto firstPart = static_cast<size_t>(first - entries.begin());
    LevelNesting nesting;
    for (size_t i = 0; i < entries.size(); ++i) {
        PrintedEntry &entry = entries[i];
        const bool below = hasParts && i > firstPart;
        entry.level = std::max(1, levels[i]);
        if (hasParts && isPart(entry)) {
            entry.level = 1;
        } else if (below) {
            ++entry.level;
            if (entry.level == 2 && isBackMatter(entry.title)) entry.level = 1;
        }
        entry.level = nesting.nested(entry.level);
    }
}

}  // namespace leafwright
