#include "contents/ContentsWords.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(ContentsTitle, InManyLanguages) {
    for (const QString title : {"Contents", "TABLE OF CONTENTS", "Inhaltsverzeichnis", "Table des matières",
                                "Índice", "Spis treści", "Содержание", "目 次", "目录", "فهرست مطالب"})
        EXPECT_TRUE(isContentsTitle(title)) << title.toStdString();
    EXPECT_FALSE(isContentsTitle("Contents of the box"));
}

TEST(ListTitle, OfFiguresAndTables) {
    for (const QString title :
         {"List of Figures", "Tabellenverzeichnis", "図 目 次", "表目次", "Table des figures"})
        EXPECT_TRUE(isListTitle(title)) << title.toStdString();
    EXPECT_FALSE(isListTitle("List"));
    EXPECT_TRUE(isListTitle("Verzeichnis der " + QString(43, u'a')));
    EXPECT_FALSE(isListTitle("Verzeichnis der " + QString(44, u'a'))) << "text that goes on";
}

TEST(Caption, BeginsWithAWordAndANumber) {
    for (const QString text : {"Figure 3: A box", "Tab. 1", "Abbildung 2", "表1"})
        EXPECT_TRUE(startsAsCaption(text)) << text.toStdString();
    EXPECT_FALSE(startsAsCaption("Figures of speech"));
}

TEST(BackMatter, IsWhatFollowsTheLastPart) {
    EXPECT_TRUE(isBackMatter("Index"));
    EXPECT_TRUE(isBackMatter("Command Index"));
    EXPECT_TRUE(isBackMatter("References"));
    EXPECT_FALSE(isBackMatter("Indexing"));
}

TEST(FontLook, ByTheName) {
    EXPECT_TRUE(lookOfFontName("ABCDEF+Times-Bold").bold);
    EXPECT_TRUE(lookOfFontName("CMBX12").bold);
    EXPECT_TRUE(lookOfFontName("NimbusRomNo9L-Medi").bold);
    EXPECT_TRUE(lookOfFontName("Arial-ItalicMT").italic);
    EXPECT_TRUE(lookOfFontName("Courier").mono);
    EXPECT_FALSE(lookOfFontName("Times-Roman").bold);
}

TEST(FontLook, FamilyIsWhatIsLeft) {
    EXPECT_EQ(lookOfFontName("ABCDEF+Times-Bold").family, lookOfFontName("Times-Roman").family);
    EXPECT_EQ(lookOfFontName("CMR10").family, "cmr");
}

}  // namespace
}  // namespace leafwright
