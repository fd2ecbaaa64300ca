#include "support/RecordingPlatform.h"
#include "system/Document.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::ElementsAre;

class PlainDocument final : public Document {
public:
    using Document::Document;
    bool readFromURL(const QString & /*path*/) override { return true; }
    QString fileURL() const override { return {}; }
    void makeWindowControllers() override {}
    QWidget *window() const override { return nullptr; }
    bool isDocumentEdited() const override { return edited_; }
    void updateChangeCount(Change change) override { edited_ = change == Change::Done; }

protected:
    bool saveBeforeClosing() override { return true; }

private:
    bool edited_ = false;
};

class DocumentState : public testing::Test {
protected:
    test::RecordingPlatform platform;
    PlainDocument document{platform};
};

TEST_F(DocumentState, WhatWaitsForAnIdleDocumentIsCalledInOrderOnceTheLastIsDone) {
    std::vector<int> calls;
    document.whenIdle([&] { calls.push_back(0); });
    EXPECT_THAT(calls, ElementsAre(0)) << "at once when it is idle";
    {
        const Document::Busy outer(document);
        {
            const Document::Busy inner(document);
            document.whenIdle([&] { calls.push_back(1); });
            document.performAfterDelay(500, [&] { calls.push_back(2); });
            EXPECT_THAT(platform.delays, ElementsAre(500));
        }
        QCoreApplication::processEvents();
        EXPECT_TRUE(document.isBusy());
        EXPECT_THAT(calls, ElementsAre(0));
    }
    EXPECT_THAT(calls, ElementsAre(0)) << "not within the call that ends";
    document.whenIdle([&] { calls.push_back(3); });
    QCoreApplication::processEvents();
    EXPECT_THAT(calls, ElementsAre(0, 1, 2, 3));
}

TEST_F(DocumentState, WhatWouldHoldUpAnotherDocumentWaitsForThatToo) {
    std::vector<int> calls;
    PlainDocument other(platform);
    {
        PlainDocument closed(platform);
        const Document::Busy busy(other);
        Document::whenNoneIsBusy([&] { calls.push_back(1); });
        document.performAfterDelay(500, [&] { calls.push_back(2); });
        closed.performAfterDelay(500, [&] { calls.push_back(3); });
        QCoreApplication::processEvents();
        EXPECT_THAT(calls, ElementsAre());
        document.whenIdle([&] { calls.push_back(0); });
        EXPECT_THAT(calls, ElementsAre(0)) << "what is about that document alone";
    }
    {
        const Document::Busy busy(document);
        QCoreApplication::processEvents();
        EXPECT_THAT(calls, ElementsAre(0)) << "now that one is busy";
    }
    QCoreApplication::processEvents();
    EXPECT_THAT(calls, ElementsAre(0, 1, 2)) << "nothing of the one that is closed";
    Document::whenNoneIsBusy([&] { calls.push_back(4); });
    EXPECT_THAT(calls, ElementsAre(0, 1, 2, 4));
}

TEST_F(DocumentState, IsBusyWhileTheUserIsAsked) {
    int timesBusy = 0;
    platform.whenAsked = [&] { timesBusy += document.isBusy() ? 1 : 0; };
    platform.filesToChoose = {std::nullopt, std::nullopt};
    document.runModal({"Really?", {}, {"OK"}});
    EXPECT_FALSE(document.runOpenPanel({}));
    EXPECT_FALSE(document.runSavePanel({}));
    EXPECT_EQ(timesBusy, 3);
    EXPECT_FALSE(document.isBusy());
}

TEST_F(DocumentState, ASecondCloseWhileTheFirstAsksIsRefused) {
    document.updateChangeCount(Document::Change::Done);
    auto second = Document::Closing::Allowed;
    platform.whenAsked = [&] {
        platform.whenAsked = nullptr;
        second = document.prepareToClose();
    };
    platform.answers = {1};
    EXPECT_EQ(document.prepareToClose(), Document::Closing::Allowed) << "discarded";
    EXPECT_EQ(second, Document::Closing::Refused);
    EXPECT_THAT(platform.alerts, testing::SizeIs(1));
}

}  // namespace
}  // namespace leafwright
