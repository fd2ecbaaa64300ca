#include "document/window/TitleColorSheet.h"

#include <QColorDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>

#include <array>

namespace leafwright {

namespace {

struct Swatch {
    const char *name;
    QRgb color;
};

/// Dark enough to be read on white.
constexpr auto swatches = std::to_array<Swatch>({
    {QT_TRANSLATE_NOOP("leafwright::TitleColorSheet", "Black"), 0xff000000},
    {QT_TRANSLATE_NOOP("leafwright::TitleColorSheet", "Grey"), 0xff666666},
    {QT_TRANSLATE_NOOP("leafwright::TitleColorSheet", "Red"), 0xffb00020},
    {QT_TRANSLATE_NOOP("leafwright::TitleColorSheet", "Orange"), 0xffb45309},
    {QT_TRANSLATE_NOOP("leafwright::TitleColorSheet", "Green"), 0xff1b6e2c},
    {QT_TRANSLATE_NOOP("leafwright::TitleColorSheet", "Blue"), 0xff1a5fb4},
    {QT_TRANSLATE_NOOP("leafwright::TitleColorSheet", "Purple"), 0xff6a1b9a},
    {QT_TRANSLATE_NOOP("leafwright::TitleColorSheet", "Brown"), 0xff63452c},
});

QIcon iconOf(const QColor &color, int size) {
    QPixmap picture(size, size);
    picture.fill(color);
    return picture;
}

QColor colorOf(const OutlineEntry::Color &color) {
    return QColor::fromRgbF(static_cast<float>(color[0]), static_cast<float>(color[1]),
                            static_cast<float>(color[2]));
}

}  // namespace

TitleColorSheet::TitleColorSheet(const std::optional<OutlineEntry::Color> &color)
    : Sheet(tr("Title Colour")),
      proposed_(color),
      field_(new QLineEdit(colorOf(color.value_or(OutlineEntry::Color())).name())) {
    addText(tr("Viewers show the titles of the selected entries in this colour."));
    addSwatches();
    addField(tr("&Colour:"), field_, QStringLiteral("titleColorField"));
    auto *other = new QPushButton(tr("&More Colours…"));
    other->setAutoDefault(false);
    form()->addRow(QString(), other);
    addButton(tr("Cancel"), Cancel);
    QPushButton *set = addButton(tr("Set Colour"), Set);
    addButton(tr("No Colour"), None);
    connect(other, &QPushButton::clicked, this, &TitleColorSheet::chooseAnother);
    connect(field_, &QLineEdit::textChanged, set,
            [set](const QString &text) { set->setEnabled(QColor::isValidColor(text)); });
}

void TitleColorSheet::addSwatches() {
    auto *row = new QHBoxLayout;
    for (const Swatch &swatch : swatches) {
        auto *button = new QToolButton;
        button->setIcon(iconOf(QColor(swatch.color), button->iconSize().width()));
        button->setToolTip(tr(swatch.name));
        button->setAccessibleName(tr(swatch.name));
        connect(button, &QToolButton::clicked, this, [this, swatch] { choose(QColor(swatch.color)); });
        row->addWidget(button);
    }
    row->addStretch();
    form()->addRow(QString(), row);
}

void TitleColorSheet::choose(const QColor &color) {
    field_->setText(color.name());
}

void TitleColorSheet::chooseAnother() {
    auto *dialog = new QColorDialog(QColor(field_->text()), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QColorDialog::colorSelected, this, &TitleColorSheet::choose);
    dialog->open();
}

std::optional<OutlineEntry::Color> TitleColorSheet::chosen(int returnCode) const {
    if (returnCode != Set) return std::nullopt;
    // Files have more shades than the field.
    if (proposed_ && field_->text() == colorOf(*proposed_).name()) return proposed_;
    const QColor color(field_->text());
    return OutlineEntry::Color{color.redF(), color.greenF(), color.blueF()};
}

}  // namespace leafwright
