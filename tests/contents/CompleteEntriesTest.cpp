#include "contents/FindContents.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;

/// Four pages: a title, two subtitles and a bold remark on each.
MadePages titledPages() {
    MadePages pages;
    for (const QString letter : {"a", "b", "c", "d"}) {
        pages.page().text(60, 100, "Title " + letter, boldLook(18)).paragraph(130, 10);
        pages.text(60, 290, "First of " + letter, boldLook(13)).paragraph(315, 10);
        pages.text(60, 480, "Second of " + letter, boldLook(13)).paragraph(505, 10);
    }
    return pages;
}

QStringList completed(const std::vector<ExistingEntry> &existing, const ContentsOptions &options = {},
                      const ContentsChoices &choices = {}) {
    QStringList lines;
    for (const ContentsEntry &entry :
         analyseContents(titledPages())->complete(existing, options, choices).entries)
        lines += QString("%1 %2 @%3").arg(entry.level).arg(entry.title).arg(entry.pageIndex + 1);
    return lines;
}

TEST(CompleteEntries, WhatLooksAlikeIsAdded) {
    EXPECT_EQ(completed({{"Title a", 0, 1}}),
              (QStringList{"1 Title a @1", "1 Title b @2", "1 Title c @3", "1 Title d @4"}));
}

TEST(CompleteEntries, EachStyleHasItsLevel) {
    EXPECT_EQ(completed({{"Title a", 0, 1}, {"Second of a", 0, 2}}).mid(0, 4),
              (QStringList{"1 Title a @1", "2 First of a @1", "2 Second of a @1", "1 Title b @2"}));
}

TEST(CompleteEntries, TitlesThatWereChangedStay) {
    EXPECT_EQ(completed({{"Cover", 0, 1}, {"Title b", 1, 1}}),
              (QStringList{"1 Cover @1", "1 Title a @1", "1 Title b @2", "1 Title c @3", "1 Title d @4"}));
}

TEST(CompleteEntries, HeadingWhoseTitleWasChangedIsKnownByItsSpot) {
    // The third title stands 100 points below the top of a page of 800.
    EXPECT_EQ(completed({{"Another name", 2, 1, {60, 716}}}),
              (QStringList{"1 Title a @1", "1 Title b @2", "1 Another name @3", "1 Title d @4"}));
    EXPECT_EQ(completed({{"Another name", 2, 1, {60, 300}}}), QStringList{"1 Another name @3"})
        << "running text is no heading";
    EXPECT_EQ(completed({{"Another name", 1, 1, {60, 20}}}), QStringList{"1 Another name @2"})
        << "nor is that of the next page this one's";
}

/// The style of the headings that begin with a word.
int styleOf(const QString &word) {
    for (const HeadingStyle &style : analyseContents(titledPages())->choose({}).styles)
        if (style.sample.startsWith(word)) return style.id;
    return -1;
}

TEST(CompleteEntries, ExistingOnesHaveNegativeIds) {
    const auto analysis = analyseContents(titledPages());
    const auto entries = analysis->complete({{"Title b", 1, 1}, {"Title d", 3, 1}}).entries;
    ASSERT_EQ(entries.size(), 4U);
    EXPECT_GE(entries[0].id, 0);
    EXPECT_EQ(entries[1].id, -1);
    EXPECT_GE(entries[2].id, 0);
    EXPECT_EQ(entries[3].id, -2);
}

TEST(CompleteEntries, StylesAreSwitchedOffAndOn) {
    ContentsChoices choices;
    choices.styles[styleOf("Title")].accepted = false;
    EXPECT_EQ(completed({{"Title b", 1, 1}}, {}, choices), QStringList{"1 Title b @2"});
    choices.styles[styleOf("First")].accepted = true;
    EXPECT_EQ(completed({{"Title b", 1, 1}}, {}, choices).size(), 9) << "below the deepest that is there";
    choices.styles[styleOf("First")].level = 1;
    EXPECT_TRUE(completed({{"Title b", 1, 1}}, {}, choices).contains("1 First of c @3"));
}

TEST(CompleteEntries, OneAloneIsRejectedOrAccepted) {
    const auto analysis = analyseContents(titledPages());
    ContentsChoices choices;
    choices.entries[analysis->complete({{"Title a", 0, 1}}).entries[2].id] = false;
    EXPECT_EQ(completed({{"Title a", 0, 1}}, {}, choices),
              (QStringList{"1 Title a @1", "1 Title b @2", "1 Title d @4"}));
}

TEST(CompleteEntries, NoDeeperThanWanted) {
    ContentsOptions options;
    options.maxDepth = 1;
    EXPECT_EQ(completed({{"Title a", 0, 1}, {"First of a", 0, 2}}, options).size(), 4);
}

TEST(CompleteEntries, OfNothingIsNothing) {
    EXPECT_EQ(completed({}), QStringList());
    EXPECT_EQ(completed({{"Nowhere to be found", 2, 1}}), QStringList{"1 Nowhere to be found @3"});
}

}  // namespace
}  // namespace leafwright
