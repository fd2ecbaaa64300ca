#include "e2e/Hand.h"
#include "support/OutlineText.h"
#include "support/Paths.h"
#include "support/PdfBuilder.h"
#include "support/TempDir.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::Hand;
using test::PdfBuilder;

/// The program itself, started as from a shell, and reached by the keyboard alone.
class Keyboard : public testing::Test {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(2);
        addOutline(pdf, {{"(First)", "[" + pdf.pageReference(0) + " /XYZ 72 700 null]"},
                         {"(Second)", "[" + pdf.pageReference(1) + " /XYZ 72 700 null]"}});
        pdf.save(file);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        // No settings of whoever runs this, and no program of theirs that would be handed the file.
        for (const char *variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "TMPDIR"})
            environment.insert(variable, QFileInfo(file).path());
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(test::desktopProgram(), {file});
        ASSERT_TRUE(program.waitForStarted());
    }
    void TearDown() override {
        program.kill();
        program.waitForFinished();
    }

    template <typename Holds>
    static bool waitFor(Holds holds) {
        constexpr int patience = 60'000;  // milliseconds
        constexpr unsigned long betweenLooks = 50;
        QElapsedTimer timer;
        timer.start();
        while (!timer.hasExpired(patience)) {
            if (holds()) return true;
            QThread::msleep(betweenLooks);
        }
        return false;
    }
    /// The number of a window whose title matches; empty if there is none.
    static QByteArray windowTitled(const QString &pattern) {
        QProcess search;
        search.start("xdotool", {"search", "--onlyvisible", "--name", pattern});
        search.waitForFinished();
        return search.readAllStandardOutput().split('\n').first();
    }

    test::TempDir dir;
    QString file = dir.path("walk.pdf");
    QProcess program;
};

TEST_F(Keyboard, AnItemIsRenamedAndTheFileSaved) {
    QByteArray window;
    ASSERT_TRUE(waitFor([&] { return !(window = windowTitled("walk.pdf")).isEmpty(); }));
    // There is no window manager that would do it.
    Hand::tool({"windowfocus", "--sync", window});
    // The keyboard begins in the outline; it leaves it and comes back.
    Hand::key("shift+Tab");
    Hand::key("Tab");
    Hand::key("Home");
    Hand::key("Down");
    Hand::key("F2");
    Hand::type("Renamed by hand");
    Hand::key("Return");
    ASSERT_TRUE(waitFor([] { return !windowTitled("walk.pdf\\*").isEmpty(); })) << "edited";
    Hand::key("ctrl+s");
    ASSERT_TRUE(waitFor([] { return windowTitled("walk.pdf\\*").isEmpty(); })) << "saved";
    const std::vector<std::string> lines = test::linesByQpdf(file);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_THAT(lines[0], testing::StartsWith("First -> 0"));
    EXPECT_THAT(lines[1], testing::StartsWith("Renamed by hand -> 1"));
}

}  // namespace
}  // namespace leafwright
