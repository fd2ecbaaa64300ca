#include "contents/TextLine.h"

#include "contents/ContentsWords.h"
#include "contents/ReadingOrder.h"
#include "contents/TextFolding.h"

#include <QHash>

#include <cmath>

namespace leafwright {

namespace {

constexpr double blankGap = 0.14;            // of the size; a wider gap is a blank
constexpr double ideographicBlankGap = 0.5;  // the same between ideographs, which are set apart a little
constexpr double sizeShare = 0.2;            // of the letters; small capitals thus count by their large ones
constexpr double boldShare = 0.55;
constexpr double italicShare = 0.6;
constexpr double monoShare = 0.7;
constexpr double capitalShare = 0.9;
constexpr int fewestCapitals = 3;

double roundedToQuarter(double value) {
    return std::nearbyint(value * 4) / 4;
}

/// The distance between two spans that follow each other, whichever side the second is on.
double gapBetween(const LineSpan &a, const LineSpan &b) {
    return b.left() >= a.left() ? b.left() - a.right() : a.left() - b.right();
}

QString joinedText(const std::vector<LineSpan> &spans) {
    QString text;
    const LineSpan *before = nullptr;
    for (const LineSpan &piece : spans) {
        const QString own = spanText(*piece.span);
        const double gap = before ? gapBetween(*before, piece) : 0;
        const double size = piece.span->size;
        const bool blank = !text.isEmpty() && gap > blankGap * size && !text.back().isSpace() &&
                           !(own.isEmpty() || own.front().isSpace()) &&
                           !(gap < ideographicBlankGap * size && meetWithoutBlank(text, own));
        if (blank) text += u' ';
        text += own;
        before = &piece;
    }
    return text;
}

/// Looks of fonts by their names; each is worked out once a thread.
const FontLook &lookOf(const QString &fontName) {
    static thread_local QHash<QString, FontLook> looks;
    const auto known = looks.constFind(fontName);
    if (known != looks.constEnd()) return *known;
    constexpr qsizetype most =
        5000;  // more fonts than any document has; so that the table never grows for ever
    if (looks.size() > most) looks.clear();
    return *looks.insert(fontName, lookOfFontName(fontName));
}

/// How many letters of a line have what look.
struct LookTally {
    Tally<double> sizes;
    Tally<QString> families;
    Tally<double> baselines;
    double bold = 0;
    double italic = 0;
    double mono = 0;
    double all = 0;

    void add(const LineSpan &piece) {
        constexpr double withoutLetters = 0.1;
        const TextSpan &span = *piece.span;
        const FontLook &look = lookOf(span.fontName);
        const int letters = countLettersAndDigits(span.text);
        const double weight = letters > 0 ? letters : withoutLetters;
        sizes.add(roundedToQuarter(span.size), weight);
        families.add(span.fontName, weight);
        baselines.add(std::nearbyint(piece.baseline * 10) / 10, weight);
        if (span.bold || look.bold) bold += weight;
        if (span.italic || look.italic) italic += weight;
        if (span.mono || look.mono) mono += weight;
        all += weight;
    }

    double size() const {
        double largest = 0;
        for (const auto &[size, weight] : sizes.entries()) {
            if (weight >= sizeShare * all) largest = std::max(largest, size);
        }
        return largest;
    }
};

bool isInCapitals(const QString &text) {
    const int letters = countLetters(text);
    const auto capitals = std::count_if(text.begin(), text.end(), [](QChar c) { return c.isUpper(); });
    return letters >= fewestCapitals && static_cast<double>(capitals) >= capitalShare * letters;
}

}  // namespace

double roundedToHalf(double value) {
    return std::nearbyint(value * 2) / 2;
}

TextLine makeLine(std::vector<LineSpan> spans, int page) {
    TextLine line;
    line.page = page;
    settleReadingOrder(spans);
    line.text = withoutLetterSpacing(withSingleBlanks(logicalText(joinedText(spans))), spans);
    LookTally tally;
    QRectF box = spans.front().span->box;
    for (const LineSpan &piece : spans) {
        tally.add(piece);
        box.setLeft(std::min(box.left(), piece.left()));
        box.setTop(std::min(box.top(), piece.span->box.top()));
        box.setBottom(std::max(box.bottom(), piece.span->box.bottom()));
        box.setRight(std::max(box.right(), piece.right()));
    }
    line.left = box.left();
    line.right = box.right();
    line.top = box.top();
    line.bottom = box.bottom();
    line.baseline = tally.baselines.heaviest().first;
    line.letters = tally.all;
    line.look.size = tally.size();
    line.look.family = lookOf(tally.families.heaviest().first).family;
    line.look.bold = tally.bold >= boldShare * tally.all;
    line.look.italic = tally.italic >= italicShare * tally.all;
    line.look.mono = tally.mono >= monoShare * tally.all;
    line.look.capitals = isInCapitals(line.text);
    line.look.color = spans.front().span->color;
    line.spans = std::move(spans);
    return line;
}

}  // namespace leafwright
