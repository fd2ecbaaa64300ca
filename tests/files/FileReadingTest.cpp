#include "files/FileReading.h"
#include "support/CliFiles.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

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

TEST(SmallFile, IsReadToItsBoundOnly) {
    const test::TempDir dir;
    test::saveBytes(dir.path("a"), "12345");
    EXPECT_EQ(std::get<QByteArray>(readSmallFile(dir.path("a"), 5)), "12345");
    test::saveBytes(dir.path("large"), QByteArray((1 << 20) + 1, 'x'));
    EXPECT_EQ(std::get<QString>(readSmallFile(dir.path("large"), 1 << 20)), "it is larger than 1 MB");
    EXPECT_EQ(std::get<QString>(readSmallFile(dir.path("missing"), 5)), "No such file or directory");
    EXPECT_EQ(std::get<QString>(readSmallFile(dir.path("."), 5)), "Is a directory");
    EXPECT_TRUE(std::holds_alternative<QString>(readSmallFile("/dev/zero", 5)));
}

}  // namespace
}  // namespace leafwright
