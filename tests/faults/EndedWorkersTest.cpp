#include "support/CliFiles.h"
#include "support/FakeProgram.h"
#include "support/Paths.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <unistd.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;
using testing::Not;

/// A program with workers, one of which is held up at one of its calls, as by a disk that does not answer.
class EndedWorkers : public testing::Test {
protected:
    void SetUp() override {
        for (const char *folder : {"tmp", "work", "out"})
            ASSERT_TRUE(QDir(root).mkpath(folder));
        for (const char *name : {"a.pdf", "b.pdf", "c.pdf"})
            savePdfWithHeadings(dir, QLatin1String("work/") + name);
    }
    void TearDown() override {
        if (program.state() == QProcess::NotRunning) return;
        program.kill();
        program.waitForFinished(-1);
    }

    QString work(const QString &name) const { return root + "/work/" + name; }
    QString out() const { return root + "/out"; }
    QStringList allFiles() const { return {work("a.pdf"), work("b.pdf"), work("c.pdf")}; }

    /// Starts the program, in which such a call on a file of a folder is held up. @param number of the call,
    /// from 0, of all of that name
    void start(const QStringList &arguments, const QString &call, int number, const QString &folder = "out") {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TMPDIR", root + "/tmp");
        environment.insert("XDG_RUNTIME_DIR", root + "/runtime");
        environment.insert("LD_PRELOAD", faultLibrary());
        environment.insert("LEAFWRIGHT_FAULT_ROOT", root + '/' + folder);
        environment.insert("LEAFWRIGHT_FAULT_LOG", root + "/log");
        environment.insert("LEAFWRIGHT_FAULT_CALL", call);
        environment.insert("LEAFWRIGHT_FAULT_AT", QString::number(number));
        environment.insert("LEAFWRIGHT_FAULT_ERROR", "-1");
        program.setProcessEnvironment(environment);
        // Whoever runs the tests in the background may have them ignored.
        program.setChildProcessModifier([] {
            for (const int signal : {SIGTERM, SIGINT, SIGHUP})
                std::signal(signal, SIG_DFL);
        });
        program.start(commandLineProgram(), arguments);
        ASSERT_TRUE(program.waitForStarted());
        heldUpAt = number;
    }
    bool isHeldUp() const {
        constexpr qint64 lengthOfALine = 24;
        return QFileInfo(root + "/log").size() >= lengthOfALine * (heldUpAt + 1);
    }
    void waitUntilHeldUp() {
        ASSERT_TRUE(QTest::qWaitFor([this] { return isHeldUp(); }, 60'000));
    }
    void send(int signal) const { ::kill(static_cast<pid_t>(program.processId()), signal); }
    /// Waits for the end. @return what was said
    std::string end() {
        EXPECT_TRUE(program.waitForFinished(50'000)) << "it waits for its worker";
        return program.readAllStandardError().toStdString();
    }
    void expectEndBy(int signal) {
        end();
        EXPECT_EQ(program.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(program.exitCode(), signal);
    }
    QStringList namesIn(const QString &folder) const {
        return QDir(root + '/' + folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    TempDir dir;
    QString root = QFileInfo(dir.path(".")).canonicalFilePath();
    QProcess program;
    int heldUpAt = 0;
};

TEST_F(EndedWorkers, GivenUpWhileSavingLeavesNothing) {
    start(QStringList{"autotoc", "--out-dir", out(), "--timeout", "10"} + allFiles(), "fsync", 0);
    const std::string said = end();
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_THAT(said, HasSubstr(".pdf: given up after 10 s\n"));
    EXPECT_THAT(said, HasSubstr("1 of 3 files failed\n"));
    EXPECT_EQ(namesIn("out").size(), 2) << namesIn("out").join(' ').toStdString();
}

TEST_F(EndedWorkers, GivenUpOnceTheNewFileIsInPlaceIsToldSo) {
    // The second one is that of the folder, after the new file has its name.
    start({"autotoc", work("a.pdf"), "-o", out() + "/new.pdf", "--timeout", "10"}, "fsync", 1);
    EXPECT_EQ(end(), "leafwright-cli: " + work("a.pdf").toStdString() + ": given up after 10 s; " +
                         out().toStdString() + "/new.pdf was written, but may not outlive a power failure\n");
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(namesIn("out"), QStringList("new.pdf"));
    EXPECT_EQ(plusLinesOf(out() + "/new.pdf"), outlineOfHeadings);
}

TEST_F(EndedWorkers, EndWithWhoWaitsForThemAndLeaveNothing) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        QFile::remove(root + "/log");
        start({"autotoc", work("a.pdf"), "-o", out() + "/new.pdf", "--timeout", "600"}, "renameat2", 0);
        waitUntilHeldUp();
        EXPECT_EQ(namesIn("out").size(), 1);
        send(signal);
        expectEndBy(signal);
        EXPECT_EQ(namesIn("out"), QStringList());
    }
}

TEST_F(EndedWorkers, LeaveNothingOfAScriptAndTellWhichFilesAreNew) {
    saveBytes(work("steps"), R"([{"do": "setTitle", "path": [0], "title": "New"}, {"do": "saveDocument:"}])");
    const QStringList before = namesIn("work");
    // The script's file gets its name before the output does.
    for (const bool isNew : {false, true}) {
        QFile::remove(root + "/log");
        start({"run", work("steps"), work("a.pdf"), "-o", out() + "/new.pdf", "--timeout", "600"},
              isNew ? "renameat2" : "fsync", 0);
        waitUntilHeldUp();
        EXPECT_NE(namesIn("work"), before);
        EXPECT_NE(namesIn("tmp"), QStringList());
        send(SIGTERM);
        const std::string said = end();
        EXPECT_EQ(program.exitCode(), SIGTERM);
        EXPECT_THAT(said, HasSubstr("cancelled"));
        EXPECT_EQ(said.find("work/a.pdf was written") != std::string::npos, isNew) << said;
        EXPECT_THAT(said, Not(HasSubstr("new.pdf was written")));
        EXPECT_EQ(plusLinesOf(work("a.pdf")), isNew ? "+ @2 New\n" : "+ @2 Old Entry\n");
        EXPECT_EQ(namesIn("tmp"), QStringList());
        EXPECT_EQ(namesIn("out"), QStringList());
        EXPECT_EQ(namesIn("work"), before);
    }
}

TEST_F(EndedWorkers, OfABatchEndWithItToo) {
    start(QStringList{"autotoc", "--out-dir", out()} + allFiles(), "fsync", 0);
    waitUntilHeldUp();
    send(SIGTERM);
    const std::string said = end();
    EXPECT_EQ(program.exitCode(), SIGTERM);
    EXPECT_THAT(said, HasSubstr("cancelled"));
    EXPECT_THAT(said, Not(HasSubstr("unexpectedly")));
    for (const QString &name : namesIn("out"))
        EXPECT_FALSE(name.startsWith('.')) << qPrintable(name);
}

TEST_F(EndedWorkers, OfJobsByLinesLeaveNothingWhenTheyAreGivenUp) {
    saveBytes(work("jobs"), allFiles().join(u'\n').toUtf8());
    program.setStandardInputFile(work("jobs"));
    start({"batch", "--out-dir", out(), "--timeout", "10", "autotoc"}, "fsync", 0);
    EXPECT_THAT(end(), HasSubstr("1 of 3 jobs failed\n"));
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(program.readAllStandardOutput().count("given up after 10 s\""), 1);
    EXPECT_EQ(namesIn("out").size(), 2) << namesIn("out").join(' ').toStdString();
}

TEST_F(EndedWorkers, OfJobsByLinesTellWhichFilesAreNew) {
    saveBytes(work("jobs"), work("a.pdf").toUtf8());
    program.setStandardInputFile(work("jobs"));
    // The second one is that of the folder, after the new file has its name.
    start({"batch", "--out-dir", out(), "--timeout", "10", "--log", root + "/done", "autotoc"}, "fsync", 1);
    end();
    EXPECT_THAT(program.readAllStandardOutput().toStdString(),
                HasSubstr("given up after 10 s; " + out().toStdString() + "/a.pdf was written, but may not"));
    EXPECT_THAT(bytesOf(root + "/done").toStdString(), HasSubstr("\"status\": \"failed\""));
    EXPECT_EQ(namesIn("out"), QStringList("a.pdf"));
}

TEST_F(EndedWorkers, EndAlsoWithABatchThatIsKilled) {
    start(QStringList{"autotoc", "--out-dir", out()} + allFiles(), "fsync", 0);
    waitUntilHeldUp();
    const QStringList left = namesIn("out").filter(QRegularExpression("^\\."));
    ASSERT_FALSE(left.isEmpty());
    program.kill();
    program.waitForFinished(-1);
    for (const QString &name : left) {
        // Who writes such a file holds its lock.
        const int file = ::open(QFile::encodeName(out() + '/' + name).constData(), O_RDWR | O_CLOEXEC);
        if (file < 0) continue;
        EXPECT_TRUE(QTest::qWaitFor([file] { return ::flock(file, LOCK_EX | LOCK_NB) == 0; }, 20'000))
            << "its worker lives on";
        ::close(file);
    }
}

TEST_F(EndedWorkers, TakeTheirRecognitionWithThem) {
    const FakeProgram recognition("ocrmypdf",
                                  "sleep 1000 &\nchild=$!\ntouch \"$TMPDIR/left\"\n"
                                  "echo $child > \"$(dirname \"$0\")/new\"\n"
                                  "mv \"$(dirname \"$0\")/new\" \"$(dirname \"$0\")/child\"\nwait\n");
    const QString child = recognition.path("child");
    start({"contents", "--out-dir", out(), "--ocr", work("a.pdf")}, "none", 0);
    ASSERT_TRUE(QTest::qWaitFor([&child] { return QFile::exists(child); }, 60'000));
    EXPECT_NE(namesIn("tmp"), QStringList());
    send(SIGTERM);
    expectEndBy(SIGTERM);
    const pid_t id = bytesOf(child).trimmed().toInt();
    // A process without a parent may wait for its burial.
    const auto isGone = [id] {
        const QString status = QStringLiteral("/proc/%1/stat").arg(id);
        return !QFile::exists(status) || bytesOf(status).contains(") Z ");
    };
    EXPECT_TRUE(QTest::qWaitFor(isGone, 10'000));
    EXPECT_EQ(namesIn("tmp"), QStringList());
    EXPECT_EQ(namesIn("out"), QStringList());
}

TEST_F(EndedWorkers, LeaveNoCopyWithRecognisedText) {
    const FakeProgram recognition("ocrmypdf", "while [ \"$1\" != -- ]; do shift; done\ncp \"$2\" \"$3\"\n");
    start({"contents", "--out-dir", out(), "--ocr", work("a.pdf")}, "pread", 0, "tmp");
    waitUntilHeldUp();
    EXPECT_NE(namesIn("tmp"), QStringList());
    send(SIGTERM);
    expectEndBy(SIGTERM);
    EXPECT_EQ(namesIn("tmp"), QStringList());
}

}  // namespace
}  // namespace leafwright::test
