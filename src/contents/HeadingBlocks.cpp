#include "contents/HeadingBlocks.h"

#include "contents/TextFolding.h"
#include "pdf/ReadAhead.h"

#include <cmath>

namespace leafwright {

namespace {

constexpr size_t mostLines = 5;

bool endsWithAny(const QString &text, QStringView characters) {
    return !text.isEmpty() && characters.contains(text.back());
}

/// Joins the lines of a page into blocks.
class BlockMaker {
public:
    BlockMaker(const PageLines &page, const BodyStyle &body, bool hasColumns)
        : page_(page), body_(body), hasColumns_(hasColumns), used_(page.lines.size()) {}

    std::vector<TextBlock> blocks();

private:
    bool isOpen(int index) const {
        const TextLine &line = page_.line(index);
        return !line.isRunning && !line.inContents && !used_[static_cast<size_t>(index)];
    }
    std::vector<int> linesFrom(int first);
    bool looksAlike(const TextLine &first, const TextLine &next) const;
    bool endsBefore(const TextLine &first, const TextLine &upper, const TextLine &lower) const;
    TextBlock blockOf(std::vector<int> lines) const;

    const PageLines &page_;
    const BodyStyle &body_;
    bool hasColumns_;
    std::vector<bool> used_;
};

bool BlockMaker::looksAlike(const TextLine &first, const TextLine &next) const {
    constexpr double sameSize = 0.6;
    constexpr qsizetype longText = 12;
    const LineLook &a = first.look;
    const LineLook &b = next.look;
    const bool turnsToCapitals = b.capitals && !a.capitals && next.text.size() > longText;
    return std::abs(a.size - b.size) <= sameSize && a.bold == b.bold && a.italic == b.italic &&
           a.family == b.family && !turnsToCapitals;
}

/// Whether a block that is no running text ends between two lines of one look.
bool BlockMaker::endsBefore(const TextLine &first, const TextLine &upper, const TextLine &lower) const {
    constexpr double shortSentence = 0.3;  // of the page's width
    constexpr double shortLine = 0.33;     // of the column's width
    constexpr double sameCentre = 3;
    const NumberKind kind = numberingOf(lower.text).kind;
    if (kind == NumberKind::Dotted || kind == NumberKind::Chapter || kind == NumberKind::Part) return true;
    if (kind == NumberKind::Single && numberingOf(first.text).kind == NumberKind::Single) return true;
    if (startsLowercase(lower.text)) return false;
    if (endsWithAny(upper.text, u".:?!") && upper.width() < shortSentence * page_.width()) return true;
    const double columnWidth = page_.width() / (hasColumns_ ? 2 : 1);
    return upper.width() < shortLine * columnWidth && !endsWithAny(upper.text, u"-,") &&
           std::abs(lower.centre() - upper.centre()) > sameCentre;
}

std::vector<int> BlockMaker::linesFrom(int firstIndex) {
    constexpr double leadingOfTitles = 1.5;
    constexpr double leadingOfText = 1.38;
    constexpr double titleSize = 1.3;  // of the body's
    const TextLine &first = page_.line(firstIndex);
    std::vector<int> lines{firstIndex};
    used_[static_cast<size_t>(firstIndex)] = true;
    while (lines.size() < mostLines) {
        const TextLine &upper = page_.line(lines.back());
        if (upper.next < 0 || !isOpen(upper.next)) break;
        const TextLine &lower = page_.line(upper.next);
        if (lower.column != first.column || lower.previous != lines.back() || !looksAlike(first, lower))
            break;
        const double leading = first.look.size > titleSize * body_.size ? leadingOfTitles : leadingOfText;
        if (lower.baseline - upper.baseline > leading * std::max(first.look.size, lower.look.size) + 0.5)
            break;
        if (!first.isBody && endsBefore(first, upper, lower)) break;
        lines.push_back(upper.next);
        used_[static_cast<size_t>(upper.next)] = true;
    }
    return lines;
}

QString joinedText(const PageLines &page, const std::vector<int> &lines) {
    QString text = page.line(lines.front()).text;
    for (size_t i = 1; i < lines.size(); ++i) {
        const QString &next = page.line(lines[i]).text;
        const bool hyphenated = text.size() > 1 && text.back() == u'-' && text[text.size() - 2].isLower() &&
                                startsLowercase(next);
        if (hyphenated) {
            text.chop(1);
        } else if (!meetWithoutBlank(text, next)) {
            text += u' ';
        }
        text += next;
    }
    return text;
}

TextBlock BlockMaker::blockOf(std::vector<int> lines) const {
    const TextLine &first = page_.line(lines.front());
    TextBlock block;
    block.page = first.page;
    block.column = first.column;
    block.look = first.look;
    block.y = first.top;
    block.left = first.left;
    block.right = first.right;
    for (const int index : lines) {
        const TextLine &line = page_.line(index);
        block.left = std::min(block.left, line.left);
        block.right = std::max(block.right, line.right);
        block.look.capitals = block.look.capitals && line.look.capitals;
    }
    block.text = joinedText(page_, lines);
    block.gapAbove = first.gapAbove;
    block.gapBelow = page_.line(lines.back()).gapBelow;
    block.numbering = numberingOf(block.text);
    block.lines = std::move(lines);
    return block;
}

std::vector<TextBlock> BlockMaker::blocks() {
    std::vector<int> order;
    for (int i = 0; i < static_cast<int>(page_.lines.size()); ++i) {
        if (isOpen(i)) order.push_back(i);
    }
    std::stable_sort(order.begin(), order.end(),
                     [this](int a, int b) { return page_.line(a).column < page_.line(b).column; });
    std::vector<TextBlock> result;
    for (const int index : order) {
        if (isOpen(index)) result.push_back(blockOf(linesFrom(index)));
    }
    return result;
}

/// Whether a block is a label or a large number that belongs to the title below it.
bool isLabelOf(const TextBlock &label, const TextBlock &title, const PageLines &page, const BodyStyle &body) {
    constexpr double largeNumber = 1.35;  // of the body's size
    constexpr double titleSize = 1.15;
    constexpr double widestGap = 10.5;
    if (label.lines.size() != 1 || title.lines.size() >= mostLines) return false;
    const bool isNumber = isBareNumber(label.text) && label.look.size >= largeNumber * body.size;
    if (!isNumber && !isChapterLabel(label.text)) return false;
    const TextLine &first = page.line(title.lines.front());
    const double gap = first.baseline - page.line(label.lines.front()).baseline;
    const NumberKind kind = title.numbering.kind;
    const bool looksLikeTitle =
        title.look.size >= titleSize * body.size || title.look.bold || title.look.capitals;
    return gap > 0 && gap < widestGap * body.size && looksLikeTitle && !first.isBody &&
           (kind == NumberKind::None || kind == NumberKind::PerhapsSingle);
}

void addLabel(const TextBlock &label, TextBlock &title) {
    QString text = label.text;
    while (endsWithAny(text, u".:"))
        text.chop(1);
    title.text = text + u' ' + title.text;
    title.y = label.y;
    title.gapAbove = label.gapAbove;
    title.hasLabel = true;
    title.numbering = numberingOf(title.text);
    title.lines.insert(title.lines.begin(), label.lines.begin(), label.lines.end());
}

std::vector<TextBlock> blocksOfPage(PageLines &page, const BodyStyle &body) {
    const bool hasColumns = assignColumns(page);
    std::vector<TextBlock> all = BlockMaker(page, body, hasColumns).blocks();
    std::vector<TextBlock> blocks;
    for (size_t k = 0; k < all.size(); ++k) {
        if (k + 1 < all.size() && isLabelOf(all[k], all[k + 1], page, body)) {
            addLabel(all[k], all[k + 1]);
            ++k;
        }
        blocks.push_back(std::move(all[k]));
    }
    return blocks;
}

}  // namespace

bool assignColumns(PageLines &page) {
    constexpr double fewestLetters = 8;
    constexpr double leftEnd = 0.54;  // of the width
    constexpr double rightBegin = 0.46;
    constexpr int fewestLines = 8;
    constexpr double acrossShare = 0.25;
    constexpr double commonShare = 0.35;
    const double width = page.width();
    double left = 0;
    double right = 0;
    double across = 0;
    double all = 0;
    Tally<int> lefts;
    for (TextLine &line : page.lines) {
        line.column = 0;
        if (line.isRunning || line.letters < fewestLetters) continue;
        ++all;
        left += line.right < leftEnd * width ? 1 : 0;
        across += line.left < 0.4 * width && line.right > 0.6 * width ? 1 : 0;
        if (line.left <= rightBegin * width) continue;
        ++right;
        lefts.add(static_cast<int>(std::nearbyint(line.left / 4)));
    }
    if (left < fewestLines || right < fewestLines || across > acrossShare * all) return false;
    if (lefts.heaviest().second < commonShare * right) return false;
    const double gutter = width / 2;
    for (TextLine &line : page.lines) {
        const bool isAcross = line.left < 0.4 * width && line.right > 0.62 * width;
        const bool isLeft = line.centre() < gutter && line.left <= gutter - 12;
        line.column = isAcross || isLeft ? 0 : 1;
    }
    return true;
}

std::vector<TextBlock> makeBlocks(std::vector<PageLines> &pages, const BodyStyle &body) {
    std::vector<std::vector<TextBlock>> ofPages(pages.size());
    onAllCores(static_cast<int>(pages.size()), [&](int i) {
        const auto index = static_cast<size_t>(i);
        ofPages[index] = blocksOfPage(pages[index], body);
    });
    std::vector<TextBlock> blocks;
    for (std::vector<TextBlock> &ofPage : ofPages)
        std::move(ofPage.begin(), ofPage.end(), std::back_inserter(blocks));
    return blocks;
}

}  // namespace leafwright
