#include "app/AppDelegate.h"
#include "app/Requests.h"
#include "support/PdfBuilder.h"
#include "support/RecordingPlatform.h"
#include "support/TempDir.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class RequestsTest : public testing::Test {
protected:
    QString file(const QString &name) const {
        test::PdfBuilder pdf;
        pdf.addNumberedPages(1);
        pdf.save(dir.path(name));
        return dir.path(name);
    }
    size_t documents() { return delegate.documentController().documents().size(); }

    test::TempDir dir;
    test::RecordingPlatform platform;
    AppDelegate delegate{platform};
    Requests requests{delegate};
    QSignalSpy left{&requests, &Requests::leftWithoutWindow};
};

TEST_F(RequestsTest, FilesAreOpenedWithoutAQuestion) {
    requests.open({file("a.pdf"), file("b.pdf")});
    EXPECT_EQ(documents(), 2U);
    EXPECT_TRUE(platform.openPanels.isEmpty());
    EXPECT_TRUE(left.isEmpty());
}

TEST_F(RequestsTest, WithoutFileAndDocumentOneIsToBeChosen) {
    platform.filesToChoose = {file("a.pdf")};
    requests.open({});
    EXPECT_EQ(platform.openPanels.size(), 1);
    EXPECT_EQ(documents(), 1U);
    EXPECT_TRUE(left.isEmpty());
}

TEST_F(RequestsTest, WithADocumentItComesToTheFront) {
    requests.open({file("a.pdf")});
    requests.open({});
    EXPECT_TRUE(platform.openPanels.isEmpty());
    EXPECT_EQ(documents(), 1U);
}

TEST_F(RequestsTest, WhoChoosesNoFileIsLeftWithoutWindow) {
    platform.filesToChoose = {std::nullopt};
    requests.open({});
    EXPECT_EQ(left.size(), 1);
}

TEST_F(RequestsTest, AFileThatIsMissingLeavesNoWindow) {
    requests.open({dir.path("nowhere.pdf")});
    EXPECT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(left.size(), 1);
}

TEST_F(RequestsTest, AQuestionIsAskedOnceAndNotTakenAwayByAnotherRequest) {
    qsizetype leftMeanwhile = -1;
    platform.whenAsked = [&] {
        if (leftMeanwhile >= 0) return;
        leftMeanwhile = 0;
        requests.open({});
        requests.checkForWindow();
        leftMeanwhile = left.size();
    };
    platform.filesToChoose = {file("a.pdf")};
    requests.open({});
    EXPECT_EQ(leftMeanwhile, 0);
    EXPECT_EQ(platform.openPanels.size(), 1);
    EXPECT_EQ(documents(), 1U);
    EXPECT_TRUE(left.isEmpty());
}

}  // namespace
}  // namespace leafwright
