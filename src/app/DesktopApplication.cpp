#include "app/DesktopApplication.h"

#include "files/FileName.h"

#include <QDBusError>
#include <QUrl>

namespace leafwright {

namespace {

constexpr int patience = 5000;  // milliseconds
const QString objectPath = QStringLiteral("/org/leafwright/Leafwright");
const QString interfaceName = QStringLiteral("org.freedesktop.Application");

// Under Wayland, who is asked to show a window proves with a token that the user wants it: it stands in the
// environment at a start, where Qt looks for it, and is platform data over the bus.
constexpr const char *tokenVariable = "XDG_ACTIVATION_TOKEN";
const QString tokenKey = QStringLiteral("activation-token");

QVariantMap platformDataOfThisStart() {
    const QString token = qEnvironmentVariable(tokenVariable);
    return token.isEmpty() ? QVariantMap() : QVariantMap{{tokenKey, token}};
}

void takeToken(const QVariantMap &platformData) {
    const QString token = platformData.value(tokenKey).toString();
    if (!token.isEmpty()) qputenv(tokenVariable, token.toUtf8());
}

QStringList encodedUrls(const QStringList &paths) {
    QStringList urls;
    for (const QString &path : paths)
        urls.append(QString::fromLatin1(urlOfFile(path).toEncoded()));
    return urls;
}

/// What is no file of this computer is passed on as it is, for the user to be told of.
QStringList pathsOfUrls(const QStringList &uris) {
    QStringList paths;
    for (const QString &uri : uris) {
        const QUrl url(uri);
        paths.append(url.isLocalFile() ? pathOfFileUrl(url) : uri);
    }
    return paths;
}

}  // namespace

QString DesktopApplication::name() {
    return QStringLiteral("org.leafwright.Leafwright");
}

DesktopApplication::DesktopApplication(QDBusConnection bus) : bus_(std::move(bus)) {
    new DesktopApplicationAdaptor(*this, bus_);
}

DesktopApplication::~DesktopApplication() {
    if (!bus_.isConnected()) return;
    bus_.unregisterObject(objectPath);
    bus_.unregisterService(name());
}

bool DesktopApplication::listen() {
    // The object first: from the moment that the name is taken, it is asked for.
    return bus_.isConnected() && bus_.registerObject(objectPath, this) && bus_.registerService(name());
}

bool DesktopApplication::handOver(const QStringList &paths) const {
    if (!bus_.isConnected()) return false;
    QDBusMessage message =
        QDBusMessage::createMethodCall(name(), objectPath, interfaceName,
                                       paths.isEmpty() ? QStringLiteral("Activate") : QStringLiteral("Open"));
    message.setAutoStartService(false);
    if (!paths.isEmpty()) message << encodedUrls(paths);
    message << platformDataOfThisStart();
    return bus_.call(message, QDBus::Block, patience).type() == QDBusMessage::ReplyMessage;
}

DesktopApplicationAdaptor::DesktopApplicationAdaptor(DesktopApplication &application, QDBusConnection bus)
    : QDBusAbstractAdaptor(&application), application_(application), bus_(std::move(bus)) {}

// Opening may stop and ask; the caller gets its answer before that.

void DesktopApplicationAdaptor::Activate(const QVariantMap &platformData) {
    takeToken(platformData);
    QMetaObject::invokeMethod(&application_, &DesktopApplication::activated, Qt::QueuedConnection);
}

void DesktopApplicationAdaptor::Open(const QStringList &uris, const QVariantMap &platformData) {
    takeToken(platformData);
    QMetaObject::invokeMethod(
        &application_, [this, paths = pathsOfUrls(uris)] { Q_EMIT application_.filesReceived(paths); },
        Qt::QueuedConnection);
}

void DesktopApplicationAdaptor::ActivateAction(const QString &actionName, const QVariantList & /*parameter*/,
                                               const QVariantMap & /*platformData*/,
                                               const QDBusMessage &message) {
    message.setDelayedReply(true);
    bus_.send(
        message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("no action “%1”").arg(actionName)));
}

}  // namespace leafwright
