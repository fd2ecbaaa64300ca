#include "widgets/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace leafwright {

ElidedLabel::ElidedLabel(QWidget *parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::NoTextInteraction);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString &text) {
    QLabel::setText(text);
    // Escaped, because the text could be taken for HTML.
    setToolTip(QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped()));
}

QSize ElidedLabel::sizeHint() const {
    return {0, fontMetrics().height() + 2 * (frameWidth() + margin())};
}

void ElidedLabel::paintEvent(QPaintEvent * /*event*/) {
    QString line = text();
    line.replace(u'\n', u' ');
    QPainter painter(this);
    drawFrame(&painter);
    const QRect room = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
    style()->drawItemText(&painter, room, Qt::AlignVCenter | Qt::AlignLeading, palette(), isEnabled(),
                          fontMetrics().elidedText(line, Qt::ElideRight, room.width()), foregroundRole());
}

}  // namespace leafwright
