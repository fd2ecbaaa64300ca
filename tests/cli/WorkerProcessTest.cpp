#include "cli/Command.h"
#include "cli/OutlineOutput.h"
#include "cli/WorkerProcess.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/EnvironmentVariable.h"
#include "support/Paths.h"

#include <QDir>

#include <csignal>
#include <gmock/gmock.h>
#include <unistd.h>

namespace leafwright::test {
namespace {

using cli::WorkerEnd;
using cli::WorkerOf;
using cli::WorkerProcess;
using testing::HasSubstr;
using testing::StartsWith;
using namespace std::chrono_literals;
using How = WorkerEnd::How;

/// Runs the shell in place of the program.
WorkerEnd runShell(const QString &script, QByteArray &said, std::chrono::seconds limit = 0s) {
    cli::setProgramToStart("/bin/sh");
    const WorkerEnd end =
        WorkerProcess({"-c", script}, WorkerOf::Batch).run(limit, -1, [&said](const QByteArray &text) {
            said += text;
        });
    cli::setProgramToStart(commandLineProgram());
    return end;
}

TEST(WorkerProcess, TellsItsExitCodeAndWhatItSaid) {
    QByteArray said;
    const WorkerEnd end = runShell("echo one >&2; echo unseen; echo two >&2; exit 3", said);
    EXPECT_EQ(end.how, How::Exited);
    EXPECT_EQ(end.code, 3);
    EXPECT_EQ(said, "one\ntwo\n");
    EXPECT_FALSE(end.reason(0s));
}

TEST(WorkerProcess, KnowsWhoWaitsForIt) {
    EXPECT_EQ(cli::workerOf(), WorkerOf::None);
    QByteArray said;
    runShell("echo $LEAFWRIGHT_WORKER >&2; cat >&2", said);
    EXPECT_THAT(said.toStdString(), StartsWith("batch " + std::to_string(::getpid()) + ' '))
        << "with the journal's descriptor behind it";
    EXPECT_EQ(said.count('\n'), 1) << "and has nothing to read";
}

TEST(WorkerProcess, OfAnotherProgramSaysSo) {
    for (const char *value : {"batch 1 2", "command 1", "batch ", "pool 1 2"}) {
        const EnvironmentVariable worker("LEAFWRIGHT_WORKER", value);
        const ProgramResult result = runProgram(commandLineProgram(), {"--version"});
        EXPECT_EQ(result.exitCode, 1) << value;
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err.toStdString(), StartsWith("leafwright-cli: LEAFWRIGHT_WORKER is set, but "));
    }
}

TEST(WorkerProcess, ThatCrashesIsNoExit) {
    QByteArray said;
    const WorkerEnd end = runShell("kill -SEGV $$", said);
    EXPECT_EQ(end.how, How::Signalled);
    EXPECT_EQ(end.code, SIGSEGV);
    EXPECT_THAT(end.reason(0s)->toStdString(), HasSubstr("ended unexpectedly: Segmentation fault"));
}

TEST(WorkerProcess, IsEndedWhenItsTimeIsOver) {
    QByteArray said;
    const WorkerEnd end = runShell("echo begun >&2; while true; do :; done", said, 1s);
    EXPECT_EQ(end.how, How::TimedOut);
    EXPECT_EQ(said, "begun\n");
    EXPECT_EQ(*end.reason(1s), "given up after 1 s");
}

TEST(WorkerProcess, IsEndedAlsoWhenItDoesNotListen) {
    QByteArray said;
    const WorkerEnd end = runShell("trap '' TERM; echo begun >&2; while true; do :; done", said, 1s);
    EXPECT_EQ(end.how, How::TimedOut);
}

TEST(WorkerProcess, ThatCantBeStartedIsTold) {
    cli::setProgramToStart("/nonexistent/program");
    const WorkerEnd end = WorkerProcess({"info"}, WorkerOf::Batch).run(0s, -1, [](const QByteArray &) {});
    cli::setProgramToStart(commandLineProgram());
    EXPECT_EQ(end.how, How::NotStarted);
    EXPECT_THAT(end.reason(0s)->toStdString(), HasSubstr("No such file or directory"));
}

/// A PDF whose text takes minutes to read: every page shows a long content that shows nothing.
QString saveSlowPdf(const TempDir &dir, const QString &name) {
    PdfBuilder pdf;
    std::string content;
    while (content.size() < 4'000'000)
        content += "BT /F1 12 Tf ET ";
    const std::string stream = PdfBuilder::reference(pdf.addStream(content));
    for (int i = 0; i < 4'000; ++i)
        pdf.addPage({}, "/Contents " + stream);
    pdf.save(dir.path(name));
    return dir.path(name);
}

TEST(Timeout, FileOfABatchThatTakesTooLongDoesNotStopTheOthers) {
    const TempDir dir;
    const QString slow = saveSlowPdf(dir, "slow.pdf");
    const QString quick = savePdfWithContents(dir, "quick.pdf");
    for (const char *command : {"autotoc", "contents"}) {
        const QString out = dir.path(command);
        const CliResult result = runCli({command, "--out-dir", out, "--timeout", "10", slow, quick});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.err, "leafwright-cli: " + slow.toUtf8() +
                                  ": given up after 10 s\nleafwright-cli: 1 of 2 files failed\n");
        EXPECT_EQ(QDir(out).entryList(QDir::Files | QDir::Hidden), QStringList("quick.pdf"));
    }
}

TEST(Timeout, FileOfABatchHasAMinuteUnlessSaidOtherwise) {
    EXPECT_EQ(cli::OutlineOutput::Job().limit, 60s);
}

TEST(Timeout, SingleFileThatTakesTooLongIsAFailure) {
    const TempDir dir;
    const QString slow = saveSlowPdf(dir, "slow.pdf");
    const CliResult result = runCli({"fonts", slow, "--timeout=1"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "leafwright-cli: " + slow.toUtf8() + ": given up after 1 s\n");
}

TEST(Timeout, CommandInTimeIsAsWithout) {
    const TempDir dir;
    const QString path = savePdfWithHeadings(dir, "a.pdf");
    const CliResult result = runCli({"outline", path, "--format", "plus", "--timeout", "100"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "+ @2 Old Entry\n");
    EXPECT_EQ(result.err, "leafwright-cli: " + path.toUtf8() + ": 1 entry\n");
    const CliResult failed = runCli({"outline", "none.pdf", "--timeout", "100"});
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_EQ(failed.err, "leafwright-cli: none.pdf: there is no such file\n");
}

TEST(Timeout, StandardInputIsTheCommands) {
    const TempDir dir;
    const QString path = savePdfWithHeadings(dir, "a.pdf");
    saveBytes(dir.path("tree"), "+ @1 New\n");
    const StandardInput input(dir.path("tree"));
    EXPECT_EQ(runCli({"apply", path, "-", "-o", dir.path("out.pdf"), "--timeout", "100"}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @1 New\n");
}

TEST(Timeout, WantsSeconds) {
    for (const char *wrong : {"soon", "-1", "1.5", "", "99999999999"}) {
        const CliResult result = runCli({"info", "a.pdf", QStringLiteral("--timeout=") + wrong});
        EXPECT_EQ(result.exitCode, 2) << wrong;
        EXPECT_THAT(result.err.toStdString(), HasSubstr("--timeout wants a number of seconds, or 0"));
    }
}

/// A command that asks for more memory than there is.
class GreedyCommand final : public cli::Command {
public:
    cli::CommandInfo info() const override {
        return {"greedy", "Asks for memory.", {}, {{"FILE", "A file."}}, {}};
    }
    cli::ExitCode run(const QCommandLineParser & /*arguments*/, cli::Console & /*console*/) const override {
        throw std::bad_alloc();
    }
};

TEST(CommandWithoutMemory, EndsWithAMessage) {
    std::FILE *messages = std::tmpfile();
    cli::Console console(messages, messages);
    EXPECT_EQ(parseAndRun(GreedyCommand(), {"a.pdf"}, console), cli::Failed);
    std::rewind(messages);
    char line[100] = {};
    ASSERT_TRUE(std::fgets(line, sizeof line, messages));
    EXPECT_STREQ(line, "leafwright-cli: a.pdf: there is not enough memory\n");
    std::fclose(messages);
}

}  // namespace
}  // namespace leafwright::test
