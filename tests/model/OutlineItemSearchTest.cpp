#include "model/MyOutlineItem.h"
#include "support/LogRecorder.h"
#include "support/OutlineItems.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

bool titleHasText(const QString &title, const QString &text) {
    return test::makeItem({title})->hasText(text);
}

QStringList titlesMatching(MyOutlineItem &item, const QString &text) {
    const std::optional<std::vector<MyOutlineItem *>> matches = item.itemsMatchingText(text);
    if (!matches) return {"none"};
    QStringList titles;
    for (const MyOutlineItem *match : *matches)
        titles.append(match->pageTitle());
    return titles;
}

TEST(OutlineItemSearch, FindsTextAnywhereInTheTitle) {
    EXPECT_TRUE(titleHasText("Introduction", "Intro"));
    EXPECT_TRUE(titleHasText("Introduction", "duct"));
    EXPECT_TRUE(titleHasText("Introduction", "Introduction"));
    EXPECT_FALSE(titleHasText("Introduction", "Introductions"));
}

TEST(OutlineItemSearch, MindsTheCase) {
    EXPECT_FALSE(titleHasText("Introduction", "intro"));
}

TEST(OutlineItemSearch, MindsDiacritics) {
    EXPECT_FALSE(titleHasText(QStringLiteral("R\u00E9sum\u00E9"), "Resume"));
    EXPECT_FALSE(titleHasText(QStringLiteral("R\u00E9sum\u00E9"), QStringLiteral("Re\u0301sume\u0301")));
}

TEST(OutlineItemSearch, TakesTheTextLiterally) {
    EXPECT_FALSE(titleHasText("Introduction", "I.*n"));
    EXPECT_TRUE(titleHasText("What is I.*n?", "I.*n"));
}

TEST(OutlineItemSearch, EmptyTextMatchesNothing) {
    EXPECT_FALSE(titleHasText("Introduction", ""));
    EXPECT_FALSE(titleHasText("", ""));
    EXPECT_FALSE(titleHasText("Introduction", QString()));
}

TEST(OutlineItemSearch, ListsParentsBeforeDescendantsAndSiblingsInOrder) {
    const auto top = test::makeItem({"Part a",
                                     "1",
                                     {},
                                     {{"Chapter a", "1", {}, {{"Section a1"}, {"Other"}, {"Section a2"}}},
                                      {"Chapter b"},
                                      {"Chapter ca"}}});
    EXPECT_THAT(titlesMatching(*top, "a"),
                ElementsAre("Part a", "Chapter a", "Section a1", "Section a2", "Chapter b", "Chapter ca"));
    EXPECT_THAT(titlesMatching(*top, " a"), ElementsAre("Part a", "Chapter a", "Section a1", "Section a2"));
}

TEST(OutlineItemSearch, FindsDescendantsOfItemsThatDoNotMatch) {
    const auto top = test::makeItem({"Part", "1", {}, {{"Chapter", "1", {}, {{"Deep"}}}}});
    EXPECT_THAT(titlesMatching(*top, "Deep"), ElementsAre("Deep"));
}

TEST(OutlineItemSearch, TheHiddenRootTakesPart) {
    MyOutlineItem root;
    EXPECT_THAT(titlesMatching(root, "Unt"), ElementsAre("Untitled"));
    EXPECT_THAT(titlesMatching(root, "Root"), IsEmpty());
}

TEST(OutlineItemSearch, AbsentTextGivesNoListAndEmptyTextAnEmptyOne) {
    MyOutlineItem item;
    EXPECT_FALSE(item.itemsMatchingText(QString()).has_value());
    ASSERT_TRUE(item.itemsMatchingText("").has_value());
    EXPECT_THAT(*item.itemsMatchingText(""), IsEmpty());
    EXPECT_THAT(*item.itemsMatchingText("nowhere"), IsEmpty());
}

TEST(OutlineItemSearch, LogsEveryCheckAndEveryHit) {
    const test::LogRecorder log("leafwright.outline.debug=true");
    const auto top = test::makeItem({"Introduction", "1", {}, {{"Summary"}}});
    top->hasText("Intro");
    top->itemsMatchingText("Sum");
    EXPECT_THAT(log.messages(),
                ElementsAre("search-select: [Introduction] checked for [Intro]", "... and found!",
                            "search-select: [Introduction] checked for [Sum]",
                            "search-select: [Summary] checked for [Sum]", "... and found!"));
}

}  // namespace
}  // namespace leafwright
