#include "e2e/ProgramFixture.h"
#include "support/OutlineText.h"

#include <QDir>

#include <csignal>
#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::Hand;

/// The program, ended by others while there is something to save, and started again.
class Ended : public test::ProgramFixture {
protected:
    void SetUp() override {
        file = startWithTwoEntries();
        focus([] { return windowTitled("walk.pdf"); });
        rename("Renamed by hand");
    }
    void rename(const QString &title) {
        for (const char *key : {"shift+Tab", "Tab", "Home", "F2"})
            Hand::key(key);
        Hand::type(title);
        Hand::key("Return");
        ASSERT_TRUE(waitFor([] { return !windowTitled("walk.pdf\\*").isEmpty(); })) << "edited";
    }
    QStringList kept() const { return QDir(dir.path("leafwright/recovery")).entryList({"*.outline"}); }
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

}  // namespace
}  // namespace leafwright
