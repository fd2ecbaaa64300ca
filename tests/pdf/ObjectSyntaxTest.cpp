#include "pdf/ObjectSyntax.h"

#include <cmath>
#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// The object at the start of a text, "-" where there is none.
QByteArray objectIn(const QByteArray &text) {
    const auto object = objectAt(text, 0);
    return object ? text.sliced(object->begin, object->end - object->begin) : QByteArray("-");
}

TEST(ObjectSyntax, NamesAndReferences) {
    EXPECT_EQ(nameSyntax("Title"), "/Title");
    EXPECT_EQ(nameSyntax("A B/#\xC4"), "/A#20B#2f#23#c4");
    EXPECT_EQ(nameSyntax(""), "/");
    EXPECT_EQ(referenceSyntax(12, 3), "12 3 R");
}

TEST(ObjectSyntax, Strings) {
    EXPECT_EQ(stringSyntax("a (b) \\ c"), "(a \\(b\\) \\\\ c)");
    EXPECT_EQ(stringSyntax(""), "()");
    EXPECT_EQ(stringSyntax(QByteArray("\0\n\xFF", 3)), "<000aff>");
    EXPECT_EQ(stringSyntax(" ~"), "( ~)");
    EXPECT_EQ(stringSyntax("\x7F"), "<7f>");
    EXPECT_EQ(stringSyntax("\x1F"), "<1f>");
}

TEST(ObjectSyntax, Numbers) {
    EXPECT_EQ(numberSyntax(72.1), "72.1");
    EXPECT_EQ(numberSyntax(-699.35), "-699.35");
    EXPECT_EQ(numberSyntax(612), "612");
    EXPECT_EQ(numberSyntax(0), "0");
    EXPECT_EQ(numberSyntax(-0.0), "0");
    EXPECT_EQ(numberSyntax(1e-7), "0");
    EXPECT_EQ(numberSyntax(16777217), "16777216");
    EXPECT_EQ(numberSyntax(3e38), "1000000000");
    EXPECT_EQ(numberSyntax(-std::numeric_limits<double>::infinity()), "-1000000000");
    EXPECT_EQ(numberSyntax(std::nan("")), "0");
}

TEST(ObjectSyntax, ObjectsEndWhereTheyEnd) {
    EXPECT_EQ(objectIn("  /Name/Next"), "/Name");
    EXPECT_EQ(objectIn("% said\n12.5 13"), "12.5");
    EXPECT_EQ(objectIn("12 0 R/Next"), "12 0 R");
    EXPECT_EQ(objectIn("12 0 Right"), "12");
    EXPECT_EQ(objectIn("-12 0 R"), "-12");
    EXPECT_EQ(objectIn("12 13 14"), "12");
    EXPECT_EQ(objectIn("(a (b\\) c) d) e"), "(a (b\\) c) d)");
    EXPECT_EQ(objectIn("<00 ff>>>"), "<00 ff>");
    EXPECT_EQ(objectIn("[1 0 R [(])] <5d>] 2"), "[1 0 R [(])] <5d>]");
    EXPECT_EQ(objectIn("<< /A << /B [/C] >> /D (>>) >> endobj"), "<< /A << /B [/C] >> /D (>>) >>");
    EXPECT_EQ(objectIn("null"), "null");
}

TEST(ObjectSyntax, BrokenObjectsAreNone) {
    for (const char *text : {"", "   ", "% only", "(a", "(a\\)", "<00", "<", ">", "[1 2", "[1 >>", "<< /A ]",
                             "]", ">>", ")", "{1}", "<< /A (b >>"})
        EXPECT_EQ(objectIn(text), "-") << text;
}

TEST(ObjectSyntax, NestsAsDeepAsItLikes) {
    constexpr int depth = 1'000'000;
    const QByteArray text = QByteArray(depth, '[') + QByteArray(depth, ']');
    EXPECT_EQ(objectIn(text + " 1").size(), text.size());
}

}  // namespace
}  // namespace leafwright
