#include "app/AtExit.h"
#include "app/EndingSignals.h"
#include "document/Recovery.h"
#include "document/commands/SavingCommands.h"
#include "support/CliFiles.h"
#include "support/EnvironmentVariable.h"
#include "support/WindowFixture.h"

#include <QCryptographicHash>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <map>

namespace leafwright::test {
namespace {

constexpr const char *folderVariable = "LEAFWRIGHT_SESSION_FOLDER";
constexpr const char *seedVariable = "LEAFWRIGHT_SESSION_SEED";
/// How a session ends itself, before anything has been kept by time: "exit", "two signals", "a late signal".
constexpr const char *endVariable = "LEAFWRIGHT_SESSION_END";

/// The same for all processes of the machine.
qint64 milliseconds() {
    using namespace std::chrono;
    return duration_cast<std::chrono::milliseconds>(steady_clock::now().time_since_epoch()).count();
}

/// Of all that a session changes: a save gives entries points and numbers.
QByteArray digestOf(const std::vector<KeptEntry> &entries) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const KeptEntry &entry : entries)
        hash.addData(QStringLiteral("%1 %2\n%3\n").arg(entry.depth).arg(entry.label, entry.title).toUtf8());
    return hash.result().toHex();
}

QString pathOfLog(const QString &folder) {
    return folder + "/log";
}

/// Somebody who edits and saves now and then. The first entry's title counts the edits, and a log says when
/// each was done, and what the outline was then.
class Session {
public:
    explicit Session(const QString &folder)
        : log_(pathOfLog(folder)), recovery_(new Recovery(document_, folder + "/recovery")) {
        registerDefaults(platform_.userDefaults());
        if (!log_.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) qFatal("no log");
        if (!document_.readFromURL(folder + "/a.pdf")) qFatal("no PDF");
        document_.makeWindowControllers();
        recovery_->begin();
    }
    [[noreturn]] void run() {
        // As where a person starts it: who runs the tests may have them ignored.
        for (const int signal : {SIGTERM, SIGHUP, SIGINT})
            std::signal(signal, SIG_DFL);
        const QByteArray end = qgetenv(endVariable);
        const auto patience = end == "a late signal" ? std::chrono::hours(0) : std::chrono::hours(1);
        const EndingSignals signals([this] { recovery_->keepNow(); }, patience);
        const AtExit atExit([this] { recovery_->keepEntered(); });
        if (!end.isEmpty()) endAs(end);
        while (true) {
            edit();
            if (random_.bounded(100) == 0) document_.saving().saveFinal();
            QTest::qWait(random_.bounded(30));
        }
    }

private:
    [[noreturn]] void endAs(const QByteArray &end) {
        document_.finishLoading();
        for (int i = 0; i < 5; ++i)
            edit();
        if (end == "exit") std::exit(1);  // NOLINT(concurrency-mt-unsafe): as a library would
        std::raise(SIGTERM);
        std::raise(SIGTERM);
        while (true)
            QTest::qWait(1000);
    }
    void edit() {
        MyOutlineItem &root = document_.root();
        OutlineEdits &edits = document_.edits();
        {
            const OutlineEdits::Transaction transaction(edits, "edit");
            edits.setPageTitle(*root.children().front(), QString::number(++count_));
            const size_t other = 1 + random_.bounded(quint32(root.children().size()));
            if (random_.bounded(2) == 0 || other == root.children().size()) {
                edits.insert(root, other, std::make_unique<MyOutlineItem>("new", PageTarget{"1"}));
            } else {
                edits.remove(root, other);
            }
        }
        log_.write(QByteArray::number(count_) + ' ' + QByteArray::number(milliseconds()) + ' ' +
                   digestOf(keptEntries(root)) + '\n');
    }

    QFile log_;
    RecordingPlatform platform_;
    MyDocument document_{platform_};
    Recovery *recovery_;
    QRandomGenerator random_{qEnvironmentVariable(seedVariable).toUInt()};
    int count_ = 0;
};

/// Not a test: the process that is killed.
TEST(SessionToBeKilled, DISABLED_Runs) {
    const QString folder = qEnvironmentVariable(folderVariable);
    if (!folder.isEmpty()) Session(folder).run();
}

class KilledWhileEditing : public testing::Test {
protected:
    void makeBook(const QString &folder) {
        QDir().mkpath(folder);
        PdfBuilder pdf;
        pdf.addNumberedPages(20);
        addOutline(pdf, {{"(0)", "[0 /Fit]"}, {"(Two)", "[1 /Fit]"}, {"(Three)", "[2 /Fit]"}});
        pdf.save(folder + "/a.pdf");
    }
    static void launch(QProcess &session, const QString &folder, unsigned seed) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(folderVariable, folder);
        environment.insert(seedVariable, QString::number(seed));
        // Whatever part of the tests this process has to run.
        for (const char *name : {"GTEST_TOTAL_SHARDS", "GTEST_SHARD_INDEX"})
            environment.remove(QLatin1String(name));
        session.setProcessEnvironment(environment);
        session.start(QCoreApplication::applicationFilePath(),
                      {"--gtest_also_run_disabled_tests", "--gtest_filter=SessionToBeKilled.DISABLED_Runs"});
        ASSERT_TRUE(session.waitForStarted());
    }
    static void start(QProcess &session, const QString &folder, unsigned seed) {
        launch(session, folder, seed);
        while (QFileInfo(pathOfLog(folder)).size() == 0 && !session.waitForFinished(1) &&
               session.state() == QProcess::Running)
            continue;
        ASSERT_EQ(session.state(), QProcess::Running) << session.readAll().constData();
    }
    struct Edit {
        qint64 time = 0;
        QByteArray outline;  ///< Its digest, when the edit was done.
    };
    /// By their numbers.
    static std::map<int, Edit> editsOf(const QString &folder) {
        std::map<int, Edit> edits;
        for (const QByteArray &line : bytesOf(pathOfLog(folder)).split('\n'))
            if (const auto parts = line.split(' '); parts.size() == 3)
                edits[parts[0].toInt()] = {parts[1].toLongLong(), parts[2]};
        return edits;
    }
    /// The number of the last edit that the next start has: it is offered, or in the file. Its outline is
    /// looked at as well.
    static int lastKept(const QString &folder) {
        const QString path = folder + "/a.pdf";
        RecordingPlatform platform;
        MyDocument document(platform);
        EXPECT_TRUE(document.readFromURL(path));
        if (!document.pdfDoc()) return -1;
        EXPECT_EQ(document.pdfDoc()->pageCount(), 20);
        EXPECT_FALSE(document.pdfDoc()->readProblem());
        document.prepareForEditing();
        document.importOutline();
        const auto edits = editsOf(folder);
        int last = numberOf(keptEntries(document.root()), edits);
        const auto left = RecoveryFile::leftBehindFor(folder + "/recovery", path);
        EXPECT_TRUE(left.problems.isEmpty()) << qPrintable(left.problems.join('\n'));
        for (const auto &file : left.files)
            last = std::max(last, numberOf(std::get<KeptOutline>(file->read()).entries, edits));
        return last;
    }
    /// The number of the edit that has led to an outline, which must be all of it.
    static int numberOf(const std::vector<KeptEntry> &outline, const std::map<int, Edit> &edits) {
        EXPECT_FALSE(outline.empty());
        const int number = outline.empty() ? 0 : outline.front().title.toInt();
        // The last one may have been killed before it could say so.
        const auto edit = edits.find(number);
        if (edit == edits.end()) return number;
        EXPECT_EQ(digestOf(outline), edit->second.outline) << "edit " << number;
        return number;
    }
    static qint64 ageOfFirstLost(const std::map<int, Edit> &edits, int kept, qint64 end) {
        const auto lost = edits.upper_bound(kept);
        return lost == edits.end() ? 0 : end - lost->second.time;
    }

    TempDir dir;
};

TEST_F(KilledWhileEditing, LosesTwoSecondsAtMost) {
    constexpr int usual = 20;
    const int asked = qEnvironmentVariableIntValue("LEAFWRIGHT_KILLS");
    const int kills = asked > 0 ? asked : usual;
    QRandomGenerator random(20261122);
    qint64 longest = 0;
    int offered = 0;
    for (int i = 0; i < kills; ++i) {
        const QString folder = dir.path(QString::number(i));
        makeBook(folder);
        QProcess session;
        start(session, folder, unsigned(i));
        QThread::msleep(random.bounded(3'000));
        const qint64 end = milliseconds();
        session.kill();
        session.waitForFinished(-1);
        const auto edits = editsOf(folder);
        const int kept = lastKept(folder);
        offered += RecoveryFile::leftBehindFor(folder + "/recovery", folder + "/a.pdf").files.empty() ? 0 : 1;
        EXPECT_LE(kept, edits.rbegin()->first + 1) << "nobody did that";
        longest = std::max(longest, ageOfFirstLost(edits, kept, end));
        ASSERT_LT(ageOfFirstLost(edits, kept, end), 2'000) << "killed at moment " << i;
    }
    std::printf("%d kills, %d left something to recover, at most %lld ms were lost\n", kills, offered,
                static_cast<long long>(longest));
    EXPECT_GT(offered, 0);
}

/// A signal by which the system ends programs, as it reaches one that edits.
class EndedWhileEditing : public KilledWhileEditing, public testing::WithParamInterface<int> {};

TEST_P(EndedWhileEditing, LosesNothing) {
    makeBook(dir.path("a"));
    QProcess session;
    start(session, dir.path("a"), 1);
    QThread::msleep(700);
    ASSERT_GT(session.processId(), 0);
    ::kill(pid_t(session.processId()), GetParam());
    ASSERT_TRUE(session.waitForFinished(30'000));
    EXPECT_EQ(session.exitStatus(), QProcess::CrashExit) << "as the signal ends programs";
    EXPECT_EQ(lastKept(dir.path("a")), editsOf(dir.path("a")).rbegin()->first);
}

/// A session that ends itself right after the fifth edit.
class EndedRightAway : public KilledWhileEditing {
protected:
    void run(const QByteArray &end) {
        makeBook(dir.path("a"));
        const EnvironmentVariable how(endVariable, end);
        launch(session, dir.path("a"), 1);
        ASSERT_TRUE(session.waitForFinished(30'000));
    }

    QProcess session;
};

TEST_F(EndedRightAway, ByExitLosesNothing) {
    run("exit");
    EXPECT_EQ(lastKept(dir.path("a")), 5);
}

TEST_F(EndedRightAway, ByASignalThatComesTwiceLosesNothing) {
    run("two signals");
    EXPECT_EQ(session.exitStatus(), QProcess::CrashExit);
    EXPECT_EQ(lastKept(dir.path("a")), 5);
}

TEST_F(EndedRightAway, BySomebodyWhoHasWaitedItEndsAtOnce) {
    run("a late signal");
    EXPECT_EQ(session.exitStatus(), QProcess::CrashExit);
    EXPECT_EQ(lastKept(dir.path("a")), 0);
}

INSTANTIATE_TEST_SUITE_P(Signals, EndedWhileEditing, testing::Values(SIGTERM, SIGHUP, SIGINT));

}  // namespace
}  // namespace leafwright::test
