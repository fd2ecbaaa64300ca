#include "document/commands/ActionTable.h"
#include "document/commands/Refusals.h"
#include "support/Unprivileged.h"
#include "support/WindowFixture.h"

#include <QAction>
#include <QHelpEvent>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>
#include <QToolTip>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace leafwright {
namespace {

using test::PdfBuilder;

const QString encrypted = QStringLiteral("The file is encrypted, and can’t be changed.");

/// A file with an entry in another, whose commands are looked at.
class RefusalsOfCommands : public test::WindowFixture {
protected:
    static PdfBuilder book() {
        PdfBuilder pdf;
        pdf.addNumberedPages(2);
        addOutline(pdf, {{"(One)", "[1 /XYZ 72 700 null]", {{"(Two)", "[1 /XYZ 72 700 null]"}}}});
        return pdf;
    }
    void openEncrypted() {
        PdfBuilder::Options options;
        options.ownerPassword = "owner";
        open(book(), options);
    }
    QAction &action(const char *selector) {
        document.myWindow()->updateActions();
        return *document.window()->findChild<QAction *>(selector);
    }
    QString told(const char *selector) { return action(selector).statusTip(); }
    /// What is shown where the pointer rests on a command.
    QString tipInMenu(const char *selector) {
        QToolTip::hideText();
        EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::text().isEmpty(); }));
        const QAction &command = action(selector);
        for (const QAction *top : document.myWindow()->menuBar()->actions()) {
            QMenu &menu = *top->menu();
            if (!menu.actions().contains(&command)) continue;
            menu.resize(menu.sizeHint());
            const QPoint place = menu.actionGeometry(const_cast<QAction *>(&command)).center();
            QHelpEvent event(QEvent::ToolTip, place, menu.mapToGlobal(place));
            QCoreApplication::sendEvent(&menu, &event);
        }
        return QToolTip::text();
    }
};

TEST_F(RefusalsOfCommands, WhatDoesSomethingHasNone) {
    open(book());
    for (const char *command : {"saveDocument:", "saveDocumentAs:", "addSiblingOutlineItem:", "zoomIn:"}) {
        EXPECT_EQ(told(command), "") << command;
        EXPECT_EQ(tipInMenu(command), "") << "what the menu says anyway is not repeated";
    }
    EXPECT_EQ(action("addSiblingOutlineItem:").toolTip(), "Add Sibling (Ctrl+B)");
}

TEST_F(RefusalsOfCommands, AnEncryptedFileIsToldBeforehandWhileCommandsStayEnabled) {
    openEncrypted();
    select({{0}});
    for (const char *command :
         {"saveDocument:", "saveDocumentAs:", "addSiblingOutlineItem:", "addChildOutlineItem:",
          "removeOutlineItems:", "promoteChildrenOutlineItem:"}) {
        SCOPED_TRACE(command);
        EXPECT_TRUE(action(command).isEnabled());
        EXPECT_EQ(told(command), encrypted);
        EXPECT_EQ(tipInMenu(command), encrypted);
        EXPECT_TRUE(action(command).toolTip().endsWith("\n" + encrypted)) << "in the tool bar";
    }
    EXPECT_EQ(told("findContents:"), encrypted) << "which can't be chosen at all";
    EXPECT_EQ(told("changeCaseToUpperCase:"), "") << "which does something in memory";
    EXPECT_EQ(told("zoomIn:"), "");
}

TEST_F(RefusalsOfCommands, WhatIsSaidToDoNothingDoesNothing) {
    openEncrypted();
    const QString before = test::treeText(document.root());
    int count = 0;
    for (const ActionDescription &each : actionDescriptions()) {
        select({{0}});
        if (whyRefused(document, each, false) != encrypted || QString(each.selector).startsWith("save"))
            continue;
        document.actions().perform(each.selector);
        EXPECT_EQ(test::treeText(document.root()), before) << each.selector;
        ++count;
    }
    EXPECT_GT(count, 5);
}

TEST_F(RefusalsOfCommands, ALockedFileIsToldUntilItIsUnlocked) {
    PdfBuilder::Options options;
    options.userPassword = "user";
    open(book(), options);
    EXPECT_EQ(told("addSiblingOutlineItem:"), "The file is locked by a password.");
    ASSERT_FALSE(document.unlock("user"));
    EXPECT_EQ(told("addSiblingOutlineItem:"), encrypted);
}

TEST_F(RefusalsOfCommands, AReadOnlyFileCanBeSavedElsewhereOnly) {
    const QString path = save(book());
    ASSERT_EQ(::chmod(QFile::encodeName(dir.path(".")).constData(), 0777), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0444), 0);
    const test::Unprivileged nobody;
    ASSERT_TRUE(document.readFromURL(path));
    document.makeWindowControllers();
    EXPECT_EQ(told("saveDocument:"), "The file is read-only. It can be saved in another place.");
    EXPECT_EQ(told("saveDocumentAs:"), "");
    EXPECT_EQ(told("addSiblingOutlineItem:"), "");
}

TEST_F(RefusalsOfCommands, WhatIsToBeSelectedIsTold) {
    open(book());
    EXPECT_EQ(told("removeOutlineItems:"), "No entry is selected.");
    EXPECT_EQ(told("pointSelectedEntryHere:"), "This takes one selected entry.");
    EXPECT_EQ(told("promoteChildrenOutlineItem:"), "This takes one selected entry with others below it.");
    EXPECT_EQ(told("useSelectionforH1:"), "No text is selected on the pages.");
    select({{0}});
    EXPECT_EQ(told("removeOutlineItems:"), "");
    EXPECT_EQ(told("promoteChildrenOutlineItem:"), "");
}

TEST_F(RefusalsOfCommands, IsShownAtTheFootWhileACommandIsLookedAtInItsMenu) {
    openEncrypted();
    QMenu menu(document.window());
    menu.addAction(&action("saveDocument:"));
    menu.popup({0, 0});
    menu.setActiveAction(&action("saveDocument:"));
    EXPECT_EQ(document.myWindow()->statusBar()->currentMessage(), encrypted);
}

}  // namespace
}  // namespace leafwright
