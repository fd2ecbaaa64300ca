#pragma once

#include "pdf/PageText.h"

namespace leafwright {

/// Finds the text of one page that somebody points at. Points and boxes are in page space; lines may run in
/// any direction. Carets are places between UTF-16 units, from 0 to the length of the text.
class TextSelector {
public:
    TextSelector() = default;
    /// @param text lines, each ended by a line feed
    /// @param boxes of its UTF-16 units; empty ones belong to what can't be seen
    TextSelector(QString text, std::vector<Rect> boxes);

    int length() const { return static_cast<int>(text_.size()); }
    /// The caret nearest to a point: before or behind the nearest character of the nearest line. Without
    /// any text it is 0.
    int caretNear(const QPointF &point) const;
    /// The text between the carets nearest to two points, whichever comes first.
    TextRange rangeBetween(const QPointF &a, const QPointF &b) const;
    /// The word under a point, or the single character where that belongs to no word; empty off the text.
    TextRange wordAt(const QPointF &point) const;
    /// The line under a point with its line feed; empty off the text.
    TextRange lineAt(const QPointF &point) const;
    /// Whether there is a line of text under a point.
    bool hasTextAt(const QPointF &point) const { return lineIndexAt(point) >= 0; }
    /// Rectangles around a range of the text, one for each line that it touches.
    std::vector<Rect> rects(const TextRange &range) const;

private:
    struct Line {
        TextRange range;  ///< With its line feed.
        Rect bounds;
        QPointF direction;  ///< From its first character to its last.
    };

    void addLine(const TextRange &range);
    int lineIndexAt(const QPointF &point) const;
    const Line *lineNear(const QPointF &point) const;
    int characterNear(const Line &line, const QPointF &point) const;
    int afterCharacter(int index) const;

    QString text_;
    std::vector<Rect> boxes_;
    std::vector<Line> lines_;  ///< Those that can be seen.
};

}  // namespace leafwright
