#include "files/FileReading.h"
#include "support/CliFiles.h"
#include "support/Unprivileged.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace leafwright {
namespace {

class AbsolutePath : public testing::Test {
protected:
    test::TempDir dir;
    QString base = QDir(dir.path({})).canonicalPath();
};

TEST_F(AbsolutePath, IsClean) {
    EXPECT_EQ(absolutePath("/a//b/./c/"), "/a/b/c");
    EXPECT_EQ(absolutePath("/"), "/");
    EXPECT_EQ(absolutePath("/.."), "/");
    EXPECT_EQ(absolutePath("a.pdf"), QDir::currentPath() + "/a.pdf");
    EXPECT_EQ(absolutePath("./a.pdf"), QDir::currentPath() + "/a.pdf");
    ASSERT_TRUE(QDir(base).mkpath("folder"));
    EXPECT_EQ(absolutePath(base + "/folder/../a.pdf"), base + "/a.pdf");
}

TEST_F(AbsolutePath, GoesUpFromWhereALinkLeads) {
    ASSERT_TRUE(QDir(base).mkpath("real/sub"));
    ASSERT_TRUE(QFile::link(base + "/real/sub", base + "/link"));
    EXPECT_EQ(absolutePath(base + "/link/a.pdf"), base + "/link/a.pdf") << "links stay";
    EXPECT_EQ(absolutePath(base + "/link/../a.pdf"), base + "/real/a.pdf");
}

TEST_F(AbsolutePath, IsNoneWhereTheWorkingFolderIsGone) {
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir(base).mkpath("gone"));
    ASSERT_TRUE(QDir::setCurrent(base + "/gone"));
    ASSERT_TRUE(QDir(base).rmdir("gone"));
    EXPECT_EQ(absolutePath("a.pdf"), std::nullopt);
    EXPECT_EQ(absolutePath("../a.pdf"), std::nullopt);
    EXPECT_EQ(absolutePath("/a.pdf"), "/a.pdf");
    QDir::setCurrent(before);
}

TEST_F(AbsolutePath, WhatLeadsNowhereStaysSo) {
    EXPECT_EQ(absolutePath(base + "/none/../a.pdf"), base + "/none/../a.pdf");
}

TEST(BeginsAsPdf, WhatHasTheHeaderAtTheStartOfAnEarlyLine) {
    const test::TempDir dir;
    const QByteArray path = QFile::encodeName(dir.path("file"));
    const auto begins = [&](const QByteArray &bytes) {
        test::saveBytes(dir.path("file"), bytes);
        return beginsAsPdf(path);
    };
    EXPECT_EQ(begins("%PDF-1.7\n"), true);
    EXPECT_EQ(begins("From a mail\r\n%PDF-1.4\r\n"), true);
    EXPECT_EQ(begins("Old\r%PDF-1.4\r"), true);
    EXPECT_EQ(begins(QByteArray(1018, 'x') + "\n%PDF-"), true);
    EXPECT_EQ(begins(QByteArray(1019, 'x') + "\n%PDF-"), false);
    EXPECT_EQ(begins("\xEF\xBB\xBF%PDF-1.7\n"), true);
    EXPECT_EQ(begins("%!PS-Adobe-3.0 PDF-1.4\n"), true);
    EXPECT_EQ(begins("%!PS-Adobe-3.0\n"), false);
    EXPECT_EQ(begins("+ @1 %PDF-1.7\n"), false) << "a title";
    EXPECT_EQ(begins("%PDF"), false);
    EXPECT_EQ(begins({}), false);
}

TEST(BeginsAsPdf, IsUnknownOfWhatIsNotThere) {
    const test::TempDir dir;
    EXPECT_EQ(beginsAsPdf(QFile::encodeName(dir.path("none"))), std::nullopt);
    EXPECT_EQ(errno, ENOENT);
}

TEST(RegularFile, WaitsForNobody) {
    const test::TempDir dir;
    ASSERT_EQ(::mkfifo(QFile::encodeName(dir.path("pipe")).constData(), 0600), 0);
    EXPECT_EQ(std::get<QString>(readRegularFile(dir.path("pipe"), 5)),
              "it is a pipe or a device, and not a file");
}

TEST(FileReading, EndsBehindItsBound) {
    const test::TempDir dir;
    constexpr qsizetype megabyte = 1 << 20;
    test::saveBytes(dir.path("a"), QByteArray(megabyte, 'x'));
    test::saveBytes(dir.path("larger"), QByteArray(megabyte + 1, 'x'));
    EXPECT_EQ(std::get<QByteArray>(readFile(dir.path("a"), megabyte)).size(), megabyte);
    EXPECT_EQ(std::get<QByteArray>(readFile(dir.path("larger"))).size(), megabyte + 1);
    for (const QString &path : {dir.path("larger"), QString("/dev/zero")})
        EXPECT_EQ(std::get<QString>(readFile(path, megabyte)), "it is larger than 1 MB");
    EXPECT_EQ(std::get<QString>(readRegularFile(dir.path("larger"), megabyte)), "it is larger than 1 MB");
}

TEST(RegularFile, IsTheOnlyOneThatIsRead) {
    const test::TempDir dir;
    test::saveBytes(dir.path("a"), "12345");
    EXPECT_EQ(std::get<QByteArray>(readRegularFile(dir.path("a"), 5)), "12345");
    EXPECT_EQ(std::get<QString>(readRegularFile(dir.path("missing"), 5)), "No such file or directory");
    EXPECT_EQ(std::get<QString>(readRegularFile(dir.path("."), 5)), "Is a directory");
    EXPECT_TRUE(std::holds_alternative<QString>(readRegularFile("/dev/zero", 5)));
}

TEST(FileReading, TellsWhatMayNotBeReplaced) {
    const test::TempDir dir;
    ASSERT_EQ(::chmod(QFile::encodeName(dir.path(".")).constData(), 0777), 0);
    test::saveBytes(dir.path("a"), "1");
    ASSERT_EQ(::chmod(QFile::encodeName(dir.path("a")).constData(), 0666), 0);
    ASSERT_EQ(::mkdir(QFile::encodeName(dir.path("folder")).constData(), 0777), 0);
    ASSERT_EQ(::symlink(QFile::encodeName(dir.path("a")).constData(),
                        QFile::encodeName(dir.path("folder/link")).constData()),
              0);
    ASSERT_EQ(::chmod(QFile::encodeName(dir.path("folder")).constData(), 0555), 0);
    const test::Unprivileged nobody;
    EXPECT_FALSE(isReadOnly(dir.path("a")));
    EXPECT_FALSE(isReadOnly(dir.path("missing")));
    EXPECT_FALSE(isReadOnly(dir.path("folder/link"))) << "what counts is where it leads";
    ASSERT_EQ(
        ::rename(QFile::encodeName(dir.path("a")).constData(), QFile::encodeName(dir.path("b")).constData()),
        0);
    EXPECT_FALSE(isReadOnly(dir.path("folder/link"))) << "it leads nowhere";
}

TEST(FileReading, AReadOnlyFileOrFolderIsReadOnly) {
    const test::TempDir dir;
    ASSERT_EQ(::chmod(QFile::encodeName(dir.path(".")).constData(), 0777), 0);
    test::saveBytes(dir.path("a"), "1");
    ASSERT_EQ(::chmod(QFile::encodeName(dir.path("a")).constData(), 0444), 0);
    test::saveBytes(dir.path("b"), "1");
    ASSERT_EQ(::chmod(QFile::encodeName(dir.path("b")).constData(), 0666), 0);
    {
        const test::Unprivileged nobody;
        EXPECT_TRUE(isReadOnly(dir.path("a")));
        EXPECT_FALSE(isReadOnly(dir.path("b")));
    }
    ASSERT_EQ(::chmod(QFile::encodeName(dir.path(".")).constData(), 0555), 0);
    const test::Unprivileged nobody;
    EXPECT_TRUE(isReadOnly(dir.path("b")));
}

}  // namespace
}  // namespace leafwright
