#include "app/Endpoints.h"
#include "app/UpdateWindow.h"
#include "support/HttpServer.h"
#include "support/RecordingPlatform.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class Updates : public testing::Test {
protected:
    Updates() {
        updater.setFeedURL(server.url("/feed"));
        updater.setCurrentVersion("1.0");
    }
    void checkWith(const QByteArray &item) {
        server.answer("/feed", "<rss><channel><item>" + item + "</item></channel></rss>");
        check();
    }
    void check() {
        QSignalSpy checking(&updater, &Updater::checkingChanged);
        updater.checkForUpdates(nullptr);
        EXPECT_TRUE(window.isVisible());
        EXPECT_TRUE(window.findChild<QProgressBar *>()->isVisible());
        while (updater.isChecking() && checking.wait())
            continue;
    }
    QPushButton *button(QDialogButtonBox::ButtonRole role) {
        auto *buttons = window.findChild<QDialogButtonBox *>();
        for (QAbstractButton *each : buttons->buttons())
            if (buttons->buttonRole(each) == role) return qobject_cast<QPushButton *>(each);
        return nullptr;
    }
    QString headline() { return window.findChild<QLabel *>("headline")->text(); }
    QString text() { return window.findChild<QLabel *>("text")->text(); }
    QPlainTextEdit *notes() { return window.findChild<QPlainTextEdit *>("notes"); }

    test::HttpServer server;
    test::RecordingPlatform platform;
    Updater updater;
    UpdateWindow window{updater, platform};
};

TEST_F(Updates, ANewerVersionIsShownWithItsNotes) {
    checkWith(
        "<version>1.10</version><description>&lt;p&gt;Much &lt;b&gt;faster&lt;/b&gt;&lt;/p&gt;"
        "</description>");
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(headline(), "Leafwright 1.10 is available");
    EXPECT_TRUE(text().contains("You have 1.0."));
    EXPECT_TRUE(notes()->isVisible());
    EXPECT_EQ(notes()->toPlainText(), "Much faster");
    EXPECT_FALSE(window.findChild<QProgressBar *>()->isVisible());
    EXPECT_TRUE(platform.alerts.isEmpty());
    EXPECT_TRUE(platform.openedURLs.isEmpty()) << "nothing leaves the program by itself";
}

TEST_F(Updates, WithoutNotesNoneAreShown) {
    checkWith("<version>2</version>");
    EXPECT_FALSE(notes()->isVisible());
}

TEST_F(Updates, TheButtonOpensTheDownloadPage) {
    checkWith("<version>2</version><link>https://example.org/get</link>");
    button(QDialogButtonBox::AcceptRole)->click();
    EXPECT_EQ(platform.openedURLs, QList{QUrl("https://example.org/get")});
    EXPECT_FALSE(window.isVisible());
}

TEST_F(Updates, WithoutADownloadPageTheButtonOpensTheProgramsOwn) {
    checkWith("<version>2</version><link>file:///etc/passwd</link>");
    button(QDialogButtonBox::AcceptRole)->click();
    EXPECT_EQ(platform.openedURLs, QList{homePage()});
}

TEST_F(Updates, LaterOpensNothing) {
    checkWith("<version>2</version><link>https://example.org/get</link>");
    button(QDialogButtonBox::RejectRole)->click();
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(platform.openedURLs.isEmpty());
}

TEST_F(Updates, BeingUpToDateIsSaid) {
    checkWith("<version>1.0</version>");
    EXPECT_FALSE(window.isVisible());
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].style, Alert::Style::Informational);
    EXPECT_TRUE(platform.alerts[0].informativeText.contains("1.0"));
    EXPECT_EQ(platform.alerts[0].buttons, QStringList("OK"));
    EXPECT_EQ(platform.beeps, 0);
}

TEST_F(Updates, AFailureIsABeepAndAnAlertWithItsReason) {
    server.close();
    check();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(platform.beeps, 1);
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].message, "Unable to check for updates");
    EXPECT_TRUE(platform.alerts[0].informativeText.contains("could not be reached"));
    EXPECT_EQ(platform.alerts[0].buttons, QStringList("OK"));
}

TEST_F(Updates, EscapeEndsACheckWithoutAWord) {
    server.answerRaw("/feed", "");
    updater.checkForUpdates(nullptr);
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(updater.isChecking());
    EXPECT_TRUE(platform.alerts.isEmpty());
}

TEST_F(Updates, ALaterCheckShowsWhatItFindsItself) {
    checkWith("<version>2</version><description>old notes</description>");
    checkWith("<version>3</version>");
    EXPECT_EQ(headline(), "Leafwright 3 is available");
    EXPECT_FALSE(notes()->isVisible());
}

}  // namespace
}  // namespace leafwright
