#include "widgets/NoticeBars.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

/// How well one colour is read on another, from 1 to 21: the ratio of their relative luminances.
double contrast(const QColor &a, const QColor &b) {
    const auto luminance = [](const QColor &color) {
        const auto linear = [](double part) {
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

class Notices : public testing::Test {
protected:
    Notices() { window.resize(600, 300); }

    QPushButton &button(const QString &name, const QString &title) {
        for (auto *each : bars->bar(name)->findChildren<QPushButton *>())
            if (each->text() == title) return *each;
        throw std::runtime_error("no such button");
    }

    QWidget window;
    NoticeBars *bars = new NoticeBars(&window);
};

TEST_F(Notices, AreShownAsPlainTextUntilTheyAreClosed) {
    EXPECT_TRUE(bars->isHidden()) << "without a notice they take no room";
    bars->setNotice("save", {"<b>a.pdf</b> could not be saved"});
    bars->setNotice("labels", {"Labels repeat"});
    EXPECT_FALSE(bars->isHidden());
    EXPECT_EQ(bars->bar("save")->text(), "<b>a.pdf</b> could not be saved");
    EXPECT_EQ(bars->bar("save")->findChild<QLabel *>()->textFormat(), Qt::PlainText);

    bars->bar("save")->findChild<QToolButton *>("closeNotice")->click();
    EXPECT_EQ(bars->bar("save"), nullptr);
    EXPECT_NE(bars->bar("labels"), nullptr);
    EXPECT_FALSE(bars->isHidden());
    QTest::keyClick(bars->bar("labels"), Qt::Key_Escape);
    EXPECT_EQ(bars->bar("labels"), nullptr);
    EXPECT_TRUE(bars->isHidden());
}

TEST_F(Notices, ALaterOneOfTheSameNameTakesTheEarliersPlace) {
    bars->setNotice("save", {"First"});
    bars->setNotice("save", {"Second"});
    EXPECT_EQ(bars->bar("save")->text(), "Second");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(bars->findChildren<NoticeBar *>().size(), 1);
}

TEST_F(Notices, AButtonMayTakeItsOwnBarAway) {
    int pressed = 0;
    bars->setNotice(
        "save", {"Failed", {{"Again", [&] { ++pressed; }}, {"Forget", [&] { bars->removeNotice("save"); }}}});
    button("save", "Again").click();
    EXPECT_EQ(pressed, 1);
    EXPECT_NE(bars->bar("save"), nullptr);
    button("save", "Forget").click();
    EXPECT_EQ(bars->bar("save"), nullptr);
}

TEST_F(Notices, EverythingHasANameForAssistiveProgramsAndIsReachedByTheKeyboard) {
    bars->setNotice("save", {"Failed", {{"Save As…", [] {}}}});
    const auto nameOf = [](QWidget *widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    };
    EXPECT_EQ(nameOf(bars->bar("save")), "Failed");
    for (auto *each : bars->bar("save")->findChildren<QAbstractButton *>()) {
        EXPECT_FALSE(nameOf(each).isEmpty() || nameOf(each) == "✕");
        EXPECT_TRUE(each->focusPolicy() & Qt::TabFocus) << nameOf(each).toStdString();
    }
}

TEST_F(Notices, CanBeReadOnLightAndOnDarkWindows) {
    for (const bool dark : {false, true}) {
        QPalette palette;
        palette.setColor(QPalette::Window, dark ? QColor(32, 32, 32) : QColor(239, 239, 239));
        palette.setColor(QPalette::WindowText, dark ? Qt::white : Qt::black);
        palette.setColor(QPalette::Highlight, dark ? QColor(42, 130, 218) : QColor(48, 140, 198));
        NoticeBar bar({"Failed"});
        bar.setPalette(palette);
        bar.resize(600, 40);
        const QImage image = bar.grab().toImage();
        const QColor background = image.pixelColor(3, image.height() / 2);
        EXPECT_GT(contrast(background, palette.color(QPalette::WindowText)), 7) << dark;
        EXPECT_NE(background, palette.color(QPalette::Window)) << "a bar is to be seen";
    }
}

}  // namespace
}  // namespace leafwright
