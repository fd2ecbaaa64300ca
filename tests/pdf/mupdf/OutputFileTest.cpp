#include "pdf/mupdf/Context.h"
#include "pdf/mupdf/OutputFile.h"
#include "support/OpenPdf.h"
#include "support/TempDir.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace leafwright::mupdf {
namespace {

using test::contentOf;
using test::TempDir;

class OutputFileTest : public testing::Test {
protected:
    ~OutputFileTest() override { ::close(descriptor); }
    OutputFile makeOutput() {
        return {descriptor, [this](qint64 bytes) { reported.push_back(bytes); }};
    }
    qint64 blocksOf(const QString &path) const {
        struct stat status = {};
        EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0);
        return status.st_blocks;
    }

    const TempDir dir;
    const QString in = dir.path("in");
    const QString out = dir.path("out");
    const int descriptor =
        ::open(QFile::encodeName(out).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    std::vector<qint64> reported;
};

TEST_F(OutputFileTest, WritesWhatItIsGiven) {
    OutputFile file = makeOutput();
    const QByteArray piece(100'000, 'x');
    file.write("start");
    EXPECT_EQ(file.position(), 5);
    file.write(piece);
    file.write("end");
    EXPECT_EQ(file.position(), 100'008);
    file.flush();
    EXPECT_EQ(contentOf(out), "start" + piece + "end");
    ASSERT_FALSE(reported.empty());
    EXPECT_EQ(reported.back(), 100'008);
}

TEST_F(OutputFileTest, KeepsLittleInMemory) {
    OutputFile file = makeOutput();
    const QByteArray piece(1'000, 'x');
    for (int i = 0; i < 1'000; ++i)
        file.write(piece);
    EXPECT_EQ(file.position(), 1'000'000);
    EXPECT_EQ(reported.back(), contentOf(out).size());
    EXPECT_GE(contentOf(out).size(), 900'000);
    EXPECT_GT(reported.size(), 5U);
}

TEST_F(OutputFileTest, WhatFillsTheBufferIsWritten) {
    OutputFile file = makeOutput();
    file.write(QByteArray(65'535, 'x'));
    EXPECT_TRUE(reported.empty());
    file.write("x");
    EXPECT_EQ(reported, std::vector<qint64>{65'536});
    EXPECT_EQ(contentOf(out).size(), 65'536);
}

TEST_F(OutputFileTest, ALargeCopyIsReportedByPieces) {
    test::writeFile(in, QByteArray(40'000'000, 'x'));
    OutputFile file = makeOutput();
    file.copyFrom(FileHandle(in), 40'000'000);
    EXPECT_TRUE(std::is_sorted(reported.begin(), reported.end()));
    EXPECT_EQ(reported.back(), 40'000'000);
    EXPECT_TRUE(contentOf(in) == contentOf(out));
    EXPECT_EQ(file.position(), 40'000'000);
}

TEST_F(OutputFileTest, GoesOnBehindACopy) {
    test::writeFile(in, QByteArray("front%PDF-1.4\n") + QByteArray(200'000, 'x'));
    OutputFile file = makeOutput();
    file.copyFrom(FileHandle(in), 200'014);
    file.write("more");
    file.flush();
    EXPECT_EQ(contentOf(out), contentOf(in) + "more");
}

TEST_F(OutputFileTest, CopiesABeginning) {
    test::writeFile(in, "0123456789");
    OutputFile file = makeOutput();
    file.copyFrom(FileHandle(in), 4);
    file.write("x");
    file.flush();
    EXPECT_EQ(contentOf(out), "0123x");
}

TEST_F(OutputFileTest, HolesStayHoles) {
    QFile sparse(in);
    ASSERT_TRUE(sparse.open(QIODevice::WriteOnly) && sparse.write("begin") == 5 && sparse.seek(50'000'000) &&
                sparse.write("middle") == 6 && sparse.resize(100'000'000));
    sparse.close();
    if (blocksOf(in) > 1000) GTEST_SKIP() << "the disk knows no sparse files";
    OutputFile file = makeOutput();
    file.copyFrom(FileHandle(in), 100'000'000);
    file.write("end");
    file.flush();
    EXPECT_EQ(contentOf(out), contentOf(in) + "end");
    EXPECT_LT(blocksOf(out), 1000);
}

/// As between two disks. The system does not copy into a file that is only appended to.
TEST_F(OutputFileTest, WhereTheSystemDoesNotCopyItIsDoneByHand) {
    QByteArray content("front%PDF-1.4\n");
    for (int i = 0; content.size() < 300'000; ++i)
        content += QByteArray::number(i) + ' ';
    test::writeFile(in, content);
    const int appending = ::open(QFile::encodeName(out).constData(), O_RDWR | O_APPEND | O_CLOEXEC);
    OutputFile file(appending, [this](qint64 bytes) { reported.push_back(bytes); });
    file.copyFrom(FileHandle(in), 200'000);
    file.write("more");
    file.flush();
    ::close(appending);
    EXPECT_TRUE(contentOf(out) == content.first(200'000) + "more");
    EXPECT_TRUE(std::is_sorted(reported.begin(), reported.end()));
    EXPECT_GT(reported.size(), 3U);
}

TEST_F(OutputFileTest, MayBeginAgain) {
    OutputFile file = makeOutput();
    file.write(QByteArray(100'000, 'x'));
    file.write("y");
    file.restart();
    EXPECT_EQ(file.position(), 0);
    file.write("z");
    file.flush();
    EXPECT_EQ(contentOf(out), "z");
}

TEST_F(OutputFileTest, AnOriginalThatWasCutShortIsAnError) {
    test::writeFile(in, QByteArray(200'000, 'x'));
    const FileHandle handle(in);
    ASSERT_TRUE(QFile::resize(in, 100'000));
    OutputFile file = makeOutput();
    EXPECT_THROW(file.copyFrom(handle, 200'000), Error);
}

/// Has the calling thread write nothing from now on, without an error. @return whether the system can do that
bool letWritesDoNothing() {
    sock_filter answers[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_pwrite64, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog filter{std::size(answers), answers};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

/// To try again would be to try for ever, whatever has been interrupted before.
TEST_F(OutputFileTest, ADiskThatWritesNothingIsAnError) {
    for (const int before : {0, EINTR}) {
        bool canBeTried = false;
        std::error_code code;
        std::thread([&] {
            OutputFile file = makeOutput();
            file.write("x");
            canBeTried = letWritesDoNothing();
            errno = before;
            try {
                if (canBeTried) file.flush();
            } catch (const std::system_error &error) {
                code = error.code();
            }
        }).join();
        if (!canBeTried) GTEST_SKIP() << "the system lets no thread have such a disk";
        EXPECT_EQ(code, std::error_code(EIO, std::generic_category()));
    }
}

TEST_F(OutputFileTest, WhatTheSystemRefusesIsAnError) {
    test::writeFile(in, "content");
    const int readOnly = ::open(QFile::encodeName(out).constData(), O_RDONLY | O_CLOEXEC);
    OutputFile file(readOnly, [](qint64) {});
    file.write("x");
    EXPECT_THROW(file.flush(), std::system_error);
    OutputFile copy(readOnly, [](qint64) {});
    EXPECT_THROW(copy.copyFrom(FileHandle(in), 7), std::system_error);
    EXPECT_THROW(copy.restart(), std::system_error);
    ::close(readOnly);
}

}  // namespace
}  // namespace leafwright::mupdf
