#include "document/window/PasswordBar.h"

#include "outlineview/LegibleColor.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace leafwright {

namespace {

constexpr int margin = 6;
/// Room for a password, in widths of an average letter.
constexpr int fieldWidth = 30;

}  // namespace

PasswordBar::PasswordBar(QWidget *parent)
    : QFrame(parent),
      text_(new QLabel(tr("This PDF is locked. With its password you can look at it:"))),
      field_(new QLineEdit),
      refusal_(new QLabel) {
    setObjectName(QStringLiteral("passwordBar"));
    setAccessibleName(text_->text());
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(2 * margin, margin, margin, margin);
    line->setSpacing(margin);
    line->addWidget(text_);
    field_->setObjectName(QStringLiteral("passwordField"));
    field_->setAccessibleName(tr("Password"));
    field_->setEchoMode(QLineEdit::Password);
    field_->setMaximumWidth(fieldWidth * fontMetrics().averageCharWidth());
    line->addWidget(field_, 1);
    auto *button = new QPushButton(tr("Show Pages"));
    button->setObjectName(QStringLiteral("showPagesButton"));
    button->setAutoDefault(false);
    line->addWidget(button);
    refusal_->setObjectName(QStringLiteral("passwordRefusal"));
    refusal_->setTextFormat(Qt::PlainText);
    line->addWidget(refusal_, 1);
    line->addStretch();
    connect(field_, &QLineEdit::returnPressed, this, &PasswordBar::enter);
    connect(button, &QPushButton::clicked, this, &PasswordBar::enter);
    hide();
}

void PasswordBar::open() {
    show();
    field_->setFocus();
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void PasswordBar::dismiss() {
    hide();
    field_->clear();
    refusal_->clear();
}

void PasswordBar::refuse(const QString &reason) {
    QPalette palette;
    palette.setColor(QPalette::WindowText, legibleColor(Qt::red, this->palette().color(QPalette::Window)));
    refusal_->setPalette(palette);
    refusal_->setText(reason);
    field_->selectAll();
    field_->setFocus();
    // Who can't see the bar hears what it tells.
    field_->setAccessibleDescription(reason);
    QAccessibleEvent event(field_, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

void PasswordBar::enter() {
    Q_EMIT entered(field_->text());
}

}  // namespace leafwright
