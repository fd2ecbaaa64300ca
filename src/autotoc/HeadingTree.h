#pragma once

#include "categories/RunWalk.h"
#include "model/MyOutlineItem.h"
#include "pdf/TextPages.h"

#include <memory>
#include <vector>

namespace leafwright {

/// A run that is a heading.
struct Heading {
    QString text;  ///< Cleaned and trimmed.
    Font font;
    QString pageLabel;  ///< Of its page.
    int pageIndex;      ///< 0-based.
    QPointF point;      ///< Of its top left corner, in page space; the zero point is no particular spot.
    TextRange range;    ///< Where it stands in its page's text.
};

/// A new, detached item with no children that leads to the first page, for headings to go below.
/// Without pages it leads nowhere.
std::unique_ptr<MyOutlineItem> makeTopItem(const TextPages &pages, const QString &title);
/// The title of AutoTOC's top item.
QString autoTOCTitle(int maxDepth);

/// Places headings below a top item one after another. Depth follows the tree, not the level: a heading goes
/// one deeper than the last one at most. One that closely follows another of its level on the page continues
/// that one's title.
class HeadingTree {
public:
    /// @param top without children; must outlive this
    /// @param maxDepth the deepest nesting below the top item; headings beyond it are dropped
    HeadingTree(MyOutlineItem &top, int maxDepth) : path_{&top}, maxDepth_(maxDepth) {}

    /// The depth of the heading that was placed last; 0 before the first.
    int currentDepth() const { return static_cast<int>(path_.size()) - 1; }
    /// @param level 1 is the top level
    void place(const Heading &heading, int level);

private:
    bool continuesLast(const Heading &heading) const;
    void insertBelow(MyOutlineItem &parent, const Heading &heading);

    /// The top item, ..., the last item: an item's children are always appended, so the next sibling of
    /// an item on the path is its parent's new last child.
    std::vector<MyOutlineItem *> path_;
    int maxDepth_;
    int lastEnd_ = 1;  ///< Not reset between pages.
};

/// Whether a run's text, cleaned and trimmed, may be a heading: 4 to 60 UTF-16 units with letters.
bool canBeHeading(const QString &text);

/// Calls `visit(const Heading &, level)` for every heading of all pages, in order.
/// @param levelOf gives a font's level, or nothing for a font that makes no headings
template <typename LevelOf, typename Visit>
void walkHeadings(const TextPages &pages, LevelOf &&levelOf, Visit &&visit) {
    for (int page = 0; page < pages.pageCount(); ++page) {
        const std::shared_ptr<const PageText> text = pages.pageText(page);
        size_t runIndex = 0;
        walkRuns(text->attributedString, [&](const CleanedRun &run) {
            const size_t index = runIndex++;
            const std::optional<int> level = levelOf(run.font);
            if (!level) return;
            const QString title = trimmedBlanksAndNewlines(run.text);
            if (!canBeHeading(title)) return;
            visit(Heading{title, run.font, pages.pageLabel(page), page, topLeftPointOfRun(*text, index),
                          run.range},
                  *level);
        });
    }
}

}  // namespace leafwright
