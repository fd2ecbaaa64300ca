#include "app/AppSandboxFileAccessFixture.h"
#include "platform/Assertion.h"
#include "system/InBackground.h"

#include <QThread>

#include <stdexcept>

namespace leafwright {
namespace {

class SandboxAccess : public test::AppSandboxFileAccessFixture {};

using Block = AppSandboxFileAccess::Block;
using SecurityScopedBlock = AppSandboxFileAccess::SecurityScopedBlock;

TEST_F(SandboxAccess, StartsWithTextsThatNameTheProgram) {
    const QString before = QCoreApplication::applicationName();
    QCoreApplication::setApplicationName("Leafwright");
    const auto made = AppSandboxFileAccess::fileAccess(platform);
    QCoreApplication::setApplicationName(before);
    EXPECT_EQ(made->title(), "Allow Access");
    EXPECT_EQ(made->message(), "Leafwright needs to access this path to continue. Click Allow to continue.");
    EXPECT_EQ(made->prompt(), "Allow");
    made->setTitle("Another");
    EXPECT_EQ(AppSandboxFileAccess::fileAccess(platform)->title(), "Allow Access") << "each has its own";
}

TEST_F(SandboxAccess, KeepsBookmarksInTheSettingsUnlessToldOtherwise) {
    EXPECT_EQ(access.bookmarkPersistanceDelegate(), access.defaultDelegate());
    const auto own = std::make_shared<test::OwnStore>();
    access.setBookmarkPersistanceDelegate(own);
    EXPECT_EQ(access.bookmarkPersistanceDelegate(), own);
    access.persistPermissionURL(file("a.pdf"));
    EXPECT_EQ(own->kept.size(), 1U);
    EXPECT_TRUE(kept(file("a.pdf")).isNull());
}

TEST_F(SandboxAccess, SettingTheStoreToNullRestoresTheBuiltInOne) {
    const auto own = std::make_shared<test::OwnStore>();
    access.setBookmarkPersistanceDelegate(own);
    access.setBookmarkPersistanceDelegate(nullptr);
    EXPECT_EQ(access.bookmarkPersistanceDelegate(), access.defaultDelegate());
}

TEST_F(SandboxAccess, AStoreThatIsGoneKeepsAndFindsNothing) {
    access.setBookmarkPersistanceDelegate(std::make_shared<test::OwnStore>());
    EXPECT_EQ(access.bookmarkPersistanceDelegate(), nullptr);
    EXPECT_FALSE(access.persistPermissionURL(file("a.pdf")).isNull());
    allow(file("a.pdf"));
    EXPECT_EQ(request(file("a.pdf"), true), "a.pdf with a.pdf");
    EXPECT_TRUE(kept(file("a.pdf")).isNull());
}

TEST_F(SandboxAccess, ARefusedPanelReturnsFalseAndNeverCallsTheBlock) {
    refuse();
    EXPECT_EQ(request(file("a.pdf"), true), "refused");
    EXPECT_EQ(platform.openPanels.size(), 1);
    EXPECT_TRUE(kept(file("a.pdf")).isNull());
    refuse();
    EXPECT_FALSE(access.accessFileURL(file("a.pdf"), true, [] { ADD_FAILURE() << "called"; }));
    EXPECT_TRUE(bookmarks->events.isEmpty());
}

TEST_F(SandboxAccess, WhatIsAllowedIsRememberedIfSoAsked) {
    allow(file("a.pdf"));
    EXPECT_EQ(request(file("a.pdf"), true), "a.pdf with a.pdf");
    EXPECT_EQ(request(file("a.pdf"), true), "a.pdf with a.pdf");
    EXPECT_EQ(platform.openPanels.size(), 1) << "asked once only";
}

TEST_F(SandboxAccess, WhatIsAllowedOnceIsNotRemembered) {
    allow(file("a.pdf"));
    EXPECT_EQ(request(file("a.pdf"), false), "a.pdf with nothing");
    EXPECT_TRUE(kept(file("a.pdf")).isNull());
    refuse();
    EXPECT_EQ(request(file("a.pdf"), false), "refused");
}

TEST_F(SandboxAccess, TheBlockMayBeAbsent) {
    allow(file("a.pdf"));
    EXPECT_TRUE(access.requestAccessPermissionsForFileURL(file("a.pdf"), true, nullptr));
    EXPECT_TRUE(access.requestAccessPermissionsForFileURL(file("a.pdf"), true, nullptr));
}

TEST_F(SandboxAccess, RequestingDoesNotStartTheUse) {
    allow(file("a.pdf"));
    request(file("a.pdf"), true);
    EXPECT_TRUE(bookmarks->events.isEmpty());
}

TEST_F(SandboxAccess, AFolderAllowedIsWhatIsRememberedAndHandedOut) {
    const QUrl url = file("folder/a.pdf");
    allow(folder("folder"));
    EXPECT_EQ(request(url, true), "folder with folder");
    EXPECT_FALSE(kept(folder("folder")).isNull());
    EXPECT_TRUE(kept(url).isNull());
}

TEST_F(SandboxAccess, AFoldersBookmarkGrantsAccessToAFileBelowItWithoutAnyPanel) {
    access.persistPermissionURL(folder("folder"));
    EXPECT_EQ(request(file("folder/deep/deeper/a.pdf"), false), "folder with folder");
    EXPECT_TRUE(platform.openPanels.isEmpty());
}

TEST_F(SandboxAccess, TheURLIsStandardisedAndItsLinksAreFollowedFirst) {
    access.persistPermissionURL(file("real/a.pdf"));
    ASSERT_TRUE(QFile::link(realPath("real"), realPath("link")));
    EXPECT_EQ(request(QUrl::fromLocalFile(realPath("link/../link/./a.pdf")), false), "a.pdf with a.pdf");
    EXPECT_TRUE(platform.openPanels.isEmpty());
    // What is not there yet is resolved as far as it exists.
    refuse();
    request(QUrl::fromLocalFile(realPath("link/new/b.pdf")), false);
    ASSERT_EQ(platform.openPanels.size(), 1);
    EXPECT_TRUE(platform.openPanels[0].shouldEnablePath(realPath("real/new/b.pdf")));
}

TEST_F(SandboxAccess, LinksAreFollowedBeforeTheWayUpIsTaken) {
    access.persistPermissionURL(file("real/a.pdf"));
    folder("real/deep");
    ASSERT_TRUE(QFile::link(realPath("real/deep"), realPath("link")));
    EXPECT_EQ(request(QUrl::fromLocalFile(realPath("link/../a.pdf")), false), "a.pdf with a.pdf");
    EXPECT_TRUE(platform.openPanels.isEmpty());
    // Also behind what is not there.
    EXPECT_EQ(request(QUrl::fromLocalFile(realPath("none/../link/../a.pdf")), false), "a.pdf with a.pdf");
    EXPECT_TRUE(platform.openPanels.isEmpty());
}

TEST_F(SandboxAccess, RelativePathsCountFromTheWorkingFolder) {
    const QString before = QDir::currentPath();
    QDir::setCurrent(realPath(""));
    const QUrl url = file("a.pdf");
    access.persistPermissionPath("a.pdf");
    EXPECT_FALSE(kept(url).isNull());
    QUrl used;
    EXPECT_TRUE(access.requestAccessPermissionsForFilePath(
        "a.pdf", false, [&](const QUrl &allowed, const QByteArray & /*data*/) { used = allowed; }));
    EXPECT_EQ(used, url);
    EXPECT_TRUE(platform.openPanels.isEmpty());
    refuse();
    access.askPermissionForURL(QUrl::fromLocalFile("b.pdf"));
    ASSERT_EQ(platform.openPanels.size(), 1);
    EXPECT_EQ(platform.openPanels[0].path + '/', realPath(""));
    EXPECT_TRUE(platform.openPanels[0].shouldEnablePath(realPath("b.pdf")));
    QDir::setCurrent(before);
}

TEST_F(SandboxAccess, AStaleBookmarkIsReplacedByAFreshOneEvenIfNothingIsToBeRemembered) {
    const QUrl url = file("a.pdf");
    keep(url, "to " + file("moved.pdf").toEncoded());
    bookmarks->isStale = true;
    EXPECT_EQ(request(url, false), "moved.pdf with moved.pdf");
    EXPECT_TRUE(platform.openPanels.isEmpty());
    EXPECT_TRUE(kept(url).isNull()) << "the old one is cleared";
    EXPECT_FALSE(kept(file("moved.pdf")).isNull());
}

TEST_F(SandboxAccess, AStaleFoldersBookmarkIsNotClearedForAFileBelowIt) {
    const QUrl url = file("folder/a.pdf");
    keep(folder("folder"), "to " + folder("other").toEncoded());
    keep(url, QByteArray());
    bookmarks->isStale = true;
    bookmarks->canCreate = false;
    refuse();
    EXPECT_EQ(request(url, false), "refused");
    EXPECT_FALSE(kept(folder("folder")).isNull()) << "only the file's own entry is";
}

TEST_F(SandboxAccess, AStaleBookmarkThatLeadsNowhereIsForgottenAndTheUserAsked) {
    const QUrl url = file("a.pdf");
    keep(url, "to somewhere");
    bookmarks->isStale = true;
    bookmarks->canResolve = false;
    refuse();
    EXPECT_EQ(request(url, false), "refused");
    EXPECT_TRUE(kept(url).isNull());
    keep(url, "to somewhere");
    allow(url);
    EXPECT_EQ(request(url, true), "a.pdf with a.pdf") << "a new one is made, for none is held";
}

TEST_F(SandboxAccess, AStaleBookmarkThatCanNotBeMadeAnewIsForgottenAndTheUserAsked) {
    const QUrl url = file("a.pdf");
    keep(url, "to " + url.toEncoded());
    bookmarks->isStale = true;
    bookmarks->canCreate = false;
    allow(url);
    EXPECT_EQ(request(url, true), "a.pdf with nothing");
    EXPECT_TRUE(kept(url).isNull());
}

TEST_F(SandboxAccess, ABookmarkThatLeadsNowhereIsHandedOnAndNotReplaced) {
    const QUrl url = file("a.pdf");
    keep(url, "nowhere");
    allow(url);
    EXPECT_EQ(request(url, true), "a.pdf with nowhere");
    EXPECT_EQ(kept(url), "nowhere");
    EXPECT_EQ(platform.openPanels.size(), 1);
}

TEST_F(SandboxAccess, TheResourceIsInUseWhileTheBlockRuns) {
    allow(file("a.pdf"));
    EXPECT_TRUE(access.accessFileURL(file("a.pdf"), false, [&] { bookmarks->events.append("block"); }));
    EXPECT_EQ(bookmarks->events, (QStringList{"start a.pdf", "block", "stop a.pdf"}));
}

TEST_F(SandboxAccess, TheUseStopsWhenTheBlockRaises) {
    allow(file("a.pdf"));
    EXPECT_THROW(access.accessFileURL(file("a.pdf"), false, [] { throw std::runtime_error("no"); }),
                 std::runtime_error);
    EXPECT_EQ(bookmarks->events, (QStringList{"start a.pdf", "stop a.pdf"}));
}

TEST_F(SandboxAccess, PathsAreTakenLikeURLsInEveryOrderOfArguments) {
    const QUrl url = file("a b#c.pdf");
    const QString path = url.toLocalFile();
    access.persistPermissionPath(path);
    EXPECT_FALSE(kept(url).isNull());
    int calls = 0;
    const Block count = [&] { ++calls; };
    EXPECT_TRUE(access.accessFilePath(path, true, count));
    EXPECT_TRUE(access.accessFilePath(path, count, true));
    EXPECT_TRUE(access.accessFileURL(url, true, count));
    EXPECT_TRUE(access.accessFileURL(url, count, true));
    EXPECT_TRUE(access.requestAccessPermissionsForFilePath(
        path, true, [&](const QUrl &allowed, const QByteArray & /*data*/) {
            EXPECT_EQ(allowed, url);
            ++calls;
        }));
    EXPECT_EQ(calls, 5);
    EXPECT_TRUE(platform.openPanels.isEmpty());
}

TEST_F(SandboxAccess, TheOlderOrderForwardsWhetherToRemember) {
    for (const bool persist : {false, true}) {
        allow(file("a.pdf"));
        EXPECT_TRUE(access.accessFileURL(
            file("a.pdf"), [] {}, persist));
        EXPECT_EQ(kept(file("a.pdf")).isNull(), !persist);
    }
    allow(file("b.pdf"));
    EXPECT_TRUE(access.accessFilePath(
        file("b.pdf").toLocalFile(), [] {}, true));
    EXPECT_FALSE(kept(file("b.pdf")).isNull());
}

TEST_F(SandboxAccess, ABookmarkThatCanNotBeMadeIsNotKept) {
    bookmarks->canCreate = false;
    EXPECT_TRUE(access.persistPermissionURL(file("a.pdf")).isNull());
    EXPECT_TRUE(kept(file("a.pdf")).isNull());
}

TEST_F(SandboxAccess, ThePanelAsksForThePathAndNothingElse) {
    access.setTitle("T");
    access.setMessage("M");
    access.setPrompt("P");
    allow(file("folder/a.pdf"));
    EXPECT_EQ(access.askPermissionForURL(file("folder/a.pdf")), file("folder/a.pdf"));
    ASSERT_EQ(platform.openPanels.size(), 1);
    const FilePanel &panel = platform.openPanels[0];
    EXPECT_EQ(panel.title, "T");
    EXPECT_EQ(panel.message, "M");
    EXPECT_EQ(panel.prompt, "P");
    EXPECT_EQ(panel.path, realPath("folder/a.pdf"));
    EXPECT_TRUE(panel.canChooseFiles);
    EXPECT_TRUE(panel.canChooseDirectories);
    EXPECT_FALSE(panel.canCreateDirectories);
    EXPECT_TRUE(panel.allowedFileTypes.isEmpty());
}

TEST_F(SandboxAccess, AskingForWhatIsNotThereYetStartsInTheNearestFolderThatIs) {
    folder("one");
    refuse();
    EXPECT_EQ(access.askPermissionForURL(QUrl::fromLocalFile(realPath("one/two/three/a.pdf"))), std::nullopt);
    EXPECT_EQ(platform.openPanels.at(0).path, realPath("one"));
    refuse();
    access.askPermissionForURL(QUrl::fromLocalFile("/no such folder/a.pdf"));
    EXPECT_EQ(platform.openPanels.at(1).path, "/");
}

TEST_F(SandboxAccess, OnlyTheTargetAndItsAncestorsCanBeChosen) {
    refuse();
    access.askPermissionForURL(QUrl::fromLocalFile("/one/two/three.pdf"));
    const auto &isEnabled = platform.openPanels.at(0).shouldEnablePath;
    for (const char *path : {"/", "/one", "/one/two", "/one/two/three.pdf"})
        EXPECT_TRUE(isEnabled(path)) << path;
    for (const char *path : {"", "/two", "/one/three.pdf", "/one/two/three.pdf/four", "/one/two/Three.pdf"})
        EXPECT_FALSE(isEnabled(path)) << path;
}

TEST_F(SandboxAccess, OnAnotherThreadThePanelIsShownOnTheMainOneAndTheBlockRunsOnTheCallers) {
    const QUrl url = file("a.pdf");
    allow(url);
    QThread *asker = nullptr;
    QThread *blockThread = nullptr;
    platform.whenAsked = [&] { asker = QThread::currentThread(); };
    const auto run = [&] {
        const bool granted = access.accessFileURL(url, true, [&] { blockThread = QThread::currentThread(); });
        return std::pair(granted, QThread::currentThread() == blockThread);
    };
    EXPECT_EQ(inBackground(run), std::pair(true, true));
    EXPECT_EQ(asker, QThread::currentThread());
    EXPECT_NE(blockThread, QThread::currentThread());
    EXPECT_EQ(inBackground(run), std::pair(true, true));
    EXPECT_EQ(platform.openPanels.size(), 1) << "what was kept is found on that thread as well";
}

TEST_F(SandboxAccess, OnAnotherThreadWhatTheBlockThrowsReachesTheCaller) {
    const QUrl url = file("a.pdf");
    access.persistPermissionURL(url);
    EXPECT_THROW(inBackground([&] {
                     return access.accessFileURL(url, false, [] { throw std::runtime_error("no"); });
                 }),
                 std::runtime_error);
    EXPECT_EQ(bookmarks->events.last(), "stop a.pdf");
}

/// A call without an argument that it needs, and the argument that it complains of.
struct MissingArgument {
    const char *operation;
    std::function<void(AppSandboxFileAccess &)> call;
    const char *argument;
};

TEST_F(SandboxAccess, AMissingArgumentIsAsserted) {
    const QUrl url = QUrl::fromLocalFile("/a");
    const std::vector<MissingArgument> cases{
        {"askPermission", [](auto &a) { a.askPermissionForURL({}); }, "url"},
        {"persistPermissionPath", [](auto &a) { a.persistPermissionPath({}); }, "path"},
        {"persistPermissionURL", [](auto &a) { a.persistPermissionURL({}); }, "url"},
        {"accessFileURL", [](auto &a) { a.accessFileURL({}, true, Block([] {})); }, "fileURL"},
        {"accessFileURL, neither", [](auto &a) { a.accessFileURL({}, true, Block()); }, "fileURL"},
        {"accessFileURL, no block", [&](auto &a) { a.accessFileURL(url, true, Block()); }, "block"},
        {"accessFileURL, older order", [&](auto &a) { a.accessFileURL(url, Block(), true); }, "block"},
        {"accessFilePath", [](auto &a) { a.accessFilePath("", true, Block([] {})); }, "fileURL"},
        {"accessFilePath, older order", [](auto &a) { a.accessFilePath("/a", Block(), true); }, "block"},
        {"requestAccess for a path",
         [](auto &a) { a.requestAccessPermissionsForFilePath({}, true, SecurityScopedBlock()); }, "filePath"},
        {"requestAccess for a URL",
         [](auto &a) { a.requestAccessPermissionsForFileURL({}, true, SecurityScopedBlock()); }, "fileURL"},
    };
    for (const MissingArgument &each : cases) {
        try {
            each.call(access);
            ADD_FAILURE() << each.operation << " went on";
        } catch (const AssertionFailure &failure) {
            EXPECT_EQ(failure.description(),
                      QStringLiteral("Invalid parameter not satisfying: %1").arg(each.argument))
                << each.operation;
            EXPECT_EQ(failure.sourceFile(), "AppSandboxFileAccess") << each.operation;
            EXPECT_GT(failure.where().line, 0) << each.operation;
        }
    }
    EXPECT_TRUE(platform.openPanels.isEmpty());
}

}  // namespace
}  // namespace leafwright
