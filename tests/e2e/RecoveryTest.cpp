#include "e2e/ProgramFixture.h"
#include "e2e/SessionManager.h"
#include "support/EnvironmentVariable.h"
#include "support/OpenPdf.h"
#include "support/OutlineText.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>

#include <csignal>
#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::Hand;

/// The program with two entries, and the folder where it keeps what is not saved.
class Unsaved : public test::ProgramFixture {
protected:
    /// Begins to type a title for the first entry.
    static void type(const QString &title) {
        focus([] { return windowTitled("walk.pdf"); });
        for (const char *key : {"shift+Tab", "Tab", "Home", "F2"})
            Hand::key(key);
        Hand::type(title);
    }
    QStringList kept() const { return QDir(folder).entryList({"*.outline"}); }

    QString folder = dir.path("leafwright/recovery");
};

/// The program, ended by others while there is something to save, and started again.
class Ended : public Unsaved {
protected:
    void SetUp() override {
        file = startWithTwoEntries();
        type("Renamed by hand");
        Hand::key("Return");
        ASSERT_TRUE(waitFor([] { return !windowTitled("walk.pdf\\*").isEmpty(); })) << "edited";
    }
    /// The start after that takes what is offered, and saves it.
    void recover() {
        start({file});
        focus([] { return windowTitled("Recover Outline"); });
        Hand::key("Return");
        ASSERT_TRUE(waitFor([] { return !windowTitled("walk.pdf\\*").isEmpty(); })) << "to be saved";
        focus([] { return windowTitled("walk.pdf"); });
        Hand::key("ctrl+s");
        ASSERT_TRUE(waitFor([] { return windowTitled("walk.pdf\\*").isEmpty(); })) << "saved";
        const std::vector<std::string> lines = test::linesByQpdf(file);
        ASSERT_EQ(lines.size(), 2U);
        EXPECT_THAT(lines[0], testing::StartsWith("Renamed by hand -> 0"));
        EXPECT_THAT(lines[1], testing::StartsWith("Second -> 1"));
        EXPECT_TRUE(waitFor([this] { return kept().isEmpty(); })) << "nothing is left to recover";
    }

    QString file;
};

TEST_F(Ended, ByAKillItOffersWhatWasNotSaved) {
    ASSERT_TRUE(waitFor([this] { return kept().size() == 1; }));
    const QByteArray before = test::linesByQpdf(file).at(0).c_str();
    program.kill();
    program.waitForFinished();
    EXPECT_TRUE(before.startsWith("First"));
    recover();
}

TEST_F(Ended, BySigtermItHasKeptAll) {
    program.terminate();
    ASSERT_TRUE(program.waitForFinished());
    EXPECT_EQ(program.exitStatus(), QProcess::CrashExit) << "as the signal ends programs";
    EXPECT_EQ(kept().size(), 1);
    recover();
}

/// The program in a session of the desktop.
class InASession : public Unsaved {
protected:
    void SetUp() override {
        const test::EnvironmentVariable variable(test::SessionManager::variable, session.address());
        startWithTwoEntries();
        ASSERT_TRUE(waitFor([this] { return session.hasProgram(); }));
    }
    /// What somebody has copied, in whatever program.
    static QString copied() {
        QCoreApplication::processEvents();
        return QGuiApplication::clipboard()->text();
    }

    test::SessionManager session;
};

TEST_F(InASession, ItsEndKeepsEvenWhatIsBeingTyped) {
    type("Being typed");
    Hand::key("shift+Home");
    Hand::key("ctrl+c");
    ASSERT_TRUE(waitFor([] { return copied() == "Being typed"; })) << "all keys have come";
    EXPECT_TRUE(kept().isEmpty());
    session.end();
    ASSERT_TRUE(waitFor([this] { return session.isSaved(); }));
    ASSERT_EQ(kept().size(), 1) << "when it says so";
    EXPECT_THAT(test::contentOf(folder + '/' + kept()[0]).toStdString(), testing::HasSubstr("Being typed"));
}

}  // namespace
}  // namespace leafwright
