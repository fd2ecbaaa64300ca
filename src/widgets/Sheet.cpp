#include "widgets/Sheet.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <QVariant>

#include <algorithm>
#include <utility>

namespace leafwright {

namespace {

constexpr const char *tagProperty = "tag";
/// Room for a line of text in a field; in widths of an average letter.
constexpr int leastWidth = 60;

}  // namespace

int tagOf(const QObject *control) {
    return control ? control->property(tagProperty).toInt() : 0;
}

void setTag(QObject *control, int tag) {
    control->setProperty(tagProperty, tag);
}

Sheet::Sheet(const QString &title, QWidget *parent)
    : QDialog(parent), form_(new QFormLayout), buttons_(new QDialogButtonBox) {
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    setMinimumWidth(leastWidth * fontMetrics().averageCharWidth());
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form_);
    layout->addStretch();
    layout->addWidget(buttons_);
    buttons_->hide();
    connect(this, &QDialog::finished, this, &Sheet::callDidEnd);
}

void Sheet::addText(const QString &text) {
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    form_->addRow(label);
}

void Sheet::addField(const QString &label, QWidget *input, const QString &name) {
    input->setObjectName(name);
    form_->addRow(label, input);
}

QPushButton *Sheet::addButton(const QString &title, int tag) {
    auto *button =
        buttons_->addButton(title, tag == 0 ? QDialogButtonBox::RejectRole : QDialogButtonBox::AcceptRole);
    setTag(button, tag);
    button->setAutoDefault(false);
    const QList<QAbstractButton *> all = buttons_->buttons();
    const bool hasDefault = std::ranges::any_of(all, [](const QAbstractButton *other) {
        return qobject_cast<const QPushButton *>(other)->isDefault();
    });
    button->setDefault(tag != 0 && !hasDefault);
    buttons_->show();
    connect(button, &QPushButton::clicked, this, [this, button] { endWithTagOf(button); });
    return button;
}

void Sheet::begin(QWidget *window, DidEnd didEnd) {
    if (isVisible()) return;
    if (parentWidget() != window) setParent(window, windowFlags());
    didEnd_ = std::move(didEnd);
    // What the first field begins with is there to be typed over.
    if (auto *first = findChild<QLineEdit *>()) {
        first->setFocus();
        first->selectAll();
    }
    open();
}

void Sheet::beginInPlace(DidEnd didEnd) {
    didEnd_ = std::move(didEnd);
    setWindowModality(Qt::NonModal);
    setAttribute(Qt::WA_Moved);  // a dialog that nobody moved would go to the middle of its parent
    show();
    setFocus();
}

void Sheet::end(int returnCode) {
    if (isVisible()) done(returnCode);
}

void Sheet::endWithTagOf(const QObject *sender) {
    end(tagOf(sender));
}

bool Sheet::pressButton(int tag) {
    for (QAbstractButton *button : buttons_->buttons()) {
        if (tagOf(button) != tag || !button->isEnabled()) continue;
        button->click();
        return true;
    }
    return false;
}

void Sheet::reject() {
    // Comes from Escape and from the close button.
    if (cancellable_) end(0);
}

void Sheet::callDidEnd(int returnCode) {
    // The handler may begin this sheet anew, with another.
    if (const DidEnd didEnd = std::exchange(didEnd_, nullptr)) didEnd(returnCode);
}

}  // namespace leafwright
