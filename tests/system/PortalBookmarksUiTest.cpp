#include "support/MessageBus.h"
#include "support/TempDir.h"
#include "system/PortalBookmarks.h"

#include <QDBusContext>
#include <QDBusMetaType>
#include <QDBusUnixFileDescriptor>
#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <atomic>
#include <mutex>

namespace leafwright {

/// The desktop's document portal: shows each document as a link below its mount point.
class DocumentPortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Documents")

public:
    explicit DocumentPortal(const QString &mountPoint) : mountPoint_(mountPoint) {}

    QStringList documents() const {
        const std::lock_guard lock(mutex_);
        return documents_;
    }
    /// With which each document was asked for.
    QList<uint> flags() const {
        const std::lock_guard lock(mutex_);
        return flags_;
    }
    std::atomic<bool> refuses = false;

    QString place(int document) const { return mountPoint_ + "/doc" + QString::number(document); }

public Q_SLOTS:
    QByteArray GetMountPoint() { return QFile::encodeName(mountPoint_) + '\0'; }
    QStringList AddFull(const QList<QDBusUnixFileDescriptor> &files, uint how, const QString &appId,
                        const QStringList &permissions, QVariantMap &extra) {
        if (refuses || !appId.isEmpty() || !permissions.isEmpty()) {
            sendErrorReply(QDBusError::AccessDenied, "not for you");
            return {};
        }
        const std::lock_guard lock(mutex_);
        extra["mountpoint"] = GetMountPoint();
        flags_.append(how);
        QStringList identifiers;
        for (const QDBusUnixFileDescriptor &file : files)
            identifiers.append(
                "doc" + QString::number(
                            documentOf(QFileInfo("/proc/self/fd/" + QString::number(file.fileDescriptor()))
                                           .canonicalFilePath())));
        return identifiers;
    }

private:
    /// The document that a path is or is in; a new one if there is none.
    qsizetype documentOf(const QString &path) {
        for (qsizetype i = 0; i < documents_.size(); ++i)
            if (path == documents_[i] || path.startsWith(documents_[i] + '/')) return i;
        const auto document = static_cast<int>(documents_.size());
        documents_.append(path);
        QDir().mkpath(place(document));
        QFile::link(path, place(document) + '/' + QFileInfo(path).fileName());
        return document;
    }

    const QString mountPoint_;
    mutable std::mutex mutex_;
    QStringList documents_;  ///< Paths; the index is the document's identifier.
    QList<uint> flags_;
};

namespace {

/// Whose end ThreadSanitizer sees, other than that of a thread that is all Qt's.
class AnsweringThread final : public QThread {
public:
    void end() {
        quit();
        wait();
        const std::lock_guard lock(mutex_);
    }

private:
    void run() override {
        exec();
        const std::lock_guard lock(mutex_);
    }

    std::mutex mutex_;
};

class PortalBookmarksTest : public test::MessageBusFixture {
protected:
    void SetUp() override {
        MessageBusFixture::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        qDBusRegisterMetaType<QList<QDBusUnixFileDescriptor>>();
        // Who asks waits for the answer, so somebody else must give it.
        portal.moveToThread(&thread);
        thread.start();
        QDir().mkpath(dir.path("mount"));
        QDir().mkpath(dir.path("files/folder"));
    }
    void TearDown() override {
        thread.end();
        MessageBusFixture::TearDown();
    }
    void startPortal() {
        ASSERT_TRUE(answering.registerObject("/org/freedesktop/portal/documents", &portal,
                                             QDBusConnection::ExportAllSlots));
        ASSERT_TRUE(answering.registerService("org.freedesktop.portal.Documents"));
    }
    QUrl file(const QString &name) const {
        QFile out(dir.path("files/" + name));
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        return QUrl::fromLocalFile(out.fileName());
    }
    QUrl documentURL(int document, const QString &name) const {
        return QUrl::fromLocalFile(portal.place(document) + '/' + name);
    }

    test::TempDir dir;
    DocumentPortal portal{dir.path("mount")};
    AnsweringThread thread;
};

TEST_F(PortalBookmarksTest, AFileBecomesALastingDocument) {
    startPortal();
    PortalBookmarks bookmarks(asking);
    const QByteArray data = bookmarks.bookmarkDataForURL(file("a b#ä.pdf"));
    ASSERT_FALSE(data.isNull());
    EXPECT_EQ(portal.flags(), QList<uint>{1 | 2}) << "an existing document is reused, and it lasts";
    const auto resolution = bookmarks.resolveBookmarkData(data);
    EXPECT_EQ(resolution.url, documentURL(0, "a b#ä.pdf"));
    EXPECT_FALSE(resolution.isStale);
    EXPECT_TRUE(bookmarks.startAccessing(*resolution.url));
    bookmarks.stopAccessing(*resolution.url);
}

TEST_F(PortalBookmarksTest, AFolderIsExportedAsOne) {
    startPortal();
    PortalBookmarks bookmarks(asking);
    const QByteArray data = bookmarks.bookmarkDataForURL(QUrl::fromLocalFile(dir.path("files/folder")));
    EXPECT_EQ(portal.flags(), QList<uint>{1 | 2 | 8});
    EXPECT_EQ(bookmarks.resolveBookmarkData(data).url, documentURL(0, "folder"));
}

TEST_F(PortalBookmarksTest, WhatLiesInAnExportedFolderIsFoundThere) {
    startPortal();
    PortalBookmarks bookmarks(asking);
    bookmarks.bookmarkDataForURL(QUrl::fromLocalFile(dir.path("files/folder")));
    file("folder/a.pdf");
    const QUrl inside = documentURL(0, "folder/a.pdf");
    EXPECT_EQ(bookmarks.resolveBookmarkData(bookmarks.bookmarkDataForURL(inside)).url, inside);
}

TEST_F(PortalBookmarksTest, ADocumentThatIsOneAlreadyKeepsItsPlace) {
    startPortal();
    PortalBookmarks bookmarks(asking);
    bookmarks.bookmarkDataForURL(file("a.pdf"));
    const QUrl document = documentURL(0, "a.pdf");
    EXPECT_EQ(bookmarks.resolveBookmarkData(bookmarks.bookmarkDataForURL(document)).url, document);
    EXPECT_EQ(portal.documents().size(), 1);
}

TEST_F(PortalBookmarksTest, WithdrawnLeaveLeadsNowhere) {
    startPortal();
    PortalBookmarks bookmarks(asking);
    const QByteArray data = bookmarks.bookmarkDataForURL(file("a.pdf"));
    ASSERT_TRUE(QDir(portal.place(0)).removeRecursively());
    EXPECT_EQ(bookmarks.resolveBookmarkData(data).url, std::nullopt);
}

TEST_F(PortalBookmarksTest, APortalThatRefusesGivesNoBookmark) {
    portal.refuses = true;
    startPortal();
    EXPECT_TRUE(PortalBookmarks(asking).bookmarkDataForURL(file("a.pdf")).isNull());
}

TEST_F(PortalBookmarksTest, WhatIsNotThereHasNoBookmark) {
    startPortal();
    EXPECT_TRUE(
        PortalBookmarks(asking).bookmarkDataForURL(QUrl::fromLocalFile(dir.path("none.pdf"))).isNull());
    EXPECT_TRUE(portal.flags().isEmpty());
}

TEST_F(PortalBookmarksTest, WithoutAPortalThereAreNone) {
    startPortal();
    const QByteArray data = PortalBookmarks(asking).bookmarkDataForURL(file("a.pdf"));
    ASSERT_TRUE(answering.unregisterService("org.freedesktop.portal.Documents"));
    EXPECT_TRUE(PortalBookmarks(asking).bookmarkDataForURL(file("a.pdf")).isNull());
    EXPECT_EQ(PortalBookmarks(asking).resolveBookmarkData(data).url, std::nullopt);
    EXPECT_TRUE(PortalBookmarks(QDBusConnection("nowhere")).bookmarkDataForURL(file("a.pdf")).isNull());
}

TEST_F(PortalBookmarksTest, WhatIsNoBookmarkLeadsNowhere) {
    for (const char *data : {"", "data", "\xa0"})
        EXPECT_EQ(PortalBookmarks(asking).resolveBookmarkData(data).url, std::nullopt);
}

}  // namespace
}  // namespace leafwright

#include "PortalBookmarksUiTest.moc"
