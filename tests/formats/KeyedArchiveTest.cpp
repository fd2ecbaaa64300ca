#include "formats/KeyedArchive.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(KeyedArchive, GivesBackWhatWasPutIn) {
    KeyedArchive archive;
    archive.encode("{1, 2}", "pagePointAsString");
    archive.encode("iv", "pageLabel");
    const auto read = KeyedArchive::unarchive(archive.data());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->decode("pageLabel"), "iv");
    EXPECT_EQ(read->decode("pagePointAsString"), "{1, 2}");
    EXPECT_TRUE(read->decode("other").isNull());
}

TEST(KeyedArchive, KeepsTheOrderOfWhatWasPutIn) {
    KeyedArchive archive;
    archive.encode("1", "z");
    archive.encode("2", "a");
    const QByteArray data = archive.data();
    EXPECT_EQ(data, QByteArray::fromHex("a2617a613161616132"));  // {"z": "1", "a": "2"}
    EXPECT_EQ(KeyedArchive::unarchive(data)->data(), data);
}

TEST(KeyedArchive, EmptyTextsAreNotAbsent) {
    KeyedArchive archive;
    archive.encode("", "pageLabel");
    const auto read = KeyedArchive::unarchive(archive.data());
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->decode("pageLabel").isEmpty());
    EXPECT_FALSE(read->decode("pageLabel").isNull());
}

TEST(KeyedArchive, BytesThatAreNoneAreRefused) {
    EXPECT_FALSE(KeyedArchive::unarchive({}));
    EXPECT_FALSE(KeyedArchive::unarchive("plain text"));
    EXPECT_FALSE(KeyedArchive::unarchive(KeyedArchive().data() + "more"));
    EXPECT_FALSE(KeyedArchive::unarchive(QByteArray::fromHex("a16161820102")));  // {"a": [1, 2]}
}

TEST(KeyedArchive, PointsReadBackExactly) {
    for (const QPointF point :
         {QPointF(0, 0), QPointF(72.5, -700), QPointF(0.1, 1.0 / 3), QPointF(1e-9, 1e12)}) {
        const QPointF read = pointFromString(stringFromPoint(point));
        EXPECT_EQ(read.x(), point.x());
        EXPECT_EQ(read.y(), point.y());
    }
    EXPECT_EQ(stringFromPoint({72.5, 700}), "{72.5, 700}");
}

TEST(KeyedArchive, TextThatIsNoPointIsTheZeroPoint) {
    for (const char *text : {"", "{}", "{1}", "{a, b}", "1, 2", "{1, 2} more"})
        EXPECT_TRUE(pointFromString(text).isNull()) << text;
}

}  // namespace
}  // namespace leafwright
