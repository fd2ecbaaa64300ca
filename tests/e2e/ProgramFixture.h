#pragma once

#include "e2e/Hand.h"
#include "support/Paths.h"
#include "support/PdfBuilder.h"
#include "support/TempDir.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

#include <gtest/gtest.h>

namespace leafwright::test {

/// The program itself, started as from a shell, with settings and a home of the test's own.
class ProgramFixture : public testing::Test {
protected:
    void TearDown() override {
        program.kill();
        program.waitForFinished();
    }

    QString save(const PdfBuilder &pdf, const QString &name) const {
        pdf.save(dir.path(name));
        return dir.path(name);
    }
    /// Starts the program, or another start of it.
    void start(const QStringList &arguments) { start(program, arguments); }
    void start(QProcess &process, const QStringList &arguments) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        // No settings of whoever runs this, and no program of theirs that would be handed the file.
        for (const char *variable :
             {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "XDG_STATE_HOME", "TMPDIR"})
            environment.insert(variable, dir.path({}));
        environment.insert("LC_ALL", "C.UTF-8");
        process.setProcessEnvironment(environment);
        process.start(desktopProgram(), arguments);
        ASSERT_TRUE(process.waitForStarted());
    }
    /// Starts the program with "walk.pdf", of two pages and the entries "First" and "Second". @return its
    /// path
    QString startWithTwoEntries() {
        PdfBuilder pdf;
        pdf.addNumberedPages(2);
        addOutline(pdf, {{"(First)", "[" + pdf.pageReference(0) + " /XYZ 72 700 null]"},
                         {"(Second)", "[" + pdf.pageReference(1) + " /XYZ 72 700 null]"}});
        const QString file = save(pdf, "walk.pdf");
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        start({file});
        return file;
    }
    /// The exit code of a process once it has ended; -1 if it crashes, or does not end.
    static int exitCodeOf(QProcess &process) {
        if (process.state() != QProcess::NotRunning && !process.waitForFinished(patience)) return -1;
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    template <typename Holds>
    static bool waitFor(Holds holds) {
        constexpr unsigned long betweenLooks = 50;  // milliseconds
        QElapsedTimer timer;
        timer.start();
        while (!timer.hasExpired(patience)) {
            if (holds()) return true;
            QThread::msleep(betweenLooks);
        }
        return false;
    }
    /// The number of a window whose title matches; empty if there is none.
    static QByteArray windowTitled(const QString &pattern) { return windowFound({"--name", pattern}); }
    /// The number of any window of the program; empty if there is none.
    static QByteArray anyWindow() { return windowFound({"--class", "leafwright"}); }
    /// Waits for a window and gives it the keyboard: there is no window manager that would do it.
    static void focus(const std::function<QByteArray()> &find) {
        QByteArray window;
        ASSERT_TRUE(waitFor([&] { return !(window = find()).isEmpty(); }));
        Hand::tool({"windowfocus", "--sync", window});
    }

    TempDir dir;
    QProcess program;

private:
    static constexpr int patience = 60'000;  // milliseconds

    static QByteArray windowFound(const QStringList &what) {
        QProcess search;
        search.start("xdotool", QStringList{"search", "--onlyvisible"} + what);
        search.waitForFinished();
        return search.readAllStandardOutput().split('\n').first();
    }
};

}  // namespace leafwright::test
