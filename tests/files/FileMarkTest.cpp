#include "files/FileMark.h"
#include "support/CliFiles.h"
#include "support/TempDir.h"

#include <QFile>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class FileMarks : public testing::Test {
protected:
    FileMark markOf(const QByteArray &content) {
        test::saveBytes(path, content);
        return markOfFile(path).value_or(FileMark());
    }
    void setTime(qint64 seconds) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime::fromSecsSinceEpoch(seconds), QFile::FileModificationTime));
    }
    FileMark markAt(qint64 seconds) {
        setTime(seconds);
        return markOfFile(path).value_or(FileMark());
    }

    test::TempDir dir;
    QString path = dir.path("file");
};

TEST_F(FileMarks, AreOfWhatAFileHolds) {
    const FileMark mark = markOf("content");
    EXPECT_EQ(mark.size, 7);
    EXPECT_TRUE(mark.isOfSameContentAs(markAt(1'000'000)));
    EXPECT_FALSE(mark.isOfSameContentAs(markOf("Content")));
    EXPECT_FALSE(mark.isOfSameContentAs(markOf("content ")));
}

TEST_F(FileMarks, OfLargeFilesGoByTheTime) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize((16 << 20) + 1));
    file.close();
    const FileMark mark = markAt(1'000'000);
    EXPECT_TRUE(mark.hash.isEmpty());
    EXPECT_TRUE(mark.isOfSameContentAs(markAt(1'000'000)));
    EXPECT_FALSE(mark.isOfSameContentAs(markAt(1'000'001)));
}

TEST_F(FileMarks, OfAnOpenFileAreOfAllOfItAndLeaveItWhereItStands) {
    const FileMark mark = markOf("content");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    ASSERT_TRUE(file.seek(3));
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(markOfFile(file.handle()).value_or(FileMark()).hash, mark.hash);
    EXPECT_EQ(file.readAll(), "tent");
}

TEST_F(FileMarks, AreThereOfFilesOnly) {
    EXPECT_FALSE(markOfFile(path));
    EXPECT_FALSE(markOfFile(dir.path(".")));
}

}  // namespace
}  // namespace leafwright
