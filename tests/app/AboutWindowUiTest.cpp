#include "app/AboutWindow.h"
#include "pdf/PDFEngine.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class About : public testing::Test {
protected:
    About() { QCoreApplication::setApplicationVersion("7.8.9"); }
    ~About() override { QCoreApplication::setApplicationVersion({}); }

    static QString textOf(const AboutWindow &window, const QString &name) {
        return window.findChild<QLabel *>(name)->text();
    }
};

TEST_F(About, TellsNameVersionLicenceAndLibraries) {
    const AboutWindow window;
    EXPECT_EQ(textOf(window, "name"), QApplication::applicationDisplayName());
    EXPECT_EQ(textOf(window, "version"), "Version 7.8.9");
    EXPECT_TRUE(textOf(window, "licence").contains("AGPL-3.0-or-later"));
    EXPECT_TRUE(textOf(window, "libraries").contains(QString("Qt ") + qVersion()));
    EXPECT_TRUE(textOf(window, "libraries").contains(pdfEngineName()));
    EXPECT_TRUE(pdfEngineName().startsWith("MuPDF 1.")) << pdfEngineName().toStdString();
}

TEST_F(About, TheTextsOfAReportCanBeCopiedWithTheKeyboard) {
    const AboutWindow window;
    for (const char *name : {"version", "licence", "libraries"}) {
        const auto *label = window.findChild<QLabel *>(name);
        EXPECT_TRUE(label->textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard)) << name;
        EXPECT_EQ(label->textFormat(), Qt::PlainText) << name;
    }
}

TEST_F(About, TheButtonAsksForTheWebPage) {
    AboutWindow window;
    const QSignalSpy asked(&window, &AboutWindow::homePageRequested);
    for (QPushButton *button : window.findChildren<QPushButton *>())
        if (button->text().contains("Web")) button->click();
    EXPECT_EQ(asked.size(), 1);
}

TEST_F(About, ReturnAndEscapeCloseIt) {
    AboutWindow window;
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
        window.show();
        QTest::keyClick(&window, key);
        EXPECT_FALSE(window.isVisible()) << key;
    }
}

}  // namespace
}  // namespace leafwright
