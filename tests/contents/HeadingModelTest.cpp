#include "contents/HeadingModel.h"
#include "contents/NamedHeadings.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>

namespace leafwright {
namespace {

using enum HeadingFeature;

/// Candidates made by hand, each on a page of its own, in a style of the body's font unless it is said.
class MadeCandidates {
public:
    MadeCandidates() {
        body_.family = "times";
        all_.styles.resize(2);
        all_.styles[0].family = all_.styles[1].family = "times";
    }
    MadeCandidates &font(const QString &family) {
        all_.styles[0].family = all_.styles[1].family = family;
        return *this;
    }
    HeadingFeatures &add(const QString &text, int style = 0) {
        HeadingCandidate candidate;
        candidate.block.page = static_cast<int>(all_.candidates.size());
        candidate.block.lines = {0};
        candidate.block.text = text;
        candidate.block.look.size = 14;
        candidate.block.numbering = numberingOf(text);
        candidate.style = style;
        candidate.features[StyleShare] = 1;
        all_.candidates.push_back(std::move(candidate));
        return all_.candidates.back().features;
    }
    MadeCandidates &score() {
        scoreHeadings(all_, body_);
        return *this;
    }
    double probability(size_t index) const { return all_.candidates[index].probability; }
    HeadingCandidates &all() { return all_; }
    const BodyStyle &body() const { return body_; }

private:
    HeadingCandidates all_;
    BodyStyle body_;
};

/// Features of so many numbered lines in sequence, as trusted headings have them, and of others.
MadeCandidates numbered(int count, int others, const std::function<void(HeadingFeatures &)> &change = {}) {
    MadeCandidates made;
    for (int i = 0; i < count; ++i) {
        HeadingFeatures &features = made.add(QString("%1 Title").arg(i + 1));
        features[InSequence] = 1;
        features[GapAbove] = 1;
        if (change) change(features);
    }
    for (int i = 0; i < others; ++i)
        made.add("Other");
    return made.score();
}

bool isTrusted(const MadeCandidates &made) {
    return made.probability(0) > 0.55 && made.probability(0) < 0.7;
}

TEST(HeadingModel, NumbersInSequenceAreTrusted) {
    EXPECT_TRUE(isTrusted(numbered(3, 0)));
    EXPECT_FALSE(isTrusted(numbered(2, 0))) << "too few";
    EXPECT_TRUE(isTrusted(numbered(7, 3)));
    EXPECT_FALSE(isTrusted(numbered(5, 5))) << "too many others in their style";
}

TEST(HeadingModel, NumberedLinesAreTrustedWhereTheyAreSetApartAndShort) {
    const auto trusted = [](HeadingFeature feature, double value) {
        return isTrusted(numbered(5, 0, [=](HeadingFeatures &features) { features[feature] = value; }));
    };
    EXPECT_TRUE(trusted(GapAbove, 0.35));
    EXPECT_FALSE(trusted(GapAbove, 0.25));
    EXPECT_TRUE(trusted(Length, 1.4));
    EXPECT_FALSE(trusted(Length, 1.6));
    EXPECT_FALSE(trusted(EndsInStop, 1));
    EXPECT_FALSE(trusted(Caption, 1));
    EXPECT_FALSE(trusted(InSequence, 0));
}

TEST(HeadingModel, NumberedLinesAreTrustedWhereTheyAreOnTwoPages) {
    const auto trustedOn = [](int pages) {
        MadeCandidates made = numbered(5, 0);
        for (HeadingCandidate &candidate : made.all().candidates)
            candidate.block.page %= pages;
        return isTrusted(made.score());
    };
    EXPECT_TRUE(trustedOn(2));
    EXPECT_FALSE(trustedOn(1)) << "as the items of a list are";
}

/// The probability of an unlikely candidate among likely ones of its style.
double amongLikely(int count) {
    MadeCandidates made;
    made.add("Unlikely");
    for (int i = 0; i < count; ++i)
        made.add("Likely")[Dotted] = 4;
    return made.score().probability(0);
}

TEST(HeadingModel, CandidatesArePulledTowardsTheirStyle) {
    const double alone = amongLikely(0);
    MadeCandidates likely;
    likely.add("Likely")[Dotted] = 4;
    const auto logit = [](double p) { return std::log(p / (1 - p)); };
    const double distance = logit(likely.score().probability(0)) - logit(alone);
    // Half of the way to the mean from four members on; with two, a quarter of it.
    EXPECT_NEAR(logit(amongLikely(3)) - logit(alone), distance * 0.5 * 3 / 4, 0.01);
    EXPECT_NEAR(logit(amongLikely(9)) - logit(alone), distance * 0.5 * 9 / 10, 0.01);
    EXPECT_NEAR(logit(amongLikely(1)) - logit(alone), distance * 0.25 * 1 / 2, 0.01);
}

/// The probability of a candidate in a font in which so many headings are set, and other lines.
double inFontOf(int headings, double share, const QString &family) {
    MadeCandidates made;
    made.font(family);
    made.add("Open", 1)[Bigger] = 1;
    for (int i = 0; i < headings; ++i) {
        HeadingFeatures &features = made.add("Heading");
        features[Dotted] = 4;
        features[StyleShare] = share;
    }
    return made.score().probability(0);
}

TEST(HeadingModel, AFontOfHeadingsSpeaksForWhatElseIsSetInIt) {
    const double alone = inFontOf(10, 1, "times");
    const auto logit = [](double p) { return std::log(p / (1 - p)); };
    EXPECT_NEAR(logit(inFontOf(10, 1, "gothic")) - logit(alone), 1.5, 0.01);
    EXPECT_GT(inFontOf(5, 1, "gothic"), alone);
    EXPECT_EQ(inFontOf(4, 1, "gothic"), alone) << "too few";
    EXPECT_GT(inFontOf(20, 0.4, "gothic"), alone);
    EXPECT_EQ(inFontOf(20, 0.3, "gothic"), alone) << "most of what is set in it is something else";
}

/// Whether a candidate is among the headings of a document whose others have names.
bool isNamedHeading(const QString &text, double probability, int style, const NamedHeading *name) {
    MadeCandidates made;
    QHash<int, NamedHeading> named;
    for (int i = 0; i < 5; ++i) {
        made.add(QString("Named %1").arg(i));
        made.all().candidates.back().probability = 0.9;
        named.insert(i, {1, false});
    }
    made.add(text, style);
    made.all().candidates.back().probability = probability;
    if (name) named.insert(5, *name);
    const auto outline = outlineByNames(made.all(), named, made.body());
    return outline && outline->headings.size() == 6;
}

TEST(NamedHeadings, ANameMakesAHeadingOfWhatIsHardlyOne) {
    const NamedHeading plain{2, false};
    const NamedHeading starred{2, true};
    EXPECT_TRUE(isNamedHeading("Title", 0.06, 0, &plain));
    EXPECT_FALSE(isNamedHeading("Title", 0.04, 0, &plain));
    EXPECT_TRUE(isNamedHeading("Title", 0.32, 0, &starred));
    EXPECT_FALSE(isNamedHeading("Title", 0.28, 0, &starred));
}

TEST(NamedHeadings, WithoutNameItTakesMore) {
    EXPECT_TRUE(isNamedHeading("Title", 0.5, 0, nullptr));
    EXPECT_FALSE(isNamedHeading("Title", 0.4, 0, nullptr));
    EXPECT_TRUE(isNamedHeading("Title", 0.65, 1, nullptr)) << "in a style without names";
    EXPECT_FALSE(isNamedHeading("Title", 0.55, 1, nullptr));
    EXPECT_TRUE(isNamedHeading("1.1 Title", 0.95, 0, nullptr)) << "what has a number has a name, too";
    EXPECT_FALSE(isNamedHeading("1.1 Title", 0.85, 0, nullptr));
}

}  // namespace
}  // namespace leafwright
