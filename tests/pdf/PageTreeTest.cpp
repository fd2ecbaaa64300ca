#include "support/OpenPdf.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;
using testing::ElementsAre;

/// A page tree made by hand. Every page says its name, so that the tests see which one came where.
class Tree {
public:
    /// @return a page's reference
    std::string page(const std::string &name) {
        const int content = pdf.addStream(PdfBuilder::showText("F", 10, 72, 700, name));
        return PdfBuilder::reference(pdf.addObject("<< /Type /Page /MediaBox [0 0 612 792] /Contents " +
                                                   PdfBuilder::reference(content) + " /Resources " +
                                                   resources_ + " >>"));
    }
    /// @return a node's reference
    std::string node(const std::string &kids, int count) {
        return PdfBuilder::reference(
            pdf.addObject("<< /Type /Pages /Kids [" + kids + "] /Count " + std::to_string(count) + " >>"));
    }
    /// What the pages below the root say, in order.
    std::vector<std::string> pagesBelow(const std::string &root) {
        pdf.setCatalogEntry("/Pages", root);
        const auto document = openPdf(pdf);
        std::vector<std::string> names;
        for (int i = 0; i < document->pageCount(); ++i)
            names.push_back(test::textOf(*document, i).trimmed().toStdString());
        return names;
    }

    PdfBuilder pdf;

private:
    const std::string resources_ =
        "<< /Font << /F << /Type /Font /Subtype /Type1 /BaseFont /Courier >> >> >>";
};

TEST(PageTree, OrderOfNestedNodes) {
    Tree tree;
    const std::string inner = tree.node(tree.page("b") + " " + tree.page("c"), 2);
    const std::string middle = tree.node(inner + " " + tree.page("d"), 3);
    const std::string root = tree.node(tree.page("a") + " " + middle + " " + tree.page("e"), 5);
    EXPECT_THAT(tree.pagesBelow(root), ElementsAre("a", "b", "c", "d", "e"));
}

TEST(PageTree, CountsThatLie) {
    for (const int count : {-1, 0, 1, 2, 7, 2'000'000'000}) {
        Tree tree;
        const std::string inner = tree.node(tree.page("b") + " " + tree.page("c"), count);
        const std::string root = tree.node(tree.page("a") + " " + inner + " " + tree.page("d"), count);
        EXPECT_THAT(tree.pagesBelow(root), ElementsAre("a", "b", "c", "d")) << count;
    }
}

TEST(PageTree, CountEqualToTheKidsAlthoughAKidIsANode) {
    Tree tree;
    const std::string inner = tree.node(tree.page("b") + " " + tree.page("c"), 2);
    EXPECT_THAT(tree.pagesBelow(tree.node(tree.page("a") + " " + inner, 2)), ElementsAre("a", "b", "c"));
}

TEST(PageTree, EmptyNodeAmongPages) {
    Tree tree;
    const std::string root = tree.node(tree.page("a") + " " + tree.node("", 0) + " " + tree.page("b"), 2);
    EXPECT_THAT(tree.pagesBelow(root), ElementsAre("a", "b"));
    Tree counted;
    const std::string withAll =
        counted.node(counted.page("a") + " " + counted.node("", 1) + " " + counted.page("b"), 3);
    EXPECT_THAT(counted.pagesBelow(withAll), ElementsAre("a", "b"));
}

TEST(PageTree, KidsThatAreNoPagesAreLeftOut) {
    for (const int count : {2, 6}) {
        Tree tree;
        const std::string nothing = PdfBuilder::reference(tree.pdf.addObject("null"));
        const std::string number = PdfBuilder::reference(tree.pdf.addObject("42"));
        const std::string kids = tree.page("a") + " null " + nothing + " 7 " + number + " " + tree.page("b");
        EXPECT_THAT(tree.pagesBelow(tree.node(kids, count)), ElementsAre("a", "b")) << count;
    }
}

TEST(PageTree, PageWithoutAType) {
    Tree tree;
    const std::string untyped = PdfBuilder::reference(tree.pdf.addObject("<< /MediaBox [0 0 9 9] >>"));
    EXPECT_THAT(tree.pagesBelow(tree.node(tree.page("a") + " " + untyped, 2)), ElementsAre("a", ""));
}

TEST(PageTree, DirectPage) {
    Tree tree;
    const std::string kids = tree.page("a") + " << /Type /Page /MediaBox [0 0 9 9] >> " + tree.page("b");
    EXPECT_THAT(tree.pagesBelow(tree.node(kids, 3)), ElementsAre("a", "", "b"));
}

TEST(PageTree, PageListedTwiceIsTwoPages) {
    Tree tree;
    const std::string page = tree.page("a");
    EXPECT_THAT(tree.pagesBelow(tree.node(page + " " + page, 2)), ElementsAre("a", "a"));
}

TEST(PageTree, LoopsEnd) {
    for (const int count : {3, 4}) {
        Tree tree;
        const int root = tree.pdf.addObject("null");
        const std::string up = PdfBuilder::reference(root);
        const std::string inner = tree.node(tree.page("b") + " " + up, 2);
        tree.pdf.replaceObject(root, "<< /Type /Pages /Kids [" + tree.page("a") + " " + inner + " " + up +
                                         " " + tree.page("c") + "] /Count " + std::to_string(count) + " >>");
        EXPECT_THAT(tree.pagesBelow(up), ElementsAre("a", "b", "c")) << count;
    }
}

TEST(PageTree, ManyLevels) {
    Tree tree;
    std::string node = tree.page("deep");
    for (int level = 0; level < 5'000; ++level)
        node = tree.node(node, 1);
    EXPECT_THAT(tree.pagesBelow(node), ElementsAre("deep"));
}

TEST(PageTree, RootThatIsNoTree) {
    for (const char *root : {"7", "(a)", "[]", "<< >>", "<< /Type /Pages >>", "<< /Type /Pages /Kids 7 >>"}) {
        Tree tree;
        try {
            EXPECT_THAT(tree.pagesBelow(root), testing::Each(testing::StrEq(""))) << root;
        } catch (const std::runtime_error &error) {
            EXPECT_THAT(error.what(), testing::HasSubstr("it holds no pages")) << root;
        }
    }
}

/// The two halves of a file with this many pages are read side by side.
constexpr int manyPages = 301;

void expectNumberedPages(const PDFDocument &document) {
    ASSERT_EQ(document.pageCount(), manyPages);
    for (int i = 0; i < manyPages; ++i) {
        ASSERT_EQ(document.page(i)->mediaBox().width, 100 + i) << i;
        ASSERT_EQ(document.page(i)->rotation(), i % 2 ? 90 : 0) << i;
        ASSERT_EQ(document.pageLabel(i), QString::number(i + 1));
    }
    EXPECT_EQ(document.page(manyPages - 1)->index(), manyPages - 1);
}

TEST(PageTree, ManyPagesAreReadAsFewAre) {
    PdfBuilder pdf;
    for (int i = 0; i < manyPages; ++i) {
        pdf.addPage(PdfBuilder::showText("F1", 10, 20, 700, std::to_string(i)),
                    "/MediaBox [0 0 " + std::to_string(100 + i) + " 792] /Rotate " + (i % 2 ? "90" : "0"));
    }
    const auto document = openPdf(pdf);
    expectNumberedPages(*document);
    for (const int i : {0, 149, 150, 151, 300})
        EXPECT_EQ(test::textOf(*document, i), QString::number(i) + "\n");
}

TEST(PageTree, ManyPagesInANodeThatLies) {
    PdfBuilder pdf;
    std::string first;
    std::string second;
    for (int i = 0; i < manyPages; ++i) {
        const int page = pdf.addObject("<< /Type /Page /MediaBox [0 0 " + std::to_string(100 + i) +
                                       " 792] /Rotate " + (i % 2 ? "90" : "0") + " >>");
        (i < 200 ? first : second) += PdfBuilder::reference(page) + " ";
    }
    const int node =
        pdf.addObject("<< /Type /Pages /Kids [" + second + "] /Count " + std::to_string(manyPages) + " >>");
    pdf.setCatalogEntry("/Pages",
                        "<< /Type /Pages /Kids [" + first + PdfBuilder::reference(node) + "] /Count 201 >>");
    expectNumberedPages(*openPdf(pdf));
}

}  // namespace
}  // namespace leafwright
