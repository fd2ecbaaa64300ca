#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Paths.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

/// Something happens to a file at the very moment when a new one is to take its name: the program is stopped
/// when it has looked at everything, and makes the call that changes the name.
class Races : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(QDir(root).mkpath("work"));
        savePdfWithHeadings(dir, "work/a.pdf");
        saveBytes(root + "/ours", "+ @1 Ours\n");
        saveBytes(root + "/theirs", "+ @1 Theirs\n");
        old = bytesOf(path);
    }
    void TearDown() override {
        if (program.state() == QProcess::NotRunning) return;
        program.kill();
        program.waitForFinished(-1);
    }

    QStringList apply(const QString &outline, const QString &target) const {
        return {"apply", "-q", path, root + '/' + outline, "-o", target};
    }
    /// Starts a save in which that call meets an error, or -2: a stop.
    void start(const QString &target, int error) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LD_PRELOAD", faultLibrary());
        environment.insert("LEAFWRIGHT_FAULT_ROOT", root + "/work");
        environment.insert("LEAFWRIGHT_FAULT_LOG", root + "/log");
        environment.insert("LEAFWRIGHT_FAULT_CALL", "renameat2");
        environment.insert("LEAFWRIGHT_FAULT_AT", "0");
        environment.insert("LEAFWRIGHT_FAULT_ERROR", QString::number(error));
        program.setProcessEnvironment(environment);
        program.start(commandLineProgram(), apply("ours", target));
        ASSERT_TRUE(program.waitForStarted());
    }
    void startAndStop(const QString &target) {
        start(target, -2);
        const QString status = QStringLiteral("/proc/%1/stat").arg(program.processId());
        ASSERT_TRUE(QTest::qWaitFor([&] { return bytesOf(status).contains(") T "); }, 60'000));
    }
    /// Lets it go on to its end. @return what it says
    std::string goOn() {
        ::kill(static_cast<pid_t>(program.processId()), SIGCONT);
        return end();
    }
    std::string end() {
        EXPECT_TRUE(program.waitForFinished(60'000));
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        return program.readAllStandardError().toStdString();
    }
    QStringList names() const {
        return QDir(root + "/work")
            .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    QString unfinished() const {
        return root + "/work/" + names().filter(QRegularExpression("^\\.")).value(0);
    }
    static QByteArray name(const QString &file) { return QFile::encodeName(file); }
    /// Puts another file in the place of one, as most programs save.
    void replace(const QString &file, const QByteArray &bytes) const {
        saveBytes(root + "/theirs.new", bytes);
        ASSERT_EQ(::rename(name(root + "/theirs.new").constData(), name(file).constData()), 0);
    }

    TempDir dir;
    QString root = QFileInfo(dir.path(".")).canonicalFilePath();
    QString path = root + "/work/a.pdf";
    QString fresh = root + "/work/new.pdf";
    QByteArray old;
    QProcess program;
};

TEST_F(Races, OfTwoOfUsTheSecondIsToldThatItCameTooLate) {
    startAndStop(path);
    EXPECT_EQ(runProgram(commandLineProgram(), apply("theirs", path)).exitCode, 0);
    EXPECT_THAT(goOn(), HasSubstr("a.pdf could not be written: another program has put another file there"));
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(plusLinesOf(path), "+ @1 Theirs\n");
    EXPECT_EQ(names(), QStringList{"a.pdf"});
}

TEST_F(Races, AFileOfAnotherProgramStays) {
    startAndStop(path);
    replace(path, "theirs");
    EXPECT_THAT(goOn(), HasSubstr("a.pdf could not be written: another program has put another file there"));
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(bytesOf(path), "theirs");
    EXPECT_EQ(names(), QStringList{"a.pdf"});
}

TEST_F(Races, WhatAnotherProgramWritesIntoTheFileStays) {
    startAndStop(path);
    saveBytes(path, "theirs");
    EXPECT_THAT(goOn(), HasSubstr("a.pdf could not be written: another program has written to it"));
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(bytesOf(path), "theirs");
    EXPECT_EQ(names(), QStringList{"a.pdf"});
}

TEST_F(Races, AFileThatComesToANewNameStays) {
    startAndStop(fresh);
    saveBytes(fresh, "theirs");
    EXPECT_THAT(goOn(),
                HasSubstr("new.pdf could not be written: another program has put another file there"));
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(bytesOf(fresh), "theirs");
    EXPECT_EQ(names(), (QStringList{"a.pdf", "new.pdf"}));
}

TEST_F(Races, ALinkThatComesToANewNameStays) {
    startAndStop(fresh);
    ASSERT_TRUE(QFile::link("a.pdf", fresh));
    goOn();
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_TRUE(QFileInfo(fresh).isSymLink());
    EXPECT_EQ(bytesOf(path), old);
}

TEST_F(Races, AFileThatGoesIsNotMadeAgain) {
    startAndStop(path);
    ASSERT_TRUE(QFile::remove(path));
    goOn();
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(names(), QStringList());
}

TEST_F(Races, WhatIsTakenFromOthersIsTakenFromThemInTheNewFile) {
    ASSERT_EQ(::chmod(name(path).constData(), 0644), 0);
    startAndStop(path);
    ASSERT_EQ(::chmod(name(path).constData(), 0600), 0);
    EXPECT_EQ(goOn(), "");
    EXPECT_EQ(program.exitCode(), 0);
    struct stat status = {};
    ASSERT_EQ(::stat(name(path).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
    EXPECT_EQ(plusLinesOf(path), "+ @1 Ours\n");
}

TEST_F(Races, AnotherFileUnderTheNameOfTheUnfinishedOneIsNotUsed) {
    startAndStop(path);
    const QString temporary = unfinished();
    replace(temporary, "theirs");
    EXPECT_THAT(goOn(), HasSubstr(name(temporary).toStdString()));
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(bytesOf(path), old);
    EXPECT_EQ(bytesOf(temporary), "theirs") << "nor is it removed";
}

TEST_F(Races, AFileSystemThatCantExchangeNamesWillDo) {
    for (const int error : {EINVAL, ENOSYS}) {
        for (const QString &target : {path, fresh}) {
            QFile::remove(root + "/log");
            start(target, error);
            EXPECT_EQ(end(), "");
            EXPECT_EQ(program.exitCode(), 0);
            EXPECT_EQ(plusLinesOf(target), "+ @1 Ours\n");
            EXPECT_TRUE(QFile::exists(root + "/log"));
            QFile::remove(fresh);
        }
    }
    EXPECT_EQ(names(), QStringList{"a.pdf"});
}

}  // namespace
}  // namespace leafwright::test
