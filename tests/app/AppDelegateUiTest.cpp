#include "app/AppDelegate.h"
#include "app/Defaults.h"
#include "document/DocumentWindow.h"
#include "document/MyDocument.h"
#include "platform/UserDefaults.h"
#include "support/PdfBuilder.h"
#include "support/RecordingPlatform.h"
#include "support/TempDir.h"

#include <QCoreApplication>
#include <QEvent>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class Delegate : public testing::Test {
protected:
    QString file(const QString &name) const {
        test::PdfBuilder pdf;
        pdf.addNumberedPages(2);
        pdf.save(dir.path(name));
        return dir.path(name);
    }
    MyDocument &document(size_t index) {
        return static_cast<MyDocument &>(*delegate.documentController().documents().at(index));
    }

    test::TempDir dir;
    test::RecordingPlatform platform;
    AppDelegate delegate{platform};
};

TEST_F(Delegate, RegistersTheTenDefaults) {
    UserDefaults &defaults = platform.userDefaults();
    EXPECT_EQ(defaults.integerForKey("autotocMaxDepth"), 3);
    EXPECT_FALSE(defaults.boolForKey("LeafwrightAllowPDFReadingInBackground"));
    EXPECT_TRUE(defaults.boolForKey("autotocIgnoreHighFrequencyFonts"));
    EXPECT_TRUE(defaults.boolForKey("LeafwrightShouldFindMOIPointInAutoTOC"));
    EXPECT_TRUE(defaults.boolForKey("LeafwrightShowHelpOnStart"));
    EXPECT_FALSE(defaults.boolForKey("LeafwrightEnableDoubleClickEditing"));
    EXPECT_FALSE(defaults.boolForKey("LeafwrightAlwaysPreviewBeforeSave"));
    EXPECT_FALSE(defaults.boolForKey("LeafwrightShouldWarnAboutPDFVersion"));
    EXPECT_TRUE(defaults.boolForKey("LeafwrightShouldRedoMOIGenericPoints"));
    EXPECT_TRUE(defaults.boolForKey("autotocIgnoreLowFrequencyFonts"));
    EXPECT_TRUE(defaults.stringForKey("LastUsedH1H2H3MapString").isNull());
}

TEST_F(Delegate, WithoutTheGuideAStartShowsNoWindow) {
    EXPECT_FALSE(delegate.applicationShouldOpenUntitledFile());
    platform.userDefaults().setValue("LeafwrightShowHelpOnStart", false);
    delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(delegate.documentController().documents().empty());
}

TEST_F(Delegate, EachFileGetsAWindow) {
    delegate.openFiles({file("a.pdf"), file("b.pdf")});
    ASSERT_EQ(delegate.documentController().documents().size(), 2U);
    EXPECT_TRUE(document(0).window()->isVisible());
    EXPECT_EQ(document(1).displayName(), "b.pdf");
}

TEST_F(Delegate, AMissingFileIsToldOfAndTheOthersAreOpened) {
    delegate.openFiles({dir.path("nowhere.pdf"), file("b.pdf")});
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_TRUE(platform.alerts[0].message.contains("nowhere.pdf"));
    EXPECT_EQ(delegate.documentController().documents().size(), 1U);
}

TEST_F(Delegate, FilesDroppedOnAWindowAreOpened) {
    delegate.openFiles({file("a.pdf")});
    Q_EMIT document(0).myWindow()->filesDropped({file("b.pdf")});
    EXPECT_EQ(delegate.documentController().documents().size(), 2U);
}

TEST_F(Delegate, TheCloseCommandClosesItsDocument) {
    delegate.openFiles({file("a.pdf"), file("b.pdf")});
    EXPECT_TRUE(document(0).actions().perform("performClose:"));
    ASSERT_EQ(delegate.documentController().documents().size(), 1U);
    EXPECT_EQ(document(0).displayName(), "b.pdf");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(Delegate, TheGuideOpensWithTheSystemsApplication) {
    delegate.openFiles({file("a.pdf")});
    ASSERT_TRUE(document(0).actions().perform("openHelpFile:"));
    ASSERT_EQ(platform.openedFiles.size(), 1);
    EXPECT_TRUE(platform.openedFiles[0].endsWith("Leafwright User Guide.pdf"));
    EXPECT_EQ(delegate.documentController().documents().size(), 1U) << "not in this program";
}

}  // namespace
}  // namespace leafwright
