#include "app/AppSandboxFileAccessPersist.h"

#include "platform/UserDefaults.h"
#include "system/MainThread.h"

namespace leafwright {

namespace {

constexpr qsizetype shortestPath = 2;  // "/" alone is never looked up.

QUrl withoutSlashAtEnd(const QUrl &url) {
    return url.adjusted(QUrl::StripTrailingSlash);
}

QUrl parentOf(const QUrl &url) {
    return withoutSlashAtEnd(withoutSlashAtEnd(url).adjusted(QUrl::RemoveFilename));
}

/// The same folder with a slash at the end, as folders are often written.
QUrl asFolder(QUrl url) {
    url.setPath(url.path() + u'/');
    return url;
}

}  // namespace

QString AppSandboxFileAccessPersist::keyForBookmarkDataForURL(const QUrl &url) {
    return QStringLiteral("bd_%1").arg(QString::fromLatin1(url.toEncoded()));
}

QByteArray AppSandboxFileAccessPersist::bookmarkDataForURL(const QUrl &url) {
    return onMainThread([&]() -> QByteArray {
        for (QUrl each = withoutSlashAtEnd(url); each.path().size() >= shortestPath; each = parentOf(each)) {
            for (const QUrl &form : {each, asFolder(each)}) {
                QByteArray data = defaults_.dataForKey(keyForBookmarkDataForURL(form));
                if (!data.isNull()) return data;
            }
        }
        return {};
    });
}

void AppSandboxFileAccessPersist::setBookmarkDataForURL(const QByteArray &data, const QUrl &url) {
    onMainThread([&] { defaults_.setValue(keyForBookmarkDataForURL(url), data); });
}

void AppSandboxFileAccessPersist::clearBookmarkDataForURL(const QUrl &url) {
    onMainThread([&] { defaults_.removeValue(keyForBookmarkDataForURL(url)); });
}

}  // namespace leafwright
