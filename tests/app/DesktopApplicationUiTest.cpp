#include "app/DesktopApplication.h"
#include "support/MessageBus.h"

#include <QDBusInterface>
#include <QDBusReply>
#include <QSignalSpy>
#include <QTest>

#include <future>
#include <gtest/gtest.h>

namespace leafwright {
namespace {

const QString objectPath = "/org/leafwright/Leafwright";

class DesktopApplicationTest : public testing::Test {
protected:
    void SetUp() override {
        if (!bus.isRunning()) GTEST_SKIP() << "dbus-daemon is not installed";
        here = bus.connect("first");
        there = bus.connect("second");
        ASSERT_TRUE(here.isConnected() && there.isConnected());
        first = std::make_unique<DesktopApplication>(here);
    }

    /// Calls from another thread, as another process would.
    template <typename Function>
    auto elsewhere(Function function) {
        auto result = std::async(std::launch::async, function);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }, 10000));
        return result.get();
    }
    bool handOverElsewhere(const QStringList &paths) {
        return elsewhere([&] { return DesktopApplication(there).handOver(paths); });
    }
    QDBusMessage call(const QString &method, const QVariantList &arguments) {
        return elsewhere([&] {
            QDBusMessage message = QDBusMessage::createMethodCall(DesktopApplication::name(), objectPath,
                                                                  "org.freedesktop.Application", method);
            message.setArguments(arguments);
            return there.call(message, QDBus::Block, 5000);
        });
    }

    test::MessageBus bus;
    QDBusConnection here{""};
    QDBusConnection there{""};
    std::unique_ptr<DesktopApplication> first;
};

TEST_F(DesktopApplicationTest, OneInstanceHasTheName) {
    EXPECT_TRUE(first->listen());
    DesktopApplication second(there);
    EXPECT_FALSE(second.listen());
}

TEST_F(DesktopApplicationTest, TheNameIsFreeAgainWhenTheInstanceIsGone) {
    ASSERT_TRUE(first->listen());
    first.reset();
    EXPECT_TRUE(DesktopApplication(there).listen());
}

TEST_F(DesktopApplicationTest, NobodyIsThereAtTheFirstStart) {
    EXPECT_FALSE(DesktopApplication(there).handOver({"/a.pdf"}));
}

TEST_F(DesktopApplicationTest, ASecondStartHandsItsFilesToTheFirst) {
    ASSERT_TRUE(first->listen());
    QSignalSpy received(first.get(), &DesktopApplication::filesReceived);
    const QStringList paths{"/one.pdf", "/with blank, %20, # and ü.pdf", "/with\nline feed.pdf"};
    EXPECT_TRUE(handOverElsewhere(paths));
    ASSERT_TRUE(QTest::qWaitFor([&] { return received.size() == 1; }));
    EXPECT_EQ(received[0][0].toStringList(), paths);
}

TEST_F(DesktopApplicationTest, AStartWithoutFilesShowsTheFirst) {
    ASSERT_TRUE(first->listen());
    QSignalSpy activated(first.get(), &DesktopApplication::activated);
    EXPECT_TRUE(handOverElsewhere({}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return activated.size() == 1; }));
}

TEST_F(DesktopApplicationTest, TheAnswerComesBeforeTheFilesAreOpened) {
    ASSERT_TRUE(first->listen());
    bool answered = false;
    bool answeredFirst = false;
    bool opened = false;
    QObject::connect(first.get(), &DesktopApplication::filesReceived, first.get(), [&] {
        // Opening may ask something and wait; the other program must not wait as well.
        answeredFirst = QTest::qWaitFor([&] { return answered; });
        opened = true;
    });
    QDBusMessage message = QDBusMessage::createMethodCall(DesktopApplication::name(), objectPath,
                                                          "org.freedesktop.Application", "Open");
    message.setArguments({QStringList{"file:///a.pdf"}, QVariantMap()});
    QDBusPendingCallWatcher watcher(there.asyncCall(message));
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, first.get(), [&] { answered = true; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return opened; }, 10000));
    EXPECT_TRUE(answeredFirst);
}

TEST_F(DesktopApplicationTest, AnAddressThatIsNoFileIsPassedOnAsItIs) {
    ASSERT_TRUE(first->listen());
    QSignalSpy received(first.get(), &DesktopApplication::filesReceived);
    call("Open", {QStringList{"https://example.com/a.pdf"}, QVariantMap()});
    ASSERT_TRUE(QTest::qWaitFor([&] { return received.size() == 1; }));
    EXPECT_EQ(received[0][0].toStringList(), QStringList{"https://example.com/a.pdf"});
}

TEST_F(DesktopApplicationTest, TheActivationTokenIsTakenOver) {
    ASSERT_TRUE(first->listen());
    QSignalSpy activated(first.get(), &DesktopApplication::activated);
    qunsetenv("XDG_ACTIVATION_TOKEN");
    call("Activate", {QVariantMap{{"activation-token", "token-7"}}});
    ASSERT_TRUE(QTest::qWaitFor([&] { return activated.size() == 1; }));
    EXPECT_EQ(qEnvironmentVariable("XDG_ACTIVATION_TOKEN"), "token-7");
    qunsetenv("XDG_ACTIVATION_TOKEN");
}

TEST_F(DesktopApplicationTest, ActionsAreRefused) {
    ASSERT_TRUE(first->listen());
    const QDBusMessage answer = call("ActivateAction", {"new-window", QVariantList(), QVariantMap()});
    EXPECT_EQ(answer.type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(answer.errorName(), "org.freedesktop.DBus.Error.InvalidArgs");
}

TEST(DesktopApplication, WithoutABusNothingIsTakenAndNothingFails) {
    DesktopApplication application(QDBusConnection("nowhere"));
    EXPECT_FALSE(application.listen());
    EXPECT_FALSE(application.handOver({"/a.pdf"}));
}

}  // namespace
}  // namespace leafwright
