#pragma once

#include <QLocalServer>
#include <QStringList>

namespace leafwright {

/// Makes the program run once a user: the first start listens, a second one hands its files over.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// @param name of the meeting place; one for each user
    explicit SingleInstance(QString name);
    /// The user's own place.
    static QString nameForUser();

    /// Hands files to the instance that runs already. @param paths absolute
    /// @return whether there is one and it has taken them
    bool handOver(const QStringList &paths) const;
    /// Becomes the instance that others hand their files to. @return false if that is not possible
    bool listen();

Q_SIGNALS:
    /// Another start asks to open files; without any, to come to the front.
    void filesReceived(const QStringList &paths);

private:
    void receive();

    QString name_;
    QLocalServer server_;
};

}  // namespace leafwright
