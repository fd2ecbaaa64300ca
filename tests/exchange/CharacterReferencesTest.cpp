#include "exchange/CharacterReferences.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(CharacterReferences, AreReplaced) {
    EXPECT_EQ(withoutReferences(u"a &amp; b &lt;c&gt; &quot;d&quot; &apos;e&apos;"), "a & b <c> \"d\" 'e'");
    EXPECT_EQ(withoutReferences(u"&#65;&#x42;&#X43;&#10;"), "ABC\n");
    EXPECT_EQ(withoutReferences(u"&#128512;"), QString::fromUtf8("\xF0\x9F\x98\x80"));
    EXPECT_EQ(withoutReferences(u"&nbsp;"), QString(QChar(0xA0)));
    EXPECT_EQ(withoutReferences(u"&iexcl;&Eacute;&eacute;&yuml;&mdash;&euro;"),
              QString::fromUtf16(u"\u00A1\u00C9\u00E9\u00FF\u2014\u20AC"));
    EXPECT_EQ(withoutReferences(u"&#55357;"), QString(QChar(0xD83D))) << "half of a pair";
}

TEST(CharacterReferences, WhatIsNoneStays) {
    for (const char *text :
         {"&", "&;", "a&b", "&amp", "&unknown;", "&#;", "&#x;", "&#-1;", "&#+1;", "&# 1;", "&#1114112;",
          "&#99999999999;", "&#xg;", "Q&A; and more", "&EACUTE;", "& eacute;"})
        EXPECT_EQ(withoutReferences(QString(text)), text);
}

TEST(CharacterReferences, AreNeededByWhatLinesAndUtf8CantHold) {
    const QString text =
        QString("a\n") + QChar(0xD83D) + 'b' + QString::fromUtf8("\xF0\x9F\x98\x80") + QChar(0x85);
    QList<bool> needed;
    for (qsizetype i = 0; i < text.size(); ++i)
        needed.append(needsReference(text, i));
    EXPECT_EQ(needed, (QList<bool>{false, true, true, false, false, false, true}));
    EXPECT_EQ(numericReference(u'\n'), "&#10;");
}

}  // namespace
}  // namespace leafwright
