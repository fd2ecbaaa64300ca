#include "cli/batch/ForkServer.h"
#include "files/UnfinishedFiles.h"
#include "support/CliFiles.h"
#include "support/Paths.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace leafwright::test {
namespace {

using cli::ForkServer;
using cli::WorkerReport;
using testing::HasSubstr;
using testing::Optional;
using How = cli::WorkerEnd::How;
using namespace std::chrono_literals;

/// What the system tells of a process behind its name: its state, its parent and more; nothing once it is
/// gone.
QByteArrayList statusOf(const QString &process) {
    QFile file("/proc/" + process + "/stat");
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray status = file.readAll();
    return status.mid(status.lastIndexOf(')') + 2).split(' ');
}

/// A process without a parent may wait for its burial.
bool isRunning(pid_t process) {
    const QByteArrayList status = statusOf(QString::number(process));
    return status.size() > 1 && status[0] != "Z";
}

/// The processes that a process has started and that have not ended.
std::vector<pid_t> childrenOf(pid_t parent) {
    std::vector<pid_t> children;
    for (const QString &name : QDir("/proc").entryList(QDir::Dirs)) {
        const QByteArrayList status = statusOf(name);
        if (status.size() > 1 && status[0] != "Z" && status[1].toInt() == parent)
            children.push_back(name.toInt());
    }
    return children;
}

class ForkServers : public testing::Test {
protected:
    void SetUp() override { cli::setProgramToStart(commandLineProgram()); }

    /// A job that never ends: nobody writes what it is to read.
    cli::WorkerJob endlessJob() const {
        ::mkfifo(dir.path("pipe").toUtf8().constData(), 0600);
        return {{"apply", "--output=" + dir.path("new.pdf"), "--", file, dir.path("pipe")}};
    }
    /// Does a job, and meanwhile, when its worker is there, something to that and who has started it.
    WorkerReport runAndMeanwhile(const cli::WorkerJob &job,
                                 const std::function<void(pid_t starter, pid_t worker)> &act) {
        std::jthread meanwhile([&act] {
            std::vector<pid_t> servers;
            std::vector<pid_t> workers;
            const bool isThere = QTest::qWaitFor(
                [&] {
                    servers = childrenOf(::getpid());
                    workers = servers.empty() ? servers : childrenOf(servers.front());
                    return !workers.empty();
                },
                30'000);
            if (isThere) act(servers.front(), workers.front());
        });
        return server.run(job);
    }
    void expectGoesOn() {
        const WorkerReport report = server.run({{"info", "--", file}});
        EXPECT_EQ(report.end.how, How::Exited);
        EXPECT_EQ(report.end.code, 0);
    }

    TempDir dir;
    QString file = savePdf(dir, "a.pdf", 3, {"One", "Two"});
    ForkServer server{"apply"};
};

TEST_F(ForkServers, TellWhatCameOfAJob) {
    const WorkerReport report = server.run({{"outline", "--format=plus", "--", file}});
    EXPECT_EQ(report.end.how, How::Exited);
    EXPECT_EQ(report.end.code, 0);
    EXPECT_EQ(report.printed, "+ @1 One\n+ @2 Two\n");
    EXPECT_EQ(report.said, "");
    EXPECT_THAT(report.facts.pages, Optional(3));
    EXPECT_THAT(report.facts.entries, Optional(2));
    EXPECT_GT(report.peakBytes, 1 << 20);
    EXPECT_GT(report.seconds, 0);
}

TEST_F(ForkServers, TellWhyAJobFailed) {
    const WorkerReport report = server.run({{"info", "--", dir.path("none.pdf")}});
    EXPECT_EQ(report.end.code, 1);
    EXPECT_THAT(report.said.toStdString(), HasSubstr("there is no such file"));
    EXPECT_EQ(report.printed, "");
    EXPECT_EQ(report.facts.pages, std::nullopt);
    expectGoesOn();
}

TEST_F(ForkServers, PutWhatIsPrintedIntoAFile) {
    const WorkerReport report =
        server.run({{"outline", "--format=plus", "--", file}, dir.path("outline.txt")});
    EXPECT_EQ(report.end.code, 0);
    EXPECT_EQ(report.printed, "");
    EXPECT_EQ(bytesOf(dir.path("outline.txt")), "+ @1 One\n+ @2 Two\n");
    const WorkerReport refused = server.run({{"info", "--", file}, dir.path("none/info.json")});
    EXPECT_EQ(refused.end.code, 1);
    EXPECT_THAT(refused.said.toStdString(), HasSubstr("none/info.json"));
}

TEST_F(ForkServers, LookThroughAFolderOnceForAllJobs) {
    const auto leave = [this](const QByteArray &name) {
        const int folder = ::open(dir.path(".").toUtf8().constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        const UnfinishedFile left = makeUnfinishedFile(folder, name, 0600);
        const timespec anHourAgo{std::time(nullptr) - 3600, 0};
        const timespec times[] = {anHourAgo, anHourAgo};
        EXPECT_EQ(::futimens(left.descriptor, times), 0);
        ::close(left.descriptor);
        ::close(folder);
        return dir.path(QString::fromUtf8(left.name));
    };
    const auto save = [this](const QString &out) {
        const WorkerReport report =
            server.run({.arguments = {"outline", "--", file}, .printTo = out, .out = out});
        EXPECT_EQ(report.end.code, 0);
    };
    const QString first = leave("first");
    save(dir.path("a.json"));
    EXPECT_FALSE(QFile::exists(first));
    const QString second = leave("second");
    save(dir.path("b.json"));
    EXPECT_TRUE(QFile::exists(second)) << "it is looked for again, as by each";
}

TEST_F(ForkServers, StartTheNextWorkerAsTheFirst) {
    for (int i = 0; i < 20; ++i)
        expectGoesOn();
    EXPECT_EQ(childrenOf(::getpid()).size(), 1U) << "one process starts them all";
}

TEST_F(ForkServers, GiveUpAJobThatTakesTooLong) {
    cli::WorkerJob job = endlessJob();
    job.timeLimit = 1s;
    const WorkerReport report = server.run(job);
    EXPECT_EQ(report.end.how, How::TimedOut);
    EXPECT_GE(report.seconds, 1);
    EXPECT_FALSE(QFile::exists(dir.path("new.pdf")));
    expectGoesOn();
}

TEST_F(ForkServers, GoOnAfterAWorkerThatCrashes) {
    const WorkerReport report =
        runAndMeanwhile(endlessJob(), [](pid_t /*starter*/, pid_t worker) { ::kill(worker, SIGABRT); });
    EXPECT_EQ(report.end.how, How::Signalled);
    EXPECT_EQ(report.end.code, SIGABRT);
    expectGoesOn();
}

TEST_F(ForkServers, AreReplacedWhenTheyCrashThemselves) {
    pid_t left = 0;
    const WorkerReport report = runAndMeanwhile(endlessJob(), [&left](pid_t starter, pid_t worker) {
        left = worker;
        ::kill(starter, SIGKILL);
    });
    EXPECT_EQ(report.end.how, How::Signalled);
    EXPECT_EQ(report.end.code, SIGKILL);
    EXPECT_TRUE(QTest::qWaitFor([left] { return !isRunning(left); }, 10'000)) << "its worker lives on";
    expectGoesOn();
}

TEST_F(ForkServers, EndAWorkerThatWantsTooMuchMemory) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "it takes more memory itself than there is";
#endif
    cli::WorkerJob job{{"fonts", "--", savePdfWithHeadings(dir, "b.pdf")}};
    job.memoryLimit = 1 << 20;
    const WorkerReport report = server.run(job);
    EXPECT_FALSE(report.end.how == How::Exited && report.end.code == 0);
    expectGoesOn();
}

TEST_F(ForkServers, ThatCantBeStartedAreTold) {
    cli::setProgramToStart("/nonexistent/program");
    const WorkerReport report = server.run({{"info", "--", file}});
    cli::setProgramToStart(commandLineProgram());
    EXPECT_EQ(report.end.how, How::NotStarted);
    EXPECT_THAT(report.end.reason(0s)->toStdString(), HasSubstr("No such file or directory"));
    expectGoesOn();
}

TEST_F(ForkServers, PlayScriptsInEveryWorker) {
    ForkServer scripts("run");
    saveBytes(dir.path("steps"), R"([{"do": "setTitle", "path": [0], "title": "New"}])");
    for (const char *out : {"one.pdf", "two.pdf"}) {
        const WorkerReport report =
            scripts.run({{"run", "--output=" + dir.path(out), "--", dir.path("steps"), file}});
        EXPECT_EQ(report.end.how, How::Exited);
        EXPECT_EQ(report.end.code, 0) << report.said.constData();
        EXPECT_EQ(plusLinesOf(dir.path(out)), "+ @1 New\n+ @2 Two\n");
    }
}

TEST(WorkerJob, ComesThroughAsItIs) {
    const cli::WorkerJob job{{"info", "a b", QString(QChar(0xDCE9))}, "printed", "out", 7s, qint64{5} << 32};
    const auto read = cli::decodedJob(encoded(job));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->arguments, job.arguments);
    EXPECT_EQ(read->printTo, job.printTo);
    EXPECT_EQ(read->out, job.out);
    EXPECT_EQ(read->timeLimit, job.timeLimit);
    EXPECT_EQ(read->memoryLimit, job.memoryLimit);
    EXPECT_FALSE(cli::decodedJob(encoded(job).chopped(1)));
    EXPECT_FALSE(cli::decodedReport("nonsense"));
}

}  // namespace
}  // namespace leafwright::test
