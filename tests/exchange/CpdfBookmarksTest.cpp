#include "exchange/CpdfBookmarks.h"
#include "exchange/ExchangeFixture.h"

namespace leafwright {
namespace {

class Cpdf : public test::ExchangeFixture {
protected:
    QString tree(const QByteArray &text) const { return treeOf("cpdf", text); }
};

TEST_F(Cpdf, HasALineAnEntry) {
    MyOutlineItem root;
    test::addItems(root, {{"A \"B\" \\ C\nD", "1", {72, 700.25}, {{"E", QString(), {1, 2}}}}, {"F", "2"}});
    OutlineEntry open;
    open.open = true;
    for (const auto &item : root.children())
        item->setEntry(open);
    EXPECT_EQ(written("cpdf", root),
              "0 \"A \\\"B\\\" \\\\ C\\nD\" 3 open \"[3 /XYZ 72 700.25 null]\"\n"
              "1 \"E\" 0\n"
              "0 \"F\" 4\n");
    const OutlineTree again = read("cpdf", written("cpdf", root));
    const auto &items = std::get<std::unique_ptr<MyOutlineItem>>(again)->children();
    EXPECT_EQ(items[0]->pageTitle(), "A \"B\" \\ C\nD");
    EXPECT_EQ(items[0]->pointOnPage(), QPointF(72, 700.25));
    EXPECT_TRUE(items[0]->entry().open);
    EXPECT_FALSE(items[0]->children()[0]->entry().open);
}

TEST_F(Cpdf, OfItsManualIsRead) {
    EXPECT_EQ(tree("0 \"Part 1\" 1 open\n1 \"Part 1A\" 2 \"[2 /XYZ 200 400 null]\"\n1 \"Part 1B\" 3\n\n"
                   "0 \"Part 2\" 4 \"[4 /Fit]\"\r\n1 \"Part 2a\" 5 open \"[5/FitH 100]\"\n"),
              "+ [i] Part 1 (0,0)\n++ [ii] Part 1A (200,400)\n++ [1] Part 1B (0,0)\n+ [2] Part 2 (0,0)\n"
              "++ [3] Part 2a (0,0)\n");
}

TEST_F(Cpdf, SpotsFarOffAreNone) {
    EXPECT_EQ(tree("0 \"A\" 1 \"[1 /XYZ 99999999999 4 null]\"\n0 \"B\" 1 \"[1 /XYZ 1.2.3 4 null]\"\n"),
              "+ [i] A (0,0)\n+ [i] B (0,0)\n");
}

TEST_F(Cpdf, OtherLinesAreRefusedWithTheirNumbers) {
    for (const char *line :
         {"A", "0 A 1", "0 \"A\"", "0 \"A 1", "-1 \"A\" 1", "0 \"A\" x", "0 \"A\" 1 closed",
          "0 \"A\" 1 opened", "0 \"A\" 1 open \"[1", "0 \"A\" 1 \"[1]\" more", "0 \"A\\"})
        EXPECT_EQ(tree(QByteArray("0 \"First\" 1\n") + line + "\n"), "line 2: not of the form 0 \"Title\" 12")
            << line;
    EXPECT_EQ(tree("1 \"A\" 1\n"), "line 1: its level is deeper by more than one");
    EXPECT_EQ(tree("0 \"A\" 1\n2 \"B\" 1\n"), "line 2: its level is deeper by more than one");
    EXPECT_EQ(tree("0 \"A\" 6\n"), "line 1: there is no page 6; the pages are 1 to 5");
    EXPECT_EQ(tree("0 \"A\" 99999999999999999999\n"), "line 1: not of the form 0 \"Title\" 12");
}

}  // namespace
}  // namespace leafwright
