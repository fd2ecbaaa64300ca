#include "files/FileReplacement.h"
#include "files/UnfinishedFiles.h"
#include "files/WritingJournal.h"
#include "support/CliFiles.h"

#include <QDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>

namespace leafwright {
namespace {

using test::saveBytes;
using test::TempDir;

/// A process that keeps a journal, as far as its files go.
class WritingJournal : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_GE(journal, 0);
        keepWritingJournal(journal);
    }
    void TearDown() override {
        keepWritingJournal(-1);
        ::close(journal);
        ::close(folder);
    }
    QStringList names() const {
        return QDir(dir.path(".")).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    TempDir dir;
    int folder = ::open(QFile::encodeName(dir.path(".")).constData(), O_RDONLY | O_DIRECTORY);
    int journal = ::memfd_create("test", MFD_CLOEXEC);
};

TEST_F(WritingJournal, WhatItsProcessHasLeftIsRemoved) {
    const UnfinishedFile file = makeUnfinishedFile(folder, "a name.pdf", 0600);
    saveBytes(dir.path("old.pdf"), "old");
    const UnfinishedFile link = linkAsUnfinished(folder, "old.pdf");
    ::close(file.descriptor);
    ::close(link.descriptor);
    EXPECT_EQ(names().size(), 3);
    EXPECT_EQ(settleWritingJournal(journal), QByteArrayList());
    EXPECT_EQ(names(), QStringList("old.pdf"));
}

TEST_F(WritingJournal, WhatSomebodyWritesStillStays) {
    const UnfinishedFile file = makeUnfinishedFile(folder, "a.pdf", 0600);
    settleWritingJournal(journal);
    EXPECT_EQ(names(), QStringList(file.name));
    ::close(file.descriptor);
}

TEST_F(WritingJournal, TellsWhichFilesAreNew) {
    saveBytes(dir.path("old one.txt"), "old");
    ASSERT_EQ(::symlinkat("old one.txt", folder, "link"), 0);
    FileReplacement replaced(dir.path("link"));
    ASSERT_TRUE(replaced.start());
    EXPECT_EQ(replaced.commit(), FileReplacement::Outcome::Written);
    FileReplacement undone(dir.path("undone.pdf"));
    ASSERT_TRUE(undone.start());
    EXPECT_EQ(undone.commit(), FileReplacement::Outcome::Written);
    undone.undo();
    FileReplacement begun(dir.path("begun.pdf"));
    ASSERT_TRUE(begun.start());
    EXPECT_EQ(settleWritingJournal(journal), QByteArrayList{QFile::encodeName(dir.path("link"))});
}

TEST_F(WritingJournal, OfNothingTellsNothing) {
    EXPECT_EQ(settleWritingJournal(journal), QByteArrayList());
}

}  // namespace
}  // namespace leafwright
