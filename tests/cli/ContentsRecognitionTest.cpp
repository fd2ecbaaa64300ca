#include "cli/CommandLine.h"
#include "support/BookPdf.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/FakeProgram.h"
#include "support/Paths.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <gmock/gmock.h>
#include <pty.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace leafwright::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

/// Saves ten pages that are pictures. @return their path
QString saveScan(const TempDir &dir) {
    PdfBuilder pdf;
    for (int i = 0; i < 10; ++i)
        pdf.addPage("0.5 g 100 100 200 300 re f");
    pdf.save(dir.path("scan.pdf"));
    return dir.path("scan.pdf");
}

/// The end of a script that makes a copy which has the book beside it for text.
const QByteArray copiesTheBook =
    "while [ \"$1\" != -- ]; do shift; done\n"
    "cp \"$(dirname \"$0\")/book.pdf\" \"$3\"\n";

/// A terminal on which messages are shown.
class Terminal {
public:
    Terminal() {
        int inner = -1;
        EXPECT_EQ(::openpty(&outer_, &inner, nullptr, nullptr, nullptr), 0);
        messages_ = ::fdopen(inner, "w");
    }
    ~Terminal() {
        if (messages_) std::fclose(messages_);
        ::close(outer_);
    }
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    std::FILE *messages() const { return messages_; }
    /// All that was shown on it; it is closed then.
    std::string shown() {
        std::fclose(std::exchange(messages_, nullptr));
        std::string all;
        char buffer[4096];
        for (ssize_t count = 0; (count = ::read(outer_, buffer, sizeof buffer)) > 0;)
            all.append(buffer, static_cast<size_t>(count));
        return all;
    }

private:
    int outer_ = -1;
    std::FILE *messages_ = nullptr;
};

TEST(ContentsRecognition, TerminalShowsOnHowManyPagesItHasBegun) {
    const TempDir dir;
    const FakeProgram program(
        "ocrmypdf", "for page in 1 2 3 4 5; do echo \"    $page Rasterize\"; done\n" + copiesTheBook);
    makeBook().save(program.path("book.pdf"));
    Terminal terminal;
    std::FILE *results = std::tmpfile();
    cli::Console console(results, terminal.messages());
    const QStringList command{"contents", "-q", saveScan(dir), "-o", dir.path("out.pdf"), "--ocr"};
    EXPECT_EQ(cli::runCommandLine(command, console), 0);
    std::fclose(results);
    const std::string shown = terminal.shown();
    EXPECT_THAT(shown, HasSubstr("[........................] 0/10  "));
    EXPECT_THAT(shown, HasSubstr("[############............] 5/10  scan.pdf"));
    EXPECT_THAT(shown, EndsWith("\r\x1b[K")) << "the line is free again";
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), outlineOfContents);
}

TEST(ContentsRecognition, ElsewhereNothingIsShown) {
    const TempDir dir;
    const FakeProgram program("ocrmypdf", "echo '    1 Rasterize'\n" + copiesTheBook);
    makeBook().save(program.path("book.pdf"));
    const CliResult result = runCli({"contents", "-q", saveScan(dir), "-o", dir.path("out.pdf"), "--ocr"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
}

/// The program as it is started by people, which waits for a recognition that does not end by itself.
class WaitingForRecognition : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(QDir(dir.path(".")).mkpath("tmp")); }
    void TearDown() override {
        if (program.state() == QProcess::NotRunning) return;
        program.kill();
        program.waitForFinished(-1);
    }
    void start(const QStringList &options) {
        QFile::remove(recognition.path("begun"));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TMPDIR", dir.path("tmp"));
        program.setProcessEnvironment(environment);
        // Whoever runs the tests in the background may have them ignored.
        program.setChildProcessModifier([] {
            for (const int signal : {SIGTERM, SIGINT, SIGHUP})
                std::signal(signal, SIG_DFL);
        });
        program.start(commandLineProgram(), QStringList{"contents", scan, "--ocr"} + options);
        ASSERT_TRUE(program.waitForStarted());
        ASSERT_TRUE(QTest::qWaitFor([this] { return recognitionProcess() > 0; }, 60'000));
    }
    /// Of what recognises the text; 0 while there is none.
    qint64 recognitionProcess() const {
        QFile begun(recognition.path("begun"));
        return begun.open(QIODevice::ReadOnly) ? begun.readAll().trimmed().toLongLong() : 0;
    }
    bool recognitionHasEnded() const {
        // A process that has ended may still be in the table, as nobody's child.
        QFile state(QString("/proc/%1/stat").arg(recognitionProcess()));
        return !state.open(QIODevice::ReadOnly) || state.readAll().contains(") Z");
    }
    /// Asks the program to end, and waits for that. @return what it has said
    std::string end(int signal) {
        ::kill(static_cast<pid_t>(program.processId()), signal);
        EXPECT_TRUE(program.waitForFinished(60'000));
        return program.readAllStandardError().toStdString();
    }

    TempDir dir;
    QString scan = saveScan(dir);
    FakeProgram recognition{"ocrmypdf", "echo $$ > \"$(dirname \"$0\")/begun\"\nexec sleep 1000\n"};
    QProcess program;
};

TEST_F(WaitingForRecognition, ToldToEndWritesNothingAndSaysSo) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        start({"-o", dir.path("out.pdf")});
        EXPECT_EQ(end(signal),
                  "leafwright-cli: " + scan.toStdString() + ": cancelled; nothing was written\n");
        EXPECT_EQ(program.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(program.exitCode(), signal) << "as who asked for it expects";
        EXPECT_FALSE(QFileInfo::exists(dir.path("out.pdf")));
        EXPECT_TRUE(QTest::qWaitFor([this] { return recognitionHasEnded(); }, 60'000));
        EXPECT_EQ(QDir(dir.path("tmp")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                  QStringList());
    }
}

#ifdef SYS_poll

/// The longest time in milliseconds for which a thread of a process waits for something now; 0 for those that
/// do not wait, or for as long as it takes. Absent where the system does not tell.
std::optional<int> limitOfWaiting(qint64 process) {
    constexpr qsizetype timeoutOfPoll = 3;  // behind the number of the call
    int longest = 0;
    const QString tasks = QString("/proc/%1/task").arg(process);
    for (const QString &task : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile call(tasks + '/' + task + "/syscall");
        if (!call.open(QIODevice::ReadOnly)) return std::nullopt;
        const QList<QByteArray> words = call.readAll().trimmed().split(' ');
        if (words.size() <= timeoutOfPoll || words[0].toInt() != SYS_poll) continue;
        longest = std::max(longest, static_cast<int>(words[timeoutOfPoll].toULongLong(nullptr, 16)));
    }
    return longest;
}

TEST_F(WaitingForRecognition, OnlyTheOptionLimitsTheTimeOfAFolder) {
    start({"--out-dir", dir.path("out"), "--timeout", "600"});
    const auto limit = limitOfWaiting(program.processId());
    if (!limit) GTEST_SKIP() << "the system does not tell what a process waits for";
    EXPECT_GT(*limit, 500'000);
    end(SIGTERM);
    start({"--out-dir", dir.path("out")});
    EXPECT_EQ(limitOfWaiting(program.processId()), 0);
    end(SIGTERM);
}

#endif

}  // namespace
}  // namespace leafwright::test
