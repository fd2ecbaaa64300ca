#include "support/DocumentFixture.h"

#include <random>

namespace leafwright {
namespace {

using test::NewItem;
using test::PdfBuilder;

/// Makes trees of items that lead to pages "i" to "iv" and "1" to "8" of US Letter size. The sequence is the
/// same on every machine: distributions of the standard library would not be.
class RandomTrees {
public:
    std::vector<NewItem> next() {
        budget_ = below(60);
        return siblings(0);
    }

private:
    int below(int end) { return static_cast<int>(generator_() % static_cast<unsigned>(end)); }

    std::vector<NewItem> siblings(int depth) {
        std::vector<NewItem> items;
        while (budget_ > 0 && below(5) > 0) {
            --budget_;
            items.push_back({title(), label(), {}, {}});
            if (!items.back().label.isNull() && below(4) > 0) items.back().point = point();
            if (depth < 30 && below(2) == 0) items.back().children = siblings(depth + 1);
        }
        return items;
    }

    QString title() {
        static const QStringList pieces{"Chapter",
                                        " ",
                                        "  ",
                                        "(",
                                        ")",
                                        "\\",
                                        "\\)",
                                        "\n",
                                        "\r\n",
                                        "\t",
                                        "<<>>",
                                        "%1",
                                        "/Name",
                                        QStringLiteral("\u00E9"),
                                        QStringLiteral("\u00FE\u00FF"),
                                        QStringLiteral("\u2022"),
                                        QStringLiteral("\u05D0\u05D1"),
                                        QStringLiteral("\u4E2D\u6587"),
                                        QStringLiteral("\U0001F600"),
                                        QStringLiteral("e\u0301")};
        QString text;
        for (int count = below(6); count > 0; --count)
            text += pieces[below(static_cast<int>(pieces.size()))];
        return text;
    }

    QString label() {
        static const QStringList labels{"i", "ii", "iii", "iv", "1", "2", "3", "4", "5", "6", "7", "8"};
        return below(10) == 0 ? QString() : labels[below(static_cast<int>(labels.size()))];
    }

    QPointF point() { return {below(4 * 612) * 0.25, 0.25 + below(4 * 792) * 0.25}; }

    std::mt19937 generator_{20};
    int budget_ = 0;
};

/// What a tree looks like once it was written: items at no particular spot have got one.
void giveDefaultPoints(std::vector<NewItem> &items) {
    for (NewItem &item : items) {
        if (!item.label.isNull() && item.point == QPointF(0, 0)) item.point = {306, 792};
        giveDefaultPoints(item.children);
    }
}

QString textOf(const std::vector<NewItem> &items) {
    MyOutlineItem root;
    addItems(root, items);
    return test::treeText(root);
}

using OutlineRoundTrip = test::DocumentFixture;

TEST_F(OutlineRoundTrip, RandomTreesComeBackAsTheyWere) {
    PdfBuilder pdf;
    pdf.addNumberedPages(12);
    test::setRomanThenDecimalLabels(pdf);
    const QString empty = save(pdf);
    RandomTrees trees;
    qsizetype longest = 0;
    for (int round = 0; round < 40; ++round) {
        std::vector<NewItem> items = trees.next();
        MyDocument writer(platform);
        load(writer, empty);
        addItems(writer.root(), items);
        ASSERT_FALSE(writer.writeNewPDFOutline(dir.path("out.pdf"), MyDocument::saveFinalPDF));

        giveDefaultPoints(items);
        const QString expected = textOf(items);
        EXPECT_EQ(test::treeText(writer.root()), expected) << "round " << round;
        EXPECT_EQ(outlineOf(dir.path("out.pdf")), expected) << "round " << round;
        longest = std::max(longest, expected.size());
    }
    EXPECT_GT(longest, 1000);  // else the trees were no test
}

TEST_F(OutlineRoundTrip, WhatWasImportedIsWrittenUnchanged) {
    PdfBuilder pdf;
    pdf.addNumberedPages(12);
    test::setRomanThenDecimalLabels(pdf);
    load(pdf);
    const QString path = document.pdfURL();
    RandomTrees trees;
    addItems(document.root(), trees.next());
    addItems(document.root(), trees.next());
    addItems(document.root(), trees.next());
    ASSERT_FALSE(document.writeNewPDFOutline(path, MyDocument::saveFinalPDF));
    const QString expected = test::treeText(document.root());
    for (int round = 0; round < 5; ++round) {
        MyDocument next(platform);
        load(next, path);
        ASSERT_FALSE(next.writeNewPDFOutline(path, MyDocument::saveFinalPDF));
        EXPECT_EQ(outlineOf(path), expected);
    }
}

}  // namespace
}  // namespace leafwright
