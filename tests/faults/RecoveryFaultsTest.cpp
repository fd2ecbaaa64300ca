#include "document/outline/RecoveryFile.h"
#include "files/UnfinishedFiles.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/EnvironmentVariable.h"
#include "support/Paths.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::AnyOf;
using testing::HasSubstr;

constexpr const char *folderVariable = "LEAFWRIGHT_RECOVERY_FOLDER";
const QString pdf = QStringLiteral("/a.pdf");

/// The programs in which calls fail say what they have done, as far as they come.
void say(const QString &what) {
    std::printf("\n%s\n", qPrintable(what));
    std::fflush(stdout);
}

/// Not a test: the program that keeps two outlines, one after the other.
TEST(RecoveryFaultsProgram, DISABLED_Keeps) {
    const QString folder = qEnvironmentVariable(folderVariable);
    if (folder.isEmpty()) return;
    auto made = RecoveryFile::make(folder, pdf);
    if (const auto *reason = std::get_if<QString>(&made)) return say("refused: " + *reason);
    auto &file = *std::get<std::unique_ptr<RecoveryFile>>(made);
    for (const QString title : {"one", "two"}) {
        const auto reason = file.write({pdf, {}, 1, {{0, title, "1", {}, {}, {}}}});
        say(reason ? "not kept " + title + ": " + *reason : "kept " + title);
    }
}

/// Not a test: the program that starts next.
TEST(RecoveryFaultsProgram, DISABLED_Offers) {
    const QString folder = qEnvironmentVariable(folderVariable);
    if (folder.isEmpty()) return;
    const auto left = RecoveryFile::leftBehindFor(folder, pdf);
    for (const auto &file : left.files) {
        const auto content = file->read();
        const auto *outline = std::get_if<KeptOutline>(&content);
        say(outline ? "offered " + outline->entries.at(0).title
                    : "problem: " + std::get<RecoveryFile::Unreadable>(content).reason);
    }
    for (const QString &problem : left.problems)
        say("problem: " + problem);
}

/// Lets every call fail in turn that is made on the files in which an outline is kept.
class RecoveryFaults : public testing::Test {
protected:
    void SetUp() override { restart(); }
    void restart() {
        QDir(folder).removeRecursively();
        ASSERT_TRUE(QDir().mkpath(folder));
        QFile::remove(dir.path("log"));
    }
    /// @param call which fails; -1 for none. @param error 0 kills the program there
    std::string run(const char *program, qsizetype call = -1, int error = EIO) const {
        const EnvironmentVariable library("LD_PRELOAD", faultLibrary().toUtf8());
        const EnvironmentVariable root("LEAFWRIGHT_FAULT_ROOT", folder.toUtf8());
        const EnvironmentVariable log("LEAFWRIGHT_FAULT_LOG", dir.path("log").toUtf8());
        const EnvironmentVariable at("LEAFWRIGHT_FAULT_AT", QByteArray::number(call));
        const EnvironmentVariable with("LEAFWRIGHT_FAULT_ERROR", QByteArray::number(error));
        const EnvironmentVariable kept(folderVariable, folder.toUtf8());
        const ProgramResult result = runProgram(
            "/proc/self/exe", {"--gtest_also_run_disabled_tests",
                               QString("--gtest_filter=RecoveryFaultsProgram.DISABLED_%1").arg(program)});
        return result.out.toStdString();
    }
    qsizetype callsOf(const char *program) const {
        QFile::remove(dir.path("log"));
        run(program);
        const qsizetype calls = bytesOf(dir.path("log")).count('\n');
        QFile::remove(dir.path("log"));
        return calls;
    }
    /// What a start in which nothing fails offers; "nothing" for nothing.
    std::string offered() const {
        const auto left = RecoveryFile::leftBehindFor(folder, pdf);
        EXPECT_TRUE(left.problems.isEmpty()) << qPrintable(left.problems.join('\n'));
        EXPECT_LE(left.files.size(), 1);
        if (left.files.empty()) return "nothing";
        return std::get<KeptOutline>(left.files.front()->read()).entries.at(0).title.toStdString();
    }
    QStringList names() const { return QDir(folder).entryList(QDir::Files | QDir::Hidden); }

    TempDir dir;
    QString folder = QFileInfo(dir.path(".")).canonicalFilePath() + "/recovery";
};

TEST_F(RecoveryFaults, LeaveTheOldOutlineOrTheNewOne) {
    const qsizetype calls = callsOf("Keeps");
    ASSERT_GT(calls, 10);
    EXPECT_EQ(offered(), "two");
    for (qsizetype call = 0; call < calls; ++call) {
        for (const int error : {EIO, ENOSPC, 0}) {
            restart();
            const std::string said = run("Keeps", call, error);
            SCOPED_TRACE(std::to_string(error) + " at call " + std::to_string(call) + ": " + said);
            const bool keptTwo = said.find("\nkept two") != std::string::npos;
            const bool keptOne = said.find("\nkept one") != std::string::npos;
            const bool failedTwo = said.find("not kept two") != std::string::npos;
            if (keptTwo) {
                EXPECT_EQ(offered(), "two");
            } else if (failedTwo) {
                EXPECT_EQ(offered(), keptOne ? "one" : "nothing");
            } else if (keptOne) {
                EXPECT_THAT(offered(), AnyOf("one", "two"));
            } else if (error == 0) {
                EXPECT_THAT(offered(), AnyOf("nothing", "one"));
            } else {
                EXPECT_EQ(offered(), "nothing");
            }
            for (const QString &name : names())
                EXPECT_TRUE(name.endsWith(".outline") || name.endsWith(".lock") ||
                            isNameOfUnfinishedFile(name.toUtf8()))
                    << qPrintable(name);
        }
    }
}

TEST_F(RecoveryFaults, OfAStartLoseNothing) {
    run("Keeps");
    const qsizetype calls = callsOf("Offers");
    ASSERT_GT(calls, 2);
    for (qsizetype call = 0; call < calls; ++call) {
        for (const int error : {EIO, 0}) {
            QFile::remove(dir.path("log"));
            const std::string said = run("Offers", call, error);
            SCOPED_TRACE(std::to_string(error) + " at call " + std::to_string(call) + ": " + said);
            if (error != 0) {
                EXPECT_THAT(said, AnyOf(HasSubstr("offered two"), HasSubstr("problem: ")));
            }
            EXPECT_EQ(offered(), "two");
        }
    }
}

}  // namespace
}  // namespace leafwright::test
