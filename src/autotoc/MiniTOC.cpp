#include "autotoc/MiniTOC.h"

#include "autotoc/FontStrings.h"
#include "autotoc/HeadingTree.h"

namespace leafwright {

namespace {

/// Follows runs and tells when they have matched the whole pattern.
class PatternMatch {
public:
    /// @param pattern not empty; must outlive this
    explicit PatternMatch(const QStringList &pattern) : pattern_(pattern) {}

    /// @return whether this run completed a match: title() and point() are the heading's until the next run
    bool take(const QString &fontString, const QString &text, const QPointF &point) {
        if (isComplete()) reset();
        if (fontString != pattern_[index_]) {
            reset();
            return false;
        }
        if (index_ == 0) point_ = point;
        title_ += text;
        ++index_;
        return isComplete();
    }
    const QString &title() const { return title_; }
    const QPointF &point() const { return point_; }

private:
    bool isComplete() const { return index_ == pattern_.size(); }
    void reset() {
        index_ = 0;
        title_.clear();
    }

    const QStringList &pattern_;
    qsizetype index_ = 0;  ///< How many entries have been matched in a row.
    QString title_;
    QPointF point_;  ///< Of the first run.
};

}  // namespace

QStringList fontPattern(const AttributedString &sample) {
    QStringList pattern;
    for (const FontRun &run : sample.runs)
        pattern.append(fontString(run.font));
    return pattern;
}

std::unique_ptr<MyOutlineItem> runMiniTOC(const TextPages &pages, const QStringList &pattern) {
    auto top = makeTopItem(pages, QStringLiteral("MiniTOC"));
    if (pattern.isEmpty()) return top;
    FontStrings fontStrings;
    PatternMatch match(pattern);
    for (int page = 0; page < pages.pageCount(); ++page) {
        const std::shared_ptr<const PageText> text = pages.pageText(page);
        size_t runIndex = 0;
        walkRuns(text->attributedString, [&](const CleanedRun &run) {
            const QPointF point = topLeftPointOfRun(*text, runIndex++);
            if (!match.take(fontStrings.of(run.font), trimmedBlanksAndNewlines(run.text), point)) return;
            top->appendChild(std::make_unique<MyOutlineItem>(
                match.title(), PageTarget{pages.pageLabel(page), match.point(), page}));
        });
    }
    return top;
}

}  // namespace leafwright
