#include "contents/HeadingFeatures.h"

#include "contents/ContentsWords.h"
#include "contents/TextFolding.h"

#include <QRegularExpression>
#include <QSet>

#include <cmath>
#include <map>

namespace leafwright {

namespace {

using enum HeadingFeature;

constexpr double biggerSize = 1.045;  // of the body's

bool isBigger(const TextBlock &block, const BodyStyle &body) {
    return block.look.size > body.size * biggerSize + 0.05;
}

/// Where the body text begins, by the page's side and the column.
class BodyMargins {
public:
    explicit BodyMargins(const std::vector<PageLines> &pages) {
        constexpr double fewestLetters = 15;
        std::map<std::pair<int, int>, Tally<int>> lefts;
        for (const PageLines &page : pages) {
            for (const TextLine &line : page.lines) {
                if (line.isBody && line.letters > fewestLetters)
                    lefts[{line.page % 2, line.column}].add(static_cast<int>(std::nearbyint(line.left / 2)));
            }
        }
        for (const auto &[key, tally] : lefts)
            margins_[key] = tally.heaviest().first * 2;
    }

    double of(const TextBlock &block) const {
        const auto found = margins_.find({block.page % 2, block.column});
        return found == margins_.end() ? block.left : found->second;
    }

private:
    std::map<std::pair<int, int>, double> margins_;
};

/// Whether a block could be a heading at all.
bool isCandidate(const TextBlock &block, const TextLine &first, const BodyStyle &body) {
    constexpr qsizetype longest = 220;
    constexpr size_t mostLines = 4;
    constexpr int fewestLetters = 2;
    constexpr double smallest = 0.78;
    constexpr double apart = 1.25;
    constexpr double slightlyApart = 1.15;
    const QString &text = block.text;
    if (block.lines.size() > mostLines + (block.hasLabel ? 1 : 0) || text.size() > longest) return false;
    const bool bigger = isBigger(block, body);
    const bool bold = block.look.bold && !body.bold;
    const bool italicApart = block.look.italic && first.gapAbove > slightlyApart * body.leading;
    const bool otherFamily = block.look.family != body.family && !block.look.mono;
    const NumberKind kind = block.numbering.kind;
    const bool numbered = kind != NumberKind::None && kind != NumberKind::PerhapsSingle;
    if (!bigger && !bold && !italicApart && !block.look.capitals && !otherFamily && !numbered) return false;
    if (block.look.size < smallest * body.size) return false;
    if (countLetters(text) < fewestLetters && !hasIdeographs(text)) return false;
    if (text.startsWith(u'[') && text.endsWith(u']')) return false;
    if (bigger || block.look.bold) return true;
    return !block.look.mono &&
           block.gapAbove > apart * std::max(body.leading, slightlyApart * block.look.size);
}

bool hasRowMate(const TextBlock &block, const PageLines &page) {
    const std::vector<int> &row = page.rows[static_cast<size_t>(page.line(block.lines.front()).row)];
    return std::any_of(row.begin(), row.end(), [&](int index) {
        const TextLine &line = page.line(index);
        const bool isOwn = std::find(block.lines.begin(), block.lines.end(), index) != block.lines.end();
        return !isOwn && (line.isRunning || line.inContents || line.column == block.column);
    });
}

void measureText(HeadingFeatures &f, const TextBlock &block) {
    constexpr double charactersPerIdeographicWord = 2.2;
    static const QRegularExpression symbols(QStringLiteral("[=<>{}\\\\|;]|\\(\\)|::|->"));
    const QString &text = block.text;
    const QChar last = text.back();
    f[EndsInStop] = last == u'.' || last == u';' || last == u',';
    f[EndsInColon] = last == u':';
    f[HeadingFeature::StartsLowercase] = startsLowercase(text);
    const double words = hasIdeographs(text) ? static_cast<double>(text.size()) / charactersPerIdeographicWord
                                             : static_cast<double>(text.count(u' ') + 1);
    f[Length] = std::min(3.0, words / 10);
    f[Caption] = startsAsCaption(text);
    f[Symbols] = symbols.match(text).hasMatch();
    const NumberKind kind = block.numbering.kind;
    f[HeadingFeature::Dotted] = kind == NumberKind::Dotted;
    f[HeadingFeature::Chapter] = kind == NumberKind::Chapter || kind == NumberKind::Part;
    f[SingleNumber] = kind == NumberKind::Single;
}

void measureLook(HeadingFeatures &f, const TextBlock &block, const BodyStyle &body) {
    const LineLook &look = block.look;
    f[Bigger] = isBigger(block, body);
    f[Bold] = look.bold && !body.bold;
    f[HeadingFeature::Italic] = look.italic;
    f[Capitals] = look.capitals;
    f[OtherFamily] = look.family != body.family;
    f[HeadingFeature::Mono] = look.mono;
    f[Coloured] = (look.color & 0xffffff) != 0;
    f[Smaller] = look.size < body.size - 0.6;
}

void measurePlace(HeadingFeatures &f, const TextBlock &block, const PageLines &page, const BodyStyle &body,
                  double margin) {
    const auto leadings = [&body](double gap) { return std::clamp(gap / body.leading - 1, -0.5, 3.0); };
    const TextLine *below = page.nextOf(page.line(block.lines.back()));
    f[GapAbove] = leadings(block.gapAbove);
    f[GapBelow] = leadings(block.gapBelow);
    f[HasRowMate] = hasRowMate(block, page);
    f[AtMargin] = std::abs(block.left - margin) < 3;
    f[Indented] = block.left > margin + 8;
    f[Outdented] = block.left < margin - 6;
    f[Centred] = std::abs(block.centre() - page.width() / 2) < 8 && block.left > margin + 20;
    f[BodyBelow] = below && below->isBody;
    f[NothingBelow] = !below || below->isRunning;
    f[SmallerBelow] = below && !below->isRunning && below->look.size < block.look.size - 0.4;
    f[FirstPage] = block.page == 0;
}

/// Whether each number of a style's candidates follows the one before it, or is the first.
void measureSequence(std::vector<HeadingCandidate> &all, const std::vector<size_t> &members) {
    QHash<QString, int> last;
    for (const size_t member : members) {
        const Numbering &numbering = all[member].block.numbering;
        const NumberKind kind = numbering.kind;
        const bool counts =
            kind == NumberKind::Dotted || kind == NumberKind::Single || kind == NumberKind::Chapter;
        if (!counts || numbering.components.isEmpty() || numbering.components.back().isEmpty()) continue;
        const QString parent = numbering.components.mid(0, numbering.components.size() - 1).join(u'.');
        const QString &own = numbering.components.back();
        const int ordinal = kind == NumberKind::Dotted && !isDecimalNumber(own) ? 0 : ordinalOf(own);
        const auto before = last.constFind(parent);
        all[member].features[InSequence] =
            ordinal == 1 || (before != last.constEnd() && *before == ordinal - 1);
        last.insert(parent, ordinal);
    }
}

/// Which feature of the style is the mean of which of its candidates.
constexpr std::pair<HeadingFeature, HeadingFeature> means[] = {
    {StyleAtMargin, AtMargin},
    {StyleCaption, Caption},
    {StyleCentred, Centred},
    {StyleChapter, HeadingFeature::Chapter},
    {StyleEndsInColon, EndsInColon},
    {StyleEndsInStop, EndsInStop},
    {StyleGapAbove, GapAbove},
    {StyleGapBelow, GapBelow},
    {StyleIndented, Indented},
    {StyleLength, Length},
    {StyleStartsLowercase, HeadingFeature::StartsLowercase},
    {StyleHasRowMate, HasRowMate},
    {StyleBodyBelow, BodyBelow},
    {StyleNothingBelow, NothingBelow},
    {StyleSmallerBelow, SmallerBelow},
    {StyleDotted, HeadingFeature::Dotted},
    {StyleInSequence, InSequence},
    {StyleSymbols, Symbols},
};

/// How many lines of the document have a look, whether candidates or not.
class LineCounts {
public:
    explicit LineCounts(const std::vector<PageLines> &pages) {
        for (const PageLines &page : pages) {
            for (const TextLine &line : page.lines) {
                if (!line.isRunning && !line.inContents) ++counts_[keyOf(line.look)];
            }
        }
    }
    int of(const StyleKey &style) const {
        return counts_.value(StyleKey{style.size, style.bold, style.italic, false, style.family});
    }

private:
    static StyleKey keyOf(const LineLook &look) {
        return {roundedToHalf(look.size), look.bold, look.italic, false, look.family};
    }

    QHash<StyleKey, int> counts_;
};

void measureStyle(std::vector<HeadingCandidate> &all, const std::vector<size_t> &members, double lines,
                  double pageCount) {
    const auto count = static_cast<double>(members.size());
    HeadingFeatures style;
    QSet<int> pages;
    QSet<QString> texts;
    double own = 0;
    for (const size_t member : members) {
        const HeadingCandidate &candidate = all[member];
        pages.insert(candidate.block.page);
        texts.insert(foldedTitle(candidate.block.text));
        own += static_cast<double>(candidate.block.lines.size());
        for (const auto &[mean, feature] : means)
            style[mean] += candidate.features[feature] / count;
    }
    const auto pagesWithOne = static_cast<double>(pages.size());
    style[StyleShare] = std::min(1.0, own / lines);
    style[StyleFrequency] = std::min(3.0, 2 * std::log1p(count / pageCount));
    style[StyleCrowding] = std::min(3.0, std::log(count / pagesWithOne));
    style[StyleUnique] = static_cast<double>(texts.size()) / count;
    style[StyleSingle] = members.size() == 1;
    style[StyleFew] = members.size() <= 3;
    style[StyleSpread] = std::min(1.0, pagesWithOne / (0.1 * pageCount));
    for (const size_t member : members) {
        for (auto i = static_cast<size_t>(StyleAtMargin); i < headingFeatureCount; ++i)
            all[member].features.values[i] = style.values[i];
    }
}

}  // namespace

std::vector<std::vector<size_t>> HeadingCandidates::byStyle() const {
    std::vector<std::vector<size_t>> members(styles.size());
    for (size_t i = 0; i < candidates.size(); ++i)
        members[static_cast<size_t>(candidates[i].style)].push_back(i);
    return members;
}

QHash<LineRef, int> HeadingCandidates::byLine() const {
    QHash<LineRef, int> result;
    for (size_t i = 0; i < candidates.size(); ++i) {
        const TextBlock &block = candidates[i].block;
        for (const int line : block.lines)
            result.insert({block.page, line}, static_cast<int>(i));
    }
    return result;
}

HeadingCandidates findHeadingCandidates(std::vector<TextBlock> blocks, const std::vector<PageLines> &pages,
                                        const BodyStyle &body) {
    const BodyMargins margins(pages);
    HeadingCandidates result;
    QHash<StyleKey, int> styles;
    for (TextBlock &block : blocks) {
        const PageLines &page = pages[static_cast<size_t>(block.page)];
        if (!isCandidate(block, page.line(block.lines.front()), body)) continue;
        HeadingCandidate candidate;
        measureText(candidate.features, block);
        measureLook(candidate.features, block, body);
        measurePlace(candidate.features, block, page, body, margins.of(block));
        const StyleKey key{roundedToHalf(block.look.size), block.look.bold, block.look.italic,
                           block.look.capitals && !isBigger(block, body), block.look.family};
        const auto style = styles.constFind(key);
        candidate.style = style == styles.constEnd() ? static_cast<int>(result.styles.size()) : *style;
        if (style == styles.constEnd()) {
            styles.insert(key, candidate.style);
            result.styles.push_back(key);
        }
        candidate.block = std::move(block);
        result.candidates.push_back(std::move(candidate));
    }
    const LineCounts lines(pages);
    const std::vector<std::vector<size_t>> members = result.byStyle();
    for (size_t style = 0; style < members.size(); ++style) {
        measureSequence(result.candidates, members[style]);
        measureStyle(result.candidates, members[style], lines.of(result.styles[style]),
                     static_cast<double>(pages.size()));
    }
    return result;
}

}  // namespace leafwright
