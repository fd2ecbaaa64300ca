#include "support/TempDir.h"
#include "system/FileBookmarks.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class FileBookmarksTest : public testing::Test {
protected:
    QUrl file(const QString &name) const {
        QFile out(dir.path(name));
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        return QUrl::fromLocalFile(dir.path(name));
    }

    test::TempDir dir;
    FileBookmarks bookmarks;
};

TEST_F(FileBookmarksTest, ABookmarkLeadsToItsFile) {
    const QUrl url = file("a b#ä.pdf");
    const auto resolution = bookmarks.resolveBookmarkData(bookmarks.bookmarkDataForURL(url));
    EXPECT_EQ(resolution.url, url);
    EXPECT_FALSE(resolution.isStale);
}

TEST_F(FileBookmarksTest, ABookmarkLeadsToItsFolderWhateverChangesInIt) {
    ASSERT_TRUE(QDir().mkpath(dir.path("folder")));
    const QUrl url = QUrl::fromLocalFile(dir.path("folder"));
    const QByteArray data = bookmarks.bookmarkDataForURL(url);
    file("folder/new.pdf");
    const auto resolution = bookmarks.resolveBookmarkData(data);
    EXPECT_EQ(resolution.url, url);
    EXPECT_FALSE(resolution.isStale);
}

TEST_F(FileBookmarksTest, ItIsStaleWhenAnotherFileHasTakenTheName) {
    const QUrl url = file("a.pdf");
    const QByteArray data = bookmarks.bookmarkDataForURL(url);
    file("new.pdf");
    ASSERT_TRUE(QFile::rename(dir.path("a.pdf"), dir.path("old.pdf")));
    ASSERT_TRUE(QFile::rename(dir.path("new.pdf"), dir.path("a.pdf")));
    const auto resolution = bookmarks.resolveBookmarkData(data);
    EXPECT_EQ(resolution.url, url);
    EXPECT_TRUE(resolution.isStale);
    EXPECT_FALSE(bookmarks.resolveBookmarkData(bookmarks.bookmarkDataForURL(url)).isStale);
}

TEST_F(FileBookmarksTest, ItLeadsNowhereWhenNothingIsThere) {
    const QByteArray data = bookmarks.bookmarkDataForURL(file("a.pdf"));
    ASSERT_TRUE(QFile::remove(dir.path("a.pdf")));
    const auto resolution = bookmarks.resolveBookmarkData(data);
    EXPECT_EQ(resolution.url, std::nullopt);
    EXPECT_FALSE(resolution.isStale);
}

TEST_F(FileBookmarksTest, WhatIsNotThereHasNoBookmark) {
    EXPECT_TRUE(bookmarks.bookmarkDataForURL(QUrl::fromLocalFile(dir.path("none.pdf"))).isNull());
    EXPECT_TRUE(bookmarks.bookmarkDataForURL(QUrl("https://example.org/a.pdf")).isNull());
}

TEST_F(FileBookmarksTest, WhatIsNoBookmarkLeadsNowhere) {
    for (const char *data : {"", "data", "\xa0"})
        EXPECT_EQ(bookmarks.resolveBookmarkData(data).url, std::nullopt);
}

TEST_F(FileBookmarksTest, WhatIsThereCanBeUsed) {
    const QUrl url = file("a.pdf");
    EXPECT_TRUE(bookmarks.startAccessing(url));
    bookmarks.stopAccessing(url);
    EXPECT_FALSE(bookmarks.startAccessing(QUrl::fromLocalFile(dir.path("none.pdf"))));
}

TEST(SecurityScopedBookmarks, OutsideASandboxTheFileSystemIsTrusted) {
    if (isSandboxed()) GTEST_SKIP() << "this is one";
    EXPECT_NE(dynamic_cast<FileBookmarks *>(SecurityScopedBookmarks::ofThisProcess().get()), nullptr);
}

TEST(SecurityScopedBookmarks, InASandboxThePortalIsAsked) {
    if (isSandboxed()) GTEST_SKIP() << "the environment can't be taken back";
    qputenv("SNAP", "/snap/leafwright/1");
    EXPECT_TRUE(isSandboxed());
    const auto bookmarks = SecurityScopedBookmarks::ofThisProcess();
    qunsetenv("SNAP");
    EXPECT_EQ(dynamic_cast<FileBookmarks *>(bookmarks.get()), nullptr);
}

}  // namespace
}  // namespace leafwright
