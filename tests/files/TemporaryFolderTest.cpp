#include "files/TemporaryFolder.h"
#include "support/CliFiles.h"
#include "support/EnvironmentVariable.h"

#include <QDir>
#include <QFileInfo>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

namespace leafwright {
namespace {

using test::EnvironmentVariable;
using test::saveBytes;
using test::TempDir;

QStringList foldersIn(const QString &path) {
    return QDir(path).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
}

TEST(TemporaryFolder, IsForItsMakerAndGoesWithIt) {
    const TempDir dir;
    const EnvironmentVariable place("TMPDIR", QFile::encodeName(dir.path(".")));
    {
        const TemporaryFolder folder;
        const TemporaryFolder another;
        ASSERT_TRUE(folder.isThere()) << qPrintable(folder.errorString());
        ASSERT_TRUE(another.isThere());
        saveBytes(folder.filePath("a.pdf"), "a");
        EXPECT_FALSE(QFile::exists(another.filePath("a.pdf")));
        EXPECT_EQ(QFileInfo(folder.filePath(".")).permissions() & 0x77, 0) << "nobody else may look into it";
    }
    EXPECT_EQ(foldersIn(dir.path(".")), QStringList());
}

TEST(TemporaryFolder, IsNotThereWhereNoneCanBeMade) {
    const TempDir dir;
    saveBytes(dir.path("file"), "");
    for (const QString &path : {dir.path("missing"), dir.path("file"), QStringLiteral("/proc")}) {
        const EnvironmentVariable place("TMPDIR", QFile::encodeName(path));
        const TemporaryFolder folder;
        EXPECT_FALSE(folder.isThere()) << qPrintable(path);
        EXPECT_TRUE(
            folder.errorString().startsWith("no folder for temporary files can be made in " + path + ": "))
            << qPrintable(folder.errorString());
        EXPECT_TRUE(folder.filePath("a.pdf").isNull());
    }
}

TEST(TemporaryFolder, WhatAKilledProgramHasLeftIsRemovedByTheNext) {
    const TempDir dir;
    const EnvironmentVariable place("TMPDIR", QFile::encodeName(dir.path(".")));
    const QString prefix = QStringLiteral("leafwright-run-%1.").arg(geteuid());
    const QDir parent(dir.path("."));
    ASSERT_TRUE(parent.mkpath(prefix + "killed/0"));
    saveBytes(dir.path(prefix + "killed/lock"), "");
    saveBytes(dir.path(prefix + "killed/0/a.pdf"), "a copy");
    ASSERT_TRUE(parent.mkpath(prefix + "justmade"));
    ASSERT_TRUE(parent.mkpath("leafwright-running"));
    ASSERT_TRUE(parent.mkpath(prefix + "alive"));
    saveBytes(dir.path(prefix + "alive/lock"), "");
    const int lock = ::open(QFile::encodeName(dir.path(prefix + "alive/lock")).constData(), O_RDWR);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    { const TemporaryFolder folder; }
    ::close(lock);
    EXPECT_EQ(foldersIn(dir.path(".")), (QStringList{prefix + "alive", "leafwright-running"}));
}

TEST(TemporaryFolder, WhatItCouldNotRemoveItselfIsRemovedByTheNext) {
    const TempDir dir;
    const EnvironmentVariable place("TMPDIR", QFile::encodeName(dir.path(".")));
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    {
        const TemporaryFolder folder;
        ASSERT_TRUE(QDir().mkpath(folder.filePath("temporary")));
        const rlimit none{3, before.rlim_max};  // of the numbers for files; the standard streams have three
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    }
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    ASSERT_EQ(foldersIn(dir.path(".")).size(), 1) << "it can't look into it";
    TemporaryFolder::removeAbandoned();
    EXPECT_EQ(foldersIn(dir.path(".")), QStringList());
}

}  // namespace
}  // namespace leafwright
