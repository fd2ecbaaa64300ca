#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace leafwright::test {

/// A message bus of the test's own.
class MessageBus {
public:
    MessageBus() {
        const QString daemon = QStandardPaths::findExecutable("dbus-daemon");
        if (daemon.isEmpty()) return;
        daemon_.start(daemon, {"--session", "--nofork", "--print-address=1"});
        if (daemon_.waitForReadyRead()) address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    }
    ~MessageBus() {
        for (const QString &name : connections_)
            QDBusConnection::disconnectFromBus(name);
        daemon_.kill();
        daemon_.waitForFinished();
    }

    /// Whether dbus-daemon is installed and runs.
    bool isRunning() const { return !address_.isEmpty(); }
    /// A connection of that name; it lives as long as the bus.
    QDBusConnection connect(const QString &name) {
        connections_.append(name);
        return QDBusConnection::connectToBus(address_, name);
    }

private:
    QProcess daemon_;
    QString address_;
    QStringList connections_;
};

/// A bus with a connection for who asks and one for who answers. Skips the test where there is no bus.
class MessageBusFixture : public testing::Test {
protected:
    void SetUp() override {
        if (!bus_.isRunning()) GTEST_SKIP() << "dbus-daemon is not installed";
        asking = bus_.connect("asking");
        answering = bus_.connect("answering");
        ASSERT_TRUE(asking.isConnected() && answering.isConnected());
    }

private:
    MessageBus bus_;

protected:
    QDBusConnection asking{""};
    QDBusConnection answering{""};
};

}  // namespace leafwright::test
