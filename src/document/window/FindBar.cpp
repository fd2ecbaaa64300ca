#include "document/window/FindBar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace leafwright {

namespace {

constexpr int margin = 6;
/// Room for a text, in widths of an average letter.
constexpr int fieldWidth = 40;

/// Red that can be read on a light window as well as on a dark one.
QColor failureColour(const QPalette &palette) {
    constexpr QColor onLight(0xb0, 0x10, 0x10);
    constexpr QColor onDark(0xff, 0x8a, 0x80);
    constexpr int halfway = 128;
    return palette.color(QPalette::Window).lightness() > halfway ? onLight : onDark;
}

}  // namespace

FindBar::FindBar(QWidget *parent) : QFrame(parent), field_(new QLineEdit), result_(new QLabel) {
    setObjectName(QStringLiteral("findBar"));
    setAccessibleName(tr("Find in Pages"));
    setWindowTitle(tr("Find in Pages"));
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(2 * margin, margin, margin, margin);
    line->setSpacing(margin);
    line->addWidget(new QLabel(tr("Find:")));
    field_->setObjectName(QStringLiteral("findField"));
    field_->setAccessibleName(tr("Text to be found on the pages"));
    field_->setClearButtonEnabled(true);
    field_->setMaximumWidth(fieldWidth * fontMetrics().averageCharWidth());
    line->addWidget(field_, 1);
    connect(field_, &QLineEdit::textChanged, this, &FindBar::textChanged);
    connect(addButton(QStringLiteral("▲"), tr("Previous"), QStringLiteral("findPreviousButton")),
            &QToolButton::clicked, this, &FindBar::previousRequested);
    connect(addButton(QStringLiteral("▼"), tr("Next"), QStringLiteral("findNextButton")),
            &QToolButton::clicked, this, &FindBar::nextRequested);
    result_->setObjectName(QStringLiteral("findResult"));
    result_->setTextFormat(Qt::PlainText);
    line->addWidget(result_);
    line->addStretch();
    connect(addButton(QStringLiteral("✕"), tr("Close"), QStringLiteral("closeFindBar")),
            &QToolButton::clicked, this, &FindBar::dismiss);
    hide();
}

QToolButton *FindBar::addButton(const QString &text, const QString &name, const QString &objectName) {
    auto *button = new QToolButton;
    button->setObjectName(objectName);
    button->setText(text);
    button->setAccessibleName(name);
    button->setToolTip(name);
    button->setAutoRaise(true);
    layout()->addWidget(button);
    return button;
}

void FindBar::open(const QString &text) {
    QWidget *focus = window()->focusWidget();
    if (!isAncestorOf(focus)) focusBefore_ = focus;
    if (!text.isEmpty()) field_->setText(text);
    show();
    field_->setFocus();
    field_->selectAll();
}

void FindBar::dismiss() {
    if (!isOpen()) return;
    const bool hadFocus = isAncestorOf(window()->focusWidget());
    hide();
    if (hadFocus && focusBefore_) focusBefore_->setFocus();
    Q_EMIT closed();
}

QString FindBar::text() const {
    return field_->text();
}

QString FindBar::result() const {
    return result_->text();
}

void FindBar::setResult(const QString &result, bool isFailure) {
    if (result == result_->text()) return;
    result_->setText(result);
    QPalette palette;
    if (isFailure) palette.setColor(QPalette::WindowText, failureColour(this->palette()));
    result_->setPalette(palette);
    // Who can't see the bar hears what it tells.
    field_->setAccessibleDescription(result);
    QAccessibleEvent event(field_, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

void FindBar::keyPressEvent(QKeyEvent *event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape) {
        dismiss();
    } else if (isReturn && event->modifiers().testFlag(Qt::ShiftModifier)) {
        Q_EMIT previousRequested();
    } else if (isReturn) {
        Q_EMIT nextRequested();
    } else {
        QFrame::keyPressEvent(event);
    }
}

}  // namespace leafwright
