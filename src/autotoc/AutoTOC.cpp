#include "autotoc/AutoTOC.h"

#include "categories/RunWalk.h"

namespace leafwright {

namespace {

constexpr qsizetype shortestHeading = 4;  // UTF-16 units
constexpr qsizetype longestHeading = 60;
/// How far behind a heading's end, in characters of the page, a run may start and still continue it.
constexpr int continuationWindow = 15;

/// A run that is a heading.
struct Heading {
    QString text;  ///< Cleaned and trimmed.
    int level;
    QString pageLabel;
    QPointF point;
    TextRange range;
};

/// Places headings below a top item one after another.
class HeadingTree {
public:
    HeadingTree(MyOutlineItem &top, int maxDepth) : path_{&top}, maxDepth_(maxDepth) {}

    void place(const Heading &heading) {
        const int depth = currentDepth();
        if (depth < heading.level) {
            if (depth < maxDepth_) insertBelow(*path_.back(), heading);
        } else if (depth == heading.level && continuesLast(heading)) {
            MyOutlineItem &last = *path_.back();
            last.setPageTitle(last.pageTitle() + u' ' + heading.text);
            lastEnd_ = heading.range.end();
        } else {
            path_.resize(heading.level);  // up to the parent of the item at the heading's depth
            insertBelow(*path_.back(), heading);
        }
    }

private:
    int currentDepth() const { return static_cast<int>(path_.size()) - 1; }

    bool continuesLast(const Heading &heading) const {
        return heading.pageLabel == path_.back()->pageLabel() &&
               heading.range.location < lastEnd_ + continuationWindow;
    }

    void insertBelow(MyOutlineItem &parent, const Heading &heading) {
        auto item = std::make_unique<MyOutlineItem>();
        item->setPageTitle(trimSpacesString(heading.text));
        item->setPageLabel(heading.pageLabel);
        item->setPointOnPage(heading.point);
        path_.push_back(&parent.appendChild(std::move(item)));
        lastEnd_ = heading.range.end();
    }

    /// The top item, ..., the last item: an item's children are always appended, so the next sibling of
    /// an item on the path is its parent's new last child.
    std::vector<MyOutlineItem *> path_;
    int maxDepth_;
    int lastEnd_ = 1;  ///< Not reset between pages.
};

QHash<Font, int> levelTable(const HeadingLevelMap &map) {
    QHash<Font, int> levels;
    for (const LevelRecord &record : map) {
        if (record.font) levels.insert(*record.font, record.levelNumber);
    }
    return levels;
}

}  // namespace

std::unique_ptr<MyOutlineItem> runAutoTOCwithH1H2H3Map(const TextPages &pages, const HeadingLevelMap &map,
                                                       int maxDepth) {
    auto top = std::make_unique<MyOutlineItem>();
    top->setPageLabel(pages.pageLabel(0));
    top->setPageTitle(QLatin1String("AutoTOC") + QString::number(maxDepth));

    const QHash<Font, int> levels = levelTable(map);
    HeadingTree tree(*top, maxDepth);
    for (int page = 0; page < pages.pageCount(); ++page) {
        const std::shared_ptr<const PageText> text = pages.pageText(page);
        size_t runIndex = 0;
        walkRuns(text->attributedString, [&](const CleanedRun &run) {
            const size_t index = runIndex++;
            const QString title = trimmedBlanksAndNewlines(run.text);
            if (title.size() < shortestHeading || title.size() > longestHeading) return;
            const auto level = levels.constFind(run.font);
            if (level == levels.constEnd() || !hasLetters(title)) return;
            tree.place({title, *level, pages.pageLabel(page), topLeftPointOfRun(*text, index), run.range});
        });
    }
    return top;
}

}  // namespace leafwright
