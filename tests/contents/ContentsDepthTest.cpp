#include "contents/FindContents.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;

QStringList titlesOf(const MadePages &pages, ContentsDepth depth) {
    ContentsOptions options;
    options.depth = depth;
    QStringList titles;
    for (const ContentsEntry &entry : findContents(pages, options).entries)
        titles += QString("%1 %2").arg(entry.level).arg(entry.title);
    return titles;
}

/// A printed contents of chapters and sections, and their pages; on each also a remark, which is not printed.
class MadeBook {
public:
    MadeBook() {
        pages.page().text(60, 80, "Contents", boldLook(18));
        for (int i = 1; i <= 4; ++i) {
            pages.contentsRow(60, 82 + 28 * i, titleOf("Chapter on", i), QString::number(i));
            pages.contentsRow(75, 96 + 28 * i, titleOf("Section of", i), QString::number(i));
            printed += {"1 " + titleOf("Chapter on", i), "2 " + titleOf("Section of", i)};
        }
        for (int i = 1; i <= 4; ++i) {
            pages.page();
            add(1, 80, titleOf("Chapter on", i), 18);
            add(2, 250, titleOf("Section of", i), 14);
            add(0, 420, titleOf("Remark about", i), 12);
            pages.text(300, 780, QString::number(i));
        }
    }
    /// One more page, with a heading that looks like a chapter and is not printed.
    MadeBook &withAfterword() {
        pages.page();
        add(0, 80, "Afterword by a friend", 18);
        return *this;
    }
    /// Makes it a tagged file: what is printed has tags.
    MadeBook &tagged() {
        pages.document.headings = tags_;
        return *this;
    }

    MadePages pages;
    QStringList printed;

private:
    static QString titleOf(const QString &words, int chapter) {
        return words + ' ' + QString(5, QChar(u'a' + chapter));
    }
    void add(int level, double y, const QString &title, double size) {
        pages.text(60, y, title, boldLook(size)).paragraph(y + 24, 8);
        if (level > 0) tags_.push_back({level, pages.pageCount() - 1, title});
    }

    std::vector<StructureHeading> tags_;
};

TEST(ContentsDepth, DeeperTakesWhatLooksLikePrintedHeadingsToo) {
    const MadeBook book = MadeBook().withAfterword();
    EXPECT_EQ(titlesOf(book.pages, ContentsDepth::Automatic), book.printed);
    const QStringList deeper = titlesOf(book.pages, ContentsDepth::Deeper);
    EXPECT_EQ(deeper.size(), book.printed.size() + 5);
    EXPECT_EQ(deeper.value(deeper.size() - 1), "1 Afterword by a friend");
    EXPECT_EQ(deeper.value(2), "3 Remark about bbbbb");
}

TEST(ContentsDepth, DeeperTakesWhatIsNotTagged) {
    const MadeBook book = MadeBook().withAfterword().tagged();
    EXPECT_EQ(titlesOf(book.pages, ContentsDepth::Automatic), book.printed);
    const QStringList deeper = titlesOf(book.pages, ContentsDepth::Deeper);
    EXPECT_EQ(deeper.size(), book.printed.size() + 5);
    EXPECT_EQ(deeper.value(0), book.printed.front());
    EXPECT_EQ(deeper.value(2), "3 Remark about bbbbb") << "where it stands, below the deepest";
    EXPECT_EQ(deeper.value(deeper.size() - 1), "1 Afterword by a friend") << "as others of its style";
}

TEST(ContentsDepth, AsPrintedTakesThePrintedContentsOfATaggedFile) {
    MadeBook book = MadeBook().tagged();
    book.pages.document.headings.push_back({3, 1, "Remark about bbbbb"});
    EXPECT_EQ(titlesOf(book.pages, ContentsDepth::Automatic).size(), book.printed.size() + 1);
    EXPECT_EQ(titlesOf(book.pages, ContentsDepth::AsPrinted), book.printed);
}

}  // namespace
}  // namespace leafwright
