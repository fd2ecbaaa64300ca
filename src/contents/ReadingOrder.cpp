#include "contents/ReadingOrder.h"

#include "contents/TextFolding.h"

#include <QRegularExpression>

#include <cmath>

namespace leafwright {

namespace {

constexpr double alongAxis = 0.95;             // the least part of a direction that counts as along an axis
constexpr char16_t firstRightToLeft = 0x0590;  // of Unicode's blocks

bool isRightToLeftLetter(QChar c) {
    if (c.unicode() < firstRightToLeft) return false;
    return c.direction() == QChar::DirR || c.direction() == QChar::DirAL;
}

bool isPresentationForm(QChar c) {
    const char16_t u = c.unicode();
    return (u >= 0xfb00 && u <= 0xfdff) || (u >= 0xfe70 && u <= 0xfefe);
}

/// Whether the characters stand from left to right, although their script is read from right to left.
bool isInVisualOrder(const TextSpan &span) {
    if (static_cast<qsizetype>(span.starts.size()) != span.text.size()) return false;
    int rising = 0;
    int falling = 0;
    for (qsizetype i = 1; i < span.text.size(); ++i) {
        if (!isRightToLeftLetter(span.text[i])) continue;
        const auto k = static_cast<size_t>(i);
        rising += span.starts[k] > span.starts[k - 1] ? 1 : 0;
        falling += span.starts[k] < span.starts[k - 1] ? 1 : 0;
    }
    return rising > falling;
}

/// Numbers and words of other scripts keep their own order in text that is turned around.
QString turnedAround(const QString &text) {
    QString turned;
    turned.reserve(text.size());
    const auto isOther = [](QChar c) { return !c.isSpace() && !isRightToLeftLetter(c) && !c.isMark(); };
    for (qsizetype end = text.size(); end > 0;) {
        qsizetype begin = end - 1;
        while (isOther(text[end - 1]) && begin > 0 && isOther(text[begin - 1]))
            --begin;
        const QStringView piece = QStringView(text).mid(begin, end - begin);
        const bool keepsOrder =
            std::any_of(piece.begin(), piece.end(), [](QChar c) { return c.isLetterOrNumber(); });
        if (keepsOrder) {
            turned += piece;
        } else {
            std::copy(piece.rbegin(), piece.rend(), std::back_inserter(turned));
        }
        end = begin;
    }
    return turned;
}

/// Where each character but blanks stands, in reading order.
std::vector<std::pair<QChar, double>> placedLetters(const std::vector<LineSpan> &spans) {
    std::vector<std::pair<QChar, double>> letters;
    for (const LineSpan &piece : spans) {
        const TextSpan &span = *piece.span;
        const bool placed = static_cast<qsizetype>(span.starts.size()) == span.text.size();
        if (!placed && span.text.trimmed().size() > 1) return {};
        for (qsizetype i = 0; i < span.text.size(); ++i) {
            if (span.text[i].isSpace()) continue;
            letters.emplace_back(span.text[i],
                                 placed ? span.starts[static_cast<size_t>(i)] : span.box.left());
        }
    }
    return letters;
}

/// The letters that stand between blanks.
int countSingleLetters(const QString &text) {
    int singles = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool alone = (i == 0 || text[i - 1] == u' ') && (i + 1 == text.size() || text[i + 1] == u' ');
        singles += alone && text[i].isLetter() ? 1 : 0;
    }
    return singles;
}

double turnedBaseline(const TextSpan &span, const ReadingFrame &frame) {
    if (std::abs(span.direction.y()) < alongAxis) return frame.toRead(QPointF(0, span.baseline)).y();
    return frame.toRead(QPointF(span.baseline, 0)).y();
}

bool hasLetterOf(const LineSpan &piece, bool rightToLeft) {
    const QString &text = piece.span->text;
    return std::any_of(text.begin(), text.end(), [rightToLeft](QChar c) {
        return c.isLetter() && isRightToLeftLetter(c) == rightToLeft;
    });
}

}  // namespace

void settleReadingOrder(std::vector<LineSpan> &spans) {
    const bool mixed =
        std::any_of(spans.begin(), spans.end(), [](const LineSpan &s) { return hasLetterOf(s, true); });
    if (!mixed) return;
    for (auto begin = spans.begin(); begin != spans.end();) {
        const auto isOther = [](const LineSpan &s) { return hasLetterOf(s, false) && !hasLetterOf(s, true); };
        begin = std::find_if(begin, spans.end(), isOther);
        const auto end =
            std::find_if(begin, spans.end(), [](const LineSpan &s) { return hasLetterOf(s, true); });
        // What follows the last word of the other script, such as dots and a page number, is not part of it.
        auto last = end;
        while (last != begin && !hasLetterOf(*(last - 1), false))
            --last;
        std::reverse(begin, last);
        begin = end;
    }
}

bool isRightToLeft(QStringView text) {
    const auto letters = std::count_if(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
    return 2 * std::count_if(text.begin(), text.end(), isRightToLeftLetter) > letters;
}

QString spanText(const TextSpan &span) {
    const bool latin = std::all_of(span.text.begin(), span.text.end(),
                                   [](QChar c) { return c.unicode() < firstRightToLeft; });
    if (latin) return span.text;
    const QString ordered = isInVisualOrder(span) ? turnedAround(span.text) : span.text;
    const bool forms = std::any_of(ordered.begin(), ordered.end(), isPresentationForm);
    return forms ? ordered.normalized(QString::NormalizationForm_KC) : ordered;
}

QString logicalText(const QString &text) {
    static const QRegularExpression gapInNumber(QStringLiteral("(?<=\\d)\\s*-\\s*(?=\\d)"),
                                                QRegularExpression::UseUnicodePropertiesOption);
    const bool ascii = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
    if (ascii) return text;
    const QString composed = text.normalized(QString::NormalizationForm_C);
    const bool mixed = std::any_of(composed.begin(), composed.end(), isRightToLeftLetter);
    return mixed ? QString(composed).replace(gapInNumber, QStringLiteral("-")) : composed;
}

QString withoutLetterSpacing(const QString &text, const std::vector<LineSpan> &spans) {
    constexpr qsizetype fewestPieces = 5;
    constexpr double shareOfSingles = 0.8;
    constexpr double wordGap = 1.6;  // of the median distance between two letters' beginnings
    const qsizetype pieces = text.count(u' ') + 1;
    if (pieces < fewestPieces) return text;
    const auto singles = static_cast<double>(countSingleLetters(text));
    if (singles < shareOfSingles * static_cast<double>(pieces) || hasIdeographs(text)) return text;

    const std::vector<std::pair<QChar, double>> letters = placedLetters(spans);
    if (letters.empty()) return QString(text).remove(u' ');
    std::vector<double> distances;
    for (size_t i = 1; i < letters.size(); ++i)
        distances.push_back(std::abs(letters[i].second - letters[i - 1].second));
    std::vector<double> sorted = distances;
    const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
    std::nth_element(sorted.begin(), middle, sorted.end());
    QString words(letters.front().first);
    for (size_t i = 1; i < letters.size(); ++i) {
        if (distances[i - 1] > wordGap * *middle) words += u' ';
        words += letters[i].first;
    }
    return words.normalized(QString::NormalizationForm_KC);
}

QPointF ReadingFrame::toRead(const QPointF &shownPoint) const {
    const QPointF point = turned.toShown(shown.toPage(shownPoint));
    return isMirrored ? QPointF(size().width() - point.x(), point.y()) : point;
}

QRectF ReadingFrame::toRead(const QRectF &shownBox) const {
    return QRectF(toRead(shownBox.topLeft()), toRead(shownBox.bottomRight())).normalized();
}

QPointF ReadingFrame::toPage(const QPointF &readPoint) const {
    return turned.toPage(isMirrored ? QPointF(size().width() - readPoint.x(), readPoint.y()) : readPoint);
}

QRectF ReadingFrame::toShown(const QRectF &readBox) const {
    return QRectF(shown.toShown(toPage(readBox.topLeft())), shown.toShown(toPage(readBox.bottomRight())))
        .normalized();
}

ReadingFrame readingFrameOf(const PageEvidence &evidence) {
    qsizetype across = 0;
    qsizetype up = 0;
    qsizetype down = 0;
    qsizetype letters = 0;
    qsizetype rightToLeft = 0;
    for (const TextSpan &span : evidence.spans) {
        const qsizetype size = span.text.size();
        across += span.direction.x() > alongAxis ? size : 0;
        up += span.direction.y() < -alongAxis ? size : 0;
        down += span.direction.y() > alongAxis ? size : 0;
        for (const QChar c : span.text) {
            letters += c.isLetter() ? 1 : 0;
            rightToLeft += isRightToLeftLetter(c) ? 1 : 0;
        }
    }
    ReadingFrame frame{evidence.transform(), evidence.transform(), 2 * rightToLeft > letters};
    constexpr int quarter = 90;
    const int turn = up > across && up >= down ? quarter : down > across ? 3 * quarter : 0;
    frame.turned = PageTransform(evidence.visibleBox, (evidence.rotation + turn) % (4 * quarter));
    return frame;
}

std::shared_ptr<const PageEvidence> inFrame(std::shared_ptr<const PageEvidence> evidence,
                                            const ReadingFrame &frame) {
    const bool turned = frame.turned.toShown(QPointF()) != frame.shown.toShown(QPointF());
    if (!turned && !frame.isMirrored) return evidence;
    auto read = std::make_shared<PageEvidence>(*evidence);
    for (TextSpan &span : read->spans) {
        span.baseline = turnedBaseline(span, frame);
        span.box = frame.toRead(span.box);
        const QPointF origin = frame.turned.toShown(frame.shown.toPage(QPointF()));
        span.direction = frame.turned.toShown(frame.shown.toPage(span.direction)) - origin;
    }
    for (ContentsLink &link : read->links)
        link.box = frame.toRead(link.box);
    return read;
}

}  // namespace leafwright
