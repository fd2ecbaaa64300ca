#include "pageview/TextSelector.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace leafwright {

namespace {

QPointF centreOf(const Rect &rect) {
    return {rect.x + rect.width / 2, rect.y + rect.height / 2};
}

bool contains(const Rect &rect, const QPointF &point) {
    return point.x() >= rect.x && point.x() <= rect.right() && point.y() >= rect.y && point.y() <= rect.top();
}

/// The square of the distance from a point to the nearest point of a rectangle.
double distance(const Rect &rect, const QPointF &point) {
    const double x = std::max({rect.x - point.x(), 0.0, point.x() - rect.right()});
    const double y = std::max({rect.y - point.y(), 0.0, point.y() - rect.top()});
    return x * x + y * y;
}

bool belongsToWord(QChar character) {
    return character.isLetterOrNumber() || character.isMark() || character.isSurrogate() ||
           character == u'_' || character == u'\u2019' || character == u'\'';
}

}  // namespace

TextSelector::TextSelector(QString text, std::vector<Rect> boxes)
    : text_(std::move(text)), boxes_(std::move(boxes)) {
    // Both are read apart; a page whose reading is cut short may give fewer boxes than characters.
    boxes_.resize(static_cast<size_t>(text_.size()));
    int begin = 0;
    while (begin < length()) {
        const auto feed = static_cast<int>(text_.indexOf(u'\n', begin));
        const int end = feed < 0 ? length() : feed + 1;
        addLine({begin, end - begin});
        begin = end;
    }
}

void TextSelector::addLine(const TextRange &range) {
    Line line{range, {}, {}};
    std::optional<QPointF> first;
    QPointF last;
    for (int i = range.location; i < range.end(); ++i) {
        const Rect &box = boxes_[static_cast<size_t>(i)];
        if (box.isEmpty()) continue;
        line.bounds = line.bounds.united(box);
        last = centreOf(box);
        if (!first) first = last;
    }
    if (!first) return;
    line.direction = last - *first;
    if (line.direction.isNull()) line.direction = QPointF(1, 0);
    lines_.push_back(line);
}

int TextSelector::lineIndexAt(const QPointF &point) const {
    for (size_t i = 0; i < lines_.size(); ++i) {
        if (contains(lines_[i].bounds, point)) return static_cast<int>(i);
    }
    return -1;
}

const TextSelector::Line *TextSelector::lineNear(const QPointF &point) const {
    const Line *nearest = nullptr;
    double least = std::numeric_limits<double>::infinity();
    for (const Line &line : lines_) {
        const double d = distance(line.bounds, point);
        if (d < least) {
            least = d;
            nearest = &line;
        }
    }
    return nearest;
}

int TextSelector::characterNear(const Line &line, const QPointF &point) const {
    int nearest = line.range.location;
    double least = std::numeric_limits<double>::infinity();
    for (int i = line.range.location; i < line.range.end(); ++i) {
        const Rect &box = boxes_[static_cast<size_t>(i)];
        if (box.isEmpty()) continue;
        const double d = distance(box, point);
        if (d < least) {
            least = d;
            nearest = i;
        }
    }
    return nearest;
}

int TextSelector::afterCharacter(int index) const {
    const bool pair = text_.at(index).isHighSurrogate() && index + 1 < length();
    return index + (pair ? 2 : 1);
}

int TextSelector::caretNear(const QPointF &point) const {
    const Line *const line = lineNear(point);
    if (!line) return 0;
    const int character = characterNear(*line, point);
    const QPointF fromCentre = point - centreOf(boxes_[static_cast<size_t>(character)]);
    const bool behind = QPointF::dotProduct(fromCentre, line->direction) > 0;
    return behind ? afterCharacter(character) : character;
}

TextRange TextSelector::rangeBetween(const QPointF &a, const QPointF &b) const {
    const auto [begin, end] = std::minmax({caretNear(a), caretNear(b)});
    return {begin, end - begin};
}

TextRange TextSelector::wordAt(const QPointF &point) const {
    const int index = lineIndexAt(point);
    if (index < 0) return {};
    const TextRange line = lines_[static_cast<size_t>(index)].range;
    int begin = characterNear(lines_[static_cast<size_t>(index)], point);
    int end = afterCharacter(begin);
    if (!belongsToWord(text_.at(begin))) return {begin, end - begin};
    while (begin > line.location && belongsToWord(text_.at(begin - 1)))
        --begin;
    while (end < line.end() && belongsToWord(text_.at(end)))
        ++end;
    return {begin, end - begin};
}

TextRange TextSelector::lineAt(const QPointF &point) const {
    const int index = lineIndexAt(point);
    return index < 0 ? TextRange{} : lines_[static_cast<size_t>(index)].range;
}

std::vector<Rect> TextSelector::rects(const TextRange &range) const {
    std::vector<Rect> rects;
    const auto end = [](const Line &line) { return line.range.end(); };
    auto line = std::ranges::upper_bound(lines_, range.location, {}, end);
    for (; line != lines_.end() && line->range.location < range.end(); ++line) {
        const int first = std::max(line->range.location, range.location);
        const int behind = std::min(line->range.end(), range.end());
        Rect rect;
        for (int i = first; i < behind; ++i)
            rect = rect.united(boxes_[static_cast<size_t>(i)]);
        if (!rect.isEmpty()) rects.push_back(rect);
    }
    return rects;
}

}  // namespace leafwright
