#include "files/FilePlace.h"
#include "support/CliFiles.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <unistd.h>

namespace leafwright {
namespace {

class PlaceOfAPath : public testing::Test {
protected:
    test::TempDir dir;
};

TEST_F(PlaceOfAPath, IsTheSameByEveryName) {
    test::saveBytes(dir.path("a.pdf"), "a");
    test::saveBytes(dir.path("b.pdf"), "a");
    ASSERT_TRUE(QFile::link(dir.path("a.pdf"), dir.path("link.pdf")));
    ASSERT_EQ(::link(QFile::encodeName(dir.path("a.pdf")), QFile::encodeName(dir.path("hard.pdf"))), 0);
    const auto place = placeOf(dir.path("a.pdf"));
    ASSERT_TRUE(place);
    EXPECT_EQ(placeOf(dir.path("./a.pdf")), place);
    EXPECT_EQ(placeOf(dir.path("link.pdf")), place);
    EXPECT_EQ(placeOf(dir.path("hard.pdf")), place);
    EXPECT_NE(placeOf(dir.path("b.pdf")), place);
    QFile open(dir.path("a.pdf"));
    ASSERT_TRUE(open.open(QIODevice::ReadOnly));
    EXPECT_EQ(placeOf(open.handle()), place);
}

TEST_F(PlaceOfAPath, IsToldBeforeThereIsAFile) {
    ASSERT_TRUE(QFile::link(dir.path("new.pdf"), dir.path("link.pdf")));
    const auto place = placeOf(dir.path("new.pdf"));
    ASSERT_TRUE(place);
    EXPECT_EQ(placeOf(dir.path("link.pdf")), place);
    EXPECT_NE(placeOf(dir.path("other.pdf")), place);
    EXPECT_FALSE(placeOf(dir.path("no/new.pdf"))) << "there is no such folder";
    EXPECT_FALSE(placeOf(-1));
}

TEST_F(PlaceOfAPath, HasANameThatASaveLeaves) {
    test::saveBytes(dir.path("a.pdf"), "a");
    ASSERT_TRUE(QFile::link(dir.path("a.pdf"), dir.path("link.pdf")));
    ASSERT_EQ(::link(QFile::encodeName(dir.path("a.pdf")), QFile::encodeName(dir.path("hard.pdf"))), 0);
    const auto name = nameAt(dir.path("a.pdf"));
    ASSERT_TRUE(name);
    EXPECT_EQ(nameAt(dir.path("./a.pdf")), name);
    EXPECT_EQ(nameAt(dir.path("link.pdf")), name);
    EXPECT_NE(nameAt(dir.path("hard.pdf")), name);
    ASSERT_TRUE(QFile::remove(dir.path("a.pdf")));
    EXPECT_EQ(nameAt(dir.path("a.pdf")), name);
    EXPECT_FALSE(nameAt(dir.path("no/new.pdf"))) << "there is no such folder";
}

}  // namespace
}  // namespace leafwright
