#include "document/outline/TitleFilter.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TitleFilter, FindsTitlesThatContainTheText) {
    TitleFilter filter({"Preface", "1 Introduction", "2 Élan", "Appendix: introducing"});
    EXPECT_THAT(filter.matches("introd"), ElementsAre(1, 3));
    EXPECT_THAT(filter.matches("ELAN"), ElementsAre(2));
    EXPECT_THAT(filter.matches("nowhere"), IsEmpty());
}

TEST(TitleFilter, AllTitlesHaveNothingInThem) {
    TitleFilter filter({"One", ""});
    EXPECT_THAT(filter.matches(""), ElementsAre(0, 1));
}

TEST(TitleFilter, AfterAStopTheRestIsLookedAtTheNextTime) {
    TitleFilter filter({"One", "Two"});
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THAT(filter.matches("o", stop.get_token()), IsEmpty());
    EXPECT_THAT(filter.matches("o"), ElementsAre(0, 1));
}

}  // namespace
}  // namespace leafwright
