#include "e2e/ProgramFixture.h"
#include "support/OpenPdf.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::Hand;
using testing::HasSubstr;

/// Starts of the program that does not show the guide, and how they end.
class Start : public test::ProgramFixture {
protected:
    void SetUp() override {
        QDir().mkpath(dir.path("leafwright"));
        test::writeFile(dir.path("leafwright/settings.ini"), "[General]\nLeafwrightShowHelpOnStart=false\n");
    }
    QString file(const QString &name) const {
        test::PdfBuilder pdf;
        pdf.addNumberedPages(1);
        return save(pdf, name);
    }
    std::string messages() { return program.readAllStandardError().toStdString(); }
};

TEST_F(Start, WithoutAFileThereIsNothingToShowAndThatIsNoFailure) {
    start({});
    EXPECT_EQ(exitCodeOf(program), 0);
    EXPECT_THAT(messages(), HasSubstr("no document is open"));
    EXPECT_TRUE(anyWindow().isEmpty());
}

TEST_F(Start, AFileThatIsMissingIsToldOfAndIsAFailure) {
    start({dir.path("nowhere.pdf")});
    focus(anyWindow);
    Hand::key("Return");
    EXPECT_EQ(exitCodeOf(program), 1);
    EXPECT_THAT(messages(), HasSubstr("no document is open"));
}

TEST_F(Start, ClosingTheLastWindowEndsItWell) {
    start({file("a.pdf")});
    focus([] { return windowTitled("a.pdf"); });
    Hand::key("ctrl+w");
    EXPECT_EQ(exitCodeOf(program), 0);
}

TEST_F(Start, ASecondOneHandsItsFilesToTheFirstAndEndsWell) {
    start({file("a.pdf")});
    ASSERT_TRUE(waitFor([] { return !windowTitled("a.pdf").isEmpty(); }));
    QProcess second;
    start(second, {file("b.pdf")});
    EXPECT_EQ(exitCodeOf(second), 0);
    EXPECT_TRUE(waitFor([] { return !windowTitled("b.pdf").isEmpty(); })) << "in the first one's hands";
    EXPECT_EQ(program.state(), QProcess::Running);
}

TEST_F(Start, AnUnknownOptionIsAFailure) {
    start({"--no-such-option"});
    EXPECT_EQ(exitCodeOf(program), 1);
    EXPECT_THAT(messages(), HasSubstr("no-such-option"));
}

}  // namespace
}  // namespace leafwright
