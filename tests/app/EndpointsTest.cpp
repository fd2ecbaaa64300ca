#include "app/Endpoints.h"

#include <QUrlQuery>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(Endpoints, PagesAreOnTheWebOverASafeConnection) {
    for (const QUrl &page : {homePage(), tutorialsPage(), storePage()}) {
        EXPECT_TRUE(page.isValid());
        EXPECT_EQ(page.scheme(), "https") << page.toString().toStdString();
    }
}

TEST(Endpoints, TheSupportMailNamesTheVersionAndIsEscapedWhole) {
    EXPECT_EQ(supportMail("1.2 (Direct)").toEncoded(),
              "mailto:support@leafwright.org?subject=Help%20Using%20Leafwright%201.2%20(Direct)");
    EXPECT_EQ(supportMail("1 “ü” 100%").toEncoded(),
              "mailto:support@leafwright.org?subject=Help%20Using%20Leafwright%201%20%E2%80%9C%C3%BC%E2%80%9D"
              "%20100%25");
}

TEST(Endpoints, TheFeedbackMailsSubjectIsFixed) {
    EXPECT_EQ(feedbackMail().toEncoded(),
              "mailto:feedback@leafwright.org?subject=Feedback%20on%20Leafwright%20v1.5.1");
}

}  // namespace
}  // namespace leafwright
