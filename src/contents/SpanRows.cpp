#include "contents/SpanRows.h"

#include "contents/Numbering.h"

#include <cmath>
#include <set>

namespace leafwright {

namespace {

constexpr double smallSize = 0.85;  // of a neighbour's size; such characters may be raised or lowered
constexpr size_t nearbySpans = 30;  // how far a neighbour may be in the order of baselines

/// Spans of one baseline while rows are being made.
struct Row {
    double baseline = 0;
    double size = 0;
    std::vector<LineSpan> spans;
};

/// Whether two spans touch, give or take a part of a size.
bool touch(const LineSpan &a, const LineSpan &b, double least, double most) {
    const double after = a.left() - b.right();
    const double before = b.left() - a.right();
    return (after > least && after < most) || (before > least && before < most);
}

std::vector<LineSpan> horizontalSpans(const std::vector<TextSpan> &spans) {
    constexpr double leftToRight = 0.95;
    constexpr double samePlace = 1.5;  // points; bold text is often made by drawing it twice, a little apart
    std::set<std::tuple<int, int, QString>> seen;  // places first, which are compared faster
    std::vector<LineSpan> kept;
    for (const TextSpan &span : spans) {
        if (span.direction.x() <= leftToRight) continue;
        const auto place = [](double value) { return static_cast<int>(std::nearbyint(value / samePlace)); };
        if (seen.emplace(place(span.baseline), place(span.box.left()), span.text).second)
            kept.push_back({&span, span.baseline});
    }
    return kept;
}

/// The bigger text that a short, small, raised or lowered span touches; null where it stands alone.
const LineSpan *touchedText(const std::vector<LineSpan> &spans, size_t index) {
    constexpr double lowest = -0.32;
    constexpr double highest = 0.75;
    const LineSpan &small = spans[index];
    const LineSpan *best = nullptr;
    double bestDistance = 0;
    const size_t end = std::min(spans.size(), index + nearbySpans + 1);
    for (size_t i = index - std::min(index, nearbySpans); i < end; ++i) {
        const LineSpan &big = spans[i];
        const double size = big.span->size;
        const double raise = big.baseline - small.baseline;
        if (small.span->size > smallSize * size || raise <= lowest * size || raise >= highest * size)
            continue;
        if (std::abs(raise) <= 0.3 || !touch(small, big, -0.55 * size, 0.25 * size)) continue;
        const double distance =
            std::min(std::abs(small.left() - big.right()), std::abs(big.left() - small.right()));
        if (best && distance >= bestDistance) continue;
        best = &big;
        bestDistance = distance;
    }
    return best;
}

void settleRaisedSpans(std::vector<LineSpan> &spans) {
    constexpr qsizetype longest = 6;
    std::vector<double> baselines;
    for (size_t i = 0; i < spans.size(); ++i) {
        const bool isShort = spans[i].span->text.trimmed().size() <= longest;
        const LineSpan *text = isShort ? touchedText(spans, i) : nullptr;
        baselines.push_back(text ? text->baseline : spans[i].baseline);
    }
    for (size_t i = 0; i < spans.size(); ++i)
        spans[i].baseline = baselines[i];
}

bool isOnBaseline(const LineSpan &span, const Row &row) {
    const double size = span.span->size;
    const double distance = std::abs(span.baseline - row.baseline);
    if (distance <= std::max(0.8, 0.12 * std::min(size, row.size))) return true;
    const QRectF &box = span.span->box;
    const QRectF &first = row.spans.front().span->box;
    return distance < 0.5 * size && std::abs(box.top() - first.top()) < 0.12 * size &&
           std::abs(box.bottom() - first.bottom()) < 0.12 * size;
}

/// Whether a span is small text below the baseline of a row. Rows begin with what stands highest.
bool isLoweredInRow(const LineSpan &span, const Row &row) {
    constexpr size_t mostLookedAt = 200;
    if (span.span->size > smallSize * row.size) return false;
    if (span.baseline >= row.baseline + 0.3 * row.size) return false;
    const auto last =
        row.spans.rbegin() + static_cast<std::ptrdiff_t>(std::min(row.spans.size(), mostLookedAt));
    return std::any_of(row.spans.rbegin(), last, [&](const LineSpan &other) {
        return touch(span, other, -0.5 * row.size, 0.3 * row.size);
    });
}

std::vector<Row> rowsByBaseline(std::vector<LineSpan> spans) {
    constexpr size_t openRows = 4;
    std::sort(spans.begin(), spans.end(), [](const LineSpan &a, const LineSpan &b) {
        return std::make_tuple(a.baseline, -a.span->size, a.left()) <
               std::make_tuple(b.baseline, -b.span->size, b.left());
    });
    std::vector<Row> rows;
    for (const LineSpan &span : spans) {
        const auto end = rows.rbegin() + static_cast<std::ptrdiff_t>(std::min(rows.size(), openRows));
        const auto row = std::find_if(rows.rbegin(), end, [&span](const Row &r) {
            return isOnBaseline(span, r) || isLoweredInRow(span, r);
        });
        if (row != end) {
            row->spans.push_back(span);
        } else {
            rows.push_back({span.baseline, span.span->size, {span}});
        }
    }
    return rows;
}

/// Whether a row holds nothing but small raised characters of the row below.
bool belongsBelow(const Row &row, const Row &below) {
    if (row.size > smallSize * below.size || below.baseline - row.baseline >= 0.6 * below.size) return false;
    return std::all_of(row.spans.begin(), row.spans.end(), [&below](const LineSpan &span) {
        return std::any_of(below.spans.begin(), below.spans.end(), [&](const LineSpan &other) {
            return touch(span, other, -0.5 * below.size, 0.3 * below.size);
        });
    });
}

}  // namespace

std::vector<std::vector<LineSpan>> spanRows(const std::vector<TextSpan> &spans) {
    constexpr size_t rowsBelow = 3;
    std::vector<LineSpan> pieces = horizontalSpans(spans);
    std::stable_sort(pieces.begin(), pieces.end(), [](const LineSpan &a, const LineSpan &b) {
        return std::make_tuple(a.baseline, a.left()) < std::make_tuple(b.baseline, b.left());
    });
    settleRaisedSpans(pieces);
    std::vector<Row> rows = rowsByBaseline(std::move(pieces));
    std::vector<std::vector<LineSpan>> result;
    for (size_t i = 0; i < rows.size(); ++i) {
        const auto begin = rows.begin() + static_cast<std::ptrdiff_t>(i) + 1;
        const auto end = rows.begin() + static_cast<std::ptrdiff_t>(std::min(rows.size(), i + 1 + rowsBelow));
        const auto below =
            std::find_if(begin, end, [&](const Row &row) { return belongsBelow(rows[i], row); });
        if (below != end) {
            below->spans.insert(below->spans.end(), rows[i].spans.begin(), rows[i].spans.end());
            continue;
        }
        std::stable_sort(rows[i].spans.begin(), rows[i].spans.end(),
                         [](const LineSpan &a, const LineSpan &b) { return a.left() < b.left(); });
        result.push_back(std::move(rows[i].spans));
    }
    return result;
}

std::vector<std::vector<LineSpan>> partedAtGaps(std::vector<LineSpan> row) {
    constexpr double widestGap = 1.5;  // of the size
    constexpr double widestBehindNumber = 5.5;
    constexpr double leastSize = 6;
    constexpr qsizetype longestNumber = 14;
    constexpr size_t mostNumberSpans = 3;
    std::vector<std::vector<LineSpan>> parts{{row.front()}};
    double end = row.front().right();
    for (size_t i = 1; i < row.size(); ++i) {
        const LineSpan &span = row[i];
        double widest = widestGap * std::max(span.span->size, leastSize);
        if (parts.back().size() <= mostNumberSpans) {
            QString text;
            for (const LineSpan &piece : parts.back())
                text += piece.span->text;
            text = text.trimmed();
            if (text.size() <= longestNumber && isNumberLabel(text))
                widest = widestBehindNumber * span.span->size;
        }
        if (span.left() - end > widest) parts.emplace_back();
        parts.back().push_back(span);
        end = std::max(end, span.right());
    }
    return parts;
}

}  // namespace leafwright
