#include "cli/batch/LineReader.h"
#include "support/CliFiles.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

namespace leafwright::test {
namespace {

using cli::LineReader;
using testing::ElementsAre;
using Got = LineReader::Got;

/// All lines of a text; those that are too long as "(too long)".
std::vector<QByteArray> linesOf(const QByteArray &text, qsizetype longest, bool *lastIsCutOff = nullptr) {
    const TempDir dir;
    saveBytes(dir.path("lines"), text);
    const int file = ::open(dir.path("lines").toUtf8().constData(), O_RDONLY | O_CLOEXEC);
    LineReader reader(file, -1, longest);
    std::vector<QByteArray> lines;
    QByteArray line;
    for (Got got = reader.next(line); got != Got::End; got = reader.next(line)) {
        EXPECT_TRUE(got == Got::Line || got == Got::TooLong);
        lines.push_back(got == Got::Line ? line : "(too long)");
        EXPECT_EQ(reader.number(), static_cast<qint64>(lines.size()));
        if (lastIsCutOff) *lastIsCutOff = reader.lastIsCutOff();
    }
    ::close(file);
    return lines;
}

TEST(LineReader, HandsOutLinesWithoutTheirLineFeeds) {
    EXPECT_THAT(linesOf("", 10), ElementsAre());
    EXPECT_THAT(linesOf("a\n\nb c\n", 10), ElementsAre("a", "", "b c"));
    EXPECT_THAT(linesOf(QByteArray("a\0b\nc", 5), 10), ElementsAre(QByteArray("a\0b", 3), "c"));
}

TEST(LineReader, TellsWhetherTheLastLineIsWhole) {
    bool isCutOff = true;
    EXPECT_THAT(linesOf("a\nb\n", 10, &isCutOff), ElementsAre("a", "b"));
    EXPECT_FALSE(isCutOff);
    EXPECT_THAT(linesOf("a\nb", 10, &isCutOff), ElementsAre("a", "b"));
    EXPECT_TRUE(isCutOff);
}

TEST(LineReader, PassesOverLinesThatAreTooLong) {
    EXPECT_THAT(linesOf("1234567890\n12345678901\na\n", 10), ElementsAre("1234567890", "(too long)", "a"));
    const QByteArray huge(1'000'000, 'x');
    EXPECT_THAT(linesOf(huge + "\na\n" + huge, 10), ElementsAre("(too long)", "a", "(too long)"));
}

TEST(LineReader, LinesOverSeveralReadsAreWhole) {
    const QByteArray line(100'000, 'y');
    EXPECT_THAT(linesOf(line + '\n' + line + '\n', 1 << 20), ElementsAre(line, line));
}

TEST(LineReader, StopsWaitingWhenNoMoreLinesAreWanted) {
    int lines[2];
    int stop[2];
    ASSERT_EQ(::pipe2(lines, O_CLOEXEC), 0);
    ASSERT_EQ(::pipe2(stop, O_CLOEXEC), 0);
    ASSERT_EQ(::write(stop[1], "x", 1), 1);
    LineReader reader(lines[0], stop[0]);
    QByteArray line;
    EXPECT_EQ(reader.next(line), Got::Interrupted);
    for (const int descriptor : {lines[0], lines[1], stop[0], stop[1]})
        ::close(descriptor);
}

TEST(LineReader, WhatCantBeReadIsAFailure) {
    QByteArray line;
    const int folder = ::open("/", O_RDONLY | O_CLOEXEC);
    LineReader ofFolder(folder);
    EXPECT_EQ(ofFolder.next(line), Got::Failed);
    ::close(folder);
}

}  // namespace
}  // namespace leafwright::test
