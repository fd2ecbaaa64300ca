#include "widgets/NoticeBars.h"

#include "widgets/MixedColor.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>

namespace leafwright {

namespace {

constexpr int margin = 6;
/// How much of the highlight's colour is in a bar's: enough to be seen, little enough for the text on it to
/// be read as well as on the window's.
constexpr double tint = 0.16;

}  // namespace

NoticeBar::NoticeBar(const Notice &notice, QWidget *parent) : QFrame(parent), text_(new QLabel(notice.text)) {
    setAccessibleName(notice.text);
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(2 * margin, margin, margin, margin);
    line->setSpacing(margin);
    line->addWidget(text_, 1);
    for (const Notice::Button &each : notice.buttons) {
        auto *button = new QPushButton(each.title);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, each.action);
        line->addWidget(button);
    }
    auto *close = new QToolButton;
    close->setObjectName(QStringLiteral("closeNotice"));
    close->setText(QStringLiteral("✕"));
    close->setAccessibleName(tr("Close"));
    close->setToolTip(tr("Close"));
    close->setAutoRaise(true);
    connect(close, &QToolButton::clicked, this, &NoticeBar::dismissed);
    line->addWidget(close);
}

QString NoticeBar::text() const {
    return text_->text();
}

void NoticeBar::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    const QColor window = palette().color(QPalette::Window);
    painter.fillRect(rect(), mixed(window, palette().color(QPalette::Highlight), tint));
    painter.setPen(mixed(window, palette().color(QPalette::WindowText), tint));
    painter.drawLine(rect().bottomLeft(), rect().bottomRight());
}

void NoticeBar::keyPressEvent(QKeyEvent *event) {
    if (event->key() != Qt::Key_Escape) return QFrame::keyPressEvent(event);
    Q_EMIT dismissed();
}

NoticeBars::NoticeBars(QWidget *parent) : QWidget(parent), layout_(new QVBoxLayout(this)) {
    layout_->setContentsMargins({});
    layout_->setSpacing(0);
    hide();
}

void NoticeBars::setNotice(const QString &name, const Notice &notice) {
    removeNotice(name);
    auto *bar = new NoticeBar(notice, this);
    bar->setObjectName(name);
    layout_->addWidget(bar);
    bars_.insert(name, bar);
    connect(bar, &NoticeBar::dismissed, this, [this, name] { removeNotice(name); });
    show();
    QAccessibleEvent event(bar, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void NoticeBars::removeNotice(const QString &name) {
    NoticeBar *bar = bars_.take(name);
    if (!bar) return;
    // The one whose button has been pressed may be the one that goes.
    bar->hide();
    bar->deleteLater();
    setVisible(!bars_.isEmpty());
}

}  // namespace leafwright
