#include "app/Appcast.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// A feed with the items given.
QByteArray feed(const QByteArray &items) {
    return R"(<?xml version="1.0" encoding="utf-8"?>
<rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle">
<channel><title>Leafwright</title><link>https://example.org/</link>)" +
           items + "</channel></rss>";
}

QByteArray item(const QByteArray &version, const QByteArray &more = {}) {
    return "<item><title>t</title><enclosure url=\"https://example.org/a.deb\" length=\"1\" "
           "type=\"application/octet-stream\" sparkle:version=\"" +
           version + "\"/>" + more + "</item>";
}

std::string displayed(const QByteArray &items) {
    const auto newest = newestVersionInAppcast(feed(items));
    return newest ? newest->displayVersion.toStdString() : "none";
}

std::optional<bool> isNewer(const QString &one, const QString &other) {
    const auto a = versionFromString(one);
    const auto b = versionFromString(other);
    return a && b ? std::optional(*a > *b) : std::nullopt;
}

TEST(Versions, AreComparedByNumberComponentByComponent) {
    EXPECT_EQ(isNewer("1.10", "1.9"), true);
    EXPECT_EQ(isNewer("1.9", "1.10"), false);
    EXPECT_EQ(isNewer("2", "1.99.99"), true);
    EXPECT_EQ(isNewer("1.0.1", "1.0"), true);
    EXPECT_EQ(isNewer("20261121", "20261120"), true);
    EXPECT_EQ(isNewer(" 1.2\n", "1.1"), true);
}

TEST(Versions, ZerosAtTheEndCountForNothing) {
    EXPECT_EQ(isNewer("1.0.0", "1"), false);
    EXPECT_EQ(isNewer("1", "1.0.0"), false);
    EXPECT_EQ(versionFromString("1.0"), versionFromString("1"));
}

TEST(Versions, AnythingElseIsNone) {
    for (const char *text :
         {"", "one", "v1.2", "1.2-beta", "1..2", ".1", "1.", "-1", "1,2", "99999999999999.1", "١.٢"})
        EXPECT_FALSE(versionFromString(QString::fromUtf8(text))) << text;
}

TEST(Appcast, TheNewestItemCountsWhereverItStands) {
    EXPECT_EQ(displayed(item("1.2") + item("1.10") + item("1.9")), "1.10");
}

TEST(Appcast, TheVersionMayBeAnElement) {
    EXPECT_EQ(displayed("<item><sparkle:version>3.1</sparkle:version></item>"), "3.1");
    EXPECT_EQ(displayed("<item><version> 3.2 </version></item>"), "3.2");
}

TEST(Appcast, PeopleSeeTheVersionMadeForThem) {
    EXPECT_EQ(displayed(item("210", "<sparkle:shortVersionString>2.1 “Birch”</sparkle:shortVersionString>")),
              "2.1 “Birch”");
    EXPECT_EQ(displayed("<item><enclosure sparkle:shortVersionString=\"2.2\"/></item>"), "2.2");
}

TEST(Appcast, TheDownloadPageIsTheItemsLinkOrElseItsEnclosure) {
    EXPECT_EQ(newestVersionInAppcast(feed(item("1", "<link>https://example.org/page?a=1&amp;b=2</link>")))
                  ->downloadPage,
              QUrl("https://example.org/page?a=1&b=2"));
    EXPECT_EQ(newestVersionInAppcast(feed(item("1")))->downloadPage, QUrl("https://example.org/a.deb"));
}

TEST(Appcast, OnlyTheWebIsADownloadPage) {
    for (const QByteArray link : {"file:///etc/passwd", "javascript:alert(1)", "mailto:a@example.org", "page",
                                  "https:///no-host", "ssh://example.org/"}) {
        const auto newest =
            newestVersionInAppcast(feed("<item><version>1</version><link>" + link + "</link></item>"));
        ASSERT_TRUE(newest);
        EXPECT_TRUE(newest->downloadPage.isEmpty()) << link.toStdString();
    }
}

TEST(Appcast, ItemsWithoutAVersionArePassedOver) {
    EXPECT_EQ(displayed("<item><title>News</title></item>" + item("1.1") + item("2.0-rc1")), "1.1");
    EXPECT_EQ(displayed("<item><title>News</title></item>"), "none");
    EXPECT_EQ(displayed(""), "none");
}

TEST(Appcast, WhatIsNoFeedHasNoVersion) {
    const QByteArray whole = feed(item("1.0"));
    ASSERT_TRUE(newestVersionInAppcast(whole));
    for (const QByteArray &text :
         {QByteArray(), QByteArray("not XML"), QByteArray("<html><body>Please log in</body></html>"),
          QByteArray("<rss></rss>"), QByteArray("\0\xff\xfe", 3), whole + "<more/>",
          feed("<item><enclosure version=\"1\"></item>")}) {
        EXPECT_FALSE(newestVersionInAppcast(text)) << text.toStdString();
    }
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(newestVersionInAppcast(whole.first(length))) << "cut after " << length;
}

TEST(Appcast, AFeedThatDeclaresEntitiesIsRefused) {
    QByteArray laughs = "<!DOCTYPE rss [<!ENTITY a0 \"ha\">";
    for (int i = 1; i < 30; ++i) {
        const QByteArray before = "&a" + QByteArray::number(i - 1) + ';';
        laughs += "<!ENTITY a" + QByteArray::number(i) + " \"" + before + before + "\">";
    }
    EXPECT_FALSE(newestVersionInAppcast(
        laughs +
        "]><rss><channel><item><version>9</version><description>&a29;</description></item>"
        "</channel></rss>"));
    EXPECT_FALSE(
        newestVersionInAppcast("<!DOCTYPE rss [<!ENTITY file SYSTEM \"file:///etc/hostname\">]>"
                               "<rss><channel><item><version>9</version>"
                               "<description>&file;</description></item></channel></rss>"));
}

TEST(Appcast, NestingHasABound) {
    const auto nested = [](int levels) {
        return QByteArray("<a>").repeated(levels) + "deep" + QByteArray("</a>").repeated(levels);
    };
    EXPECT_EQ(displayed(item("1.5", nested(50)) + "<x>" + nested(50) + "</x>"), "1.5");
    EXPECT_EQ(
        newestVersionInAppcast(feed(item("1.5", "<description>" + nested(50) + "</description>")))->notes,
        "deep");
    for (const int levels : {1'000, 140'000}) {
        EXPECT_EQ(displayed(item("1.5", nested(levels))), "none") << levels;
        EXPECT_EQ(displayed(item("1.5", "<description>" + nested(levels) + "</description>")), "none")
            << levels;
        EXPECT_EQ(displayed(item("1.5") + "<x>" + nested(levels) + "</x>"), "none") << levels;
    }
}

TEST(Appcast, AttributesHaveABound) {
    const auto withAttributes = [](int count) {
        QByteArray tag = "<x";
        for (int i = 0; i < count; ++i)
            tag += " a" + QByteArray::number(i) + "=''";
        return tag + "/>";
    };
    EXPECT_EQ(displayed(item("1.5", withAttributes(100))), "1.5");
    EXPECT_EQ(displayed(item("1.5", withAttributes(90'000))), "none");
    QString wide = QString::fromUtf8(feed(item("1.5", withAttributes(90'000))));
    wide.remove(0, wide.indexOf("<rss"));
    const QByteArray utf16("\xff\xfe" +
                           QByteArray(reinterpret_cast<const char *>(wide.utf16()), 2 * wide.size()));
    EXPECT_FALSE(newestVersionInAppcast(utf16));
}

TEST(Appcast, TextMayHoldAnyNumberOfEqualsSigns) {
    const QByteArray signs = QByteArray("a=b ").repeated(3'000);
    EXPECT_EQ(displayed(item("1.5", "<description>" + signs + "</description>")), "1.5");
    EXPECT_EQ(displayed(item("1.5", "<description><![CDATA[<a href='x'> <" + signs + "]]></description>")),
              "1.5");
    EXPECT_EQ(displayed("<!-- isn't <a " + signs + "-->" + item("1.5") + "<?note it's <a " + signs + "?>"),
              "1.5");
    EXPECT_EQ(displayed(item("1.5", "<x note='" + signs + "' more=\"it's " + signs + "\"/>")), "1.5");
}

TEST(Appcast, WhatStandsBeforeATagDoesNotHideItsAttributes) {
    QByteArray tag = "<x";
    for (int i = 0; i < 3'000; ++i)
        tag += " a" + QByteArray::number(i) + "='>'";
    tag += "/>";
    for (const QByteArray before : {"", "<!-- ' -->", "<![CDATA[ \" ]]>", "it's", "<y z='\"'/>", "<?z \"?>"})
        EXPECT_EQ(displayed(before + tag + item("1.5")), "none") << before.constData();
}

TEST(Appcast, ReadingEndsWhenItsTimeIsOver) {
    const QByteArray whole = feed(item("1.5"));
    EXPECT_TRUE(newestVersionInAppcast(whole, QDeadlineTimer(QDeadlineTimer::Forever)));
    EXPECT_FALSE(newestVersionInAppcast(whole, QDeadlineTimer(0)));
}

TEST(Appcast, OtherEncodingsAreRead) {
    QString text = QString::fromUtf8(feed(item("1.5", "<description>ä</description>")));
    text.remove(0, text.indexOf("<rss"));
    const QByteArray utf16("\xff\xfe" +
                           QByteArray(reinterpret_cast<const char *>(text.utf16()), 2 * text.size()));
    EXPECT_EQ(newestVersionInAppcast(utf16)->notes, "ä");
    const QByteArray latin = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + text.toLatin1();
    EXPECT_EQ(newestVersionInAppcast(latin)->notes, "ä");
}

TEST(Appcast, EncodingsThatHideSignsAreRefused) {
    const QByteArray known = "<?xml version=\"1.0\" encoding=\"Windows-1252\"?>";
    const QByteArray hidden = "<?xml version=\"1.0\" encoding=\"UTF-7\"?>";
    QByteArray text = feed(item("1.5"));
    text.remove(0, text.indexOf("<rss"));
    EXPECT_TRUE(newestVersionInAppcast(known + text));
    EXPECT_FALSE(newestVersionInAppcast(hidden + text)) << "though what stands here needs no hiding";
}

/// The notes of an item whose description is some HTML.
QString notesOf(const QString &html) {
    const auto newest = newestVersionInAppcast(
        feed(item("1", "<description>" + html.toHtmlEscaped().toUtf8() + "</description>")));
    return newest ? newest->notes : QString();
}

TEST(Appcast, TheNotesArePlainTextWithItsParagraphsAndListItems) {
    EXPECT_EQ(notesOf("<h2 class=\"x\">New</h2>\n<ul>\n<li>Fast &amp; <B>safe</B></li><li>Small</li></ul>"
                      "<p>One<br>two</p><p>Three\n  four</p>"),
              "New\n\n• Fast & safe\n• Small\n\nOne\ntwo\n\nThree four");
    EXPECT_EQ(notesOf("Just\n  text"), "Just text");
    EXPECT_EQ(notesOf(""), "");
}

TEST(Appcast, TheNotesNameCharactersAsHtmlDoes) {
    EXPECT_EQ(
        notesOf("&lt;p&gt; &quot;&apos;&#39;&#x41; a&nbsp;b &mdash; &unknown; & &#0; &#xD800; &#99999999;"),
        "<p> \"''A a\u00A0b &mdash; &unknown; & &#0; &#xD800; &#99999999;");
}

TEST(Appcast, TheNotesHoldNothingButText) {
    EXPECT_EQ(notesOf("<p onclick=\"a\">x<img src=\"file:///secret.png\"><a href=\"file:///\">y</a>"), "xy");
    EXPECT_EQ(notesOf("<table><tr><td>1</td></tr></table>"), "1");
    EXPECT_EQ(notesOf("<script>run()</script><style>p {}</style>a<!-- b -->c"), "ac");
    EXPECT_EQ(notesOf("a > b"), "a > b");
    EXPECT_EQ(notesOf("end <p"), "end");
    EXPECT_EQ(notesOf("<brand>new</brand>"), "new");
    EXPECT_LE(notesOf(QString(500'000, u'x')).size(), 65536);
    EXPECT_LE(notesOf(QStringLiteral("<li>").repeated(100'000)).size(), 65536);
}

}  // namespace
}  // namespace leafwright
