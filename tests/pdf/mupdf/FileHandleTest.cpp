#include "pdf/mupdf/Context.h"
#include "pdf/mupdf/FileStream.h"
#include "support/OpenPdf.h"
#include "support/TempDir.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <system_error>
#include <unistd.h>

namespace leafwright::mupdf {
namespace {

using test::TempDir;

QByteArray read(const FileHandle &file, qint64 offset, qint64 length) {
    QByteArray bytes(length, '?');
    bytes.truncate(file.readOrThrow(offset, bytes.data(), length));
    return bytes;
}

TEST(FileHandle, OffsetsCountFromTheHeader) {
    const TempDir dir;
    for (const qsizetype before : {0, 1, 100, 1018, 1019}) {
        test::writeFile(dir.path("a"), QByteArray(before, '-') + "%PDF-1.7 content");
        const FileHandle file(dir.path("a"));
        EXPECT_EQ(file.start(), before);
        EXPECT_EQ(file.size(), 16);
        EXPECT_EQ(read(file, 9, 100), "content");
        EXPECT_EQ(read(file, 9, 3), "con");
        EXPECT_EQ(read(file, 16, 3), "");
    }
}

TEST(FileHandle, AHeaderFartherBehindIsNone) {
    const TempDir dir;
    for (const QByteArray &bytes :
         {QByteArray(1020, '-') + "%PDF-1.7", QByteArray("no header"), QByteArray()}) {
        test::writeFile(dir.path("a"), bytes);
        const FileHandle file(dir.path("a"));
        EXPECT_EQ(file.start(), 0);
        EXPECT_EQ(file.size(), bytes.size());
        EXPECT_EQ(read(file, 0, 2000), bytes);
    }
}

TEST(FileHandle, WhatWentWrongBeforeIsNoMatter) {
    const TempDir dir;
    test::writeFile(dir.path("a"), "%PDF-1.7");
    for (const int before : {EINTR, EIO}) {
        errno = before;
        const FileHandle file(dir.path("a"));
        errno = before;
        EXPECT_EQ(read(file, 5, 3), "1.7");
    }
}

TEST(FileHandle, ADescriptorStaysTheCallers) {
    const TempDir dir;
    test::writeFile(dir.path("a"), "%PDF-1.7");
    const int descriptor = ::open(QFile::encodeName(dir.path("a")).constData(), O_RDONLY | O_CLOEXEC);
    {
        const FileHandle file(descriptor);
        EXPECT_NE(file.descriptor(), descriptor);
        EXPECT_EQ(read(file, 0, 4), "%PDF");
    }
    char byte = 0;
    EXPECT_EQ(::pread(descriptor, &byte, 1, 0), 1);
    ::close(descriptor);
    EXPECT_THROW(FileHandle{descriptor}, std::system_error);
}

TEST(FileHandle, WhatIsNoFileIsRefused) {
    const TempDir dir;
    EXPECT_THROW(FileHandle(dir.path("none")), std::system_error);
    EXPECT_THROW(FileHandle(dir.path("")), std::system_error);
}

TEST(FileHandle, FailuresOfTheSystemAreProblems) {
    const TempDir dir;
    test::writeFile(dir.path("a"), "%PDF-1.7");
    const FileHandle file(dir.path("a"));
    const FailingReads failing(
        [](qint64 offset, qint64 length) { return offset == 3 && length == 2 ? EIO : 0; });
    EXPECT_EQ(read(file, 3, 1), "F");
    char bytes[2] = {};
    EXPECT_EQ(file.readAt(3, bytes, 2), -1);
    EXPECT_EQ(errno, EIO);
    EXPECT_THROW(file.readOrThrow(3, bytes, 2), ReadProblem);
}

}  // namespace
}  // namespace leafwright::mupdf
