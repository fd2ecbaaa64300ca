#include "document/commands/FindContentsFixture.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>

#include <set>

namespace leafwright {
namespace {

using test::PdfBuilder;

TEST_F(FindContentsWindow, NothingChangesUntilTheProposalIsTaken) {
    find();
    ASSERT_TRUE(proposal());
    EXPECT_EQ(outline(), "Old Entry");
    EXPECT_FALSE(document.isDocumentEdited());
    EXPECT_EQ(entries().topLevelItemCount(), 3);
    EXPECT_EQ(chapter(0).text(0), "1 Soil");
    EXPECT_EQ(chapter(0).text(1), "2");
    EXPECT_EQ(chapter(0).childCount(), 2);
    take();
    EXPECT_EQ(outline(), book);
    EXPECT_TRUE(document.isDocumentEdited());
    EXPECT_EQ(proposal(), nullptr);
}

TEST_F(FindContentsWindow, ReturnTakesIt) {
    find();
    QTest::keyClick(&entries(), Qt::Key_Return);
    EXPECT_EQ(outline(), book);
}

TEST_F(FindContentsWindow, EscapeLeavesAllAsItWas) {
    find();
    section(0, 0).setCheckState(0, Qt::Unchecked);
    QTest::keyClick(&entries(), Qt::Key_Escape);
    EXPECT_EQ(proposal(), nullptr);
    EXPECT_EQ(outline(), "Old Entry");
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(FindContentsWindow, ItStandsInThePlaceOfTheHeadingMap) {
    find();
    EXPECT_TRUE(proposal()->isVisible());
    EXPECT_FALSE(proposal()->isWindow()) << "the pages can be used meanwhile";
    EXPECT_TRUE(document.outlineview()->isVisible());
    EXPECT_FALSE(document.myWindow()->tableViewH1H2H3Config()->isVisible());
    EXPECT_TRUE(document.myWindow()->rect().contains(
        proposal()->mapTo(document.myWindow(), proposal()->rect().bottomRight())));
    proposal()->pressButton(0);
    EXPECT_TRUE(document.myWindow()->tableViewH1H2H3Config()->isVisible());
}

TEST_F(FindContentsWindow, EmptyOutlineMakesRoomUntilItHasAnEntry) {
    setOutline("");
    find();
    EXPECT_FALSE(document.outlineview()->isVisible());
    document.root().insertObjectInChildrenAtIndex(std::make_unique<MyOutlineItem>(), 0);
    EXPECT_TRUE(document.outlineview()->isVisible());
    document.root().setChildren({});
    proposal()->pressButton(0);
    EXPECT_TRUE(document.outlineview()->isVisible());
}

TEST_F(FindContentsWindow, OneProposalAtATime) {
    find();
    EXPECT_FALSE(isEnabled("findContents:"));
    proposal()->pressButton(0);
    EXPECT_TRUE(isEnabled("findContents:"));
}

TEST_F(FindContentsWindow, WhatMayNotBeEditedIsNotRead) {
    document.setAllowTOCediting(false);
    EXPECT_FALSE(isEnabled("findContents:"));
    document.setAllowTOCediting(true);
    document.setLockTOCediting(true);
    EXPECT_FALSE(isEnabled("findContents:"));
}

TEST_F(FindContentsWindow, EntriesGoBehindAnOutlineThatIsNotReplaced) {
    find();
    EXPECT_TRUE(part<QCheckBox>("replace").isVisible());
    part<QCheckBox>("replace").setChecked(false);
    take();
    EXPECT_EQ(outline(), "Old Entry " + book);
}

TEST_F(FindContentsWindow, NothingIsAskedWhereThereIsNoOutline) {
    setOutline("");
    find();
    EXPECT_FALSE(part<QCheckBox>("replace").isVisible());
    take();
    EXPECT_EQ(outline(), book);
}

TEST_F(FindContentsWindow, EntriesThatCameMeanwhileStay) {
    setOutline("");
    find();
    setOutline("new");
    take();
    EXPECT_EQ(outline(), "new " + book) << "nobody was asked whether they may go";
}

TEST_F(FindContentsWindow, LevelsLimitTheDepth) {
    find();
    part<QSpinBox>("depth").setValue(1);
    EXPECT_EQ(chapter(0).childCount(), 0);
    part<QSpinBox>("depth").setValue(2);
    EXPECT_EQ(chapter(0).childCount(), 2);
    part<QSpinBox>("depth").setValue(1);
    take();
    EXPECT_EQ(outline(), "1 Soil 2 Water 3 Light");
}

TEST_F(FindContentsWindow, EntryThatIsRejectedIsLeftOut) {
    find();
    section(1, 0).setCheckState(0, Qt::Unchecked);
    EXPECT_TRUE(part<QLabel>("contentsSummary").text().startsWith("Entries: 8,"));
    part<QSpinBox>("depth").setValue(3);
    EXPECT_EQ(chapter(1).childCount(), 2) << "it can be accepted again";
    EXPECT_EQ(section(1, 0).checkState(0), Qt::Unchecked);
    take();
    EXPECT_EQ(outline(),
              "1 Soil (1.1 What is in the Ground 1.2 Compost) 2 Water (2.2 Wells) "
              "3 Light (3.1 Shade 3.2 Glass)");
}

TEST_F(FindContentsWindow, EntryThatIsAcceptedAgainIsBack) {
    find();
    section(1, 0).setCheckState(0, Qt::Unchecked);
    section(1, 0).setCheckState(0, Qt::Checked);
    take();
    EXPECT_EQ(outline(), book);
}

TEST_F(FindContentsWindow, SpaceRejectsTheEntryThatIsLookedAt) {
    find();
    entries().setCurrentItem(&chapter(2));
    QTest::keyClick(&entries(), Qt::Key_Space);
    ASSERT_TRUE(entries().currentItem());
    EXPECT_EQ(entries().currentItem()->text(0), "3 Light");
    EXPECT_EQ(entries().currentItem()->checkState(0), Qt::Unchecked);
}

TEST_F(FindContentsWindow, AllLikeAnEntryAreRejectedAndAccepted) {
    find();
    EXPECT_FALSE(part<QPushButton>("rejectAllLike").isEnabled()) << "like which?";
    entries().setCurrentItem(&section(2, 1));
    part<QPushButton>("rejectAllLike").click();
    EXPECT_EQ(chapter(0).childCount() + chapter(1).childCount() + chapter(2).childCount(), 0);
    EXPECT_EQ(styles().item(rowOfStyle("1.1 What is in the Ground"), 0)->checkState(), Qt::Unchecked);
    entries().setCurrentItem(&chapter(0));
    chapter(1).setCheckState(0, Qt::Unchecked);
    part<QPushButton>("acceptAllLike").click();
    EXPECT_EQ(chapter(1).checkState(0), Qt::Checked);
    take();
    EXPECT_EQ(outline(), "1 Soil 2 Water 3 Light");
}

TEST_F(FindContentsWindow, StylesHaveSampleCountAndLevel) {
    find();
    const int sections = rowOfStyle("1.1 What is in the Ground");
    ASSERT_LT(sections, styles().rowCount());
    EXPECT_EQ(rowOfStyle("1 Soil"), 0) << "those in use first, from large to small";
    EXPECT_EQ(sections, 1);
    EXPECT_EQ(styles().item(0, 2)->text(), "1");
    EXPECT_EQ(styles().item(sections, 1)->text(), "6");
    EXPECT_EQ(styles().item(sections, 2)->text(), "2");
    EXPECT_TRUE(styles().item(sections, 0)->font().bold());
}

TEST_F(FindContentsWindow, TheListsSayWhatTheirColumnsAre) {
    find();
    QStringList heads;
    for (int column = 0; column < entries().columnCount(); ++column)
        heads.append(entries().headerItem()->text(column));
    EXPECT_EQ(heads, (QStringList{"Title", "Page", ""}));
    const QString evidence = chapter(0).toolTip(0);
    EXPECT_TRUE(QRegularExpression("% sure; found by: [a-z]").match(evidence).hasMatch())
        << evidence.toStdString();
    QStringList styleHeads;
    for (int column = 0; column < styles().columnCount(); ++column)
        styleHeads.append(styles().horizontalHeaderItem(column)->text());
    EXPECT_EQ(styleHeads, (QStringList{"Style of headings", "Found", "Level"}));
    EXPECT_TRUE(styles().verticalHeader()->isHidden()) << "its numbers would look like levels";
}

/// Titles have what the other columns leave.
TEST_F(FindContentsWindow, TheColumnsOfTheListsFillThem) {
    find();
    document.window()->show();
    QCoreApplication::processEvents();
    const QHeaderView &entryHeader = *entries().header();
    const QHeaderView &styleHeader = *styles().horizontalHeader();
    EXPECT_EQ(entryHeader.length(), entries().viewport()->width());
    EXPECT_EQ(styleHeader.length(), styles().viewport()->width());
    EXPECT_EQ(entryHeader.sectionResizeMode(0), QHeaderView::Stretch);
    EXPECT_EQ(styleHeader.sectionResizeMode(0), QHeaderView::Stretch);
}

TEST_F(FindContentsWindow, TheHeadsOfTheListsLookTheSameWhateverIsSelected) {
    find();
    document.window()->show();
    styles().clearSelection();
    const QImage before = styles().horizontalHeader()->grab().toImage();
    styles().selectRow(0);
    EXPECT_TRUE(styles().horizontalHeader()->grab().toImage() == before)
        << "columns are not what is selected";
}

TEST_F(FindContentsWindow, TheEntriesHaveAllTheRoomThatThereIs) {
    find();
    document.window()->resize(1000, 700);
    document.window()->show();
    QCoreApplication::processEvents();
    const int before = entries().height();
    const int summary = part<QLabel>("contentsSummary").height();
    document.window()->resize(1000, 1000);
    QCoreApplication::processEvents();
    EXPECT_GT(entries().height(), before + 100);
    EXPECT_EQ(part<QLabel>("contentsSummary").height(), summary);
}

TEST_F(FindContentsWindow, TheKeyboardGoesToItsEntries) {
    for (const char *before : {"Old Entry", ""}) {
        setOutline(before);
        document.window()->show();
        document.window()->activateWindow();
        document.outlineview()->setFocus();
        find();
        EXPECT_EQ(document.window()->focusWidget(), &entries())
            << "an empty outline goes, and its focus with it";
        proposal()->pressButton(0);
        EXPECT_EQ(document.window()->focusWidget(), document.outlineview());
    }
}

TEST_F(FindContentsWindow, TheTabKeyLeavesItsLists) {
    find();
    document.window()->show();
    document.window()->activateWindow();
    styles().setFocus();
    styles().setCurrentCell(0, 0);
    ASSERT_EQ(document.window()->focusWidget(), &styles());
    QTest::keyClick(&styles(), Qt::Key_Tab);
    EXPECT_NE(document.window()->focusWidget(), &styles());
}

TEST_F(FindContentsWindow, ItsButtonsAreThere) {
    find();
    document.window()->show();
    QCoreApplication::processEvents();
    for (const char *name : {"acceptAllLike", "rejectAllLike", "nextDoubtful"}) {
        auto &button = part<QPushButton>(name);
        EXPECT_TRUE(button.isVisible()) << name;
        EXPECT_TRUE(proposal()->isAncestorOf(&button)) << name;
        EXPECT_FALSE(button.text().isEmpty()) << name;
        EXPECT_FALSE(button.toolTip().isEmpty()) << name;
    }
}

TEST_F(FindContentsWindow, StyleThatIsSwitchedOffTakesItsEntriesAwayUntilItIsOn) {
    find();
    const int sections = rowOfStyle("1.1 What is in the Ground");
    styles().item(sections, 0)->setCheckState(Qt::Unchecked);
    EXPECT_EQ(chapter(0).childCount(), 0);
    EXPECT_EQ(styles().item(sections, 2)->text(), "");
    EXPECT_EQ(rowOfStyle("1.1 What is in the Ground"), sections) << "its row stays";
    styles().item(sections, 0)->setCheckState(Qt::Checked);
    EXPECT_EQ(chapter(0).childCount(), 2);
    take();
    EXPECT_EQ(outline(), book);
}

TEST_F(FindContentsWindow, StylesLevelIsChanged) {
    find();
    styles().item(rowOfStyle("1.1 What is in the Ground"), 2)->setData(Qt::EditRole, 1);
    EXPECT_EQ(entries().topLevelItemCount(), 9);
    take();
    EXPECT_EQ(outline(),
              "1 Soil 1.1 What is in the Ground 1.2 Compost 2 Water 2.1 Rain 2.2 Wells 3 Light 3.1 Shade "
              "3.2 Glass");
}

TEST_F(FindContentsWindow, FoldedEntriesStayFoldedAndTheCurrentOneCurrent) {
    find();
    chapter(0).setExpanded(false);
    entries().setCurrentItem(&section(1, 1));
    part<QSpinBox>("depth").setValue(2);
    EXPECT_FALSE(chapter(0).isExpanded());
    EXPECT_TRUE(chapter(1).isExpanded());
    EXPECT_EQ(entries().currentItem(), &section(1, 1));
}

TEST_F(FindContentsWindow, EntryThatIsLookedAtIsShownAndHighlighted) {
    find();
    EXPECT_EQ(document.pdfview()->currentPage()->index(), 0) << "the page stays until one is looked at";
    entries().setCurrentItem(&section(1, 0));
    EXPECT_EQ(document.pdfview()->currentPage()->index(), 5);
    const auto &area = document.pdfview()->highlightedArea();
    ASSERT_TRUE(area);
    EXPECT_EQ(area->pageIndex, 5);
    EXPECT_NEAR(area->rect.x, 72, 1);
    EXPECT_LT(area->rect.y, 700);
    EXPECT_GT(area->rect.top(), 705);
    EXPECT_EQ(styles().currentRow(), rowOfStyle("1.1 What is in the Ground"));
    proposal()->pressButton(0);
    EXPECT_FALSE(document.pdfview()->highlightedArea());
}

TEST_F(FindContentsWindow, TheSummaryIsReadToItsEnd) {
    find();
    document.window()->resize(880, 560);
    QApplication::processEvents();
    const QLabel &summary = part<QLabel>("contentsSummary");
    const QRect text = summary.fontMetrics().boundingRect(QRect(0, 0, summary.width(), 1000),
                                                          Qt::TextWordWrap, summary.text());
    EXPECT_LE(text.width(), summary.width());
    EXPECT_LE(text.height(), summary.height());
}

TEST_F(FindContentsWindow, EntryThatIsClickedAgainIsShownAgain) {
    find();
    const auto click = [this] {
        const QRect place = entries().visualItemRect(&section(1, 0));
        QTest::mouseClick(entries().viewport(), Qt::LeftButton, {}, {place.right() - 4, place.center().y()});
        return document.pdfview()->currentPage()->index();
    };
    EXPECT_EQ(click(), 5);
    document.pdfview()->goToFirstPage();
    ASSERT_EQ(document.pdfview()->currentPage()->index(), 0);
    EXPECT_EQ(click(), 5);
}

TEST_F(FindContentsWindow, ProgressIsShownAndTheDocumentIsBusy) {
    bool wasShown = false;
    whileReading([&] {
        ASSERT_TRUE(progressSheet());
        wasShown = progressSheet()->isVisible();
        EXPECT_TRUE(progressSheet()->findChild<QProgressBar *>("progressBar"));
        EXPECT_TRUE(document.isBusy());
        EXPECT_FALSE(document.actions().perform("findContents:"));
    });
    find();
    EXPECT_TRUE(wasShown);
    EXPECT_EQ(progressSheet(), nullptr);
    EXPECT_FALSE(document.isBusy());
}

TEST_F(FindContentsWindow, BarShowsHowMuchIsRead) {
    bool wasFull = false;
    whileReading([&] {
        const auto *bar = progressSheet()->findChild<QProgressBar *>("progressBar");
        // The sheet stays until this returns.
        wasFull = QTest::qWaitFor([&] { return bar->value() == bar->maximum(); }, 60'000);
    });
    find();
    EXPECT_TRUE(wasFull);
    EXPECT_TRUE(proposal());
}

TEST_F(FindContentsWindow, CancelStopsTheReading) {
    whileReading([&] { progressSheet()->pressButton(0); });
    find();
    EXPECT_EQ(proposal(), nullptr);
    EXPECT_TRUE(platform.alerts.isEmpty());
    EXPECT_TRUE(isEnabled("findContents:"));
    find();
    EXPECT_TRUE(proposal());
}

TEST_F(FindContentsWindow, WindowMayBeClosedWithItsProposal) {
    find();
    document.window()->close();
    EXPECT_EQ(outline(), "Old Entry");
}

/// A book whose printed contents have chapters that are nowhere on its pages.
PdfBuilder makeDoubtfulBook(const std::set<std::string> &missing = {"Frost"}) {
    const auto show = PdfBuilder::showText;
    const auto number = [&](int page) { return show("F1", 10, 300, 40, std::to_string(page)); };
    const std::vector<std::string> titles = {"Soil", "Water", "Light", "Wind", "Frost", "Rain"};
    PdfBuilder pdf;
    std::string contents = show("F2", 20, 72, 720, "Contents") + number(1);
    for (size_t i = 0; i < titles.size(); ++i) {
        const int y = 680 - 16 * static_cast<int>(i);
        contents += show("F1", 10, 72, y, titles[i] + " . . . . . . . . . .");
        contents += show("F1", 10, 500, y, std::to_string(i + 2));
    }
    pdf.addPage(contents);
    for (size_t i = 0; i < titles.size(); ++i) {
        std::string page = missing.contains(titles[i]) ? "" : show("F2", 18, 72, 700, titles[i]);
        for (int line = 0; line < 30; ++line)
            page += show("F1", 10, 72, 660 - 14 * line,
                         "There is much to say, and so it is said in plain words.");
        pdf.addPage(page + number(static_cast<int>(i) + 2));
    }
    return pdf;
}

class DoubtfulContentsWindow : public FindContentsWindow {
protected:
    void SetUp() override { open(makeDoubtfulBook()); }
    QTreeWidgetItem *firstDoubtful() {
        for (QTreeWidgetItemIterator item(&entries()); *item; ++item)
            if ((*item)->text(2) == "?") return *item;
        return nullptr;
    }
};

TEST_F(DoubtfulContentsWindow, DoubtfulEntriesAreMarkedUntilTheUserDecides) {
    find();
    QTreeWidgetItem *doubtful = firstDoubtful();
    ASSERT_TRUE(doubtful);
    EXPECT_EQ(doubtful->text(0), "Frost");
    EXPECT_TRUE(doubtful->font(0).italic());
    EXPECT_EQ(part<QLabel>("contentsSummary").text(), "Entries: 6, of which doubtful: 1");
    part<QPushButton>("nextDoubtful").click();
    EXPECT_EQ(entries().currentItem(), doubtful);
    EXPECT_EQ(document.pdfview()->currentPage()->index(), 5);
    EXPECT_FALSE(document.pdfview()->highlightedArea()) << "there is nothing to be marked";
    part<QPushButton>("acceptAllLike").click();
    EXPECT_EQ(firstDoubtful(), nullptr);
    EXPECT_FALSE(part<QPushButton>("nextDoubtful").isEnabled());
    take();
    EXPECT_EQ(outline(), "Soil Water Light Wind Frost Rain");
}

TEST_F(DoubtfulContentsWindow, AllWithoutHeadingAreAlike) {
    find();
    entries().setCurrentItem(firstDoubtful());
    part<QPushButton>("rejectAllLike").click();
    EXPECT_EQ(firstDoubtful(), nullptr);
    take();
    EXPECT_EQ(outline(), "Soil Water Light Wind Rain");
}

TEST_F(DoubtfulContentsWindow, NextDoubtfulBeginsAgainAtTheTop) {
    find();
    entries().setCurrentItem(entries().topLevelItem(5));
    part<QPushButton>("nextDoubtful").click();
    EXPECT_EQ(entries().currentItem(), firstDoubtful());
    entries().setCurrentItem(entries().itemAbove(firstDoubtful()));
    part<QPushButton>("nextDoubtful").click();
    EXPECT_EQ(entries().currentItem(), firstDoubtful()) << "the next one may follow at once";
}

class DoubtfulNeighboursWindow : public FindContentsWindow {
protected:
    void SetUp() override { open(makeDoubtfulBook({"Water", "Light"})); }
};

TEST_F(DoubtfulNeighboursWindow, NextDoubtfulPassesOverNone) {
    find();
    for (const char *title : {"Water", "Light", "Water"}) {
        part<QPushButton>("nextDoubtful").click();
        ASSERT_TRUE(entries().currentItem());
        EXPECT_EQ(entries().currentItem()->text(0), title);
    }
}

TEST_F(FindContentsWindow, CompletionAddsWhatLooksLikeTheEntries) {
    setOutline("cover Light");
    auto &items = document.root().children();
    items[0]->setPageLabel("1");
    items[1]->setPageLabel("8");
    perform("completeContents:");
    ASSERT_TRUE(proposal());
    EXPECT_FALSE(part<QCheckBox>("replace").isVisible());
    EXPECT_EQ(entries().topLevelItemCount(), 4);
    EXPECT_FALSE(chapter(0).data(0, Qt::CheckStateRole).isValid()) << "what is there stays";
    EXPECT_EQ(chapter(1).text(0), "1 Soil");
    EXPECT_EQ(outline(), "cover Light");
    take();
    EXPECT_EQ(outline(), "cover 1 Soil 2 Water Light");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(FindContentsWindow, CompletionGoesByTheOutlineAsItIsWhenItIsTaken) {
    setOutline("Light");
    document.root().children()[0]->setPageLabel("8");
    perform("completeContents:");
    document.root().insertObjectInChildrenAtIndex(std::make_unique<MyOutlineItem>(), 0);
    document.root().children()[0]->setPageTitle("front");
    take();
    EXPECT_EQ(outline(), "front 1 Soil 2 Water Light");
}

TEST_F(FindContentsWindow, WithoutEntriesThereIsNothingToComplete) {
    EXPECT_TRUE(isEnabled("completeContents:"));
    setOutline("");
    EXPECT_FALSE(isEnabled("completeContents:"));
}

TEST_F(FindContentsWindow, CompletionSaysWhenNothingIsMissing) {
    perform("completeContents:");
    EXPECT_EQ(proposal(), nullptr);
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].message, "Nothing is missing.");
    EXPECT_EQ(outline(), "Old Entry");
}

/// A window with a letter without headings.
class ContentsOfLetter : public FindContentsWindow {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        std::string page;
        for (int line = 0; line < 40; ++line)
            page +=
                PdfBuilder::showText("F1", 10, 72, 700 - 12 * line, "nothing but a line of a long letter,");
        pdf.addPage(page);
        open(pdf);
    }
};

TEST_F(ContentsOfLetter, NothingFoundIsSaid) {
    find();
    EXPECT_EQ(proposal(), nullptr);
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].message, "No headings were found.");
    EXPECT_FALSE(document.isDocumentEdited());
}

}  // namespace
}  // namespace leafwright
