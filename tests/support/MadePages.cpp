#include "support/MadePages.h"

namespace leafwright::test {

TextLook boldLook(double size) {
    return {size, true, QStringLiteral("Times-Bold")};
}

TextSpan madeSpan(double x, double y, const QString &text, const TextLook &look) {
    TextSpan span;
    span.text = text;
    span.baseline = y;
    span.size = look.size;
    span.box = QRectF(x, y - 0.8 * look.size, 0.5 * look.size * static_cast<double>(text.size()), look.size);
    for (qsizetype i = 0; i < text.size(); ++i)
        span.starts.push_back(static_cast<float>(x + 0.5 * look.size * static_cast<double>(i)));
    span.fontName = look.font;
    span.bold = look.bold;
    span.italic = look.italic;
    span.color = look.color;
    span.direction = look.direction;
    return span;
}

MadePages &MadePages::page(double width, double height) {
    pages_.push_back(std::make_shared<PageEvidence>());
    pages_.back()->visibleBox = {0, 0, width, height};
    return *this;
}

MadePages &MadePages::span(const TextSpan &span) {
    pages_.back()->spans.push_back(span);
    return *this;
}

MadePages &MadePages::recognised() {
    pages_.back()->isRecognised = true;
    return *this;
}

MadePages &MadePages::text(double x, double y, const QString &text, const TextLook &look) {
    return span(madeSpan(x, y, text, look));
}

MadePages &MadePages::textUpTo(double x, double y, const QString &text, const TextLook &look) {
    return span(madeSpan(x - 0.5 * look.size * static_cast<double>(text.size()), y, text, look));
}

MadePages &MadePages::contentsRow(double x, double y, const QString &title, const QString &number, bool dots,
                                  const TextLook &look) {
    constexpr double right = 540;
    text(x, y, title, look);
    const double end = x + 0.5 * look.size * static_cast<double>(title.size());
    if (dots) text(end + 5, y, QStringLiteral(" . . . . . . "));
    return textUpTo(right, y, number, look);
}

MadePages &MadePages::paragraph(double y, int lines) {
    static const QString words =
        QStringLiteral("some words that stand in every row of the text one after another ");
    constexpr qsizetype lineLength = 96;
    for (int i = 0; i < lines; ++i)
        text(60, y + 12 * i, (words + words).mid(i % 20, lineLength));
    return *this;
}

MadePages &MadePages::link(double left, double right, double y, int targetPage,
                           std::optional<double> targetY) {
    ContentsLink link;
    link.box = QRectF(left, y - 9, right - left, 12);
    link.targetPage = targetPage;
    if (targetY) link.targetPoint = QPointF(0, *targetY);
    pages_.back()->links.push_back(link);
    return *this;
}

}  // namespace leafwright::test
