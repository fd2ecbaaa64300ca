#include "document/commands/SelectionCommands.h"
#include "support/TreeWindowFixture.h"

#include <QLabel>
#include <QLineEdit>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using Selecting = test::TreeWindowFixture;

TEST_F(Selecting, AfterASearchTheKeyboardIsTheOutlines) {
    setOutline("a b");
    document.pdfview()->setFocus();
    perform("runSearchSelectSheet:");
    EXPECT_EQ(document.openSheet()->windowTitle(), "Search and Select");
    qobject_cast<QLineEdit *>(document.openSheet()->field("searchSelectField"))->setText("b");
    document.openSheet()->pressButton(1);
    EXPECT_EQ(document.window()->focusWidget(), document.outlineview());
}

TEST_F(Selecting, ASearchBeginsWithAnEmptyFieldEachTime) {
    setOutline("a b");
    for (int time = 0; time < 2; ++time) {
        perform("runSearchSelectSheet:");
        auto *field = qobject_cast<QLineEdit *>(document.openSheet()->field("searchSelectField"));
        EXPECT_EQ(field->text(), "");
        field->setText("b");
        document.openSheet()->pressButton(1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_EQ(selected(), "b");
}

TEST_F(Selecting, OnlyTheSearchButtonSearches) {
    setOutline("a b");
    perform("runSearchSelectSheet:");
    qobject_cast<QLineEdit *>(document.openSheet()->field("searchSelectField"))->setText("a");
    constexpr int anotherTag = 2;
    document.openSheet()->end(anotherTag);
    EXPECT_EQ(selected(), "");
}

TEST_F(Selecting, FoldingCoversWhatIsBelowFoldedItemsToo) {
    setOutline("a (x (1 (deep)) y)");
    document.outlineview()->collapseItem(*node({0}));
    select({{0}});
    perform("applyTOCCollapse:");
    document.outlineview()->expandItem(*node({0}));
    document.outlineview()->expandItem(*node({0, 0}));
    EXPECT_FALSE(document.outlineview()->isItemExpanded(*node({0, 0, 0})));
}

TEST_F(Selecting, TheSheetTellsWhatASearchWouldSelect) {
    setOutline("a ab (b) c");
    perform("runSearchSelectSheet:");
    auto *field = qobject_cast<QLineEdit *>(document.openSheet()->field("searchSelectField"));
    const auto *found = qobject_cast<QLabel *>(document.openSheet()->field("searchSelectFound"));
    EXPECT_EQ(found->text().trimmed(), "");
    field->setText("b");
    EXPECT_EQ(found->text(), "Selects 2 entries.");
    field->setText("ab");
    EXPECT_EQ(found->text(), "Selects 1 entry.");
    field->setText("B");
    EXPECT_EQ(found->text(), "No title contains this text.");
    field->setText("");
    EXPECT_EQ(found->text().trimmed(), "");
    EXPECT_EQ(selected(), "") << "before the button is pressed";
    document.openSheet()->pressButton(0);
}

}  // namespace
}  // namespace leafwright
