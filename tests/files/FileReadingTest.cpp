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

}  // namespace
}  // namespace leafwright
