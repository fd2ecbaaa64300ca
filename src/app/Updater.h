#pragma once

#include "app/Appcast.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>
#include <QTimer>

class QNetworkReply;

namespace leafwright {

/// Looks in the program's feed whether there is a newer version, when it is asked to and never otherwise. It
/// downloads nothing but the feed and replaces nothing: installing is the package manager's. Works in the
/// event loop; checkForUpdates() returns at once.
class Updater : public QObject {
    Q_OBJECT

public:
    /// What a feed may take.
    struct Limits {
        int milliseconds = 20000;        ///< From the question to the end of the answer.
        qint64 bytes = qint64{1} << 20;  ///< Of the answer.
        int redirections = 5;
    };

    /// The program's own feed and version.
    Updater();
    ~Updater() override;

    /// Where the feed of versions is.
    static QUrl standardFeedURL();
    const QUrl &feedURL() const { return feedURL_; }
    void setFeedURL(const QUrl &url) { feedURL_ = url; }
    const QString &currentVersion() const { return currentVersion_; }
    void setCurrentVersion(const QString &version) { currentVersion_ = version; }
    void setLimits(const Limits &limits) { limits_ = limits; }

    /// Asks the feed; exactly one of the three signals tells the result, unless it is cancelled. While one
    /// check is going on, another is not begun. @param sender who asks; not used
    void checkForUpdates(QObject *sender);
    bool isChecking() const { return !reply_.isNull(); }
    /// Ends a check without a result.
    void cancel();

Q_SIGNALS:
    void checkingChanged(bool isChecking);
    /// The feed has a newer version.
    void updateFound(const leafwright::AppcastItem &item);
    /// The feed has no version that is newer than this one.
    void upToDate();
    /// There is no telling. @param reason a sentence for the user
    void checkFailed(const QString &reason);

private:
    bool receive();
    void finish();
    void giveUp(const QString &reason);
    void stopReply();
    void judge(const QByteArray &feed);

    QUrl feedURL_ = standardFeedURL();
    QString currentVersion_;
    Limits limits_;
    QNetworkAccessManager network_;
    QPointer<QNetworkReply> reply_;
    QByteArray received_;
    QTimer patience_;
};

}  // namespace leafwright
