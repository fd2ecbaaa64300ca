#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace leafwright::test {
namespace {

/// What happens while a command has read its PDF, and has yet to write.
class AmidACommand : public testing::Test {
protected:
    AmidACommand() { savePdf(dir, "in.pdf", 3, {"Old Entry"}); }

    /// Has `apply` read the tree from a pipe, which it opens when it has read the PDF.
    CliResult applyTo(const QString &out, const std::function<void()> &happens) {
        const QByteArray pipe = dir.path("tree").toUtf8();
        EXPECT_EQ(::mkfifo(pipe.constData(), S_IRUSR | S_IWUSR), 0);
        std::thread other([&] {
            const int end = ::open(pipe.constData(), O_WRONLY | O_CLOEXEC);  // waits for the reader
            happens();
            const QByteArray tree = "+ @2 New\n";
            EXPECT_EQ(::write(end, tree.constData(), static_cast<size_t>(tree.size())), tree.size());
            ::close(end);
        });
        const CliResult result = runCli({"apply", in, dir.path("tree"), "-o", out});
        other.join();
        return result;
    }
    void expectRefused(const QString &out, const std::function<void()> &happens, const QString &reason) {
        const CliResult result = applyTo(out, happens);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.err,
                  "leafwright-cli: " + (out + " could not be written: " + reason + "\n").toUtf8());
    }
    void replace() const {
        saveBytes(dir.path("new"), "theirs");
        ASSERT_EQ(::rename(qPrintable(dir.path("new")), qPrintable(in)), 0);
    }

    TempDir dir;
    const QString in = dir.path("in.pdf");
};

TEST_F(AmidACommand, NothingHappensUsually) {
    const CliResult result = applyTo(in, [] {});
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(plusLinesOf(in), "+ @2 New\n");
}

TEST_F(AmidACommand, AFileThatIsOverwrittenStays) {
    expectRefused(
        in, [this] { saveBytes(in, "theirs"); },
        "another program has written to it since it was read; open it again");
    EXPECT_EQ(bytesOf(in), "theirs");
}

TEST_F(AmidACommand, WhatWasReadMayBeGoneForAnotherOutputToo) {
    expectRefused(
        dir.path("out.pdf"), [this] { saveBytes(in, "theirs"); },
        "another program has written to " + in + " since it was read; open that again");
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

TEST_F(AmidACommand, AFileThatIsReplacedStays) {
    expectRefused(
        in, [this] { replace(); },
        "another program has put another file there since this one was read; open that, or write to another "
        "place");
    EXPECT_EQ(bytesOf(in), "theirs");
}

TEST_F(AmidACommand, AReplacedFileCanStillBeWrittenElsewhere) {
    const CliResult result = applyTo(dir.path("out.pdf"), [this] { replace(); });
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @2 New\n");
}

TEST_F(AmidACommand, AFileThatIsRemovedDoesNotComeBackUnasked) {
    expectRefused(
        in, [this] { ASSERT_TRUE(QFile::remove(in)); },
        "it is no longer where it was read; write to another place");
    EXPECT_FALSE(QFile::exists(in));
}

}  // namespace
}  // namespace leafwright::test
