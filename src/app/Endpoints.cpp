#include "app/Endpoints.h"

namespace leafwright {

namespace {

/// A link as people write it, with what may not stand in one (RFC 2396, section 2.4.3) as %XX in UTF-8.
QUrl escaped(const QString &link) {
    return QUrl::fromEncoded(QUrl::toPercentEncoding(link, QByteArrayLiteral(";/?:@&=+$,!*'()")),
                             QUrl::StrictMode);
}

}  // namespace

QUrl homePage() {
    return QUrl(QStringLiteral("https://leafwright.org/"));
}

QUrl tutorialsPage() {
    return QUrl(QStringLiteral("https://leafwright.org/tutorials/"));
}

QUrl storePage() {
    return QUrl(QStringLiteral("https://flathub.org/apps/org.leafwright.Leafwright"));
}

QUrl supportMail(const QString &version) {
    return escaped(
        QStringLiteral("mailto:support@leafwright.org?subject=Help Using Leafwright %1").arg(version));
}

QUrl feedbackMail() {
    // The version in the subject is fixed: messages are sorted by it.
    return QUrl(QStringLiteral("mailto:feedback@leafwright.org?subject=Feedback%20on%20Leafwright%20v1.5.1"));
}

}  // namespace leafwright
