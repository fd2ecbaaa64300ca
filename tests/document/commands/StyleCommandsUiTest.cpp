#include "document/commands/StyleCommands.h"
#include "document/window/TitleColorSheet.h"
#include "support/TreeWindowFixture.h"

#include <QColorDialog>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QToolButton>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class Styles : public test::TreeWindowFixture {
protected:
    void SetUp() override {
        TreeWindowFixture::SetUp();
        setOutline("a b (c) d");
    }
    const OutlineEntry &entry(const IndexPath &path) { return node(path)->representedObject()->entry(); }
    DocumentWindow &window() { return *document.myWindow(); }
    QAction *action(const char *selector) { return window().findChild<QAction *>(selector); }
    /// As the menu shows it that is opened now.
    bool isChecked(const char *selector) {
        for (QMenu *menu : window().menuBar()->findChildren<QMenu *>(Qt::FindDirectChildrenOnly))
            Q_EMIT menu->aboutToShow();
        return action(selector)->isChecked();
    }
    QLineEdit *field() { return qobject_cast<QLineEdit *>(document.openSheet()->field("titleColorField")); }
    std::unique_ptr<PDFDocument> saved() {
        perform("saveDocument:");
        return test::openPdf(document.pdfURL());
    }
};

TEST_F(Styles, BoldIsForAllSelectedEntriesOrForNone) {
    select({{0}, {1, 0}});
    perform("toggleBold:");
    EXPECT_TRUE(entry({0}).bold && entry({1, 0}).bold);
    EXPECT_FALSE(entry({1}).bold);
    EXPECT_FALSE(entry({0}).italic);
    EXPECT_TRUE(document.isDocumentEdited());
    select({{0}, {1}});
    perform("toggleBold:");
    EXPECT_TRUE(entry({0}).bold && entry({1}).bold) << "one was not";
    perform("toggleBold:");
    EXPECT_FALSE(entry({0}).bold || entry({1}).bold);
    EXPECT_TRUE(entry({1, 0}).bold);
}

TEST_F(Styles, ItalicAndOpenAreOtherProperties) {
    select({{1}});
    perform("toggleItalic:");
    perform("toggleOpenInViewers:");
    EXPECT_TRUE(entry({1}).italic && entry({1}).open);
    EXPECT_FALSE(entry({1}).bold);
}

TEST_F(Styles, MenusSayWhatAllSelectedEntriesAre) {
    select({{0}});
    perform("toggleBold:");
    EXPECT_TRUE(isChecked("toggleBold:"));
    EXPECT_TRUE(action("toggleBold:")->isCheckable());
    EXPECT_FALSE(isChecked("toggleItalic:"));
    select({{0}, {1}});
    EXPECT_FALSE(isChecked("toggleBold:"));
    select({});
    EXPECT_FALSE(isChecked("toggleBold:"));
    EXPECT_FALSE(action("removeOutlineItems:")->isCheckable());
}

TEST_F(Styles, AStepBackTakesThemBack) {
    select({{0}, {2}});
    perform("toggleBold:");
    perform("toggleItalic:");
    perform("stepBack:");
    EXPECT_TRUE(entry({0}).bold && !entry({0}).italic && !entry({2}).italic);
    perform("stepBack:");
    EXPECT_FALSE(entry({0}).bold || entry({2}).bold);
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Styles, AColorIsTakenFromTheField) {
    select({{0}, {1}});
    perform("chooseTitleColor:");
    EXPECT_EQ(field()->text(), "#000000");
    field()->setText("#ff0033");
    ASSERT_TRUE(document.openSheet()->pressButton(1));
    EXPECT_EQ(entry({0}).color, (OutlineEntry::Color{1, 0, 0.2F}));
    EXPECT_EQ(entry({1}).color, entry({0}).color);
    EXPECT_FALSE(entry({2}).color.has_value());
    perform("chooseTitleColor:");
    EXPECT_EQ(field()->text(), "#ff0033") << "proposed is what the first has";
    ASSERT_TRUE(document.openSheet()->pressButton(2));
    EXPECT_FALSE(entry({0}).color.has_value());
    EXPECT_FALSE(entry({1}).color.has_value());
}

TEST_F(Styles, NoColorIsNone) {
    select({{0}});
    perform("chooseTitleColor:");
    field()->setText("#12");
    EXPECT_FALSE(document.openSheet()->pressButton(1));
    field()->setText("");
    EXPECT_FALSE(document.openSheet()->pressButton(1));
    field()->setText("green");
    ASSERT_TRUE(document.openSheet()->pressButton(1)) << "names are taken, too";
    EXPECT_TRUE(entry({0}).color.has_value());
    perform("chooseTitleColor:");
    field()->setText("#ffffff");
    ASSERT_TRUE(document.openSheet()->pressButton(0));
    EXPECT_NE(entry({0}).color, (OutlineEntry::Color{1, 1, 1})) << "cancelled";
}

TEST_F(Styles, SwatchesAndTheSystemsColorsFillTheField) {
    select({{0}});
    perform("chooseTitleColor:");
    const auto swatches = document.openSheet()->findChildren<QToolButton *>();
    ASSERT_FALSE(swatches.isEmpty());
    QSet<QString> colors;
    for (QToolButton *swatch : swatches) {
        EXPECT_FALSE(swatch->accessibleName().isEmpty());
        swatch->click();
        colors.insert(field()->text());
    }
    EXPECT_EQ(colors.size(), swatches.size());
    for (QPushButton *button : document.openSheet()->findChildren<QPushButton *>())
        if (button->text().contains("More")) button->click();
    auto *system = document.openSheet()->findChild<QColorDialog *>();
    ASSERT_NE(system, nullptr);
    Q_EMIT system->colorSelected(QColor(1, 2, 3));
    EXPECT_EQ(field()->text(), "#010203");
    system->close();
    document.openSheet()->pressButton(0);
}

TEST_F(Styles, AreInTheFile) {
    select({{1}});
    perform("toggleBold:");
    perform("toggleItalic:");
    perform("toggleOpenInViewers:");
    perform("chooseTitleColor:");
    field()->setText("#0000ff");
    document.openSheet()->pressButton(1);
    const auto file = saved();
    const OutlineEntry &written = file->outlineRoot().childAtIndex(1).entry();
    EXPECT_TRUE(written.bold && written.italic && written.open);
    EXPECT_EQ(written.color, (OutlineEntry::Color{0, 0, 1}));
    EXPECT_FALSE(file->outlineRoot().childAtIndex(0).entry().bold);
}

TEST_F(Styles, AnEntryThatLeadsToTheWebCanBeGivenAPage) {
    OutlineEntry web;
    web.action = OutlineEntry::Action{"URI", "https://example.org"};
    for (const size_t row : {0, 1}) {
        MyOutlineItem &item = *node({row})->representedObject();
        document.edits().setEntry(item, web);
        document.edits().setPageLabel(item, QString());
    }
    const QModelIndex page = document.treecontroller().indexForNode(*node({0}), TreeController::PageColumn);
    ASSERT_TRUE(document.treecontroller().setData(page, "3", Qt::EditRole));
    const auto file = saved();
    ASSERT_TRUE(file->outlineRoot().childAtIndex(0).destination().has_value());
    EXPECT_EQ(file->outlineRoot().childAtIndex(0).destination()->pageIndex, 2);
    EXPECT_FALSE(file->outlineRoot().childAtIndex(0).entry().action.has_value());
    EXPECT_EQ(file->outlineRoot().childAtIndex(1).destination(), std::nullopt);
    EXPECT_EQ(file->outlineRoot().childAtIndex(1).entry().action, web.action);
}

}  // namespace
}  // namespace leafwright
