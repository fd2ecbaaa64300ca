#include "app/Updater.h"

#include <QCoreApplication>
#include <QNetworkReply>

namespace leafwright {

namespace {

QNetworkRequest requestFor(const QUrl &url, const Updater::Limits &limits) {
    QNetworkRequest request(url);
    // From https only to https.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(limits.redirections);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Leafwright"));
    // Left to itself, the framework would send the user's language.
    request.setRawHeader("Accept-Language", "*");
    // Packed answers could unfold to any length.
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}

}  // namespace

Updater::Updater() : currentVersion_(QCoreApplication::applicationVersion()) {
    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, this,
            [this] { giveUp(tr("The server took too long to answer.")); });
}

Updater::~Updater() {
    stopReply();
}

QUrl Updater::standardFeedURL() {
    return QUrl(QStringLiteral("https://leafwright.org/appcast.xml"));
}

void Updater::checkForUpdates(QObject * /*sender*/) {
    if (isChecking()) return;
    received_.clear();
    reply_ = network_.get(requestFor(feedURL_, limits_));
    connect(reply_, &QNetworkReply::readyRead, this, &Updater::receive);
    connect(reply_, &QNetworkReply::finished, this, &Updater::finish);
    patience_.start(limits_.milliseconds);
    Q_EMIT checkingChanged(true);
}

void Updater::cancel() {
    if (!isChecking()) return;
    stopReply();
    Q_EMIT checkingChanged(false);
}

bool Updater::receive() {
    received_ += reply_->read(limits_.bytes + 1 - received_.size());
    if (received_.size() <= limits_.bytes) return true;
    giveUp(tr("The server’s answer is too long."));
    return false;
}

void Updater::finish() {
    if (!receive()) return;
    if (reply_->error() != QNetworkReply::NoError) {
        giveUp(tr("The server could not be reached, or has no list of versions: %1.")
                   .arg(reply_->errorString()));
        return;
    }
    const QByteArray feed = std::exchange(received_, {});
    cancel();
    judge(feed);
}

void Updater::giveUp(const QString &reason) {
    cancel();
    Q_EMIT checkFailed(reason);
}

void Updater::stopReply() {
    patience_.stop();
    QNetworkReply *reply = reply_;
    reply_.clear();
    if (!reply) return;
    reply->disconnect(this);
    reply->abort();
    reply->deleteLater();
}

void Updater::judge(const QByteArray &feed) {
    const auto newest = newestVersionInAppcast(feed);
    const auto current = versionFromString(currentVersion_);
    if (!newest || !current) {
        Q_EMIT checkFailed(tr("The server’s answer could not be understood."));
    } else if (newest->version > *current) {
        Q_EMIT updateFound(*newest);
    } else {
        Q_EMIT upToDate();
    }
}

}  // namespace leafwright
