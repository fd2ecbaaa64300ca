#include "exchange/ExchangeFixture.h"
#include "exchange/OpmlOutline.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::StartsWith;

class Opml : public test::ExchangeFixture {
protected:
    QString tree(const QByteArray &text) const { return treeOf("opml", text); }
    QString treeOfBody(const QByteArray &body) const {
        return tree("<?xml version=\"1.0\"?>\n<opml version=\"2.0\"><head/><body>\n" + body +
                    "</body></opml>");
    }
};

TEST_F(Opml, HasAnElementAnEntry) {
    EXPECT_EQ(
        written("opml", {{"A & <B>", "i", {}, {{"C", QString()}}}}),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<opml version=\"2.0\">\n<head>\n<title>Outline</title>\n"
        "</head>\n<body>\n"
        "<outline text=\"A &#38; &#60;B&#62;\" page=\"1\" pageLabel=\"i\">\n"
        "<outline text=\"C\"/>\n"
        "</outline>\n"
        "</body>\n</opml>\n");
}

TEST_F(Opml, OfOtherProgramsIsRead) {
    EXPECT_EQ(treeOfBody("<outline text='One' type='link' url='https://example.org/' _note='x'>\n"
                         "<outline text='Two'></outline></outline><other/><outline text='Three'/>"),
              "+ - One (0,0)\n++ - Two (0,0)\n+ - Three (0,0)\n");
}

TEST_F(Opml, WhatItCantBeIsRefusedWithItsLine) {
    EXPECT_EQ(treeOfBody("\n<outline title='A'/>"),
              "line 4: an outline element must have the attribute text");
    EXPECT_EQ(treeOfBody("<outline text='A' page='x'/>"), "line 3: the attribute page must be a number");
    EXPECT_EQ(treeOfBody("<outline text='A' page='6'/>"), "line 3: there is no page 6; the pages are 1 to 5");
    EXPECT_THAT(treeOfBody("<outline text='A' url='javascript:x'/>").toStdString(),
                StartsWith("line 3: a link leads neither"));
    EXPECT_EQ(tree("<?xml version='1.0'?><rss/>"), "line 1: it is no OPML");
    EXPECT_THAT(treeOfBody("<outline text='A'>").toStdString(), StartsWith("line 3: "));
    EXPECT_THAT(tree("<opml><body>\n<outline text='A'/>\n").toStdString(), StartsWith("line 3: "));
    EXPECT_THAT(treeOfBody("<outline text='&unknown;'/>").toStdString(), StartsWith("line 3: "));
}

TEST_F(Opml, DeclarationsAreRefused) {
    QByteArray text = "<?xml version=\"1.0\"?>\n<!DOCTYPE opml [<!ENTITY a \"aaaaaaaaaa\">";
    for (char c = 'b'; c < 'k'; ++c)
        text += QByteArray("<!ENTITY ") + c + " \"" +
                QByteArray(10, '&').replace("&", QByteArray("&") + char(c - 1) + ';') + "\">";
    text += "]>\n<opml><body><outline text=\"&j;\"/></body></opml>";
    EXPECT_THAT(tree(text).toStdString(),
                testing::EndsWith("it declares entities or other things, which are not read"));
}

TEST_F(Opml, WhatWouldTakeTooLongIsRefused) {
    QByteArray attributes;
    for (int i = 0; i < 3'000; ++i)
        attributes += " a" + QByteArray::number(i) + "=''";
    EXPECT_EQ(treeOfBody("<outline text='A'" + attributes + "/>"), "an element has too many attributes");
    QByteArray nested;
    for (int i = 0; i < 100'000; ++i)
        nested += "<other xmlns:a" + QByteArray::number(i) + "='x'>";
    EXPECT_THAT(treeOfBody(nested).toStdString(), testing::EndsWith("there are more than 100000 levels"));
}

TEST_F(Opml, PrefixesAreNoMatter) {
    EXPECT_EQ(treeOfBody("<outline text='A' x:y='z'><z:other/></outline>"), "+ - A (0,0)\n");
}

}  // namespace
}  // namespace leafwright
