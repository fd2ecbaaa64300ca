#include "contents/ContentsRows.h"

#include "contents/Numbering.h"
#include "contents/TextFolding.h"

#include <QRegularExpression>

#include <cmath>
#include <map>

namespace leafwright {

namespace {

constexpr auto cased = QRegularExpression::UseUnicodePropertiesOption;

QString numberPattern() {
    return QStringLiteral(
        "(?:\\d{1,4}|[ivxlcdm]{1,8}|[IVXLCDM]{1,8}|[A-Z]{0,2}\\d{1,3}[-–]\\d{1,4}|[A-Z][-–.]\\d{1,3}|"
        "[xivl]+[-–]\\d+)");
}

/// Whether a character may be the last of such a number.
bool mayEndNumber(QChar c) {
    constexpr QStringView roman = u"ivxlcdmIVXLCDM";
    return c.isDigit() || roman.contains(c);
}

/// How many values are within one step of a value.
class Alignment {
public:
    explicit Alignment(double step) : step_(step) {}
    void add(double x) { ++counts_[keyOf(x)]; }
    int near(double x) const {
        int sum = 0;
        for (int key = keyOf(x) - 1; key <= keyOf(x) + 1; ++key) {
            const auto found = counts_.find(key);
            sum += found == counts_.end() ? 0 : found->second;
        }
        return sum;
    }
    const std::map<int, int> &counts() const { return counts_; }
    int most() const {
        int result = 0;
        for (const auto &[key, count] : counts_)
            result = std::max(result, count);
        return result;
    }

private:
    int keyOf(double x) const { return static_cast<int>(std::nearbyint(x / step_)); }

    double step_;
    std::map<int, int> counts_;
};

double gapBeforeNumber(const std::vector<LineSpan> &spans, const QString &number) {
    constexpr double blanks = 30;  // points; stands for a gap that is made of blanks
    static const QRegularExpression wide(QStringLiteral("\\s{3,}\\S+\\s*$"), cased);
    QString tail;
    for (size_t k = spans.size(); k-- > 0;) {
        const QString text = spanText(*spans[k].span);
        tail.prepend(text.trimmed());
        if (!tail.endsWith(number)) continue;
        if (tail.size() > number.size() || k == 0) return wide.match(text).hasMatch() ? blanks : 0;
        double end = spans.front().right();
        for (size_t i = 1; i < k; ++i)
            end = std::max(end, spans[i].right());
        return spans[k].left() - end;
    }
    return 0;
}

/// The spans of a page's rows that are not running heads.
std::vector<std::vector<LineSpan>> rowSpans(const PageLines &page) {
    std::vector<std::vector<LineSpan>> rows;
    for (const std::vector<int> &row : page.rows) {
        std::vector<LineSpan> spans;
        for (const int index : row) {
            const TextLine &line = page.line(index);
            if (!line.isRunning) spans.insert(spans.end(), line.spans.begin(), line.spans.end());
        }
        if (spans.empty()) continue;
        std::stable_sort(spans.begin(), spans.end(),
                         [](const LineSpan &a, const LineSpan &b) { return a.left() < b.left(); });
        rows.push_back(std::move(spans));
    }
    return rows;
}

bool endsInNumber(const LineSpan &span) {
    static const QRegularExpression number(QStringLiteral("(?:^|[\\s.·…_])%1\\s*$").arg(numberPattern()),
                                           cased);
    const QString text = spanText(*span.span);
    qsizetype end = text.size();
    while (end > 0 && text[end - 1].isSpace())
        --end;
    return end > 0 && mayEndNumber(text[end - 1]) && number.match(text).hasMatch();
}

/// What speaks for a second column right of x.
struct ColumnEvidence {
    int rowsLeft = 0;      ///< Rows with letters left of x.
    int rowsNumbered = 0;  ///< Such rows with a number that ends at x.
    int rowsRight = 0;     ///< Rows with text right of x.
    int crossing = 0;      ///< Spans across x.
    int commonLeft = 0;    ///< How many spans right of x begin at one place.
};

ColumnEvidence columnEvidence(const std::vector<std::vector<LineSpan>> &rows, double x) {
    constexpr double edge = 4;
    constexpr int fewestLetters = 3;
    ColumnEvidence evidence;
    Alignment lefts(3);
    for (const std::vector<LineSpan> &row : rows) {
        int letters = 0;
        bool numbered = false;
        bool right = false;
        for (const LineSpan &span : row) {
            if (span.right() <= x + edge) letters += countLetters(span.span->text);
            numbered = numbered || (std::abs(span.right() - x) < edge + 0.5 && endsInNumber(span));
            right = right || (span.left() > x + 3 && span.span->text.trimmed().size() > 3);
            evidence.crossing += span.left() < x - 10 && span.right() > x + 12 ? 1 : 0;
            if (span.left() > x + 3) lefts.add(span.left());
        }
        evidence.rowsLeft += letters >= fewestLetters ? 1 : 0;
        evidence.rowsNumbered += numbered && letters >= fewestLetters ? 1 : 0;
        evidence.rowsRight += right ? 1 : 0;
    }
    evidence.commonLeft = lefts.most();
    return evidence;
}

std::optional<double> gutterOf(const std::vector<std::vector<LineSpan>> &rows, double width) {
    constexpr double step = 3;
    constexpr int fewestRows = 4;
    constexpr double leftmost = 0.28;  // of the width
    constexpr double rightmost = 0.6;
    constexpr double leftShare = 0.35;  // of the rows; else section numbers look like page numbers
    constexpr double crossingShare = 0.12;
    Alignment rights(step);
    for (const std::vector<LineSpan> &row : rows) {
        for (const LineSpan &span : row) {
            if (span.right() < rightmost * width && endsInNumber(span)) rights.add(span.right());
        }
    }
    double x = 0;
    int numbers = 0;
    for (const auto &[key, count] : rights.counts()) {
        const int near = rights.near(key * step);
        if (near < numbers) continue;
        numbers = near;
        x = key * step;
    }
    if (x <= leftmost * width) return std::nullopt;
    const ColumnEvidence evidence = columnEvidence(rows, x);
    const auto all = static_cast<double>(rows.size());
    const bool parted = evidence.commonLeft >= 3 && evidence.rowsRight >= fewestRows &&
                        evidence.rowsNumbered >= fewestRows && 2 * evidence.rowsNumbered >= numbers &&
                        evidence.rowsLeft >= leftShare * all && evidence.crossing <= crossingShare * all;
    return parted ? std::optional(x + 4) : std::nullopt;
}

/// Whether the number that a row ends in is a page number.
/// @param aligned how many rows of the column end in a number at the same place
bool endsInPageNumber(const ContentsRow &row, int aligned) {
    constexpr double wideGap = 1.1;  // of the size
    if (!row.end) return false;
    const bool linked = !row.links.empty();
    const bool isDecimal = isDecimalNumber(row.end->number);
    return row.end->hasLeaders || (row.end->gap > wideGap * row.line.look.size && (aligned >= 3 || linked)) ||
           (aligned >= 5 && row.end->gap > 0.2) || (linked && aligned >= 2) ||
           (isDecimal && linked && row.links.back().box.right() >= row.line.right - 4);
}

void judgeColumn(std::vector<ContentsRow> &rows, int column) {
    Alignment rights(2);
    for (const ContentsRow &row : rows) {
        if (row.column == column && row.end) rights.add(row.line.right);
    }
    for (ContentsRow &row : rows) {
        if (row.column == column) row.isEntry = endsInPageNumber(row, rights.near(row.line.right));
    }
}

/// On a page where nearly every row ends in a number, and these rise, they are page numbers wherever they
/// stand.
void judgePage(std::vector<ContentsRow> &rows) {
    constexpr size_t fewest = 5;
    constexpr double share = 0.7;
    constexpr double risingShare = 0.9;
    std::vector<int> numbers;
    const auto mayHaveOne = [](const ContentsRow &row) {
        return row.end && !isChapterLabel(row.line.text);  // which ends in the chapter's
    };
    for (const ContentsRow &row : rows) {
        if (mayHaveOne(row) && isDecimalNumber(row.end->number))
            numbers.push_back(decimalValue(row.end->number));
    }
    const auto count = static_cast<double>(numbers.size());
    if (numbers.size() < fewest || count < share * static_cast<double>(rows.size())) return;
    int rising = 0;
    for (size_t i = 1; i < numbers.size(); ++i)
        rising += mayFollow(numbers[i], numbers[i - 1]) ? 1 : 0;
    if (rising < risingShare * (count - 1) || numbers.back() <= numbers.front()) return;
    for (ContentsRow &row : rows)
        row.isEntry = row.isEntry || mayHaveOne(row);
}

}  // namespace

bool ContentsRow::hasOneTarget() const {
    return !links.empty() && std::all_of(links.begin(), links.end(), [this](const ContentsLink &link) {
        return link.targetPage == links.front().targetPage;
    });
}

std::optional<RowEnd> rowEnd(const TextLine &row) {
    static const QRegularExpression end(
        QStringLiteral("^(?<title>.*?)(?<between>\\s|[.·…‥․_⋅]\\s*)(?<number>%1)\\s*$").arg(numberPattern()),
        cased);
    static const QRegularExpression leaders(QStringLiteral("(?:[.·…‥․_⋅]\\s*){3,}$|[…‥]\\s*$"), cased);
    static const QRegularExpression leadersBefore(QStringLiteral("(?:\\s*[.·…‥․_⋅]){2,}\\s*$|\\s*[…‥]+\\s*$"),
                                                  cased);
    static const QRegularExpression lastDot(QStringLiteral("[\\s.·_⋅]*\\s[.·_⋅]$"), cased);
    if (row.text.isEmpty() || !mayEndNumber(row.text.back())) return std::nullopt;
    const QRegularExpressionMatch match = end.match(row.text);
    if (!match.hasMatch()) return std::nullopt;
    const QString title = match.captured(u"title");
    const QString between = match.captured(u"between");
    RowEnd result;
    result.number = match.captured(u"number");
    result.hasLeaders = leaders.match(title + between).hasMatch();
    result.title = title.trimmed();
    if (result.hasLeaders) {
        result.title =
            QString(between.trimmed().isEmpty() ? title : title + between).remove(leadersBefore).trimmed();
        result.title.remove(lastDot);
    }
    if (countLetters(result.title) == 0) return std::nullopt;
    result.gap = gapBeforeNumber(row.spans, result.number);
    return result;
}

std::vector<ContentsLink> linksOn(const TextLine &line, const std::vector<ContentsLink> &links) {
    constexpr double leastOverlap = 0.3;
    std::vector<ContentsLink> found;
    for (const ContentsLink &link : links) {
        const double y = line.baseline - 2;
        if (link.box.top() - 1 >= y || y >= link.box.bottom() + 1) continue;
        const double overlap = std::min(link.box.right(), line.right) - std::max(link.box.left(), line.left);
        if (overlap > leastOverlap * std::min(link.box.width(), line.width())) found.push_back(link);
    }
    return found;
}

std::optional<double> contentsGutter(const PageLines &page) {
    return gutterOf(rowSpans(page), page.width());
}

std::vector<ContentsRow> contentsRows(const PageLines &page, int index, bool withLinks) {
    const std::vector<std::vector<LineSpan>> spans = rowSpans(page);
    const std::optional<double> gutter = gutterOf(spans, page.width());
    std::vector<ContentsRow> rows;
    for (int column = 0; column <= (gutter ? 1 : 0); ++column) {
        for (const std::vector<LineSpan> &row : spans) {
            std::vector<LineSpan> own = row;
            if (gutter) {
                std::erase_if(
                    own, [&](const LineSpan &span) { return (span.left() >= *gutter) != (column == 1); });
            }
            if (own.empty()) continue;
            ContentsRow made;
            made.line = makeLine(std::move(own), index);
            made.page = index;
            made.column = column;
            made.end = rowEnd(made.line);
            if (withLinks) made.links = linksOn(made.line, page.links);
            rows.push_back(std::move(made));
        }
        judgeColumn(rows, column);
    }
    judgePage(rows);
    return rows;
}

}  // namespace leafwright
