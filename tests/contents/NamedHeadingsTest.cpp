#include "contents/HeadingModel.h"
#include "contents/NamedHeadings.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;

/// Pages with a title each, to which destinations lead.
class NamedPages {
public:
    explicit NamedPages(const QStringList &names, double size = 14) {
        for (int i = 0; i < names.size(); ++i) {
            pages_.page().paragraph(80, 5).paragraph(240, 20);
            pages_.text(60, 200, QString("Title %1").arg(QChar(u'a' + i)), boldLook(size));
            add(names[i], i);
        }
    }
    NamedPages &add(const QString &name, int page, double y = 184) {
        places_.push_back({name, page, QPointF(60, y)});
        return *this;
    }
    /// What the names say of each title.
    QHash<int, NamedHeading> found() {
        lines_ = readAllLines(pages_, {}, [](int) {});
        body_ = findBodyStyle(lines_);
        headings_ = findHeadingCandidates(makeBlocks(lines_, body_), lines_, body_);
        scoreHeadings(headings_, body_);
        return findNamedHeadings(places_, lines_, headings_, body_);
    }
    std::vector<int> depths() {
        const QHash<int, NamedHeading> named = found();
        std::vector<int> depths;
        for (int i = 0; i < named.size(); ++i)
            depths.push_back(named.value(i, {-1, false}).depth);
        return depths;
    }
    std::vector<int> levels() {
        const QHash<int, NamedHeading> named = found();
        const auto outline = outlineByNames(headings_, named, body_);
        return outline ? outline->levels : std::vector<int>();
    }

private:
    MadePages pages_;
    std::vector<NamedPlace> places_;
    std::vector<PageLines> lines_;
    BodyStyle body_;
    HeadingCandidates headings_;
};

TEST(NamedHeadings, PartsStandAboveChapters) {
    NamedPages pages({"part.1", "chapter.1", "section.1.1", "chapter.2", "part.2", "chapter.3"});
    EXPECT_EQ(pages.depths(), (std::vector<int>{0, 1, 2, 1, 0, 1}));
    EXPECT_EQ(pages.levels(), (std::vector<int>{1, 2, 3, 2, 1, 2}));
}

TEST(NamedHeadings, EachKindHasItsDepth) {
    NamedPages pages({"chapter.1", "section.1.1", "subsection.1.1.1", "subsubsection.1.1.1.1",
                      "paragraph.1.1.1.1.1", "subparagraph.1.1.1.1.1.1"});
    EXPECT_EQ(pages.depths(), (std::vector<int>{1, 2, 3, 4, 5, 6}));
}

TEST(NamedHeadings, AppendicesAreChaptersWhereThereAreAny) {
    EXPECT_EQ(NamedPages({"chapter.1", "section.1.1", "chapter.2", "section.2.1", "appendix.A"}).depths(),
              (std::vector<int>{1, 2, 1, 2, 1}));
    EXPECT_EQ(
        NamedPages({"section.1", "subsection.1.1", "section.2", "subsection.2.1", "appendix.A"}).depths(),
        (std::vector<int>{2, 3, 2, 3, 2}))
        << "else sections";
}

TEST(NamedHeadings, APlainNameSaysMoreThanAStarredOne) {
    const auto first = [](const QString &upper, const QString &lower) {
        return NamedPages({"section.1", "section.2", "section.3", "section.4", "section.5", upper})
            .add(lower, 5, 186)
            .found()
            .value(5);
    };
    EXPECT_FALSE(first("section*.9", "subsection.5.1").isStarred);
    EXPECT_EQ(first("section*.9", "subsection.5.1").depth, 3);
    EXPECT_FALSE(first("subsection.5.1", "section*.9").isStarred);
    EXPECT_EQ(first("subsection.5.1", "section*.9").depth, 3);
    EXPECT_TRUE(first("section*.9", "subsection*.9").isStarred);
    EXPECT_EQ(first("section*.9", "subsection*.9").depth, 2) << "of one kind the upper one counts";
    EXPECT_EQ(first("section.6", "subsection.6.1").depth, 2);
}

TEST(NamedHeadings, OtherNamesSayNothing) {
    NamedPages pages({"section.1", "section.2", "section.3", "section.4", "section.5", "figure.1"});
    pages.add("page.6", 5).add("section", 5).add("mysection.7", 5);
    EXPECT_EQ(pages.found().size(), 5);
}

}  // namespace
}  // namespace leafwright
