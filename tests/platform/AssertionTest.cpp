#include "platform/Assertion.h"

namespace leafwright {
namespace {

TEST(Assertion, CarriesItsTextAndItsPlace) {
    try {
        failAssertion(QString::fromUtf8("Invalid parameter not satisfying: “url”"));
        FAIL() << "nothing was raised";
    } catch (const AssertionFailure &failure) {
        EXPECT_STREQ(failure.what(), "Invalid parameter not satisfying: “url”");
        EXPECT_EQ(failure.description(), QString::fromUtf8(failure.what()));
        EXPECT_EQ(failure.sourceFile(), "AssertionTest");
        EXPECT_GT(failure.where().line, 1);
    }
}

TEST(Assertion, AMissingArgumentIsNamed) {
    EXPECT_NO_THROW(assertParameter(true, "url"));
    try {
        assertParameter(false, "url");
        FAIL() << "nothing was raised";
    } catch (const AssertionFailure &failure) {
        EXPECT_EQ(failure.description(), "Invalid parameter not satisfying: url");
        EXPECT_EQ(failure.sourceFile(), "AssertionTest") << "where it was missing";
    }
}

}  // namespace
}  // namespace leafwright
