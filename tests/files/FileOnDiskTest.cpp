#include "files/FileName.h"
#include "files/FileOnDisk.h"
#include "files/FileReplacement.h"
#include "support/CliFiles.h"
#include "support/Unprivileged.h"

#include <QDir>
#include <QFile>

#include <array>
#include <fcntl.h>
#include <functional>
#include <gmock/gmock.h>
#include <ostream>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright {

// Here, where GoogleTest finds it.
void PrintTo(FileOnDisk::State state, std::ostream *out) {
    *out << std::array{"Unchanged", "Overwritten", "Replaced", "Missing", "Unknown"}.at(
        static_cast<size_t>(state));
}

namespace {

using State = FileOnDisk::State;
using test::bytesOf;
using test::saveBytes;
using testing::HasSubstr;

constexpr qint64 large = 17 << 20;

/// A file "a.txt" that somebody has read.
class OnDisk : public testing::Test {
protected:
    OnDisk() { saveBytes(path, "first"); }

    static FileOnDisk fileAt(const QString &file) {
        const int descriptor = ::open(fileNameBytes(file).constData(), O_RDONLY | O_CLOEXEC);
        auto snapshot = FileSnapshot::of(descriptor);
        ::close(descriptor);
        return {snapshot, file};
    }
    /// Writes to the file itself, and leaves it the times that it had, as coarse ones would be.
    static void overwrite(const QString &file, const QByteArray &bytes) {
        const int descriptor = ::open(fileNameBytes(file).constData(), O_WRONLY | O_CLOEXEC);
        struct stat status = {};
        ASSERT_EQ(::fstat(descriptor, &status), 0);
        ASSERT_EQ(::pwrite(descriptor, bytes.constData(), static_cast<size_t>(bytes.size()), 0),
                  bytes.size());
        const std::array times{status.st_atim, status.st_mtim};
        ASSERT_EQ(::futimens(descriptor, times.data()), 0);
        ::close(descriptor);
    }
    static void touch(const QString &file) {
        const std::array times{timespec{1000, 0}, timespec{1000, 0}};
        ASSERT_EQ(::utimensat(AT_FDCWD, fileNameBytes(file).constData(), times.data(), 0), 0);
    }
    /// Puts another file in its place.
    void replace(const QByteArray &bytes = "other") const {
        saveBytes(dir.path("new"), bytes);
        ASSERT_EQ(::rename(fileNameBytes(dir.path("new")).constData(), fileNameBytes(path).constData()), 0);
    }
    std::string objection(const FileOnDisk &file, const QString &target) const {
        return file.objectionTo(target).value_or(QStringLiteral("none")).toStdString();
    }

    test::TempDir dir;
    const QString path = dir.path("a.txt");
};

TEST_F(OnDisk, AFileThatNobodyTouchesIsUnchanged) {
    const FileOnDisk file = fileAt(path);
    EXPECT_EQ(file.state(), State::Unchanged);
    EXPECT_EQ(file.objectionTo(path), std::nullopt);
    EXPECT_EQ(file.objectionTo(dir.path("b.txt")), std::nullopt);
}

TEST_F(OnDisk, WhatIsNotItsContentDoesNotCount) {
    const FileOnDisk file = fileAt(path);
    touch(path);
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner));
    ASSERT_EQ(::link(fileNameBytes(path).constData(), fileNameBytes(dir.path("b.txt")).constData()), 0);
    EXPECT_EQ(file.state(), State::Unchanged);
}

TEST_F(OnDisk, AWritingIsNoticedWhereTimesAndSizeStay) {
    const FileOnDisk file = fileAt(path);
    overwrite(path, "other");
    EXPECT_EQ(file.state(), State::Overwritten);
}

TEST_F(OnDisk, AFileThatIsCutOrLengthenedIsOverwritten) {
    for (const qint64 size : {3, 5000}) {
        saveBytes(path, "first");
        const FileOnDisk file = fileAt(path);
        ASSERT_TRUE(QFile::resize(path, size));
        EXPECT_EQ(file.state(), State::Overwritten) << size;
    }
}

TEST_F(OnDisk, OfALargeFileSizeAndTimeTell) {
    ASSERT_TRUE(QFile::resize(path, large));
    const FileOnDisk file = fileAt(path);
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
    EXPECT_EQ(file.state(), State::Unchanged);
    touch(path);
    EXPECT_EQ(file.state(), State::Overwritten);
}

TEST_F(OnDisk, WhatWasReadIsGoneForEveryTarget) {
    const FileOnDisk file = fileAt(path);
    overwrite(path, "other");
    EXPECT_EQ(objection(file, path), "another program has written to it since it was read; open it again");
    EXPECT_EQ(objection(file, dir.path("b.txt")),
              "another program has written to " + path.toStdString() + " since it was read; open that again");
}

TEST_F(OnDisk, AnotherFileAtItsPlaceIsAReplacement) {
    const FileOnDisk file = fileAt(path);
    replace("first");
    EXPECT_EQ(file.state(), State::Replaced) << "by its number, though it holds the same";
    EXPECT_THAT(objection(file, path), HasSubstr("another program has put another file there"));
    EXPECT_EQ(file.objectionTo(dir.path("b.txt")), std::nullopt) << "what was read is still there";
}

TEST_F(OnDisk, AFileThatIsGoneIsMissing) {
    const FileOnDisk file = fileAt(path);
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(file.state(), State::Missing);
    EXPECT_THAT(objection(file, path), HasSubstr("no longer where it was read"));
    EXPECT_EQ(file.objectionTo(dir.path("b.txt")), std::nullopt);
}

TEST_F(OnDisk, AFolderThatIsGoneTakesItAlong) {
    ASSERT_TRUE(QDir(dir.path({})).mkdir("folder"));
    const QString inside = dir.path("folder/a.txt");
    saveBytes(inside, "first");
    const FileOnDisk file = fileAt(inside);
    ASSERT_TRUE(QDir(dir.path("folder")).removeRecursively());
    EXPECT_EQ(file.state(), State::Missing);
    saveBytes(dir.path("folder"), "a file in place of the folder");
    EXPECT_EQ(file.state(), State::Missing);
}

TEST_F(OnDisk, WhatTheSystemDoesNotTellIsUnknown) {
    ASSERT_TRUE(QDir(dir.path({})).mkdir("folder"));
    const QString inside = dir.path("folder/a.txt");
    saveBytes(inside, "first");
    const FileOnDisk file = fileAt(inside);
    ASSERT_TRUE(QFile::setPermissions(dir.path("folder"), {}));
    {
        const test::Unprivileged nobody;
        EXPECT_EQ(file.state(), State::Unknown);
        EXPECT_THAT(objection(file, inside), HasSubstr("can't be told: Permission denied"));
    }
    ASSERT_TRUE(
        QFile::setPermissions(dir.path("folder"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    EXPECT_EQ(file.state(), State::Unchanged);
}

TEST_F(OnDisk, OtherNamesOfItsPlaceAreTheSamePlace) {
    ASSERT_TRUE(QFile::link("a.txt", dir.path("link.pdf")));
    ASSERT_TRUE(QDir(dir.path({})).mkdir("folder"));
    ASSERT_TRUE(QFile::link(dir.path({}), dir.path("folder/up")));
    const FileOnDisk file = fileAt(dir.path("link.pdf"));
    replace();
    for (const QString &name : {path, dir.path("./a.txt"), dir.path("link.pdf"), dir.path("folder/up/a.txt")})
        EXPECT_NE(objection(file, name), "none") << qPrintable(name);
}

TEST_F(OnDisk, ALinkThatLeadsElsewhereIsAReplacement) {
    ASSERT_TRUE(QFile::link("a.txt", dir.path("link.pdf")));
    const FileOnDisk file = fileAt(dir.path("link.pdf"));
    EXPECT_EQ(file.state(), State::Unchanged);
    saveBytes(dir.path("b.txt"), "first");
    ASSERT_TRUE(QFile::remove(dir.path("link.pdf")) && QFile::link("b.txt", dir.path("link.pdf")));
    EXPECT_EQ(file.state(), State::Replaced);
}

TEST_F(OnDisk, WhatIsAcceptedIsUnchangedUntilTheNextChange) {
    FileOnDisk file = fileAt(path);
    replace();
    file.accept(dir.path("b.txt"), FileOnDisk::seenAt(path));
    EXPECT_EQ(file.state(), State::Replaced) << "another place says nothing of this one";
    file.accept(path, FileOnDisk::seenAt(path));
    EXPECT_EQ(file.state(), State::Unchanged);
    overwrite(path, "third");
    EXPECT_EQ(file.state(), State::Replaced) << "what was read is in another file by now";
    ASSERT_TRUE(QFile::remove(path));
    file.accept(path, FileOnDisk::seenAt(path));
    EXPECT_EQ(file.state(), State::Unchanged) << "that nothing is there";
    saveBytes(path, "anything");
    EXPECT_EQ(file.state(), State::Replaced);
}

class Heeding : public OnDisk {
protected:
    /// Writes a file that heeds another. @param amid what happens before it takes its place
    FileReplacement::Outcome write(
        FileOnDisk &file, const QString &target, const std::function<void()> &amid = [] {}) {
        FileReplacement out(target);
        out.heed(file);
        const bool written = out.start() && out.write("ours") == 4;
        amid();
        const auto outcome = written ? out.commit() : FileReplacement::Outcome::NotWritten;
        metObjection = out.metObjection();
        message = out.message();
        return outcome;
    }
    bool metObjection = false;
    QString message;
};

TEST_F(Heeding, OurOwnWritesAreNoChange) {
    FileOnDisk file = fileAt(path);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(write(file, path), FileReplacement::Outcome::Written) << qPrintable(message);
        EXPECT_EQ(file.state(), State::Unchanged);
    }
    overwrite(path, "them");
    EXPECT_EQ(file.state(), State::Replaced);
}

TEST_F(Heeding, WhatWasWrittenIsNotKeptLocked) {
    FileOnDisk file = fileAt(path);
    ASSERT_EQ(write(file, path), FileReplacement::Outcome::Written);
    const int another = ::open(fileNameBytes(path).constData(), O_RDONLY | O_CLOEXEC);
    EXPECT_EQ(::flock(another, LOCK_EX | LOCK_NB), 0);
    ::close(another);
}

TEST_F(Heeding, NothingBeginsWhereSomethingHasChanged) {
    FileOnDisk file = fileAt(path);
    replace();
    EXPECT_EQ(write(file, path), FileReplacement::Outcome::NotWritten);
    EXPECT_TRUE(metObjection);
    EXPECT_EQ(message, path +
                           " could not be written: another program has put another file there since this "
                           "one was read; open that, or write to another place");
    EXPECT_EQ(bytesOf(path), "other");
}

TEST_F(Heeding, WhatChangesAmidTheWriteIsNoticedAtTheLastMoment) {
    FileOnDisk file = fileAt(path);
    EXPECT_EQ(write(file, path, [this] { replace(); }), FileReplacement::Outcome::NotWritten);
    EXPECT_TRUE(metObjection);
    EXPECT_EQ(bytesOf(path), "other");
    EXPECT_EQ(QDir(dir.path({})).entryList(QDir::Files | QDir::Hidden), QStringList{"a.txt"});
    FileOnDisk now = fileAt(path);
    EXPECT_EQ(write(now, dir.path("b.txt"), [this] { overwrite(path, "third"); }),
              FileReplacement::Outcome::NotWritten);
    EXPECT_FALSE(QFile::exists(dir.path("b.txt"))) << "half of it may be of the third";
}

TEST_F(Heeding, ThePlaceMayBecomeWhereItWasWritten) {
    FileOnDisk file = fileAt(path);
    EXPECT_EQ(write(file, dir.path("b.txt")), FileReplacement::Outcome::Written);
    saveBytes(dir.path("b.txt"), "them");
    EXPECT_EQ(file.state(), State::Unchanged) << "it is not the document's place yet";
    file.setPlace(dir.path("b.txt"));
    EXPECT_EQ(file.state(), State::Replaced) << "since it was written there";
    EXPECT_EQ(write(file, path), FileReplacement::Outcome::Written) << "the place that was";
}

TEST_F(Heeding, TheMarkIsOfWhatWasReadOrWrittenToThePlaceSince) {
    FileOnDisk file = fileAt(path);
    const FileMark read = markOfFile(path).value();
    const auto marksAs = [&file](const FileMark &mark) {
        return file.mark() && file.mark()->isOfSameContentAs(mark);
    };
    EXPECT_TRUE(marksAs(read));
    replace();
    EXPECT_TRUE(marksAs(read)) << "under whatever name it is now";
    file.accept(path, FileOnDisk::seenAt(path));
    EXPECT_TRUE(marksAs(read)) << "what may be replaced is another program's";
    ASSERT_EQ(write(file, path), FileReplacement::Outcome::Written);
    const FileMark written = markOfFile(path).value();
    EXPECT_TRUE(marksAs(written));
    ASSERT_EQ(write(file, dir.path("preview.pdf")), FileReplacement::Outcome::Written);
    EXPECT_TRUE(marksAs(written)) << "a copy elsewhere is not it";
    overwrite(path, "them");
    EXPECT_FALSE(file.mark());
}

}  // namespace
}  // namespace leafwright
