#include "document/window/ProgressSheet.h"
#include "support/TreeWindowFixture.h"

#include <QProgressBar>

#include <stdexcept>

namespace leafwright {
namespace {

class ProgressSheetWindow : public test::TreeWindowFixture {
protected:
    Sheet *sheet() { return document.window()->findChild<Sheet *>("progressSheet"); }
    /// Runs work that takes until the function, called while the sheet is there, returns true.
    std::optional<int> runUntil(const std::function<bool()> &function) {
        std::atomic<bool> ended = false;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] { ended = function(); });
        timer.start(1);
        return withProgress(document, "Title",
                            "Working:", [&](const std::stop_token &stop, ProgressSheet &progress) {
                                progress.setDone(0.25);
                                while (!ended && !stop.stop_requested())
                                    std::this_thread::yield();
                                return 7;
                            });
    }
};

TEST_F(ProgressSheetWindow, ResultComesBack) {
    EXPECT_EQ(runUntil([] { return true; }), 7);
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(ProgressSheetWindow, BarShowsHowMuchIsDone) {
    bool wasBusy = false;
    const auto isAQuarter = [&] {
        wasBusy = document.isBusy();
        const auto *bar = sheet()->findChild<QProgressBar *>("progressBar");
        return sheet()->isVisible() && bar->value() * 4 == bar->maximum();
    };
    EXPECT_EQ(runUntil(isAQuarter), 7);
    EXPECT_TRUE(wasBusy);
    EXPECT_FALSE(document.isBusy());
}

TEST_F(ProgressSheetWindow, EscapeStopsTheWork) {
    EXPECT_EQ(runUntil([&] {
                  QTest::keyClick(sheet(), Qt::Key_Escape);
                  return false;
              }),
              std::nullopt);
}

TEST_F(ProgressSheetWindow, WhatTheWorkThrowsComesHere) {
    const auto fail = [](const std::stop_token &, ProgressSheet &) -> int { throw std::runtime_error("no"); };
    EXPECT_THROW(withProgress(document, "Title", "Working:", fail), std::runtime_error);
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_FALSE(document.isBusy());
}

}  // namespace
}  // namespace leafwright
