#include "autotoc/HeadingTree.h"

namespace leafwright {

namespace {

constexpr qsizetype shortestHeading = 4;  // UTF-16 units
constexpr qsizetype longestHeading = 60;
/// How far behind a heading's end, in characters of the page, a run may start and still continue it.
constexpr int continuationWindow = 15;

}  // namespace

std::unique_ptr<MyOutlineItem> makeTopItem(const TextPages &pages, const QString &title) {
    return std::make_unique<MyOutlineItem>(
        title, PageTarget{pages.pageCount() > 0 ? pages.pageLabel(0) : QString()});
}

QString autoTOCTitle(int maxDepth) {
    return QLatin1String("AutoTOC") + QString::number(maxDepth);
}

bool canBeHeading(const QString &text) {
    return text.size() >= shortestHeading && text.size() <= longestHeading && hasLetters(text);
}

void HeadingTree::place(const Heading &heading, int level) {
    const int depth = currentDepth();
    if (depth < level) {
        if (depth < maxDepth_) insertBelow(*path_.back(), heading);
    } else if (depth == level && continuesLast(heading)) {
        MyOutlineItem &last = *path_.back();
        last.setPageTitle(last.pageTitle() + u' ' + heading.text);
        lastEnd_ = heading.range.end();
    } else {
        path_.resize(level);  // up to the parent of the item at the heading's depth
        insertBelow(*path_.back(), heading);
    }
}

bool HeadingTree::continuesLast(const Heading &heading) const {
    return heading.pageLabel == path_.back()->pageLabel() &&
           heading.range.location < lastEnd_ + continuationWindow;
}

void HeadingTree::insertBelow(MyOutlineItem &parent, const Heading &heading) {
    path_.push_back(&parent.appendChild(std::make_unique<MyOutlineItem>(
        trimSpacesString(heading.text), PageTarget{heading.pageLabel, heading.point, heading.pageIndex})));
    lastEnd_ = heading.range.end();
}

}  // namespace leafwright
