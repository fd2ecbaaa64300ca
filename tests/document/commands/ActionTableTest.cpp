#include "document/commands/ActionTable.h"
#include "support/OpenPdf.h"
#include "support/Paths.h"

#include <QKeySequence>
#include <QSet>

#include <gtest/gtest.h>
#include <map>
#include <stdexcept>

namespace leafwright {
namespace {

TEST(ActionTable, PerformsAnEnabledCommand) {
    ActionTable table;
    int calls = 0;
    table.handle("moveLeft:", [&](QObject *) { ++calls; });
    EXPECT_TRUE(table.perform("moveLeft:"));
    EXPECT_EQ(calls, 1);
}

TEST(ActionTable, ADisabledCommandIsNotPerformed) {
    ActionTable table;
    int calls = 0;
    bool enabled = false;
    table.handle("moveLeft:", [&](QObject *) { ++calls; });
    table.handle("zoomIn:", [](QObject *) {});
    table.setCondition([&](Needs needs) {
        EXPECT_EQ(needs, Needs::Entries);
        return enabled;
    });
    EXPECT_TRUE(table.validateUserInterfaceItem("zoomIn:")) << "needs nothing";
    EXPECT_FALSE(table.validateUserInterfaceItem("moveLeft:"));
    EXPECT_FALSE(table.perform("moveLeft:"));
    enabled = true;
    EXPECT_TRUE(table.perform("moveLeft:"));
    EXPECT_EQ(calls, 1);
}

TEST(ActionTable, ACommandWithoutHandlerIsDisabledAndNotListed) {
    ActionTable table;
    EXPECT_FALSE(table.perform("moveLeft:"));
    EXPECT_TRUE(table.handled().empty());
}

TEST(ActionTable, OnlyKnownCommandsCanBeHandledAndOnlyOnce) {
    ActionTable table;
    EXPECT_THROW(table.handle("moveSideways:", [](QObject *) {}), std::logic_error);
    table.handle("moveLeft:", [](QObject *) {});
    EXPECT_THROW(table.handle("moveLeft:", [](QObject *) {}), std::logic_error);
}

TEST(ActionTable, OnlySomeCommandsTurnSomethingOnAndOff) {
    ActionTable table;
    bool isBold = false;
    table.handle("toggleBold:", [&](QObject *) { isBold = !isBold; });
    table.handle("moveLeft:", [](QObject *) {});
    EXPECT_FALSE(table.isOn("toggleBold:").has_value()) << "nobody knows";
    table.setState("toggleBold:", [&] { return isBold; });
    EXPECT_EQ(table.isOn("toggleBold:"), false);
    table.perform("toggleBold:");
    EXPECT_EQ(table.isOn("toggleBold:"), true);
    EXPECT_FALSE(table.isOn("moveLeft:").has_value());
    EXPECT_FALSE(table.isOn("toggleItalic:").has_value()) << "not handled";
}

TEST(ActionTable, ListsWhatIsHandledInTheOrderOfTheMenus) {
    ActionTable table;
    table.handle("zoomIn:", [](QObject *) {});
    table.handle("saveDocument:", [](QObject *) {});
    const auto handled = table.handled();
    ASSERT_EQ(handled.size(), 2U);
    EXPECT_STREQ(handled[0]->selector, "saveDocument:");
    EXPECT_STREQ(handled[1]->selector, "zoomIn:");
}

TEST(ActionTable, ACommandMayDestroyTheTable) {
    auto table = std::make_unique<ActionTable>();
    const QString survivor = "still here";
    QString seen;
    table->handle("performClose:", [&table, &seen, survivor](QObject *) {
        table.reset();
        seen = survivor;
    });
    EXPECT_TRUE(table->perform("performClose:"));
    EXPECT_EQ(seen, survivor);
}

TEST(ActionDescriptions, SelectorsAndTitlesInAMenuAndShortcutsAreUnique) {
    QSet<QString> selectors;
    QSet<QString> titles;
    QSet<QString> shortcuts;
    for (const ActionDescription &each : actionDescriptions()) {
        const QString title = QString::number(static_cast<int>(each.menu)) + QString::fromUtf8(each.title);
        EXPECT_FALSE(selectors.contains(each.selector)) << each.selector;
        EXPECT_FALSE(titles.contains(title)) << each.title;
        EXPECT_FALSE(*each.shortcut && shortcuts.contains(each.shortcut)) << each.shortcut;
        selectors.insert(each.selector);
        titles.insert(title);
        shortcuts.insert(each.shortcut);
    }
}

TEST(ActionDescriptions, ShortcutsCanBeTyped) {
    for (const ActionDescription &each : actionDescriptions()) {
        const QKeySequence keys(QString::fromLatin1(each.shortcut));
        EXPECT_EQ(keys.isEmpty(), *each.shortcut == 0) << each.shortcut;
        EXPECT_EQ(keys.toString(QKeySequence::PortableText), each.shortcut);
    }
}

TEST(ActionDescriptions, AreThoseThatHelpAndPeoplesFingersRelyOn) {
    const QStringList expected{
        // clang-format off
        "File: Open… [Ctrl+O]",
        "File: Close [Ctrl+W]",
        "File: Save [Ctrl+S]",
        "File: Save As… [Ctrl+Shift+S]",
        "File: Open in Default Application",
        "File: Revert Outline to Saved",
        "File: Reload [F5]",
        "File: Import Outline…",
        "File: Export Outline…",
        "File: Quit [Ctrl+Q]",
        "Edit: Undo [Ctrl+Z]",
        "Edit: Redo [Ctrl+Shift+Z]",
        "Edit: Step Back [Ctrl+Alt+Z]",
        "Edit: Step Forward [Ctrl+Alt+Shift+Z]",
        "Edit: Copy [Ctrl+C]",
        "Edit: Select All [Ctrl+A]",
        "Edit: Select Level 1 [Ctrl+1]",
        "Edit: Select Level 2 [Ctrl+2]",
        "Edit: Select Level 3 [Ctrl+3]",
        "Edit: Search and Select… [Ctrl+F]",
        "Edit: Find in Pages… [Ctrl+Shift+F]",
        "Edit: Find Next [F3]",
        "Edit: Find Previous [Shift+F3]",
        "Edit: Preferences… [Ctrl+,]",
        "Outline: Add Sibling [Ctrl+B]",
        "Outline: Add Child [Ctrl+Shift+B]",
        "Outline: Add Selected Text as Sibling [Ctrl+T]",
        "Outline: Add Selected Text as Child [Ctrl+Shift+T]",
        "Outline: Remove [Del]",
        "Outline: Promote Children [Alt+Shift+Left]",
        "Outline: Move Left [Alt+Left]",
        "Outline: Move Right [Alt+Right]",
        "Outline: Move Up [Alt+Up]",
        "Outline: Move Down [Alt+Down]",
        "Outline: Expand [Ctrl+Right]",
        "Outline: Collapse [Ctrl+Left]",
        "Outline: Point Selected Entry Here [Ctrl+Shift+P]",
        "Outline: Open in Viewers",
        "Outline: Filter… [Ctrl+K]",
        "Outline: Reveal Current Entry",
        "Titles: Number Sequentially…",
        "Titles: Find and Replace… [Ctrl+H]",
        "Titles: Add Prefix…",
        "Titles: Title Case",
        "Titles: UPPER CASE",
        "Titles: lower case",
        "Titles: Bold",
        "Titles: Italic",
        "Titles: Colour…",
        "Titles: Title Case Selected Row",
        "Contents: Find Contents… [Ctrl+Shift+G]",
        "Contents: Complete from Existing Entries",
        "Contents: AutoTOC… [Ctrl+G]",
        "Contents: AutoTOC with Last Map",
        "Contents: Self-Calibrating AutoTOC",
        "Contents: MiniTOC from Selection",
        "Contents: Use Selection for H1 [Ctrl+Alt+1]",
        "Contents: Use Selection for H2 [Ctrl+Alt+2]",
        "Contents: Use Selection for H3 [Ctrl+Alt+3]",
        "Contents: Use Selection for H4 [Ctrl+Alt+4]",
        "Contents: Load Heading Map…",
        "Contents: Save Heading Map…",
        "Contents: Delete Selected Headings",
        "Contents: Reset Heading Map",
        "View: Zoom In [Ctrl++]",
        "View: Zoom Out [Ctrl+-]",
        "View: Zoom to Fit [Ctrl+0]",
        "View: Fit Page",
        "View: Actual Size",
        "View: Next Page [Ctrl+PgDown]",
        "View: Previous Page [Ctrl+PgUp]",
        "View: Go to Page… [Ctrl+L]",
        "View: Back",
        "View: Forward",
        "View: Show Target of Selected Item [Ctrl+J]",
        "View: Next Page Label Corner [Ctrl+Shift+L]",
        "View: Printed Page Number…",
        "Help: User Guide [F1]",
        "Help: Tutorials",
        "Help: Leafwright Online",
        "Help: Leafwright in the App Store",
        "Help: Email Customer Support",
        "Help: Send Feedback",
        "Help: Check for Updates…",
        "Help: About",
        // clang-format on
    };
    const std::map<Menu, QString> menus{{Menu::File, "File"},         {Menu::Edit, "Edit"},
                                        {Menu::Outline, "Outline"},   {Menu::Titles, "Titles"},
                                        {Menu::Contents, "Contents"}, {Menu::View, "View"},
                                        {Menu::Help, "Help"}};
    QStringList actual;
    for (const ActionDescription &each : actionDescriptions()) {
        if (each.menu == Menu::None) continue;
        const QString keys = *each.shortcut ? QString(" [%1]").arg(each.shortcut) : QString();
        actual.append(menus.at(each.menu) + ": " + QString::fromUtf8(each.title) + keys);
    }
    EXPECT_EQ(actual, expected);
}

TEST(ActionTable, TheManPageTellsOfAllCommandsOfTheMenus) {
    const QString page = QString::fromUtf8(test::contentOf(test::projectPath("docs/man/leafwright.1")));
    for (const ActionDescription &description : actionDescriptions()) {
        if (description.menu == Menu::None) continue;
        QString told = QString(".It Li %1\n%2\n").arg(description.selector, actionTitle(description));
        const QString keys = description.shortcut;
        if (!keys.isEmpty()) told += QString(".Pq %1\n").arg(QString(keys).replace('-', "\\-"));
        EXPECT_TRUE(page.contains(told.replace(u'…', "..."))) << qPrintable(told);
    }
}

}  // namespace
}  // namespace leafwright
