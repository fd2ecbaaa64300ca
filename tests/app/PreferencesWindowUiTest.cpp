#include "app/Defaults.h"
#include "app/PreferencesWindow.h"
#include "platform/UserDefaults.h"
#include "support/TempDir.h"

#include <QAccessible>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QSpinBox>
#include <QTest>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

class Preferences : public testing::Test {
protected:
    static UserDefaults &registered(UserDefaults &settings) {
        registerDefaults(settings);
        return settings;
    }
    QCheckBox *checkBox(const QString &key) { return window.findChild<QCheckBox *>(key); }
    QSpinBox *depth() { return window.findChild<QSpinBox *>("autotocMaxDepth"); }

    UserDefaults defaults;
    PreferencesWindow window{registered(defaults)};
};

TEST_F(Preferences, EverySettingHasAControlThatShowsIt) {
    for (const DefaultSetting &setting : defaultSettings()) {
        if (setting.value.typeId() == QMetaType::Bool) {
            ASSERT_NE(checkBox(setting.key), nullptr) << setting.key.toStdString();
            EXPECT_EQ(checkBox(setting.key)->isChecked(), setting.value.toBool())
                << setting.key.toStdString();
        } else {
            ASSERT_EQ(setting.key, "autotocMaxDepth");
            ASSERT_NE(depth(), nullptr);
            EXPECT_EQ(depth()->value(), 3);
        }
    }
}

TEST_F(Preferences, AClickChangesItsSettingAtOnce) {
    for (const DefaultSetting &setting : defaultSettings()) {
        QCheckBox *box = checkBox(setting.key);
        if (!box) continue;
        box->click();
        EXPECT_NE(defaults.boolForKey(setting.key), setting.value.toBool()) << setting.key.toStdString();
        box->click();
        EXPECT_EQ(defaults.boolForKey(setting.key), setting.value.toBool()) << setting.key.toStdString();
    }
}

TEST_F(Preferences, ANumberTypedChangesItsSettingAtOnce) {
    depth()->selectAll();
    QTest::keyClicks(depth(), "12");
    EXPECT_EQ(defaults.integerForKey("autotocMaxDepth"), 12);
    depth()->stepDown();
    EXPECT_EQ(defaults.integerForKey("autotocMaxDepth"), 11);
}

TEST_F(Preferences, AChangeElsewhereShows) {
    defaults.setValue("LeafwrightAlwaysPreviewBeforeSave", true);
    EXPECT_TRUE(checkBox("LeafwrightAlwaysPreviewBeforeSave")->isChecked());
    EXPECT_FALSE(checkBox("LeafwrightShouldWarnAboutPDFVersion")->isChecked());
    defaults.setValue("autotocMaxDepth", 5);
    EXPECT_EQ(depth()->value(), 5);
    defaults.setValue("autotocMaxDepth", "2.7");
    EXPECT_EQ(depth()->value(), 2) << "the whole part is in force";
    EXPECT_EQ(defaults.stringForKey("autotocMaxDepth"), "2.7");
    defaults.removeValue("LeafwrightAlwaysPreviewBeforeSave");
    EXPECT_FALSE(checkBox("LeafwrightAlwaysPreviewBeforeSave")->isChecked());
}

TEST_F(Preferences, ShowingASettingDoesNotStoreIt) {
    const test::TempDir dir;
    {
        UserDefaults stored(dir.path("settings.ini"));
        registerDefaults(stored);
        stored.setValue("autotocMaxDepth", 0);  // Out of the control's range.
        const PreferencesWindow other(stored);
        stored.setValue("LeafwrightShowHelpOnStart", false);
        EXPECT_EQ(stored.integerForKey("autotocMaxDepth"), 0);
    }
    QFile file(dir.path("settings.ini"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "[General]\nLeafwrightShowHelpOnStart=false\nautotocMaxDepth=0\n");
}

TEST_F(Preferences, LaterSettingsAreOffUntilTheUserTurnsThemOn) {
    for (const QString &key : laterSettings()) {
        ASSERT_NE(checkBox(key), nullptr) << key.toStdString();
        EXPECT_FALSE(checkBox(key)->isChecked());
        checkBox(key)->click();
        EXPECT_TRUE(defaults.boolForKey(key));
    }
    window.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::RestoreDefaults)->click();
    for (const QString &key : laterSettings())
        EXPECT_FALSE(checkBox(key)->isChecked() || defaults.boolForKey(key)) << key.toStdString();
}

TEST_F(Preferences, TheDefaultsCanBeRestored) {
    for (const DefaultSetting &setting : defaultSettings())
        if (QCheckBox *box = checkBox(setting.key)) box->click();
    depth()->setValue(9);
    defaults.setValue("LastUsedH1H2H3MapString", "H1/12.0/Times");
    window.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::RestoreDefaults)->click();
    for (const DefaultSetting &setting : defaultSettings()) {
        const QCheckBox *box = checkBox(setting.key);
        EXPECT_TRUE(!box || box->isChecked() == setting.value.toBool()) << setting.key.toStdString();
    }
    EXPECT_EQ(depth()->value(), 3);
    EXPECT_EQ(defaults.stringForKey("LastUsedH1H2H3MapString"), "H1/12.0/Times") << "not a preference";
}

TEST_F(Preferences, EachLetterWithAltReachesOneControl) {
    QSet<QString> letters;
    for (const QCheckBox *box : window.findChildren<QCheckBox *>()) {
        const QString letter = box->shortcut().toString();
        EXPECT_FALSE(letter.isEmpty()) << box->text().toStdString();
        EXPECT_FALSE(letters.contains(letter)) << letter.toStdString();
        letters.insert(letter);
    }
    for (const QLabel *label : window.findChildren<QLabel *>()) {
        if (!label->buddy()) continue;
        EXPECT_EQ(label->buddy(), depth());
        const QString letter = QKeySequence::mnemonic(label->text()).toString();
        EXPECT_FALSE(letter.isEmpty() || letters.contains(letter)) << letter.toStdString();
    }
}

TEST_F(Preferences, EveryControlHasANameForAssistivePrograms) {
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        if (widget->focusPolicy() == Qt::NoFocus || widget->focusProxy()) continue;
        if (qobject_cast<QSpinBox *>(widget->parentWidget())) continue;  // The field in it speaks for it.
        const QAccessibleInterface *element = QAccessible::queryAccessibleInterface(widget);
        EXPECT_FALSE(element->text(QAccessible::Name).isEmpty()) << widget->metaObject()->className();
    }
}

TEST_F(Preferences, TheTabKeyGoesThroughAllControlsFromTopToBottom) {
    window.show();
    window.activateWindow();
    QStringList reached;
    QWidget *first = nullptr;
    for (QWidget *at = window.nextInFocusChain(); at != first; at = at->nextInFocusChain()) {
        if (!first) first = at;
        if (qobject_cast<QCheckBox *>(at) || qobject_cast<QSpinBox *>(at)) reached.append(at->objectName());
    }
    EXPECT_EQ(reached.size(), defaultSettings().size() + laterSettings().size());
    int last = -1;
    for (const QString &name : reached) {
        const auto *widget = window.findChild<QWidget *>(name);
        const int top = widget->mapTo(&window, QPoint()).y();
        EXPECT_GT(top, last) << name.toStdString();
        last = top;
    }
}

TEST_F(Preferences, EscapeClosesTheWindow) {
    window.show();
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace leafwright
