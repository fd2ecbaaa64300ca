#include "e2e/ProgramFixture.h"
#include "support/OutlineText.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::Hand;

/// The program, reached by the keyboard alone.
class Keyboard : public test::ProgramFixture {
protected:
    void SetUp() override { file = startWithTwoEntries(); }

    QString file;
};

TEST_F(Keyboard, AnItemIsRenamedAndTheFileSaved) {
    focus([] { return windowTitled("walk.pdf"); });
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
