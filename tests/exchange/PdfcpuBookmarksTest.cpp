#include "exchange/ExchangeFixture.h"
#include "exchange/PdfcpuBookmarks.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::StartsWith;

class Pdfcpu : public test::ExchangeFixture {
protected:
    QString tree(const QByteArray &text) const { return treeOf("pdfcpu", text); }
};

TEST_F(Pdfcpu, KeepsHowTitlesLook) {
    MyOutlineItem root;
    test::addItems(root, {{"A", "1", {}, {{"B", QString()}}}});
    OutlineEntry look;
    look.bold = true;
    look.italic = true;
    look.color = {0, 1, 0.5};
    root.children()[0]->setEntry(look);
    const QByteArray text = written("pdfcpu", root);
    EXPECT_THAT(text.simplified().toStdString(),
                StartsWith(R"({ "bookmarks": [ { "title": "A", "page": 3, "bold": true, "italic": true, )"
                           R"("color": {"R": 0, "G": 1, "B": 0.5}, "kids": [ { "title": "B", "page": 0)"));
    const OutlineTree again = read("pdfcpu", text);
    const auto &item = *std::get<std::unique_ptr<MyOutlineItem>>(again)->children()[0];
    EXPECT_EQ(item.entry(), look);
    EXPECT_TRUE(item.children()[0]->pageLabel().isNull());
}

TEST_F(Pdfcpu, AnExportIsRead) {
    EXPECT_EQ(tree(R"({"header": {"source": "a.pdf"}, "bookmarks": [
                      {"title": "One", "page": 1, "color": {"R": 0, "G": 1, "B": 0},
                       "kids": [{"title": "Two", "page": 2}, {"title": "Nowhere"}]}]})"),
              "+ [i] One (0,0)\n++ [ii] Two (0,0)\n++ - Nowhere (0,0)\n");
}

TEST_F(Pdfcpu, WhatItCantBeIsRefusedWithItsPlace) {
    const auto refusal = [&](const QByteArray &bookmark) {
        return tree("{\"bookmarks\": [{\"title\": \"A\", \"kids\": [" + bookmark + "]}]}");
    };
    const QString place = "bookmarks[0].kids[0]: ";
    EXPECT_EQ(refusal("5"), place + "a bookmark must be an object");
    EXPECT_EQ(refusal("{}"), place + "\"title\" must be a string");
    EXPECT_EQ(refusal(R"({"title": "A", "page": "1"})"), place + "\"page\" must be the number of a page");
    EXPECT_EQ(refusal(R"({"title": "A", "page": 1.5})"), place + "\"page\" must be the number of a page");
    EXPECT_EQ(refusal(R"({"title": "A", "page": 6})"), place + "there is no page 6; the pages are 1 to 5");
    EXPECT_EQ(refusal(R"({"title": "A", "bold": 1})"), place + "\"bold\" must be true or false");
    EXPECT_EQ(refusal(R"({"title": "A", "color": {"R": 255, "G": 0, "B": 0}})"),
              place + "\"color\" must have R, G and B, numbers from 0 to 1");
    EXPECT_EQ(refusal(R"({"title": "A", "kids": {}})"), place + "\"kids\" must be an array");
    EXPECT_EQ(tree("{\"bookmarks\": 5}"), "there is no array \"bookmarks\" in it");
    EXPECT_EQ(tree("[]"), "there is no array \"bookmarks\" in it");
    EXPECT_THAT(tree("{\n\"bookmarks\": [").toStdString(), StartsWith("line 2: "));
}

}  // namespace
}  // namespace leafwright
