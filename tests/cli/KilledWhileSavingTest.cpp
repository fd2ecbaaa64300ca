#include "files/UnfinishedFiles.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Paths.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

/// A save that takes its time: a file of some megabytes gets an outline of thousands of entries.
class KilledWhileSaving : public testing::Test {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(200);
        pdf.addNoise(megabytes << 20U);
        pdf.save(path);
        QByteArray tree;
        for (int i = 0; i < entries; ++i)
            tree += "+ @" + QByteArray::number(i % 200 + 1) + " Entry " + QByteArray::number(i) + "\n";
        saveBytes(dir.path("tree"), tree);
        before = bytesOf(path);
    }

    /// Begins to save over the file itself.
    void startSaving() {
        saving.setProgram(commandLineProgram());
        saving.setArguments({"apply", path, dir.path("tree"), "-o", path});
        saving.start();
        ASSERT_TRUE(saving.waitForStarted());
    }
    void saveWhole() {
        startSaving();
        ASSERT_TRUE(saving.waitForFinished(-1));
        ASSERT_EQ(saving.exitCode(), 0) << saving.readAllStandardError().constData();
    }
    /// Kills the program at some moment after its start, and waits until it is gone.
    void killAfter(qint64 microseconds) {
        startSaving();
        QThread::usleep(microseconds);
        saving.kill();
        saving.waitForFinished(-1);
    }
    /// What a killed program can't tidy away, and the next one leaves alone while it is young.
    void removeUnfinishedFiles() {
        const QStringList names = QDir(dir.path(".")).entryList(QDir::Files | QDir::Hidden);
        int count = 0;
        for (const QString &name : names)
            if (isNameOfUnfinishedFile(name.toUtf8())) count += QFile::remove(dir.path(name)) ? 1 : 0;
        EXPECT_LE(count, 1);
    }

    static constexpr unsigned megabytes = 8;
    static constexpr int entries = 4000;
    TempDir dir;
    QString path = dir.path("a.pdf");
    QByteArray before;
    QProcess saving;
    QRandomGenerator random{20260101};
};

TEST_F(KilledWhileSaving, TheNameLeadsToTheOldFileOrToTheNewOne) {
    QElapsedTimer clock;
    clock.start();
    saveWhole();
    const qint64 whole = clock.nsecsElapsed() / 1000;
    const QByteArray after = bytesOf(path);
    ASSERT_NE(after, before);
    saveBytes(path, before);

    int old = 0;
    constexpr int moments = 200;
    for (int i = 0; i < moments; ++i) {
        killAfter(random.bounded(whole));
        const QByteArray now = bytesOf(path);
        ASSERT_TRUE(now == before || now == after)
            << "killed at moment " << i << ": " << now.size() << " bytes";
        if (now == before)
            ++old;
        else
            saveBytes(path, before);
        removeUnfinishedFiles();
    }
    RecordProperty("old", old);
    std::printf("old file %d times, new file %d times\n", old, moments - old);
    EXPECT_GT(old, 0) << "no moment lay within the saving";
    saveWhole();
    EXPECT_EQ(bytesOf(path), after) << "and what was killed stands in nobody's way";
}

}  // namespace
}  // namespace leafwright::test
