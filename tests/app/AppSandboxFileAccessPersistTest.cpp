#include "app/AppSandboxFileAccessPersist.h"
#include "platform/UserDefaults.h"
#include "system/InBackground.h"

#include <QThread>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class SandboxPersist : public testing::Test {
protected:
    UserDefaults defaults;
    AppSandboxFileAccessPersist store{defaults};
};

const QUrl file = QUrl("file:///home/me/books/a%20b.pdf");

TEST_F(SandboxPersist, TheKeyIsTheWholeURL) {
    EXPECT_EQ(AppSandboxFileAccessPersist::keyForBookmarkDataForURL(file),
              "bd_file:///home/me/books/a%20b.pdf");
    EXPECT_EQ(AppSandboxFileAccessPersist::keyForBookmarkDataForURL(QUrl::fromLocalFile("/a b/ä")),
              "bd_file:///a%20b/%C3%A4");
}

TEST_F(SandboxPersist, WhatIsSetIsFoundUntilItIsCleared) {
    EXPECT_TRUE(store.bookmarkDataForURL(file).isNull());
    store.setBookmarkDataForURL("data", file);
    EXPECT_EQ(defaults.dataForKey("bd_file:///home/me/books/a%20b.pdf"), "data");
    EXPECT_EQ(store.bookmarkDataForURL(file), "data");
    store.clearBookmarkDataForURL(file);
    EXPECT_TRUE(store.bookmarkDataForURL(file).isNull());
}

TEST_F(SandboxPersist, AFoldersDataIsFoundForAllBelowIt) {
    store.setBookmarkDataForURL("me", QUrl("file:///home/me"));
    EXPECT_EQ(store.bookmarkDataForURL(file), "me");
    EXPECT_EQ(store.bookmarkDataForURL(QUrl("file:///home/me/")), "me");
    EXPECT_TRUE(store.bookmarkDataForURL(QUrl("file:///home/me2/a.pdf")).isNull());
    EXPECT_TRUE(store.bookmarkDataForURL(QUrl("file:///home")).isNull());
}

TEST_F(SandboxPersist, TheNearestDataCounts) {
    store.setBookmarkDataForURL("home", QUrl("file:///home"));
    store.setBookmarkDataForURL("books", QUrl("file:///home/me/books/"));
    EXPECT_EQ(store.bookmarkDataForURL(file), "books");
    store.setBookmarkDataForURL("own", file);
    EXPECT_EQ(store.bookmarkDataForURL(file), "own");
}

TEST_F(SandboxPersist, TheRootIsNeverLookedUp) {
    store.setBookmarkDataForURL("root", QUrl("file:///"));
    EXPECT_TRUE(store.bookmarkDataForURL(file).isNull());
    EXPECT_TRUE(store.bookmarkDataForURL(QUrl("file:///")).isNull());
    store.setBookmarkDataForURL("shortest", QUrl("file:///h"));
    EXPECT_EQ(store.bookmarkDataForURL(QUrl("file:///h/a.pdf")), "shortest");
}

TEST_F(SandboxPersist, ClearingForgetsTheURLsOwnDataOnly) {
    store.setBookmarkDataForURL("folder", QUrl("file:///home/me/books"));
    store.clearBookmarkDataForURL(file);
    EXPECT_EQ(store.bookmarkDataForURL(file), "folder");
}

TEST_F(SandboxPersist, SettingsAreUsedOnTheMainThreadWhoeverAsks) {
    QThread *user = nullptr;
    QObject::connect(
        &defaults, &UserDefaults::valueChanged, &defaults, [&] { user = QThread::currentThread(); },
        Qt::DirectConnection);
    const QByteArray found = inBackground([&] {
        store.setBookmarkDataForURL("data", file);
        return store.bookmarkDataForURL(file);
    });
    EXPECT_EQ(found, "data");
    EXPECT_EQ(user, QThread::currentThread());
}

}  // namespace
}  // namespace leafwright
