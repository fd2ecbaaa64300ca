#include "pdf/TextString.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

QByteArray hex(const char *digits) {
    return QByteArray::fromHex(digits);
}

TEST(TextStringDecoding, Utf16OfEitherOrder) {
    EXPECT_EQ(decodeTextString(hex("FEFF 0041 00E9 4E2D")), "Aé中");
    EXPECT_EQ(decodeTextString(hex("FFFE 4100 E900 2D4E")), "Aé中");
    EXPECT_EQ(decodeTextString(hex("FEFF D83D DE00")), "😀");
    EXPECT_EQ(decodeTextString(hex("FEFF")), "");
}

TEST(TextStringDecoding, Utf8WithItsMark) {
    EXPECT_EQ(decodeTextString("\xEF\xBB\xBF"
                               "A\xC3\xA9"),
              "Aé");
}

TEST(TextStringDecoding, Latin1PartOfPdfDocEncoding) {
    EXPECT_EQ(decodeTextString("Caf\xE9 \xDF\xFF"), "Café ßÿ");
    EXPECT_EQ(decodeTextString("A\xC3\xA9"), "AÃ©");  // UTF-8 without its mark is not UTF-8
}

TEST(TextStringDecoding, WherePdfDocEncodingDepartsFromLatin1) {
    EXPECT_EQ(decodeTextString(hex("80 A0 92 8D 8E 8F 90 84 85 83")), "•€™“”‘’—–…");
    EXPECT_EQ(decodeTextString(hex("93 94 95 96 97 98 99 9A 9B 9C 9D 9E")), "ﬁﬂŁŒŠŸŽıłœšž");
    EXPECT_EQ(decodeTextString(hex("18 19 1A 1B 1C 1D 1E 1F")), "˘ˇˆ˙˝˛˚˜");
    EXPECT_EQ(decodeTextString(hex("81 82 86 87 88 89 8A 8B 8C 91")), "†‡ƒ⁄‹›−‰„‚");
}

TEST(TextStringDecoding, BytesWithoutAMeaning) {
    EXPECT_EQ(decodeTextString(hex("7F 9F AD")), QString(3, QChar::ReplacementCharacter));
}

TEST(TextStringDecoding, LoneSurrogatesStay) {
    EXPECT_EQ(decodeTextString(hex("FEFF D800 0041 DC00")), QString(QChar(0xD800)) + 'A' + QChar(0xDC00));
}

TEST(TextStringDecoding, LanguageEscapesGo) {
    EXPECT_EQ(decodeTextString(hex("FEFF 001B 0065 006E 001B 0041")), "A");
    EXPECT_EQ(decodeTextString(hex("FEFF 0042 001B 0065 006E 0055 0053 001B 0041")), "BA");
    EXPECT_EQ(decodeTextString(hex("FEFF 001B 0065 006E 001B 0041 001B 0064 0065 001B 0042")), "AB");
}

TEST(TextStringDecoding, EscapeWithoutAnEndStays) {
    EXPECT_EQ(decodeTextString(hex("FEFF 0041 001B 0065 006E")), QString("A") + QChar(0x1B) + "en");
}

TEST(TextStringDecoding, OddByteAtTheEndOfUtf16) {
    EXPECT_EQ(decodeTextString(hex("FEFF 0041 00")), "A");
}

TEST(TextStringEncoding, AsciiStaysAsItIs) {
    EXPECT_EQ(encodeTextString("1.2 (Intro) \\ ~"), "1.2 (Intro) \\ ~");
    EXPECT_EQ(encodeTextString(""), "");
    EXPECT_EQ(encodeTextString("a\tb\nc\rd"), "a\tb\nc\rd");
}

TEST(TextStringEncoding, ElseUtf16) {
    EXPECT_EQ(encodeTextString("é"), hex("FEFF 00E9"));
    EXPECT_EQ(encodeTextString("😀"), hex("FEFF D83D DE00"));
    EXPECT_EQ(encodeTextString(QChar(0x18)), hex("FEFF 0018"));
}

TEST(TextString, RoundTripOfEveryUnit) {
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        const QString text = QString("a") + QChar(unit) + "b";
        ASSERT_EQ(decodeTextString(encodeTextString(text)), text) << unit;
        ASSERT_EQ(decodeTextString(encodeTextString(QString(QChar(unit)))), QString(QChar(unit))) << unit;
    }
}

}  // namespace
}  // namespace leafwright
