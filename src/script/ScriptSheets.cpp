#include "script/ScriptSheets.h"

#include "document/outline/PageLabelMap.h"
#include "script/StepFailure.h"
#include "texts/Translated.h"
#include "widgets/Sheet.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSpinBox>

namespace leafwright::script {

namespace {

constexpr Translated translated{"ScriptSheets"};

/// What an input shows; undefined for a widget that is none.
QJsonValue valueOf(const QWidget &widget) {
    if (const auto *box = qobject_cast<const QCheckBox *>(&widget)) return box->isChecked();
    if (const auto *number = qobject_cast<const QSpinBox *>(&widget)) return number->value();
    if (const auto *line = qobject_cast<const QLineEdit *>(&widget)) return line->text();
    return QJsonValue::Undefined;
}

/// @return false if the input does not take such a value
bool setValue(QWidget &widget, const QJsonValue &value) {
    if (auto *box = qobject_cast<QCheckBox *>(&widget)) {
        if (value.isBool()) box->setChecked(value.toBool());
        return value.isBool();
    }
    if (auto *number = qobject_cast<QSpinBox *>(&widget)) {
        const bool isWhole = value.isDouble() && value.toDouble() == value.toInt();
        if (isWhole) number->setValue(value.toInt());
        // As it would be read from a field that takes any text.
        if (value.isString()) number->setValue(integerValue(value.toString()));
        return isWhole || value.isString();
    }
    auto *line = qobject_cast<QLineEdit *>(&widget);
    if (line && value.isString()) line->setText(value.toString());
    return line && value.isString();
}

/// The inputs of a sheet or a bar. Those inside other inputs have names that begin with "qt_".
QList<QWidget *> inputsOf(const QWidget &sheet) {
    QList<QWidget *> inputs = sheet.findChildren<QWidget *>();
    inputs.removeIf([](const QWidget *widget) {
        const QString name = widget->objectName();
        return name.isEmpty() || name.startsWith(u"qt_") || valueOf(*widget).isUndefined();
    });
    return inputs;
}

QString namesOf(const QList<QWidget *> &inputs) {
    QStringList names;
    for (const QWidget *input : inputs)
        names.append(input->objectName());
    return names.isEmpty() ? translated("it has none") : names.join(QLatin1String(", "));
}

void fillIn(const QWidget &sheet, const QList<QWidget *> &inputs, const QJsonObject &fields) {
    for (auto field = fields.begin(); field != fields.end(); ++field) {
        const auto found = std::ranges::find(inputs, field.key(), &QWidget::objectName);
        if (found == inputs.end())
            throw StepFailure(translated("the sheet \"%1\" has no field \"%2\"; its fields: %3")
                                  .arg(sheet.windowTitle(), field.key(), namesOf(inputs)));
        if (!setValue(**found, field.value()))
            throw StepFailure(translated("the field \"%1\" does not take such a value").arg(field.key()));
    }
}

ShownSheet showAndFillIn(const QWidget &sheet, const QJsonObject &fields, int tag) {
    ShownSheet shown{sheet.windowTitle(), {}, tag};
    const QList<QWidget *> inputs = inputsOf(sheet);
    for (const QWidget *input : inputs)
        shown.fields.emplace_back(input->objectName(), valueOf(*input));
    fillIn(sheet, inputs, fields);
    return shown;
}

}  // namespace

ShownSheet answerSheet(Sheet &sheet, const QJsonObject &fields, int tag) {
    ShownSheet shown = showAndFillIn(sheet, fields, tag);
    if (!sheet.pressButton(tag))
        throw StepFailure(
            translated("the sheet \"%1\" has no button with the tag %2").arg(shown.title).arg(tag));
    return shown;
}

ShownSheet fillInBar(QWidget &bar, const QJsonObject &fields, int tag) {
    ShownSheet shown = showAndFillIn(bar, fields, tag);
    if (tag == 0) {
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(&bar, &escape);
    }
    return shown;
}

}  // namespace leafwright::script
