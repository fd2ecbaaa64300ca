#pragma once

#include "app/AppSandboxFileAccess.h"
#include "app/AppSandboxFileAccessPersist.h"
#include "support/RecordingPlatform.h"
#include "support/TempDir.h"

#include <QDir>

#include <gtest/gtest.h>
#include <map>

namespace leafwright::test {

/// Bookmarks that a test decides on: the data is "to " and the URL.
class ScriptedBookmarks final : public SecurityScopedBookmarks {
public:
    QByteArray bookmarkDataForURL(const QUrl &url) override {
        return canCreate ? "to " + url.toEncoded() : QByteArray();
    }
    Resolution resolveBookmarkData(const QByteArray &data) override {
        ++resolved;
        if (!canResolve || !data.startsWith("to ")) return {std::nullopt, isStale};
        return {QUrl::fromEncoded(data.mid(3)), isStale};
    }
    bool startAccessing(const QUrl &url) override {
        events.append("start " + url.fileName());
        return true;
    }
    void stopAccessing(const QUrl &url) override { events.append("stop " + url.fileName()); }

    bool canCreate = true;
    bool canResolve = true;
    bool isStale = false;
    int resolved = 0;
    QStringList events;
};

/// A place for bookmarks other than the settings.
class OwnStore final : public AppSandboxFileAccessProtocol {
public:
    QByteArray bookmarkDataForURL(const QUrl &url) override {
        const auto found = kept.find(url);
        return found == kept.end() ? QByteArray() : found->second;
    }
    void setBookmarkDataForURL(const QByteArray &data, const QUrl &url) override { kept[url] = data; }
    void clearBookmarkDataForURL(const QUrl &url) override { kept.erase(url); }

    std::map<QUrl, QByteArray> kept;
};

class AppSandboxFileAccessFixture : public testing::Test {
protected:
    /// A file in the test's folder, by the path that has no links in it.
    QUrl file(const QString &name) const {
        QDir().mkpath(QFileInfo(realPath(name)).path());
        QFile out(realPath(name));
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        return QUrl::fromLocalFile(realPath(name));
    }
    QString realPath(const QString &name) const {
        return QFileInfo(dir.path("")).canonicalFilePath() + '/' + name;
    }
    QUrl folder(const QString &name) const {
        QDir().mkpath(realPath(name));
        return QUrl::fromLocalFile(realPath(name));
    }
    /// The user will allow this at the next panel.
    void allow(const QUrl &url) { platform.filesToChoose.append(url.toLocalFile()); }
    /// The user will refuse what the next panel asks for.
    void refuse() { platform.filesToChoose.append(std::nullopt); }
    /// What is kept for a URL itself.
    QByteArray kept(const QUrl &url) {
        return platform.defaults.dataForKey(AppSandboxFileAccessPersist::keyForBookmarkDataForURL(url));
    }
    void keep(const QUrl &url, const QByteArray &data) {
        access.defaultDelegate()->setBookmarkDataForURL(data, url);
    }
    /// Requests access, and tells what the block was called with; "refused" if it was not.
    QString request(const QUrl &url, bool persist) {
        QString seen;
        int calls = 0;
        const bool granted = access.requestAccessPermissionsForFileURL(
            url, persist, [&](const QUrl &allowed, const QByteArray &data) {
                ++calls;
                seen = allowed.fileName() + " with " +
                       (data.isNull() ? "nothing" : QString::fromUtf8(data.split('/').last()));
            });
        EXPECT_EQ(calls, granted ? 1 : 0);
        return granted ? seen : "refused";
    }

    TempDir dir;
    RecordingPlatform platform;
    std::shared_ptr<ScriptedBookmarks> bookmarks = std::make_shared<ScriptedBookmarks>();
    AppSandboxFileAccess access{platform, bookmarks};
};

}  // namespace leafwright::test
