#include "exchange/ExchangeFixture.h"
#include "exchange/PdftkBookmarks.h"

namespace leafwright {
namespace {

class Pdftk : public test::ExchangeFixture {
protected:
    QString tree(const QByteArray &text) const { return treeOf("pdftk", text); }
};

TEST_F(Pdftk, HasFourLinesAnEntry) {
    EXPECT_EQ(written("pdftk", {{"Q&A &amp;\n", "1", {}, {{"B", QString()}}}}),
              "BookmarkBegin\nBookmarkTitle: Q&A &amp;amp;&#10;\nBookmarkLevel: 1\nBookmarkPageNumber: 3\n"
              "BookmarkBegin\nBookmarkTitle: B\nBookmarkLevel: 2\nBookmarkPageNumber: 0\n");
}

TEST_F(Pdftk, AWholeDumpIsRead) {
    EXPECT_EQ(
        tree("InfoBegin\nInfoKey: Creator\nInfoValue: Someone\nPdfID0: 31c8\nNumberOfPages: 5\n"
             "BookmarkBegin\r\nBookmarkTitle: A &#8211; B &quot;C&quot;\r\nBookmarkLevel: 1\r\n"
             "BookmarkPageNumber: 3\r\n"
             "BookmarkBegin\nBookmarkLevel: 3\nBookmarkPageNumber: 4\nBookmarkTitle: Deep\n"
             "BookmarkBegin\nBookmarkTitle: Nowhere\nBookmarkLevel: 2\n"
             "PageMediaBegin\nPageMediaNumber: 1\nPageMediaRect: 0 0 612 792\n"
             "PageLabelBegin\nPageLabelNewIndex: 1\n"),
        QString::fromUtf8("+ [1] A \xE2\x80\x93 B \"C\" (0,0)\n++ [2] Deep (0,0)\n++ - Nowhere (0,0)\n"));
}

TEST_F(Pdftk, WhatItCantBeIsRefusedWithItsLine) {
    const QByteArray begin = "BookmarkBegin\nBookmarkTitle: A\n";
    EXPECT_EQ(tree("InfoBegin\n"), "there is no bookmark in it");
    EXPECT_EQ(tree("BookmarkTitle: A\n"), "line 1: there is no BookmarkBegin before it");
    EXPECT_EQ(tree(begin + "BookmarkTitle: B\n"), "line 3: there is no BookmarkBegin before it");
    EXPECT_EQ(tree("\n" + begin + "\n"), "line 2: this bookmark lacks its BookmarkTitle or BookmarkLevel");
    EXPECT_EQ(tree(begin + "BookmarkLevel: 0\n"), "line 3: there must be a number behind the colon");
    EXPECT_EQ(tree(begin + "BookmarkLevel: one\n"), "line 3: there must be a number behind the colon");
    EXPECT_EQ(tree(begin + "BookmarkPageNumber: -1\n"), "line 3: there must be a number behind the colon");
    EXPECT_EQ(tree(begin + "BookmarkColour: red\n"),
              "line 3: a bookmark has a title, a level and a page number only");
    EXPECT_EQ(tree(begin + "that goes on\n"), "line 3: neither a line of a bookmark nor of another section");
    EXPECT_EQ(tree(begin + "BookmarkLevel: 1\nBookmarkPageNumber: 6\n"),
              "line 1: there is no page 6; the pages are 1 to 5");
}

}  // namespace
}  // namespace leafwright
