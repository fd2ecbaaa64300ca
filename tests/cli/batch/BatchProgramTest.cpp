#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Paths.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

#include <csignal>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

/// The program as it is started by people, so that it can be ended.
class BatchProgram : public testing::Test {
protected:
    void TearDown() override {
        if (program.state() == QProcess::NotRunning) return;
        program.kill();
        program.waitForFinished(-1);
    }
    void start(const QStringList &arguments) {
        program.setStandardInputFile(dir.path("jobs"));
        // Whoever runs the tests in the background may have them ignored.
        program.setChildProcessModifier([] {
            for (const int signal : {SIGTERM, SIGINT, SIGHUP})
                std::signal(signal, SIG_DFL);
            ::setpgid(0, 0);
        });
        program.start(commandLineProgram(), QStringList{"batch"} + arguments);
        ASSERT_TRUE(program.waitForStarted());
    }
    /// Kills the program and all that it has started, as with a machine that loses its power.
    void killAll() {
        ::kill(-static_cast<pid_t>(program.processId()), SIGKILL);
        program.waitForFinished(-1);
    }
    /// The files that a log has as done.
    QStringList doneFiles() const {
        QStringList files;
        if (!QFileInfo::exists(dir.path("log"))) return files;
        for (const QByteArray &line : bytesOf(dir.path("log")).split('\n')) {
            const QJsonObject object = QJsonDocument::fromJson(line).object();
            if (object["status"] == "done") files.append(object["file"].toString());
        }
        files.sort();
        return files;
    }

    TempDir dir;
    QString out = dir.path("out");
    QProcess program;
};

TEST_F(BatchProgram, KilledAtAnyMomentGoesOnWhereItWas) {
    constexpr int number = 40;
    QByteArray jobs;
    QStringList files;
    for (int i = 0; i < number; ++i)
        files.append(savePdfWithHeadings(dir, QStringLiteral("%1.pdf").arg(i)));
    files.sort();
    for (const QString &file : files)
        jobs += file.toUtf8() + '\n';
    saveBytes(dir.path("jobs"), jobs);
    const QStringList arguments{"--log", dir.path("log"), "--out-dir", out, "autotoc"};
    QRandomGenerator random(20260101);
    int killed = 0;
    for (int i = 0; i < 20; ++i) {
        start(arguments);
        if (program.waitForFinished(random.bounded(10, 200))) continue;
        killAll();
        ++killed;
    }
    EXPECT_GT(killed, 0) << "no moment lay within the batch";
    start(arguments);
    ASSERT_TRUE(program.waitForFinished(-1));
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().constData();
    EXPECT_EQ(doneFiles(), files) << "each once";
    for (const QString &file : files)
        ASSERT_EQ(plusLinesOf(out + '/' + QFileInfo(file).fileName()), outlineOfHeadings);
}

TEST_F(BatchProgram, ToldToEndNotesWhatIsDoneAndNoMore) {
    const QString first = savePdf(dir, "first.pdf", 1);
    const QString endless = savePdf(dir, "endless.pdf", 2);
    ASSERT_EQ(::mkfifo(dir.path("pipe").toUtf8().constData(), 0600), 0);
    saveBytes(dir.path("tree"), "+ @1 New\n");
    const auto line = [this](const QString &file, const QString &tree) {
        return QJsonDocument(QJsonObject{{"file", file}, {"out", file + ".out"}, {"tree", dir.path(tree)}})
                   .toJson(QJsonDocument::Compact) +
               '\n';
    };
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        QFile::remove(dir.path("log"));
        QFile::remove(first + ".out");
        saveBytes(dir.path("jobs"), line(first, "tree") + line(endless, "pipe"));
        start({"--jobs", "2", "--log", dir.path("log"), "apply"});
        ASSERT_TRUE(QTest::qWaitFor([this] { return doneFiles().size() == 1; }, 60'000));
        ::kill(static_cast<pid_t>(program.processId()), signal);
        ASSERT_TRUE(program.waitForFinished(60'000)) << "it waits for its worker";
        EXPECT_EQ(program.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(program.exitCode(), signal);
        EXPECT_EQ(doneFiles(), QStringList(first));
        EXPECT_THAT(bytesOf(dir.path("log")).toStdString(), HasSubstr("cancelled"));
        EXPECT_FALSE(QFileInfo::exists(endless + ".out"));
    }
}

TEST_F(BatchProgram, ReaderThatGoesAwayEndsIt) {
    QByteArray jobs;
    for (int i = 0; i < 200; ++i)
        jobs += savePdf(dir, QStringLiteral("%1.pdf").arg(i), 1).toUtf8() + '\n';
    saveBytes(dir.path("jobs"), jobs);
    const ProgramResult result =
        runProgram("/bin/sh", {"-c", "{ \"$0\" batch --jobs 1 info < \"$1\"; echo $? >&2; } | true",
                               commandLineProgram(), dir.path("jobs")});
    EXPECT_THAT(result.err.toStdString(), HasSubstr("could not be written to standard output"));
    EXPECT_THAT(result.err.toStdString(), testing::EndsWith("\n1\n"));
}

TEST_F(BatchProgram, FullDiskForTheLogEndsIt) {
    QByteArray jobs;
    for (int i = 0; i < 50; ++i)
        jobs += savePdf(dir, QStringLiteral("%1.pdf").arg(i), 1).toUtf8() + '\n';
    saveBytes(dir.path("jobs"), jobs);
    // Its other files are smaller than what is left of this.
    constexpr qsizetype limit = 400 * 512;
    const QByteArray failed = R"({"file": "a.pdf", "out": null, "status": "failed", "job": null})"
                              "\n";
    saveBytes(dir.path("log"), failed.repeated((limit - 2'000) / failed.size()));
    const ProgramResult result =
        runProgram("/bin/sh", {"-c", "ulimit -f 400; exec \"$0\" batch --jobs 1 --log \"$1\" info < \"$2\"",
                               commandLineProgram(), dir.path("log"), dir.path("jobs")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("the log can't be used"));
    EXPECT_TRUE(bytesOf(dir.path("log")).endsWith('\n')) << "no half line is left";
    const qsizetype done = doneFiles().size();
    EXPECT_GT(done, 0);
    EXPECT_LT(done, 50);
}

TEST_F(BatchProgram, MemoryDoesNotGrowWithItsLines) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer keeps what is freed";
#endif
    /// The most memory that the program has had when it has told of so many lines, in kB.
    const auto peakAfter = [](int lines) {
        QProcess batch;
        batch.start(commandLineProgram(), {"batch", "--jobs", "1", "info"});
        batch.write(QByteArray("/nonexistent/file.pdf\n").repeated(lines));
        qint64 told = 0;
        while (told < lines && batch.waitForReadyRead(60'000))
            told += batch.readAllStandardOutput().count('\n');
        EXPECT_EQ(told, lines);
        QByteArray status = bytesOf(QStringLiteral("/proc/%1/status").arg(batch.processId()));
        status = status.mid(status.indexOf("VmHWM:") + 6).trimmed();
        batch.closeWriteChannel();
        EXPECT_TRUE(batch.waitForFinished(60'000));
        return status.left(status.indexOf(' ')).toLongLong();
    };
    const qint64 few = peakAfter(100);
    EXPECT_GT(few, 0);
    EXPECT_LT(peakAfter(200'000), few + 4096);
}

}  // namespace
}  // namespace leafwright::test
