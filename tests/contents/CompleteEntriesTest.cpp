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

QStringList completed(const std::vector<ExistingEntry> &existing) {
    QStringList lines;
    for (const ContentsEntry &entry : analyseContents(titledPages())->complete(existing).entries)
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

TEST(CompleteEntries, OfNothingIsNothing) {
    EXPECT_EQ(completed({}), QStringList());
    EXPECT_EQ(completed({{"Nowhere to be found", 2, 1}}), QStringList{"1 Nowhere to be found @3"});
}

}  // namespace
}  // namespace leafwright
