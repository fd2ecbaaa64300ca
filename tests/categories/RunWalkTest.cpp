#include "categories/RunWalk.h"
#include "support/FakePages.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::makeFont;
using testing::ElementsAre;

struct Seen {
    int location;
    int length;
    QString fontName;
    QString text;

    friend bool operator==(const Seen &, const Seen &) = default;
};

std::vector<Seen> walk(const AttributedString &text) {
    std::vector<Seen> seen;
    walkRuns(text, [&](const CleanedRun &run) {
        seen.push_back({run.range.location, run.range.length, run.font.displayName(), run.text});
    });
    return seen;
}

TEST(RunWalk, VisitsEveryRunCleanedInOrder) {
    AttributedString text;
    text.append("Chapter\nOne\n", makeFont("Times", 18, BoldTrait));
    text.append("Body\n", makeFont("Times", 10));
    text.append("12", makeFont("Times", 18, BoldTrait));
    EXPECT_THAT(walk(text), ElementsAre(Seen{0, 12, "Times Bold", "Chapter One "},
                                        Seen{12, 5, "Times", "Body "}, Seen{17, 2, "Times Bold", "12"}));
}

TEST(RunWalk, NeighboursInOneFontAreOneRun) {
    AttributedString text;
    text.append("One ", makeFont("Times", 18));
    text.append("Two", makeFont("Times", 18));
    EXPECT_THAT(walk(text), ElementsAre(Seen{0, 7, "Times", "One Two"}));
}

TEST(RunWalk, SizesOfOneFaceAreDifferentRuns) {
    AttributedString text;
    text.append("One", makeFont("Times", 12.2));
    text.append("Two", makeFont("Times", 11.8));
    EXPECT_EQ(walk(text).size(), 2U);
}

TEST(RunWalk, EmptyTextHasNoRuns) {
    EXPECT_THAT(walk(AttributedString()), testing::IsEmpty());
}

TEST(RunWalk, TopLeftPointIsTheCornerOfTheRunsBounds) {
    test::FakePages pages;
    pages.add("1", {{"One", makeFont("Times", 12)}, {"Two", makeFont("Arial", 12)}});
    EXPECT_EQ(topLeftPointOfRun(*pages.pageText(0), 0), QPointF(10, 120));
    EXPECT_EQ(topLeftPointOfRun(*pages.pageText(0), 1), QPointF(20, 220));
}

TEST(RunWalk, TopLeftPointOfWhatIsNotSeenIsZero) {
    PageText text;
    text.attributedString.append("\n", makeFont("Times", 12));
    text.runBounds.push_back({});
    EXPECT_EQ(topLeftPointOfRun(text, 0), QPointF(0, 0));
}

}  // namespace
}  // namespace leafwright
