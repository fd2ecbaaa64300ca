#include "contents/ContentsStages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// What the stages before have found, made by hand: each heading has a page of its own, the styles are those
/// of the contents (0) and others.
class MadeStages {
public:
    explicit MadeStages(bool isFromTeX = true) {
        stages_.pages.resize(60);
        stages_.headings.styles.resize(3);
        stages_.isFromTeX = isFromTeX;
    }

    /// An entry of the printed contents. @param score of its heading; 0 for none
    MadeStages &printed(const QString &title, int level, double score = 100) {
        PrintedEntry entry;
        entry.title = title;
        entry.numbering = numberingOf(title);
        entry.page = page_++;
        entry.level = level;
        entry.score = score;
        if (score > 0) {
            entry.heading = {entry.page, 0};
            entry.headingLines = 1;
            stages_.pages[static_cast<size_t>(entry.page)].lines.resize(1);
        }
        stages_.printed.entries.push_back(std::move(entry));
        stages_.printed.rawEntries = static_cast<int>(stages_.printed.entries.size());
        return *this;
    }
    MadeStages &linked() {
        stages_.printed.entries.back().link.emplace();
        return *this;
    }
    /// Lets a destination with a name lead to the candidate before.
    MadeStages &named() {
        stages_.named.insert(static_cast<int>(stages_.headings.candidates.size()) - 1, {1, false});
        return *this;
    }
    MadeStages &candidate(const QString &title, int style, double probability) {
        return candidateOn(page_++, title, style, probability);
    }
    /// One that is the heading of the entry before, too.
    MadeStages &printedCandidate(const QString &title, int level) {
        printed(title, level);
        return candidateOn(page_ - 1, title, 0, 0.9);
    }
    MadeStages &structure(int count, bool located = true) {
        for (int i = 0; i < count; ++i)
            stages_.structure.push_back(
                {QString("Tagged %1").arg(i), i, located ? LineRef{i, 0} : LineRef(), 1});
        for (PageLines &page : stages_.pages)
            page.lines.resize(1);
        return *this;
    }

    std::vector<ProposedEntry> entries(ContentsDepth depth = ContentsDepth::Automatic) const {
        return combineStages(stages_, depth);
    }
    QStringList titles(ContentsDepth depth = ContentsDepth::Automatic) const {
        QStringList titles;
        for (const ProposedEntry &entry : entries(depth))
            titles += entry.title;
        return titles;
    }

private:
    MadeStages &candidateOn(int page, const QString &title, int style, double probability) {
        HeadingCandidate candidate;
        candidate.block.page = page;
        candidate.block.lines = {0};
        candidate.block.text = title;
        candidate.block.look.size = 20 - 2 * style;
        candidate.block.numbering = numberingOf(title);
        candidate.style = style;
        candidate.probability = probability;
        stages_.headings.candidates.push_back(std::move(candidate));
        return *this;
    }

    ContentsAnalysis::Stages stages_;
    int page_ = 0;
};

TEST(CombiningStages, ARowWasLostIfItsHeadingIsLikely) {
    const auto hasLost = [](double probability) {
        MadeStages stages;
        stages.printedCandidate("1 Alpha", 1).printedCandidate("1.1 Beta", 2);
        stages.candidate("1.2 Lost", 0, probability).printedCandidate("1.3 Gamma", 2);
        return stages.titles().contains("1.2 Lost");
    };
    EXPECT_TRUE(hasLost(0.65));
    EXPECT_FALSE(hasLost(0.55));
}

TEST(CombiningStages, DeeperTakesWhatIsLikelierThanNot) {
    const auto hasDeeper = [](double probability) {
        MadeStages stages;
        stages.printedCandidate("1 Alpha", 1)
            .printedCandidate("1.1 Beta", 2)
            .candidate("Deep", 1, probability);
        return stages.titles(ContentsDepth::Deeper).contains("Deep");
    };
    EXPECT_TRUE(hasDeeper(0.55));
    EXPECT_FALSE(hasDeeper(0.45));
}

TEST(CombiningStages, DeeperThanTaggedHeadingsTakesWhatIsLikelierThanNot) {
    const auto hasDeeper = [](double probability) {
        MadeStages stages;
        stages.structure(3);
        for (int i = 0; i < 3; ++i)
            stages.candidate(QString("Tagged %1").arg(i), 0, 0.9);
        return stages.candidate("Deep", 1, probability).titles(ContentsDepth::Deeper).contains("Deep");
    };
    EXPECT_TRUE(hasDeeper(0.55));
    EXPECT_FALSE(hasDeeper(0.45));
}

/// How many headings of a style are added to contents of one level.
qsizetype addedToShallow(int count, double probability) {
    MadeStages stages;
    stages.printedCandidate("Alpha", 1).printedCandidate("Beta", 1).printedCandidate("Gamma", 1);
    for (int i = 0; i < count; ++i)
        stages.candidate(QString("Below %1").arg(i), 1, probability);
    return stages.titles().size() - 3;
}

TEST(CombiningStages, ContentsOfOneLevelNeedLittleToGoDeeper) {
    EXPECT_EQ(addedToShallow(5, 0.32), 5);
    EXPECT_EQ(addedToShallow(5, 0.28), 0);
    EXPECT_EQ(addedToShallow(3, 0.9), 3);
    EXPECT_EQ(addedToShallow(2, 0.9), 0) << "too few to be a level";
}

TEST(CombiningStages, AStyleIsOfTheContentsByFivePrintedHeadings) {
    const auto added = [](int printed, double probability) {
        MadeStages stages;
        for (int i = 0; i < printed; ++i)
            stages.printedCandidate(QString("Printed %1").arg(i), 1);
        for (int i = 0; i < 6; ++i)
            stages.candidate(QString("Left out %1").arg(i), 0, probability);
        return stages.titles().size() - printed;
    };
    EXPECT_EQ(added(5, 0.42), 6) << "alike, but not printed";
    EXPECT_EQ(added(5, 0.38), 0);
    EXPECT_EQ(added(4, 0.38), 6) << "a style of its own, which needs less";
}

TEST(CombiningStages, MostOfAStyleExtendsTheNumbersOfBriefContents) {
    const auto added = [](int extending, int others) {
        MadeStages stages;
        stages.printedCandidate("1 Alpha", 1)
            .printedCandidate("1.1 Beta", 2)
            .printedCandidate("1.2 Gamma", 2);
        for (int i = 0; i < extending; ++i)
            stages.candidate(QString("1.1.%1 Detail").arg(i + 1), 1, 0.9);
        for (int i = 0; i < others; ++i)
            stages.candidate(QString("Remark %1").arg(i), 1, 0.9);
        return stages.titles().size() - 3;
    };
    EXPECT_EQ(added(7, 3), 10);
    EXPECT_EQ(added(5, 5), 0);
    EXPECT_EQ(added(3, 0), 3);
    EXPECT_EQ(added(2, 0), 0) << "too few to be a level";
}

/// Ten printed entries, some of which were found, and likely headings in other places.
QStringList titlesWhere(int located, int likely) {
    MadeStages stages;
    for (int i = 0; i < 10; ++i)
        stages.printed(QString("Printed %1").arg(i), 1, i < located ? 100 : 0);
    for (int i = 0; i < likely; ++i)
        stages.candidate(QString("Heading %1").arg(i), 1, 0.4);
    return stages.titles(ContentsDepth::AsPrinted);
}

TEST(CombiningStages, ContentsAreTrustedIfMostHeadingsAreFound) {
    EXPECT_EQ(titlesWhere(9, 10).front(), "Printed 0");
    EXPECT_EQ(titlesWhere(7, 10).front(), "Heading 0");
}

TEST(CombiningStages, TheyGoOnlyWhereHeadingsCanTakeTheirPlace) {
    EXPECT_EQ(titlesWhere(5, 8).front(), "Heading 0");
    EXPECT_EQ(titlesWhere(5, 6).front(), "Printed 0");
}

TEST(CombiningStages, StructureIsTakenIfItHasMostOfTheEntries) {
    const auto isTaken = [](int printed, int structure) {
        MadeStages stages;
        for (int i = 0; i < printed; ++i)
            stages.printed(QString("Printed %1").arg(i), 1);
        return stages.structure(structure).titles().contains("Tagged 0");
    };
    EXPECT_TRUE(isTaken(10, 9));
    EXPECT_FALSE(isTaken(10, 7));
    EXPECT_TRUE(isTaken(0, 3));
    EXPECT_FALSE(isTaken(0, 2));
}

TEST(CombiningStages, ConfidenceIsThatOfThePlaceThatWasFound) {
    const auto confidence = [](double score, bool isLinked) {
        MadeStages stages;
        stages.printed("Title", 1, score);
        if (isLinked) stages.linked();
        return stages.entries().front().confidence;
    };
    // The title itself, much of it, some of it.
    EXPECT_GT(confidence(96, true), 0.9);
    EXPECT_LE(confidence(96, true), 1);
    EXPECT_GT(confidence(94, true), 0.7);
    EXPECT_LT(confidence(94, true), 0.9);
    EXPECT_EQ(confidence(61, true), confidence(94, true));
    EXPECT_GT(confidence(59, true), 0.5) << "not doubtful yet";
    EXPECT_LT(confidence(59, true), 0.7);
    // Without a heading: doubtful, but less so where a link leads.
    EXPECT_LT(confidence(0, true), 0.5);
    EXPECT_GT(confidence(0, true), 0.4);
    EXPECT_LT(confidence(0, false), 0.35);
    EXPECT_GT(confidence(0, false), 0.25);
}

TEST(CombiningStages, ConfidenceOfTaggedHeadings) {
    EXPECT_GT(MadeStages().structure(3).entries().front().confidence, 0.9);
    EXPECT_LE(MadeStages().structure(3).entries().front().confidence, 1);
    EXPECT_GT(MadeStages().structure(3, false).entries().front().confidence, 0.5);
    EXPECT_LT(MadeStages().structure(3, false).entries().front().confidence, 0.7);
}

TEST(CombiningStages, SourcesAreWhatSpeaksForAnEntry) {
    const auto sources = [](const MadeStages &stages) { return stages.entries().front().sources; };
    EXPECT_EQ(sources(MadeStages().printed("Title", 1)), ContentsSources{PrintedSource});
    EXPECT_EQ(sources(MadeStages().printed("Title", 1).linked()), PrintedSource | LinkSource);
    EXPECT_EQ(sources(MadeStages().printedCandidate("Title", 1)), PrintedSource | StyleSource);
    EXPECT_EQ(sources(MadeStages().printedCandidate("Title", 1).named()),
              PrintedSource | StyleSource | NameSource);
    EXPECT_EQ(sources(MadeStages().candidate("Title", 0, 0.9)), ContentsSources{StyleSource});
    EXPECT_EQ(sources(MadeStages().candidate("Title", 0, 0.9).named()), StyleSource | NameSource);
    EXPECT_TRUE(sources(MadeStages().structure(3)) & StructureSource);
}

TEST(CombiningStages, NamesMakeHeadingsMoreLikely) {
    const auto confidence = [](const MadeStages &stages) { return stages.entries().front().confidence; };
    EXPECT_DOUBLE_EQ(confidence(MadeStages().candidate("Title", 0, 0.6)), 0.6);
    EXPECT_DOUBLE_EQ(confidence(MadeStages().candidate("Title", 0, 0.6).named()), 0.8);
}

}  // namespace
}  // namespace leafwright
