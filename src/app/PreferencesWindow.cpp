#include "app/PreferencesWindow.h"

#include "app/Defaults.h"
#include "app/SettingBindings.h"
#include "platform/Settings.h"
#include "platform/UserDefaults.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QStyle>
#include <QVBoxLayout>

namespace leafwright {

namespace {

constexpr int deepestLevel = 99;
constexpr int margin = 16;
constexpr int groupSpacing = 14;
constexpr int lineSpacing = 8;
constexpr int leastWidth = 440;

}  // namespace

PreferencesWindow::PreferencesWindow(UserDefaults &defaults) : defaults_(defaults) {
    setObjectName(QStringLiteral("preferences"));
    setWindowTitle(tr("Preferences"));
    auto *layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(groupSpacing);
    addOpeningGroup();
    addOutlineGroup();
    addContentsGroup();
    addSavingGroup();
    addButtons();
}

QVBoxLayout *PreferencesWindow::addGroup(const QString &title) {
    auto *box = new QGroupBox(title);
    box->setMinimumWidth(leastWidth);
    layout()->addWidget(box);
    auto *lines = new QVBoxLayout(box);
    lines->setContentsMargins(margin, lineSpacing, margin, lineSpacing);
    lines->setSpacing(lineSpacing);
    return lines;
}

QCheckBox *PreferencesWindow::addCheckBox(QVBoxLayout *group, const QString &title, const QString &key) {
    auto *checkBox = new QCheckBox(title);
    bindToSetting(*checkBox, defaults_, key);
    group->addWidget(checkBox);
    return checkBox;
}

QLabel *PreferencesWindow::addExplanation(QVBoxLayout *group, const QString &text) {
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    // Below a check box's title, not below its mark.
    label->setIndent(style()->pixelMetric(QStyle::PM_IndicatorWidth) +
                     style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing));
    group->addWidget(label);
    return label;
}

void PreferencesWindow::addOpeningGroup() {
    QVBoxLayout *group = addGroup(tr("Starting and Opening"));
    addCheckBox(group, tr("Open the user &guide when Leafwright starts"), setting::showHelpOnStart);
    addCheckBox(group, tr("&Warn about PDFs of a version newer than 1.4"), setting::warnAboutPDFVersion);
    addCheckBox(group, tr("&Read the text of all pages in the background"),
                setting::allowPDFReadingInBackground);
}

void PreferencesWindow::addOutlineGroup() {
    QVBoxLayout *group = addGroup(tr("Outline"));
    doubleClickEditing_ =
        addCheckBox(group, tr("&Double-click edits the item"), setting::enableDoubleClickEditing);
    labelDoubleClickEditingMessage_ = addExplanation(group, QString());
    addCheckBox(group, tr("Undo &steps back where there is nothing to undo"), setting::undoStepsBack);
}

void PreferencesWindow::addContentsGroup() {
    QVBoxLayout *group = addGroup(tr("AutoTOC"));
    auto *depth = new QSpinBox;
    depth->setRange(1, deepestLevel);
    bindToSetting(*depth, defaults_, setting::autotocMaxDepth);
    auto *label = new QLabel(tr("&Levels of headings at most:"));
    label->setBuddy(depth);
    auto *line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(depth);
    line->addStretch();
    group->addLayout(line);
    group->addWidget(new QLabel(tr("For Self-Calibrating AutoTOC:")));
    addCheckBox(group, tr("Leave out the &body text’s font, and smaller ones"),
                setting::ignoreHighFrequencyFonts);
    addCheckBox(group, tr("Leave out fonts that are rarely &used"), setting::ignoreLowFrequencyFonts);
    addCheckBox(group, tr("Lead to the &heading itself, not only to its page"),
                setting::findMOIPointInAutoTOC);
}

void PreferencesWindow::addSavingGroup() {
    QVBoxLayout *group = addGroup(tr("Saving"));
    addCheckBox(group, tr("Offer a &preview before the PDF is saved"), setting::alwaysPreviewBeforeSave);
    addCheckBox(group, tr("&Keep the pages of entries where page labels repeat"),
                setting::keepPagesOfEntries);
    addCheckBox(group, tr("Recalculate targets in the &middle of a page’s top edge"),
                setting::redoMOIGenericPoints);
    addExplanation(group, tr("Has no effect in this version: such targets are always kept."));
}

void PreferencesWindow::addButtons() {
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::RestoreDefaults | QDialogButtonBox::Close);
    layout()->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    QPushButton *restore = buttons->button(QDialogButtonBox::RestoreDefaults);
    restore->setAutoDefault(false);
    connect(restore, &QPushButton::clicked, this, &PreferencesWindow::restoreDefaults);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
}

void PreferencesWindow::restoreDefaults() {
    for (const DefaultSetting &setting : defaultSettings())
        defaults_.removeValue(setting.key);
    for (const QString &key : laterSettings())
        defaults_.removeValue(key);
}

}  // namespace leafwright
