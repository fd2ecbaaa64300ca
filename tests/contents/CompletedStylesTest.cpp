#include "contents/ContentsStages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// Headings of one style, each the only line of a page of its own.
class MadeHeadings {
public:
    MadeHeadings() { stages_.headings.styles.resize(1); }

    /// @param line what stands on the page, where that is not the title alone
    MadeHeadings &add(const QString &title, double probability = 0.9, const QString &line = {}) {
        HeadingCandidate candidate;
        candidate.block.page = static_cast<int>(stages_.pages.size());
        candidate.block.lines = {0};
        candidate.block.text = title;
        candidate.block.numbering = numberingOf(title);
        candidate.style = 0;
        candidate.probability = probability;
        stages_.headings.candidates.push_back(std::move(candidate));
        PageLines page;
        page.lines.resize(1);
        page.lines[0].page = static_cast<int>(stages_.pages.size());
        page.lines[0].text = line.isEmpty() ? title : line;
        page.lines[0].look.size = 10;
        stages_.pages.push_back(std::move(page));
        return *this;
    }
    /// Whether the last heading is added to an outline of the first ones, so many.
    bool hasLast(int existing) const {
        std::vector<ExistingEntry> entries;
        for (int i = 0; i < existing; ++i)
            entries.push_back({stages_.headings.candidates[static_cast<size_t>(i)].block.text, i, 1});
        return completeEntries(stages_, entries, {}).back().title ==
               stages_.headings.candidates.back().block.text;
    }

private:
    ContentsAnalysis::Stages stages_;
};

TEST(CompleteEntries, WhatLooksLikeThemNeedsLittle) {
    EXPECT_TRUE(MadeHeadings().add("Alpha").add("Beta", 0.12).hasLast(1));
    EXPECT_FALSE(MadeHeadings().add("Alpha").add("Beta", 0.08).hasLast(1));
}

TEST(CompleteEntries, WhereMostAreNumberedOthersAreToo) {
    MadeHeadings most = MadeHeadings().add("1 Alpha").add("2 Beta").add("3 Gamma").add("Preface");
    EXPECT_FALSE(most.add("Delta").hasLast(4)) << "three quarters";
    EXPECT_TRUE(most.add("4 Epsilon").hasLast(4));
    EXPECT_TRUE(MadeHeadings().add("1 Alpha").add("2 Beta").add("Preface").add("Delta").hasLast(3));
}

TEST(CompleteEntries, LinesThatHardlyHaveTheirTitleTeachNothing) {
    const auto teaches = [](const QString &title) {
        return MadeHeadings().add(title, 0.9, title + " goes on").add("Beta").hasLast(1);
    };
    EXPECT_TRUE(teaches("A title of length"));
    EXPECT_FALSE(teaches("Title ab"));
}

}  // namespace
}  // namespace leafwright
