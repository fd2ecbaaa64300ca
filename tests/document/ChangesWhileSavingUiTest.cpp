#include "document/commands/HeadingsWindowFixture.h"
#include "document/window/SaveProgress.h"
#include "widgets/BusySheet.h"
#include "widgets/Sheet.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::HasSubstr;
using testing::Not;

/// Drawing the progress of a write handles events, and with them whatever has waited for its time.
class ChangesWhileSaving : public test::HeadingsWindowFixture {
protected:
    void SetUp() override {
        HeadingsWindowFixture::SetUp();
        setOutline("a");
        document.updateChangeCount(Document::Change::Done);
    }
    /// The titles in the file, "(a (b)) (c)".
    std::string saved() { return outlineOf(document.pdfURL()).toStdString(); }
};

/// Calls a function for the first page that is written, as an event would that the drawing lets in.
class AmidTheWrite final : public PDFWriteObserver {
public:
    explicit AmidTheWrite(std::function<void()> function) : function_(std::move(function)) {}
    void documentBeginWrite(int /*pageCount*/) override {}
    void documentEndPageWrite(int /*pageIndex*/) override {
        if (function_) std::exchange(function_, nullptr)();
    }
    void documentEndWrite() override {}

private:
    std::function<void()> function_;
};

TEST_F(ChangesWhileSaving, AutoTOCThatIsDueAmidTheWriteComesAfterItAndIsToBeSaved) {
    perform("runGuessPDF:");
    ASSERT_TRUE(document.openSheet()->pressButton(1));
    perform("saveDocument:");
    EXPECT_EQ(outline(), "a") << "nothing happens to the outline while it is written";
    EXPECT_THAT(saved(), Not(HasSubstr("AutoTOC3")));
    EXPECT_FALSE(document.isDocumentEdited()) << "what is in the file is the whole outline";

    ASSERT_TRUE(QTest::qWaitFor([&] { return outline().startsWith("a AutoTOC3 (Chapter"); }, 10000));
    EXPECT_TRUE(document.isDocumentEdited()) << "or closing would not ask";
    perform("saveDocument:");
    EXPECT_THAT(saved(), HasSubstr("AutoTOC3"));
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(ChangesWhileSaving, WhatChangesAfterTheExportIsStillToBeSaved) {
    AmidTheWrite change([&] {
        document.root().children()[0]->setPageTitle("later");
        document.updateChangeCount(Document::Change::Done);
    });
    document.setWriteObserver(&change);
    perform("saveDocument:");
    EXPECT_THAT(saved(), HasSubstr("] a ("));
    EXPECT_TRUE(document.isDocumentEdited());

    document.setWriteObserver(nullptr);
    perform("saveDocument:");
    EXPECT_THAT(saved(), HasSubstr("] later ("));
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(ChangesWhileSaving, NoCommandRunsAmidTheWrite) {
    bool performed = true;
    AmidTheWrite command([&] { performed = document.actions().perform("addSiblingOutlineItem:"); });
    document.setWriteObserver(&command);
    perform("saveDocument:");
    document.setWriteObserver(nullptr);
    EXPECT_FALSE(performed);
    EXPECT_EQ(outline(), "a");
    perform("addSiblingOutlineItem:");
    EXPECT_EQ(outline(), "a Untitled") << "and afterwards as ever";
}

TEST_F(ChangesWhileSaving, AWindowThatIsClosedAmidTheWriteClosesAfterIt) {
    bool closedAmid = true;
    int closings = 0;
    QObject::connect(&document, &Document::closed, &document, [&] { ++closings; });
    AmidTheWrite close([&] { closedAmid = document.window()->close() || document.window()->close(); });
    document.setWriteObserver(&close);
    perform("saveDocument:");
    document.setWriteObserver(nullptr);
    EXPECT_FALSE(closedAmid);
    EXPECT_EQ(closings, 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return closings > 0; }, 10000));
    EXPECT_EQ(closings, 1);
    EXPECT_TRUE(platform.alerts.isEmpty()) << "all is saved";
}

}  // namespace
}  // namespace leafwright
