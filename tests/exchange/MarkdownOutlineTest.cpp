#include "exchange/ExchangeFixture.h"
#include "exchange/MarkdownOutline.h"

namespace leafwright {
namespace {

using test::NewItem;

class Markdown : public test::ExchangeFixture {
protected:
    QString tree(const QByteArray &text) const { return treeOf("markdown", text); }
};

TEST_F(Markdown, LooksLikeAListWithLinks) {
    MyOutlineItem root;
    test::addItems(root,
                   {{"Preface", "i"}, {"Part *A*", QString(), {}, {{"Chapter [1]", "1"}}}, {"Lost", "xii"}});
    OutlineEntry web;
    web.action = OutlineEntry::Action{"URI", "https://example.org/a(b)"};
    root.appendChild(test::makeItem({"Web", QString()})).setEntry(web);
    EXPECT_EQ(written("markdown", root),
              "- [Preface](#page=1 \"i\")\n"
              "- Part \\*A\\*\n"
              "  - [Chapter \\[1\\]](#page=3 \"1\")\n"
              "- [Lost](<> \"xii\")\n"
              "- [Web](https://example.org/a\\(b\\))\n");
    EXPECT_EQ(
        tree(written("markdown", root)),
        "+ [i] Preface (0,0)\n+ - Part *A* (0,0)\n++ [1] Chapter [1] (0,0)\n+ [xii] Lost (0,0)\n+ - Web "
        "(0,0)\n");
}

TEST_F(Markdown, AddressesOfTheWebAreActions) {
    const OutlineTree tree = read("markdown", "- [Web](https://example.org/a\\(b\\))\n");
    const auto &item = *std::get<std::unique_ptr<MyOutlineItem>>(tree)->children()[0];
    EXPECT_EQ(item.entry().action, (OutlineEntry::Action{"URI", "https://example.org/a(b)"}));
}

TEST_F(Markdown, WhatOtherActionsDoIsNoLink) {
    MyOutlineItem root;
    OutlineEntry entry;
    entry.action = OutlineEntry::Action{"URI", "javascript:alert(1)"};
    root.appendChild(test::makeItem({"Script", QString()})).setEntry(entry);
    entry.action = OutlineEntry::Action{"Launch", "https://example.org/"};
    root.appendChild(test::makeItem({"Launch", QString()})).setEntry(entry);
    EXPECT_EQ(written("markdown", root), "- Script\n- Launch\n");
    EXPECT_EQ(treeOf("html", written("html", root)), "+ - Script (0,0)\n+ - Launch (0,0)\n");
}

TEST_F(Markdown, HandsWriteItInOtherWays) {
    EXPECT_EQ(tree("* [A](#page=3)\n\n\t+ B\r\n\t+ [C](<#page=4>)\n2. [D](#page=5 \"3\")\n   1) E\n"),
              "+ [1] A (0,0)\n++ - B (0,0)\n++ [2] C (0,0)\n+ [3] D (0,0)\n++ - E (0,0)\n");
}

TEST_F(Markdown, ADestinationMayBeAbsent) {
    EXPECT_EQ(tree("- [A](<> \"2\")\n- [B]( \"3\")\n- [C]()\n"),
              "+ [2] A (0,0)\n+ [3] B (0,0)\n+ - C (0,0)\n");
}

TEST_F(Markdown, LabelsCountBeforeNumbers) {
    EXPECT_EQ(tree("- [A](#page=1 \"2\")\n- [B](#page=99 \"2\")\n"), "+ [2] A (0,0)\n+ [2] B (0,0)\n");
}

TEST_F(Markdown, OtherLinesAreRefusedWithTheirNumbers) {
    const QString form = ": not of the form \"- [Title](#page=12)\"";
    for (const char *line : {"# Heading", "Prose.", "-A", "12", "[A](#page=1)", "- [A](#page=1",
                             "- [A](#page=)", "- [A](#page=-1)", "- [A](other.md)", "- [A](javascript:x)",
                             "- [A](#page=1 'i')", "- [A](#page=1) more", "---", "| a | b |"})
        EXPECT_EQ(tree(QByteArray("- A\n\n") + line + "\n"), "line 3" + form) << line;
}

TEST_F(Markdown, PagesThatAreNotThereAreRefused) {
    EXPECT_EQ(tree("- [A](#page=6)\n"), "line 1: there is no page 6; the pages are 1 to 5");
}

}  // namespace
}  // namespace leafwright
