#include "pdf/DictionarySyntax.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(DictionarySyntax, KeepsTheBytesOfWhatIsNotSet) {
    auto dictionary = DictionarySyntax::parse(
        "  << /A 1.0000000 /B#20C [ 1 0 R ]% said\n /D(x) /E<</F/G>> /H 12 0 R/I null >> endobj");
    ASSERT_TRUE(dictionary);
    EXPECT_EQ(dictionary->value("A"), "1.0000000");
    EXPECT_EQ(dictionary->value("B C"), "[ 1 0 R ]");
    EXPECT_EQ(dictionary->value("D"), "(x)");
    EXPECT_EQ(dictionary->value("E"), "<</F/G>>");
    EXPECT_EQ(dictionary->value("H"), "12 0 R");
    EXPECT_EQ(dictionary->value("F"), "");
    EXPECT_TRUE(dictionary->contains("I"));
    EXPECT_FALSE(dictionary->contains("G"));
    dictionary->set("D", "(y)");
    dictionary->set("New One", "[]");
    dictionary->remove("A");
    dictionary->remove("Z");
    EXPECT_EQ(dictionary->toBytes(),
              "<</B#20C [ 1 0 R ]\n/D (y)\n/E <</F/G>>\n/H 12 0 R\n/I null\n/New#20One []>>");
}

TEST(DictionarySyntax, OfAKeyThatIsThereTwiceTheLastCounts) {
    const auto dictionary = DictionarySyntax::parse("<< /A 1 /B 2 /#41 3 >>");
    ASSERT_TRUE(dictionary);
    EXPECT_EQ(dictionary->value("A"), "3");
    EXPECT_EQ(dictionary->toBytes(), "<</B 2\n/#41 3>>");
}

TEST(DictionarySyntax, EmptyOnes) {
    EXPECT_EQ(DictionarySyntax().toBytes(), "<<>>");
    const auto dictionary = DictionarySyntax::parse("<<>>");
    ASSERT_TRUE(dictionary);
    EXPECT_EQ(dictionary->toBytes(), "<<>>");
}

TEST(DictionarySyntax, BrokenOnesAreNone) {
    for (const char *text :
         {"", "[1]", "<< /A 1", "<< /A >>", "<< 1 /A >>", "<< /A (b >>", "<< /A 1 ]", "<</A"})
        EXPECT_FALSE(DictionarySyntax::parse(text)) << text;
}

}  // namespace
}  // namespace leafwright
