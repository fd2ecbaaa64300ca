#include "exchange/ExchangeFixture.h"
#include "exchange/OutlineFormat.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::NewItem;
using testing::HasSubstr;

/// What can be read again, by name.
class EachFormat : public test::ExchangeFixture, public testing::WithParamInterface<const char *> {
protected:
    const char *format() const { return GetParam(); }
    bool isPlus() const { return qstrcmp(format(), "plus") == 0; }
    bool isXml() const { return qstrcmp(format(), "opml") == 0; }
    bool isJson() const { return QString(format()).startsWith("json") || qstrcmp(format(), "pdfcpu") == 0; }

    void expectTitles(const QStringList &titles) {
        std::vector<NewItem> items;
        for (const QString &title : titles)
            items.push_back({title, "1"});
        const QByteArray text = written(format(), items);
        const OutlineTree tree = read(format(), text);
        ASSERT_TRUE(std::holds_alternative<std::unique_ptr<MyOutlineItem>>(tree))
            << text.constData() << std::get<TreeError>(tree).message.toStdString();
        QStringList back;
        for (const auto &item : std::get<std::unique_ptr<MyOutlineItem>>(tree)->children())
            back.append(item->pageTitle());
        EXPECT_EQ(back, titles) << text.constData();
    }
};

TEST_P(EachFormat, KeepsTitlesPagesAndNesting) {
    const std::vector<NewItem> items{
        {"Preface", "i"},
        {"Chapter One", "1", {}, {{"First Section", "2", {}, {{"Detail", "2"}}}, {"Second Section", "3"}}},
        {"Chapter Two", "3"}};
    EXPECT_EQ(treeOf(format(), written(format(), items)),
              "+ [i] Preface (0,0)\n"
              "+ [1] Chapter One (0,0)\n"
              "++ [2] First Section (0,0)\n"
              "+++ [2] Detail (0,0)\n"
              "++ [3] Second Section (0,0)\n"
              "+ [3] Chapter Two (0,0)\n");
}

TEST_P(EachFormat, KeepsEntriesThatLeadNowhere) {
    EXPECT_EQ(treeOf(format(), written(format(), {{"Part", QString(), {}, {{"Chapter", "1"}}}})),
              "+ - Part (0,0)\n++ [1] Chapter (0,0)\n");
}

TEST_P(EachFormat, KeepsWhatItGivesAMeaningTo) {
    expectTitles({"1.2 Compost",
                  "1) One",
                  "# Number",
                  "- Dash",
                  "+ Plus",
                  "* Star",
                  "[Link](#page=3)",
                  "![x](y)",
                  "<b>bold</b> & \"quotes\" 'single'",
                  "Q&A",
                  "&amp; &lt; &#10; &copy;",
                  "a\\nb \\\" \\",
                  "`code` ~~struck~~ **bold** __under__ | a | b",
                  "BookmarkTitle: x",
                  "0 \"Title\" 5",
                  "a ] b [ c ( d ) e",
                  "----",
                  "===",
                  "> quoted",
                  "</li></ul>",
                  "]]>",
                  "<!-- c -->",
                  "https://example.org/",
                  "{\"title\": 1}",
                  "%1 %2",
                  "@5 x",
                  ""});
}

TEST_P(EachFormat, KeepsOtherScripts) {
    expectTitles(
        {QString::fromUtf8("\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D 12 abc"),                       // Hebrew
         QString::fromUtf8("\xE2\x80\x8F\xD8\xB9\xD8\xB1\xD8\xA8\xD9\x8A\xE2\x80\x8E (x)"),  // with marks
         QString::fromUtf8("\xE2\x80\xAE"
                           "abc\xE2\x80\xAC"),  // embedded the other way round
         QString::fromUtf8("Emoji \xF0\x9F\x98\x80 and e\xCC\x81"),
         QString::fromUtf8("\xE6\xBC\xA2\xE5\xAD\x97")});
}

TEST_P(EachFormat, KeepsBlanks) {
    if (isPlus()) GTEST_SKIP() << "plus lines escape nothing";
    expectTitles(
        {"  blanks  around  ", " ", QString(QChar(0xA0)) + "no break", "trailing" + QString(QChar(0x3000))});
}

TEST_P(EachFormat, KeepsLineEnds) {
    if (isPlus()) {
        EXPECT_EQ(written(format(), {{"Two\nlines\r\n+ @1 x", "1"}}), "+ @1 Two lines  + @1 x\n");
        return;
    }
    expectTitles(
        {"Two\nlines", "Carriage\r\nreturn", "\nfirst", "last\n", "a\n- b\n  - c", "a\n\nb\nBookmarkBegin"});
}

TEST_P(EachFormat, KeepsControlCharactersOrTheirPlace) {
    if (isPlus()) GTEST_SKIP() << "plus lines escape nothing";
    const QString title = "a" + QString(QChar(1)) + "b" + QString(QChar(0x1B)) + "c\td";
    if (isXml()) {
        const QString text = treeOf(format(), written(format(), {{title, "1"}}));
        EXPECT_EQ(text, "+ [1] a" + QString(QChar(0xFFFD)) + "b" + QString(QChar(0xFFFD)) + "c\td (0,0)\n");
    } else {
        expectTitles(
            {title, QString(QChar(0x7F)), QString(QChar(0x85)) + "next line", QString(QChar(0x2028))});
    }
}

TEST_P(EachFormat, WritesUtf8WhateverTheTitles) {
    const QString odd =
        QString::fromUtf16(u"\xD83D\x41\xDE00", 3) + QString(QChar(0)) + QString(QChar(0xFFFE));
    const QByteArray text = written(format(), {{odd, "1"}, {"After", "2"}});
    const QString tree = treeOf(format(), text);
    EXPECT_THAT(tree.toStdString(), HasSubstr("+ [2] After (0,0)\n")) << text.constData();
}

TEST_P(EachFormat, DeepOutlinesThereAndBack) {
    // Where a line has its level before it, the text grows by the square of the levels.
    const bool isIndented = isPlus() || qstrcmp(format(), "markdown") == 0;
    const int levels = isIndented ? 2'000 : 10'000;
    MyOutlineItem root;
    MyOutlineItem *deepest = &root;
    for (int i = 0; i < levels; ++i)
        deepest = &deepest->appendChild(std::make_unique<MyOutlineItem>("L", PageTarget{"2"}));
    const OutlineTree tree = read(format(), written(format(), root));
    if (isJson()) {
        ASSERT_TRUE(std::holds_alternative<TreeError>(tree));
        EXPECT_EQ(std::get<TreeError>(tree).message,
                  "the JSON is nested too deeply; plus lines hold outlines of any depth");
        return;
    }
    ASSERT_TRUE(std::holds_alternative<std::unique_ptr<MyOutlineItem>>(tree))
        << std::get<TreeError>(tree).message.toStdString();
    int count = 0;
    for (const MyOutlineItem *item = std::get<std::unique_ptr<MyOutlineItem>>(tree).get();
         !item->children().empty(); item = item->children()[0].get()) {
        ASSERT_EQ(item->children().size(), 1U);
        ASSERT_EQ(item->children()[0]->pageLabel(), "2");
        ++count;
    }
    EXPECT_EQ(count, levels);
}

TEST_P(EachFormat, TextThatIsNotUtf8IsRefusedWithItsLine) {
    if (isJson()) GTEST_SKIP() << "the parser says so in its own words";
    EXPECT_EQ(treeOf(format(), "\n\nCaf\xE9\n"), "line 3: the text is not UTF-8");
}

TEST_P(EachFormat, OnlyJsonSaysThatNoOutlineIsWanted) {
    const auto isRead = [this](const QByteArray &text) {
        return std::holds_alternative<std::unique_ptr<MyOutlineItem>>(read(format(), text));
    };
    for (const char *nothing : {"", " \n", "\xEF\xBB\xBF", "\xEF\xBB\xBF\n "})
        EXPECT_EQ(treeOf(format(), nothing),
                  "there is no entry in it; [] in JSON says that no outline is wanted");
    EXPECT_EQ(isRead(written(format(), std::vector<NewItem>())), qstrcmp(format(), "json") == 0);
}

TEST_P(EachFormat, RandomTextIsReadOrRefused) {
    QByteArray text =
        written(format(), {{"Chapter <One> & \"more\"", "1", {}, {{"Section", "2"}}}, {"Two", "3"}});
    for (qsizetype i = 0; i < text.size(); ++i) {
        treeOf(format(), text.left(i));
        for (const char c : {'\0', '<', '"', '[', ']', '&', '\\', '\n', '\xFF'}) {
            QByteArray changed = text;
            changed[i] = c;
            treeOf(format(), changed);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Exchange, EachFormat,
                         testing::Values("json", "plus", "markdown", "html", "opml", "pdftk", "cpdf",
                                         "pdfcpu"),
                         [](const auto &test) { return std::string(test.param); });

QString nameOf(const OutlineFormat *format) {
    return format ? QString(format->name) : QString();
}

TEST(OutlineFormat, ToWriteIsToldByTheExtension) {
    EXPECT_EQ(nameOf(formatToWrite("a.json")), "json");
    EXPECT_EQ(nameOf(formatToWrite("/b/a.b.MD")), "markdown");
    EXPECT_EQ(nameOf(formatToWrite("a.markdown")), "markdown");
    EXPECT_EQ(nameOf(formatToWrite("a.htm")), "html");
    EXPECT_EQ(nameOf(formatToWrite("a.pdfcpu")), "pdfcpu");
    EXPECT_EQ(nameOf(formatToWrite("a.txt")), "") << "three have it";
    EXPECT_EQ(nameOf(formatToWrite("a.pdf")), "");
    EXPECT_EQ(nameOf(formatToWrite("json")), "");
    EXPECT_EQ(nameOf(formatToWrite("")), "");
}

TEST(OutlineFormat, ToReadIsToldByTheTextWhereTheExtensionDoesNot) {
    EXPECT_EQ(nameOf(formatToRead("a.json", "[]")), "json");
    EXPECT_EQ(nameOf(formatToRead("a.json", "{\"bookmarks\": []}")), "pdfcpu");
    EXPECT_EQ(nameOf(formatToRead("a.txt", "+ @1 A\n")), "plus");
    EXPECT_EQ(nameOf(formatToRead("a.txt", "InfoBegin\nBookmarkBegin\nBookmarkTitle: A\n")), "pdftk");
    EXPECT_EQ(nameOf(formatToRead("a.txt", "0 \"A\" 1\n")), "cpdf");
    EXPECT_EQ(nameOf(formatToRead("a", "\xEF\xBB\xBF\n <!DOCTYPE HTML>")), "html");
    EXPECT_EQ(nameOf(formatToRead("a.xml", "<?xml version='1.0'?><opml/>")), "opml");
    EXPECT_EQ(nameOf(formatToRead("a.md", "- A\n")), "markdown");
    EXPECT_EQ(nameOf(formatToRead("a.html", "<nav><ul></ul></nav>")), "html");
    EXPECT_EQ(nameOf(formatToRead("a.txt", "\xEF\xBB\xBF\n")), "plus") << "to be refused as empty";
}

TEST(OutlineFormat, ToReadIsNoneRatherThanAGuess) {
    EXPECT_EQ(nameOf(formatToRead("a.txt", "Prose.\n")), "");
    EXPECT_EQ(nameOf(formatToRead("a.json", "Prose.\n")), "");
    EXPECT_EQ(nameOf(formatToRead("a", "- A\n")), "") << "any text may begin so";
    EXPECT_EQ(nameOf(formatToRead("a.md", "+ @1 A\n")), "") << "the two contradict each other";
    EXPECT_EQ(nameOf(formatToRead("a.html", "[]")), "");
    EXPECT_EQ(nameOf(formatToRead("a.pdf", "%PDF-1.4")), "");
}

TEST(OutlineFormat, NamesAndOwnExtensionsAreUnique) {
    QStringList names;
    for (const OutlineFormat &format : outlineFormats())
        names.append(format.name);
    EXPECT_EQ(names.removeDuplicates(), 0);
    QStringList own = ownExtensionsOfOutlines();
    EXPECT_EQ(own.removeDuplicates(), 0);
    for (const QString &extension : own)
        EXPECT_TRUE(formatToWrite("a." + extension)) << extension.toStdString();
    EXPECT_EQ(extensionsOfOutlines().mid(0, own.size()), own);
    EXPECT_FALSE(namesOfReadFormats().contains("text"));
    EXPECT_TRUE(namesOfWrittenFormats().contains("text"));
}

TEST(OutlineFormat, TooMuchTextIsRefused) {
    const test::FakePages pages;
    const QByteArray text((qsizetype{256} << 20) + 1, '\n');
    const OutlineTree tree = readOutline(*outlineFormatNamed(u"plus"), text, {pages});
    ASSERT_TRUE(std::holds_alternative<TreeError>(tree));
    EXPECT_EQ(std::get<TreeError>(tree).message, "it is larger than 256 MB");
}

TEST(LevelledItems, RefusesMoreThanItsBounds) {
    EXPECT_FALSE(problemOfSize(1'000'000, 100'000));
    EXPECT_EQ(problemOfSize(1'000'001, 1), "there are more than 1000000 entries");
    EXPECT_EQ(problemOfSize(1, 100'001), "there are more than 100000 levels");
    LevelledItems items;
    std::optional<QString> problem;
    for (int i = 0; i <= 100'000 && !problem; ++i)
        problem = items.add(std::make_unique<MyOutlineItem>(), i);
    EXPECT_EQ(problem, "there are more than 100000 levels");
}

TEST(Lines, EndInLineFeedsWithOrWithoutCarriageReturns) {
    const QString text = "a\r\nb\n\nc";
    Lines lines(text);
    EXPECT_EQ(lines.next(), u"a");
    EXPECT_EQ(lines.next(), u"b");
    EXPECT_EQ(lines.next(), u"");
    EXPECT_EQ(lines.number(), 3);
    EXPECT_EQ(lines.next(), u"c");
    EXPECT_FALSE(lines.next());
}

}  // namespace
}  // namespace leafwright
