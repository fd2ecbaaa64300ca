#include "document/outline/KeptOutline.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

QByteArray written(const KeptOutline &outline) {
    QByteArray text;
    writeKeptOutline(outline, [&text](const QByteArray &bytes) { text += bytes; });
    return text;
}

KeptOutline outlineOf(const MyOutlineItem &root) {
    return {"/books/a.pdf", {12, 34, "hash"}, 56, keptEntries(root)};
}

MyOutlineItem &add(MyOutlineItem &parent, const QString &title, const QString &label) {
    return parent.appendChild(std::make_unique<MyOutlineItem>(title, PageTarget{label}));
}

TEST(KeptOutline, SaysWhatThePdfWasAndWhen) {
    const auto read = readKeptOutline(written(outlineOf(MyOutlineItem())));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->pdf, "/books/a.pdf");
    EXPECT_EQ(read->file.size, 12);
    EXPECT_EQ(read->file.modified, 34);
    EXPECT_EQ(read->file.hash, "hash");
    EXPECT_EQ(read->date, 56);
    EXPECT_TRUE(read->entries.empty());
}

TEST(KeptOutline, HasItemsBackAsTheyWere) {
    MyOutlineItem root;
    MyOutlineItem &whole = add(root, "A \"title\"\n\\ \u00e4\U0001F332", "iv");
    whole.setImportedPage(3);
    whole.setPointOnPage({0.1, -7e6});
    whole.setEntry({.number = 17, .bold = true, .italic = true, .open = true, .color = {{0, 0.5, 1}}});
    MyOutlineItem &below = add(whole, QString(QChar(0xDC80)), "");
    below.setEntry({.action = OutlineEntry::Action{"URI", "https://example.org/"}});
    add(root, QString(), QString()).setEntry({.number = 18, .action = OutlineEntry::Action{"Launch"}});

    const auto read = readKeptOutline(written(outlineOf(root)));
    ASSERT_TRUE(read);
    const MyOutlineItem::Children items = itemsOfKeptEntries(read->entries);
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[0]->pageTitle(), whole.pageTitle());
    EXPECT_EQ(items[0]->pageLabel(), "iv");
    EXPECT_EQ(items[0]->importedPage(), 3);
    EXPECT_EQ(items[0]->pointOnPage(), whole.pointOnPage());
    EXPECT_EQ(items[0]->entry(), whole.entry());
    ASSERT_EQ(items[0]->children().size(), 1);
    const MyOutlineItem &readBelow = *items[0]->children()[0];
    EXPECT_EQ(readBelow.pageTitle(), below.pageTitle());
    EXPECT_TRUE(readBelow.pageLabel().isEmpty());
    EXPECT_FALSE(readBelow.pageLabel().isNull()) << "a page may have the empty label";
    EXPECT_FALSE(readBelow.importedPage());
    EXPECT_EQ(readBelow.entry(), below.entry());
    EXPECT_TRUE(items[1]->pageTitle().isNull());
    EXPECT_TRUE(items[1]->pageLabel().isNull());
    EXPECT_EQ(items[1]->entry().action, OutlineEntry::Action{"Launch"});
}

/// "number title/action" for each.
QStringList keysOf(const std::vector<KeptEntry> &entries) {
    QStringList keys;
    for (const auto &[number, key] : entriesInFile(entries))
        keys.append(QString::number(number) + ' ' + key.title + '/' + key.action);
    return keys;
}

TEST(KeptOutline, KnowsWhatEntriesAreInTheFile) {
    PDFOutline inFile;
    const auto addInFile = [&inFile](const QString &title, const OutlineEntry &entry) -> PDFOutline & {
        PDFOutline &added =
            inFile.insertChildAtIndex(std::make_unique<PDFOutline>(title), inFile.numberOfChildren());
        added.setEntry(entry);
        return added;
    };
    const OutlineEntry page{.number = 7, .action = OutlineEntry::Action{"GoTo"}};
    const OutlineEntry web{.number = 8, .action = OutlineEntry::Action{"URI", "about:blank"}};
    const OutlineEntry same{.number = 9};
    addInFile("Page", page).setDestination(PDFDestination{0, {1, 1}});
    addInFile("Web", web);
    addInFile("Same", same).setDestination(PDFDestination{0, {1, 1}});
    addInFile("Copy", same).setDestination(PDFDestination{0, {1, 1}});
    MyOutlineItem root;
    add(root, "Renamed", QString()).setEntry(page);
    add(root, "Web", "1").setEntry({.number = 8});
    add(root, "Same", "1").setEntry(same);
    add(root, "Copy", "1").setEntry(same);
    add(root, "New", "1");
    add(root, "Gone", "1").setEntry({.number = 10});
    KeptOutline kept = outlineOf(root);
    noteKeysInFile(kept.entries, inFile);
    const auto read = readKeptOutline(written(kept));
    ASSERT_TRUE(read);
    EXPECT_EQ(keysOf(read->entries), (QStringList{"7 Page/", "8 Web/URI", "9 Same/", "9 Same/", "10 Gone/"}));
    EXPECT_FALSE(read->entries.at(2).inFile) << "where it says the same itself";
}

TEST(KeptOutline, IsReadWithoutWhatEntriesAreInTheFile) {
    const auto read = readKeptOutline(
        "{\"leafwrightOutline\": 1, \"entries\": 2}\n"
        "{\"depth\": 0, \"title\": \"Play\", \"pageLabel\": null, \"point\": [0, 0], \"entry\": 7, "
        "\"action\": \"JavaScript\"}\n"
        "{\"depth\": 0, \"title\": \"Page\", \"pageLabel\": \"1\", \"point\": [0, 0], \"entry\": 8, "
        "\"action\": \"GoTo\"}\n");
    ASSERT_TRUE(read);
    EXPECT_EQ(keysOf(read->entries), (QStringList{"7 Play/JavaScript", "8 Page/"}));
}

TEST(KeptOutline, MayBeOfAnyDepth) {
    constexpr int depth = 5'000;
    MyOutlineItem root;
    MyOutlineItem *item = &root;
    for (int i = 0; i < depth; ++i)
        item = &add(*item, QString::number(i), "1");
    const auto read = readKeptOutline(written(outlineOf(root)));
    ASSERT_TRUE(read);
    int levels = 0;
    for (MyOutlineItem::Children items = itemsOfKeptEntries(read->entries); !items.empty(); ++levels)
        items = items.front()->takeChildren();
    EXPECT_EQ(levels, depth);
}

TEST(KeptOutline, IsNotReadWhereSomeOfItIsMissing) {
    MyOutlineItem root;
    for (int i = 0; i < 20; ++i)
        add(root, QString::number(i), "1");
    const QByteArray whole = written(outlineOf(root));
    for (qsizetype size = 0; size < whole.size() - 1; ++size)
        ASSERT_FALSE(readKeptOutline(whole.first(size))) << size;
    EXPECT_TRUE(readKeptOutline(whole));
}

TEST(KeptOutline, HasNoColorThatIsNone) {
    const QByteArray head = "{\"leafwrightOutline\": 1, \"entries\": 1}\n";
    for (const char *color : {"[0, 1]", "[0, 1, 0, 1]", "[0, \"1\", 0]", "1", "null"}) {
        const auto read =
            readKeptOutline(head + "{\"depth\": 0, \"point\": [0, 0], \"color\": " + color + "}\n");
        ASSERT_TRUE(read) << color;
        EXPECT_FALSE(read->entries.at(0).entry.color) << color;
    }
    const auto strange =
        readKeptOutline(head + "{\"depth\": 0, \"point\": [0, 0], \"color\": [2, -1, 0.5]}\n");
    ASSERT_TRUE(strange);
    EXPECT_EQ(strange->entries.at(0).entry.color, (OutlineEntry::Color{2, -1, 0.5})) << "files have them";
}

TEST(KeptOutline, IsNothingElse) {
    for (const char *text :
         {"", "\n", "[]", "{}", "{\"leafwrightOutline\": 2, \"entries\": 0}\n", "\xff\n",
          "{\"leafwrightOutline\": 1, \"entries\": 1}\n{\"depth\": -1, \"point\": [0, 0]}\n",
          "{\"leafwrightOutline\": 1, \"entries\": 1}\n[]\n",
          "{\"leafwrightOutline\": 1, \"entries\": 1e300}\n",
          "{\"leafwrightOutline\": 1, \"entries\": 1}\n{\"depth\": 1e300, \"point\": [0, 0]}\n",
          "{\"leafwrightOutline\": 1, \"entries\": 1}\n{\"depth\": 1, \"point\": [0, 0]}\n"})
        EXPECT_FALSE(readKeptOutline(text)) << text;
}

}  // namespace
}  // namespace leafwright
