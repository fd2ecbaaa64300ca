#include "widgets/AccessLetters.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(AccessLetters, TheFirstLetterOfAWordIfItIsFree) {
    EXPECT_EQ(withAccessLetters({"Move Left", "Move Right", "Remove", "Move Up"}),
              (QStringList{"&Move Left", "Move &Right", "R&emove", "Move &Up"}));
}

TEST(AccessLetters, AnyOtherWhereThoseAreTaken) {
    EXPECT_EQ(withAccessLetters({"ab", "ab", "ab", "Ba c"}), (QStringList{"&ab", "a&b", "ab", "Ba &c"}));
}

TEST(AccessLetters, WhoCanDoWithAnotherLeavesALetterToWhoCannot) {
    EXPECT_EQ(withAccessLetters({"Sun", "Sea", "S"}), (QStringList{"S&un", "S&ea", "&S"}));
    EXPECT_EQ(withAccessLetters({"ab", "bc", "a", "b"}), (QStringList{"a&b", "b&c", "&a", "b"}));
}

TEST(AccessLetters, DigitsAndLettersOfEveryLanguageWillDo) {
    EXPECT_EQ(withAccessLetters({"…", "2", "Öffnen…", "öl"}), (QStringList{"…", "&2", "&Öffnen…", "ö&l"}));
}

TEST(AccessLetters, AnAmpersandOfTheTitleStaysOne) {
    EXPECT_EQ(withAccessLetters({"A & B"}), QStringList{"&A && B"});
}

}  // namespace
}  // namespace leafwright
