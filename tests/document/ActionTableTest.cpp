#include "document/ActionTable.h"

#include <QSet>

#include <gtest/gtest.h>
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
    table.handle(
        "moveLeft:", [&](QObject *) { ++calls; }, [&] { return enabled; });
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

}  // namespace
}  // namespace leafwright
