#include "formats/Utf8Text.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// The line with the fault; 0 where there is none.
qsizetype faultOf(const QByteArray &bytes) {
    const auto text = textOfUtf8(bytes);
    const auto *fault = std::get_if<NotUtf8>(&text);
    return fault ? fault->line : 0;
}

TEST(Utf8Text, IsDecoded) {
    EXPECT_EQ(std::get<QString>(textOfUtf8("Caf\xC3\xA9\n\xF0\x9F\x8D\x83")), QString::fromUtf8("Café\n🍃"));
    EXPECT_EQ(std::get<QString>(textOfUtf8("\xEF\xBB\xBFOne")), "One") << "without a byte order mark";
    EXPECT_EQ(std::get<QString>(textOfUtf8("")), "");
    EXPECT_EQ(std::get<QString>(textOfUtf8("\xEF\xBF\xBD")), QString(QChar::ReplacementCharacter))
        << "one that is written is a character as any other";
}

TEST(Utf8Text, NamesTheFirstLineThatIsNone) {
    EXPECT_EQ(faultOf("Caf\xE9"), 1);
    EXPECT_EQ(faultOf("\xEF\xBB\xBFOne\nCaf\xE9s\nCaf\xE9s\n"), 2);
    EXPECT_EQ(faultOf("One\n\nCaf\xC3"), 3) << "cut off at the end";
    EXPECT_EQ(faultOf("One\nCaf\xC3\nTwo"), 2) << "cut off by the end of the line";
    EXPECT_EQ(faultOf("\xC0\xAF"), 1) << "longer than it needs to be";
    EXPECT_EQ(faultOf("\xED\xA0\x80"), 1) << "half a surrogate pair";
}

}  // namespace
}  // namespace leafwright
