#include "exchange/ExchangeFixture.h"
#include "exchange/HtmlOutline.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::HasSubstr;

class Html : public test::ExchangeFixture {
protected:
    QString tree(const QByteArray &text) const { return treeOf("html", text); }
};

TEST_F(Html, IsAPageOfLists) {
    EXPECT_EQ(
        written("html", {{"A & <B>", "i", {}, {{"C", QString()}}}}),
        "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>Outline</title>\n</head>\n<body>\n"
        "<ul>\n"
        "<li><a href=\"#page=1\" title=\"i\">A &#38; &#60;B&#62;</a>\n"
        "<ul>\n"
        "<li>C</li>\n"
        "</ul>\n"
        "</li>\n"
        "</ul>\n"
        "</body>\n</html>\n");
}

TEST_F(Html, TitlesCantBreakOutOfIt) {
    const QByteArray text = written("html", {{"<script>alert(1)</script>", "\"><script>", {}, {}}});
    EXPECT_FALSE(text.contains("<script"));
    EXPECT_EQ(tree(text), "+ [\"><script>] <script>alert(1)</script> (0,0)\n");
}

TEST_F(Html, ListsOfOtherPagesAreRead) {
    EXPECT_EQ(tree("<html><head><style>ul > li { x: '<li>' }</style><script>\"<ul><li>\"</script></head>\n"
                   "<!-- <ul> --><h1>Contents</h1><nav><OL class=toc>\n"
                   "<LI value=1><A HREF='#page=3'><b>One</b>\n  <i>more</i></A>\n"
                   "<ul><li>Below</ol>\n"),
              "a list does not end");
    EXPECT_EQ(
        tree("<h1>Contents</h1><OL class=toc>\n"
             "<LI value=1><A HREF='#page=3'><b>One</b>\n  <i>more</i></A>\n"
             "<ul><li>Below<br/>it &amp; &#x41;&nbsp;b</ul><li>a < b</OL><p>Behind</p>\n"),
        QString("+ [1] One more (0,0)\n++ - Below it & A%1b (0,0)\n+ - a < b (0,0)\n").arg(QChar(0xA0)));
}

TEST_F(Html, ParagraphsStandApartAndLooksDoNot) {
    EXPECT_EQ(tree("<ul><li><p>1.</p><p>Caf&eacute;</p><div>bo<b>l</b>d</div></ul>"),
              QString("+ - 1. Caf%1 bold (0,0)\n").arg(QChar(0xE9)));
    const QString noBreak = QString("a") + QChar(0xA0) + "b" + QChar(0xA0);
    EXPECT_EQ(tree("<ul><li>\n " + noBreak.toUtf8() + "</ul>"), "+ - " + noBreak + " (0,0)\n");
}

TEST_F(Html, WhatIsNoListIsRefused) {
    EXPECT_EQ(tree("<p>Prose</p>"), "there is no list in it");
    EXPECT_EQ(tree("<ul>\n<li>A</li>"), "a list does not end");
    EXPECT_EQ(tree("<ul></ul>\n</ul>"), "line 2: a list ends that has not begun");
    EXPECT_EQ(tree("\n<li>A</li>"), "line 2: an item (li) stands in no list");
    EXPECT_EQ(tree("<ul>\n<li title=\"x>A"), "line 2: a tag or a comment does not end");
    EXPECT_EQ(tree("<ul><li>A</ul>\n\n<!-- "), "line 3: a tag or a comment does not end");
}

TEST_F(Html, LinksThatLeadElsewhereAreRefused) {
    for (const char *link : {"chapter.html", "javascript:alert(1)", "#top", "#page=x", "file:///etc/passwd"})
        EXPECT_THAT(tree(QByteArray("<ul>\n<li><a href=\"") + link + "\">A</a></ul>").toStdString(),
                    HasSubstr("line 2: a link leads neither"))
            << link;
    EXPECT_EQ(tree("<ul><li><a href='#page=9'>A</a>\n</li></ul>"),
              "line 2: there is no page 9; the pages are 1 to 5");
}

TEST_F(Html, ManyAttributesAndTagsAreReadInTime) {
    QByteArray text = "<ul><li";
    for (int i = 0; i < 100'000; ++i)
        text += " a" + QByteArray::number(i) + "=1";
    text += ">A</li></ul>" + QByteArray(200'000, '<');
    EXPECT_EQ(tree(text), "+ - A (0,0)\n");
}

}  // namespace
}  // namespace leafwright
