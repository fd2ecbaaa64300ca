#include "widgets/ActionIcon.h"

#include <QApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace leafwright {

namespace {

/// Strokes on a grid of 24 by 24, in the letters of SVG's path data: M moves, L draws a line, Z closes.
const QHash<QString, QLatin1String> &drawings() {
    static const QHash<QString, QLatin1String> table{
        // A folder, its front flap open.
        {QStringLiteral("openDocument:"),
         QLatin1String("M3 19 L3 5 L9 5 L11 8 L19 8 L19 11 M3 19 L6 11 L22 11 L19 19 Z")},
        // A tray that an arrow points into.
        {QStringLiteral("saveDocument:"),
         QLatin1String("M12 3 L12 15 M7 10 L12 15 L17 10 M4 15 L4 20 L20 20 L20 15")},
        // A page, and an arrow out of it.
        {QStringLiteral("openPDFInDefaultApp:"),
         QLatin1String("M11 5 L4 5 L4 20 L19 20 L19 13 M14 4 L20 4 L20 10 M20 4 L11 13")},
        // Lines of an outline, the last one new.
        {QStringLiteral("addSiblingOutlineItem:"),
         QLatin1String("M4 5 L20 5 M4 11 L20 11 M4 18 L11 18 M17 14 L17 22 M13 18 L21 18")},
        {QStringLiteral("addChildOutlineItem:"),
         QLatin1String("M4 5 L20 5 M6 5 L6 16 L11 16 M17 12 L17 20 M13 16 L21 16")},
        {QStringLiteral("removeOutlineItems:"),
         QLatin1String("M4 5 L20 5 M4 11 L20 11 M4 18 L11 18 M13 18 L21 18")},
        {QStringLiteral("moveLeft:"), QLatin1String("M20 12 L4 12 M10 6 L4 12 L10 18")},
        {QStringLiteral("moveRight:"), QLatin1String("M4 12 L20 12 M14 6 L20 12 L14 18")},
        {QStringLiteral("moveUp:"), QLatin1String("M12 20 L12 4 M6 10 L12 4 L18 10")},
        {QStringLiteral("moveDown:"), QLatin1String("M12 4 L12 20 M6 14 L12 20 L18 14")},
        // A contents: titles, and the numbers of their pages.
        {QStringLiteral("findContents:"),
         QLatin1String("M4 6 L13 6 M18 6 L20 6 M7 12 L13 12 M18 12 L20 12 M4 18 L13 18 M18 18 L20 18")},
        // A page with headings at two levels.
        {QStringLiteral("runGuessPDF:"),
         QLatin1String("M5 3 L19 3 L19 21 L5 21 Z M8 7 L14 7 M10 11 L16 11 M10 14 L16 14 M8 18 L14 18")},
        {QStringLiteral("zoomIn:"),
         QLatin1String("M5 10 L6.5 6.5 L10 5 L13.5 6.5 L15 10 L13.5 13.5 L10 15 L6.5 13.5 Z M14 14 L20 20 "
                       "M10 7.5 L10 12.5 M7.5 10 L12.5 10")},
        {QStringLiteral("zoomOut:"), QLatin1String("M5 10 L6.5 6.5 L10 5 L13.5 6.5 L15 10 L13.5 13.5 L10 15 "
                                                   "L6.5 13.5 Z M14 14 L20 20 M7.5 10 L12.5 10")},
        {QStringLiteral("zoomToFit:"), QLatin1String("M4 9 L4 4 L9 4 M15 4 L20 4 L20 9 M20 15 L20 20 L15 20 "
                                                     "M9 20 L4 20 L4 15 M8 9 L16 9 L16 15 L8 15 Z")},
    };
    return table;
}

constexpr double gridSize = 24;

QPainterPath pathOf(QLatin1String drawing) {
    QPainterPath path;
    const auto words = QString(drawing).split(u' ');
    for (qsizetype i = 0; i < words.size();) {
        const QString &word = words[i];
        if (word == u"Z") {
            path.closeSubpath();
            ++i;
            continue;
        }
        const QPointF point(word.mid(1).toDouble(), words.value(i + 1).toDouble());
        word.startsWith(u'M') ? path.moveTo(point) : path.lineTo(point);
        i += 2;
    }
    return path;
}

class StrokeIconEngine final : public QIconEngine {
public:
    explicit StrokeIconEngine(QLatin1String drawing) : drawing_(drawing), path_(pathOf(drawing)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State /*state*/) override {
        const auto colours = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor colour = QApplication::palette().color(colours, QPalette::ButtonText);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / gridSize, rect.height() / gridSize);
        painter->setPen(QPen(colour, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(path_);
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return result;
    }

    QIconEngine *clone() const override { return new StrokeIconEngine(drawing_); }

private:
    QLatin1String drawing_;
    QPainterPath path_;
};

}  // namespace

QIcon actionIcon(const QString &selector) {
    const auto found = drawings().constFind(selector);
    return found == drawings().constEnd() ? QIcon() : QIcon(new StrokeIconEngine(*found));
}

}  // namespace leafwright
