#include "document/commands/SelectionCommands.h"
#include "document/window/OutlineFilter.h"
#include "support/TreeWindowFixture.h"

#include <QAccessible>
#include <QLineEdit>
#include <QStatusBar>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class Filtering : public test::TreeWindowFixture {
protected:
    OutlineFilter &filter() { return *document.myWindow()->outlineFilter(); }
    QLineEdit &field() { return *filter().findChild<QLineEdit *>("filterField"); }
    void type(const QString &text) {
        field().setText(text);
        filter().finish();
    }
    QString rows() {
        QStringList titles;
        for (int row = 0; row < document.outlineview()->numberOfRows(); ++row)
            titles.append(document.outlineview()->itemAtRow(row)->representedObject()->pageTitle());
        return titles.join(' ');
    }
    QString message() { return document.myWindow()->statusBar()->currentMessage(); }
};

TEST_F(Filtering, EntriesThatHaveTheTextAreShownWithThoseAboveThem) {
    setOutline("alpha (beta (gamma) delta) epsilon");
    type("GAM");
    EXPECT_EQ(rows(), "alpha beta gamma");
    EXPECT_EQ(filter().result(), "1 of 5");
    type("");
    EXPECT_EQ(rows(), "alpha beta gamma delta epsilon");
    EXPECT_EQ(filter().result(), "");
}

TEST_F(Filtering, ComesByItselfWithoutAnybodyWaiting) {
    setOutline("alpha beta");
    field().setText("bet");
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == "beta"; }, 60'000));
}

TEST_F(Filtering, OnlyTheLastOfManyTextsCounts) {
    setOutline("alpha beta gamma");
    for (const char *text : {"a", "al", "alp", "ga"})
        field().setText(text);
    filter().finish();
    QCoreApplication::processEvents();
    EXPECT_EQ(rows(), "gamma");
}

TEST_F(Filtering, TheCommandGoesToTheFieldAndEscapeBack) {
    setOutline("alpha beta");
    perform("filterOutline:");
    EXPECT_EQ(document.window()->focusWidget(), &field());
    type("beta");
    QTest::keyClick(&field(), Qt::Key_Escape);
    EXPECT_EQ(field().text(), "");
    EXPECT_EQ(rows(), "alpha beta");
    EXPECT_EQ(document.window()->focusWidget(), document.outlineview());
}

TEST_F(Filtering, EscapeInTheOutlineShowsAllToo) {
    setOutline("alpha beta");
    type("beta");
    QTest::keyClick(document.outlineview(), Qt::Key_Escape);
    EXPECT_EQ(rows(), "alpha beta");
}

TEST_F(Filtering, ReturnGoesToTheFirstEntryThatHasTheText) {
    setOutline("alpha (beta) gamma (betatron)");
    perform("filterOutline:");
    field().setText("beta");
    QTest::keyClick(&field(), Qt::Key_Return);
    EXPECT_EQ(selected(), "beta");
    EXPECT_EQ(document.window()->focusWidget(), document.outlineview());
}

TEST_F(Filtering, WhatIsHiddenIsSelectedNoLongerAndThatIsTold) {
    setOutline("alpha beta gamma");
    select({{0}, {1}, {2}});
    type("beta");
    EXPECT_EQ(selected(), "beta");
    EXPECT_EQ(message(), "2 selected entries are hidden by the filter, and selected no longer.");
    type("gamma");
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(message(), "The selected entry is hidden by the filter, and selected no longer.");
    QCoreApplication::processEvents();
    EXPECT_FALSE(document.myWindow()->findChild<QAction *>("removeOutlineItems:")->isEnabled());
}

TEST_F(Filtering, CommandsActOnWhatIsShown) {
    setOutline("one (x) two three (x2)");
    type("x");
    perform("selectTOCAll:");
    EXPECT_EQ(selected(), "one x three x2");
    perform("changeCaseToUpperCase:");
    EXPECT_EQ(outline(), "ONE (X) two THREE (X2)");
    EXPECT_EQ(rows(), "ONE X THREE X2") << "what has another title stays";
    perform("selectTOCOnlyLevel1:");
    EXPECT_EQ(selected(), "ONE THREE");
}

TEST_F(Filtering, ASearchSelectsNothingThatIsHidden) {
    setOutline("xa b xc");
    type("c");
    document.selectionCommands().searchAndSelect("x");
    EXPECT_EQ(selected(), "xc");
    document.selectionCommands().searchAndSelect("b");
    EXPECT_EQ(selected(), "xc");
    EXPECT_EQ(platform.beeps, 1);
}

TEST_F(Filtering, AnEntryThatIsAddedIsShown) {
    setOutline("alpha beta");
    type("beta");
    select({{1}});
    perform("addSiblingOutlineItem:");
    document.outlineview()->endEditing();
    EXPECT_EQ(rows(), "beta Page");
    filter().finish();
    EXPECT_EQ(filter().result(), "1 of 3");
    EXPECT_EQ(document.root().children().size(), 3U);
}

TEST_F(Filtering, ARemovalTellsWhatWentUnseen) {
    setOutline("one (x y (z)) two");
    type("x");
    select({{0}});
    perform("removeOutlineItems:");
    EXPECT_EQ(outline(), "two");
    EXPECT_EQ(rows(), "");
    EXPECT_TRUE(message().contains(": 2.")) << message().toStdString();
    perform("stepBack:");
    EXPECT_EQ(outline(), "one (x y (z)) two");
    EXPECT_EQ(rows().left(3), "one");
}

TEST_F(Filtering, ARemovalOfWhatIsShownTellsHowManyWent) {
    setOutline("one (x) two");
    type("x");
    select({{0}});
    perform("removeOutlineItems:");
    EXPECT_EQ(message(), "2 entries removed");
}

TEST_F(Filtering, TheCountFollowsWhatGoes) {
    setOutline("beta1 gamma beta2");
    type("beta");
    EXPECT_EQ(filter().result(), "2 of 3");
    select({{0}});
    perform("removeOutlineItems:");
    EXPECT_TRUE(QTest::qWaitFor([&] { return filter().result() == "1 of 2"; }, 60'000));
}

TEST_F(Filtering, WhatIsTakenBackIsShown) {
    setOutline("");
    for (const char *title : {"beta", "alpha"})
        document.edits().insert(document.root(), 0, std::make_unique<MyOutlineItem>(title, PageTarget{"1"}));
    select({{0}});
    perform("changeCaseToUpperCase:");
    type("beta");
    EXPECT_EQ(rows(), "beta");
    perform("stepBack:");
    EXPECT_EQ(rows(), "alpha beta");
    EXPECT_EQ(selected(), "alpha");
}

TEST_F(Filtering, MovesAreMovesOfTheWholeTree) {
    setOutline("a1 b a2 c");
    type("a");
    select({{2}});
    perform("moveUp:");
    EXPECT_EQ(outline(), "a1 a2 b c");
    EXPECT_EQ(rows(), "a1 a2");
    EXPECT_EQ(selected(), "a2");
    perform("moveDown:");
    perform("moveRight:");
    EXPECT_EQ(outline(), "a1 b (a2) c");
    EXPECT_EQ(rows(), "a1 b a2") << "what it went into is shown";
    type("");
    EXPECT_EQ(selected(), "a2");
}

TEST_F(Filtering, AnOutlineInPlaceOfAnotherIsLookedThroughAnew) {
    setOutline("alpha beta");
    type("beta");
    setOutline("beta1 gamma beta2");
    filter().finish();
    EXPECT_EQ(rows(), "beta1 beta2");
    EXPECT_EQ(filter().result(), "2 of 3");
}

TEST_F(Filtering, TheOutlineOfTheFileIsLookedThroughAnewToo) {
    setOutline("alpha beta");
    type("beta");
    ASSERT_TRUE(document.reload(MyDocument::Reload::TakeOutline));
    filter().finish();
    EXPECT_EQ(rows(), "");
    EXPECT_EQ(filter().result(), "0 of 0");
}

TEST_F(Filtering, ATitleThatChangedMeanwhileIsFoundByItsNewText) {
    setOutline("alpha beta");
    type("alp");
    type("");
    document.edits().setPageTitle(*document.root().children()[1], "alphabet");
    type("alp");
    EXPECT_EQ(rows(), "alpha alphabet");
}

TEST_F(Filtering, FoldedEntriesAreLookedThroughAndFoldedAgain) {
    setOutline("alpha (beta) gamma (delta)");
    document.outlineview()->collapseItem(*node({0}));
    type("beta");
    EXPECT_EQ(rows(), "alpha beta");
    type("");
    EXPECT_EQ(rows(), "alpha gamma delta");
}

TEST_F(Filtering, HasNamesForAssistivePrograms) {
    setOutline("alpha");
    type("alpha");
    QAccessibleInterface *heard = QAccessible::queryAccessibleInterface(&field());
    EXPECT_EQ(heard->text(QAccessible::Name), "Filter of the outline");
    EXPECT_EQ(heard->text(QAccessible::Description), "1 of 1");
}

TEST_F(Filtering, ManyEntriesAreFilteredToo) {
    MyOutlineItem::Children items;
    constexpr int count = 20'000;
    for (int i = 0; i < count; ++i) {
        items.push_back(std::make_unique<MyOutlineItem>());
        items.back()->setPageTitle("Entry " + QString::number(i));
    }
    document.root().setChildren(std::move(items));
    type("entry 1999");
    EXPECT_EQ(document.outlineview()->numberOfRows(), 11);
    type("entry");
    EXPECT_EQ(document.outlineview()->numberOfRows(), count);
}

TEST_F(Filtering, TitlesThatChangeWhileTheyAreReadAreReadAnew) {
    MyOutlineItem::Children items;
    constexpr int count = 20'000;
    for (int i = 0; i < count; ++i)
        items.push_back(std::make_unique<MyOutlineItem>("Entry " + QString::number(i), PageTarget{"1"}));
    document.root().setChildren(std::move(items));
    field().setText("alpha");  // Only some have been read now.
    document.edits().setPageTitle(*document.root().children()[0], "Alpha");
    document.edits().remove(document.root(), 1);
    filter().finish();
    EXPECT_EQ(rows(), "Alpha");
    EXPECT_EQ(filter().result(), "1 of 19,999");

    document.edits().setPageTitle(*document.root().children()[5], "Alphabet");
    field().setText("alphab");
    field().setText("");
    filter().finish();
    EXPECT_EQ(document.outlineview()->numberOfRows(), count - 1);
    field().setText("alphab");
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == "Alphabet"; }, 60'000));
}

}  // namespace
}  // namespace leafwright
