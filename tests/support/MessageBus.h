#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace leafwright::test {

/// A message bus of the test's own, with a connection for who asks and one for who answers. Skips the test
/// where there is no bus program.
class MessageBusFixture : public testing::Test {
protected:
    void SetUp() override {
        const QString daemon = QStandardPaths::findExecutable("dbus-daemon");
        if (daemon.isEmpty()) GTEST_SKIP() << "dbus-daemon is not installed";
        daemon_.start(daemon, {"--session", "--nofork", "--print-address=1"});
        ASSERT_TRUE(daemon_.waitForReadyRead());
        const QString address = QString::fromUtf8(daemon_.readLine()).trimmed();
        asking = QDBusConnection::connectToBus(address, "asking");
        answering = QDBusConnection::connectToBus(address, "answering");
        ASSERT_TRUE(asking.isConnected() && answering.isConnected());
    }
    void TearDown() override {
        QDBusConnection::disconnectFromBus("asking");
        QDBusConnection::disconnectFromBus("answering");
        daemon_.kill();
        daemon_.waitForFinished();
    }

    QDBusConnection asking{""};
    QDBusConnection answering{""};

private:
    QProcess daemon_;
};

}  // namespace leafwright::test
