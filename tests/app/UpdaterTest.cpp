#include "app/Updater.h"
#include "support/HttpServer.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

QByteArray feed(const QByteArray &version) {
    return "<rss version=\"2.0\"><channel><item><enclosure url=\"https://example.org/a\" version=\"" +
           version + "\"/></item></channel></rss>";
}

class UpdaterTest : public testing::Test {
protected:
    UpdaterTest() {
        updater.setFeedURL(server.url("/appcast.xml"));
        updater.setCurrentVersion("1.5");
    }

    /// Checks, and says how it ended.
    QString result() {
        found.clear();
        upToDate.clear();
        failed.clear();
        QSignalSpy checking(&updater, &Updater::checkingChanged);
        updater.checkForUpdates(nullptr);
        EXPECT_TRUE(updater.isChecking());
        while (updater.isChecking() && checking.wait())
            continue;
        EXPECT_FALSE(updater.isChecking());
        EXPECT_EQ(found.size() + upToDate.size() + failed.size(), 1);
        if (!found.isEmpty()) return "newer: " + found[0][0].value<AppcastItem>().displayVersion;
        return failed.isEmpty() ? "up to date" : "failed: " + failed[0][0].toString();
    }
    void expectFailure(const QString &reason) {
        const QString text = result();
        EXPECT_TRUE(text.startsWith("failed: ") && text.contains(reason)) << qPrintable(text);
    }

    test::HttpServer server;
    Updater updater;
    QSignalSpy found{&updater, &Updater::updateFound};
    QSignalSpy upToDate{&updater, &Updater::upToDate};
    QSignalSpy failed{&updater, &Updater::checkFailed};
};

TEST(UpdaterSettings, TheProgramsOwnFeedIsAskedOverASafeConnection) {
    EXPECT_EQ(Updater().feedURL(), Updater::standardFeedURL());
    EXPECT_EQ(Updater::standardFeedURL().scheme(), "https");
    EXPECT_EQ(Updater().currentVersion(), QCoreApplication::applicationVersion());
}

TEST_F(UpdaterTest, ANewerVersionIsFound) {
    server.answer("/appcast.xml", feed("1.10"));
    EXPECT_EQ(result(), "newer: 1.10");
}

TEST_F(UpdaterTest, TheSameVersionIsUpToDate) {
    for (const char *same : {"1.5", "1.5.0"}) {
        server.answer("/appcast.xml", feed(same));
        EXPECT_EQ(result(), "up to date") << same;
    }
}

TEST_F(UpdaterTest, AnOlderVersionIsNoUpdate) {
    server.answer("/appcast.xml", feed("1.4.9"));
    EXPECT_EQ(result(), "up to date");
}

TEST_F(UpdaterTest, AMalformedFeedIsNotUnderstood) {
    for (const QByteArray &text :
         {QByteArray("<rss><channel>"), QByteArray("<html>Log in</html>"), QByteArray(), feed("newest")}) {
        server.answer("/appcast.xml", text);
        expectFailure("could not be understood");
    }
}

TEST_F(UpdaterTest, AFeedWithEntitiesIsNotUnderstood) {
    server.answer("/appcast.xml", "<!DOCTYPE rss [<!ENTITY v \"9\">]>" + feed("&v;"));
    expectFailure("could not be understood");
}

TEST_F(UpdaterTest, AnUnreachableServerIsToldOf) {
    server.close();
    expectFailure("could not be reached");
}

TEST_F(UpdaterTest, AMissingFeedIsToldOf) {
    updater.setFeedURL(server.url("/elsewhere.xml"));
    expectFailure("has no list of versions");
}

TEST_F(UpdaterTest, AServerThatIsSilentIsGivenUp) {
    server.answerRaw("/appcast.xml", "");
    updater.setLimits({.milliseconds = 50});
    expectFailure("took too long");
}

TEST_F(UpdaterTest, ARedirectionIsFollowed) {
    server.redirect("/appcast.xml", "/moved.xml");
    server.answer("/moved.xml", feed("2.0"));
    EXPECT_EQ(result(), "newer: 2.0");
}

TEST_F(UpdaterTest, ARedirectionWithoutEndIsNot) {
    server.redirect("/appcast.xml", "/appcast.xml");
    updater.setLimits({.redirections = 3});
    expectFailure("could not be reached");
    EXPECT_LT(server.requests.size(), 10);
}

TEST_F(UpdaterTest, NoRedirectionLeadsToAFile) {
    server.redirect("/appcast.xml", "file:///etc/hostname");
    expectFailure("could not be reached");
}

TEST_F(UpdaterTest, AnAnswerThatIsTooLongIsNotReadToItsEnd) {
    updater.setLimits({.bytes = 1000});
    server.answer("/appcast.xml", feed("2.0") + QByteArray(1000, ' '));
    expectFailure("too long");
    // An answer that does not say how long it is.
    server.answerRaw("/appcast.xml",
                     "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + QByteArray(5'000'000, ' '));
    expectFailure("too long");
}

TEST_F(UpdaterTest, AnAnswerOfJustTheLengthAllowedIsRead) {
    updater.setLimits({.bytes = feed("2.0").size()});
    server.answer("/appcast.xml", feed("2.0"));
    EXPECT_EQ(result(), "newer: 2.0");
}

TEST_F(UpdaterTest, AskingTwiceAsksTheServerOnce) {
    server.answer("/appcast.xml", feed("1.5"));
    updater.checkForUpdates(nullptr);
    EXPECT_EQ(result(), "up to date");
    EXPECT_EQ(server.requests.size(), 1);
}

TEST_F(UpdaterTest, NothingIsAskedUntilTheUserAsks) {
    const QSignalSpy checking(&updater, &Updater::checkingChanged);
    QCoreApplication::processEvents();
    EXPECT_TRUE(server.requests.isEmpty());
    EXPECT_TRUE(checking.isEmpty());
}

TEST_F(UpdaterTest, TheServerLearnsNothingAboutTheUser) {
    server.answer("/appcast.xml", feed("1.5"));
    result();
    ASSERT_EQ(server.requests.size(), 1);
    const QByteArray request = server.requests[0];
    EXPECT_TRUE(request.contains("User-Agent: Leafwright\r\n")) << request.toStdString();
    for (const char *header : {"Cookie:", "Accept-Language: en", "Referer:", "Authorization:", "?"})
        EXPECT_FALSE(request.contains(header)) << header;
}

TEST_F(UpdaterTest, ACheckCanBeCancelledAndBegunAnew) {
    server.answer("/appcast.xml", feed("2.0"));
    updater.checkForUpdates(nullptr);
    updater.cancel();
    EXPECT_FALSE(updater.isChecking());
    EXPECT_EQ(result(), "newer: 2.0");
}

TEST_F(UpdaterTest, AnUpdaterMayGoInTheMiddleOfACheck) {
    server.answerRaw("/appcast.xml", "");
    {
        Updater other;
        other.setFeedURL(server.url("/appcast.xml"));
        other.checkForUpdates(nullptr);
    }
    QCoreApplication::processEvents();
}

}  // namespace
}  // namespace leafwright
