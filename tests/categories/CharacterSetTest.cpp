#include "categories/CharacterSet.h"
#include "categories/TextCleaning.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::ElementsAre;

std::vector<int> membersOf(const CharacterSet &set) {
    std::vector<int> members;
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        if (set.contains(QChar(unit))) members.push_back(unit);
    }
    return members;
}

TEST(CharacterSet, NewEmptySetHasNoMembers) {
    EXPECT_TRUE(CharacterSet().isEmpty());
    EXPECT_THAT(membersOf(CharacterSet()), testing::IsEmpty());
}

TEST(CharacterSet, NewlinesAreTheseSeven) {
    EXPECT_THAT(membersOf(CharacterSet::newlines()),
                ElementsAre(0x0A, 0x0B, 0x0C, 0x0D, 0x85, 0x2028, 0x2029));
}

TEST(CharacterSet, WhitespacesAreTabAndBlanksWithoutNewlines) {
    const CharacterSet &set = CharacterSet::whitespaces();
    for (const char16_t member : {u'\t', u' ', u'\u00A0', u'\u2003', u'\u3000'})
        EXPECT_TRUE(set.contains(member)) << int{member};
    for (const int unit : membersOf(CharacterSet::newlines()))
        EXPECT_FALSE(set.contains(QChar(unit))) << unit;
}

TEST(CharacterSet, LettersAreLettersAndTheirMarks) {
    const CharacterSet &set = CharacterSet::letters();
    for (const char16_t member : {u'a', u'Z', u'\u00E9', u'\u0301', u'\u0416', u'\u4E2D', u'\u05D0'})
        EXPECT_TRUE(set.contains(member)) << int{member};
    for (const char16_t other : {u'1', u' ', u'-', u'\n', u'$', u'\xD83D', u'\xDE00'})
        EXPECT_FALSE(set.contains(other)) << int{other};
}

TEST(CharacterSet, AlphanumericsAreLettersAndNumbers) {
    const CharacterSet &set = CharacterSet::alphanumerics();
    for (const char16_t member : {u'a', u'7', u'\u0663', u'\u00BD', u'\u2167'})
        EXPECT_TRUE(set.contains(member)) << int{member};
    for (const char16_t other : {u'.', u' ', u'$'})
        EXPECT_FALSE(set.contains(other)) << int{other};
}

TEST(CharacterSet, SymbolsAreOfAllFourKinds) {
    for (const char16_t member : {u'+', u'$', u'^', u'\u00A9'})
        EXPECT_TRUE(CharacterSet::symbols().contains(member)) << int{member};
    EXPECT_FALSE(CharacterSet::symbols().contains(u'a'));
}

TEST(CharacterSet, InvertedHasAllTheOthers) {
    const CharacterSet inverted = CharacterSet::newlines().inverted();
    EXPECT_FALSE(inverted.contains(u'\n'));
    EXPECT_TRUE(inverted.contains(u'a'));
    EXPECT_EQ(inverted.inverted(), CharacterSet::newlines());
    EXPECT_EQ(membersOf(inverted).size(), 0x10000U - 7);
}

TEST(CharacterSet, UnionAndIntersection) {
    CharacterSet set = CharacterSet::letters();
    set.formIntersection(CharacterSet::newlines());
    EXPECT_TRUE(set.isEmpty());
    set.formUnion(CharacterSet::newlines());
    EXPECT_EQ(set, CharacterSet::newlines());
}

TEST(CharactersToTrim, ComesToTheNewlines) {
    EXPECT_EQ(charactersToTrim(), CharacterSet::newlines());
}

}  // namespace
}  // namespace leafwright
