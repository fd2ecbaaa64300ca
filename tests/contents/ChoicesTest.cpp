#include "contents/FindContents.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;

/// Three chapters, each with two sections, the first of which has a subsection.
MadePages madeBook() {
    MadePages pages;
    for (int i = 1; i <= 3; ++i) {
        const auto title = [i](const QString &number, const QString &name) {
            return QString("%1%2 %3 %4").arg(i).arg(number, name).arg(QChar(u'a' + i));
        };
        pages.page().text(60, 80, title("", "Chapter"), boldLook(18)).paragraph(104, 10);
        pages.text(60, 250, title(".1", "Section"), boldLook(14)).paragraph(274, 10);
        pages.text(60, 420, title(".1.1", "Detail"), boldLook(12)).paragraph(444, 10);
        pages.text(60, 590, title(".2", "Other"), boldLook(14)).paragraph(614, 10);
    }
    return pages;
}

QStringList titlesOf(const FoundContents &found) {
    QStringList titles;
    for (const ContentsEntry &entry : found.entries)
        if (!entry.isRejected) titles += QString("%1 %2").arg(entry.level).arg(entry.title);
    return titles;
}

/// The choice that rejects the entries of these indices.
ContentsChoices rejecting(const FoundContents &found, const std::vector<size_t> &indices) {
    ContentsChoices choices;
    for (const size_t index : indices)
        choices.entries[found.entries.at(index).id] = false;
    return choices;
}

FoundContents shown(const ContentsAnalysis &analysis, const ContentsOptions &options,
                    ContentsChoices choices) {
    choices.keepsRejected = true;
    return analysis.choose(options, choices);
}

TEST(Choices, WhatIsBelowARejectedEntryGoesBelowTheOneBefore) {
    const auto analysis = analyseContents(madeBook());
    const FoundContents all = analysis->choose({});
    ASSERT_EQ(all.entries.size(), 12U);
    const ContentsChoices choices = rejecting(all, {4});
    const FoundContents found = shown(*analysis, {}, choices);
    ASSERT_EQ(found.entries.size(), 12U);
    EXPECT_TRUE(found.entries[4].isRejected);
    EXPECT_EQ(found.entries[4].title, "2 Chapter c");
    EXPECT_EQ(found.entries[4].level, 2) << "beside the section that follows, which is not below it any more";
    EXPECT_EQ(titlesOf(found),
              (QStringList{"1 1 Chapter b", "2 1.1 Section b", "3 1.1.1 Detail b", "2 1.2 Other b",
                           "2 2.1 Section c", "3 2.1.1 Detail c", "2 2.2 Other c", "1 3 Chapter d",
                           "2 3.1 Section d", "3 3.1.1 Detail d", "2 3.2 Other d"}));
    EXPECT_EQ(titlesOf(analysis->choose({}, choices)), titlesOf(found));
    EXPECT_EQ(analysis->choose({}, choices).entries.size(), 11U) << "unless they are asked for";
}

TEST(Choices, RejectingAnEntryBringsInNoneThatWasTooDeep) {
    const auto analysis = analyseContents(madeBook());
    ContentsOptions options;
    options.maxDepth = 1;
    const ContentsChoices choices = rejecting(analysis->choose({}), {0});
    EXPECT_EQ(titlesOf(analysis->choose(options, choices)), (QStringList{"1 2 Chapter c", "1 3 Chapter d"}));
    const FoundContents found = shown(*analysis, options, choices);
    EXPECT_EQ(titlesOf(found), (QStringList{"1 2 Chapter c", "1 3 Chapter d"}));
    ASSERT_EQ(found.entries.size(), 3U);
    EXPECT_TRUE(found.entries[0].isRejected);
}

/// Whatever is rejected: the levels and the number of what is taken.
TEST(Choices, WhatIsShownIsWhatIsTaken) {
    const auto analysis = analyseContents(madeBook());
    const FoundContents all = analysis->choose({});
    ASSERT_EQ(all.entries.size(), 12U);
    for (unsigned rejected = 0; rejected < 1U << 12; ++rejected) {
        std::vector<size_t> indices;
        for (size_t i = 0; i < all.entries.size(); ++i)
            if (rejected >> i & 1U) indices.push_back(i);
        const ContentsChoices choices = rejecting(all, indices);
        ContentsOptions options;
        options.maxDepth = static_cast<int>(rejected % 4);
        const FoundContents found = shown(*analysis, options, choices);
        ASSERT_EQ(titlesOf(found), titlesOf(analysis->choose(options, choices))) << rejected;
        int above = 0;
        bool isBelowRejected = false;
        for (const ContentsEntry &entry : found.entries) {
            ASSERT_GE(entry.level, 1) << rejected;
            ASSERT_LE(entry.level, above + 1) << rejected;
            ASSERT_FALSE(isBelowRejected && entry.level > above && !entry.isRejected) << rejected;
            above = entry.level;
            isBelowRejected = entry.isRejected;
        }
    }
}

TEST(Choices, RejectedEntriesOfAStyleThatIsOffAreOutOfSight) {
    const auto analysis = analyseContents(madeBook());
    const FoundContents all = analysis->choose({});
    ContentsChoices choices = rejecting(all, {1});
    choices.styles[all.entries[1].style].accepted = false;
    EXPECT_EQ(shown(*analysis, {}, choices).entries.size(), 6U);
}

TEST(Choices, AStyleKeepsItsLevelWhenItsEntriesAreRejected) {
    const auto analysis = analyseContents(madeBook());
    const FoundContents all = analysis->choose({});
    const auto chapters = [](const FoundContents &found) { return found.styles.front(); };
    ASSERT_EQ(chapters(all).sample, "1 Chapter b");
    const FoundContents one = shown(*analysis, {}, rejecting(all, {4, 8}));
    EXPECT_EQ(chapters(one).level, 1) << "that of the one that is left";
    const FoundContents none = shown(*analysis, {}, rejecting(all, {0, 4, 8}));
    EXPECT_TRUE(chapters(none).accepted) << "they can be accepted one by one";
    EXPECT_FALSE(chapters(analysis->choose({}, rejecting(all, {0, 4, 8}))).accepted);
}

TEST(Choices, RejectedEntriesOfACompletionAreKeptToo) {
    const auto analysis = analyseContents(madeBook());
    const std::vector<ExistingEntry> existing = {{"1 Chapter b", 0, 1}};
    const FoundContents all = analysis->complete(existing);
    ASSERT_EQ(all.entries.size(), 3U);
    ContentsChoices choices = rejecting(all, {1});
    EXPECT_EQ(titlesOf(analysis->complete(existing, {}, choices)),
              (QStringList{"1 1 Chapter b", "1 3 Chapter d"}));
    choices.keepsRejected = true;
    const FoundContents found = analysis->complete(existing, {}, choices);
    ASSERT_EQ(found.entries.size(), 3U);
    EXPECT_TRUE(found.entries[1].isRejected);
}

}  // namespace
}  // namespace leafwright
