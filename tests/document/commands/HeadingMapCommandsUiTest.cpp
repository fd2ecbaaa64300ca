#include "document/commands/HeadingMapCommands.h"
#include "document/commands/HeadingsWindowFixture.h"
#include "document/commands/PrintedPageCommands.h"
#include "document/window/HeadingMapModel.h"
#include "support/CliFiles.h"
#include "support/LogRecorder.h"
#include "widgets/NoticeBars.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace leafwright {
namespace {

using test::PdfBuilder;

class HeadingMap : public test::HeadingsWindowFixture {
protected:
    QString writeMap(const QByteArray &text) {
        test::writeFile(dir.path("map.txt"), text);
        return dir.path("map.txt");
    }
    /// What the rows show of the document's text: "2 Chapter title, 2 Section title".
    QString rows() {
        const QAbstractItemModel &model = *table().model();
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row)
            rows.append(model.index(row, HeadingMapModel::CountColumn).data().toString() + " " +
                        model.index(row, HeadingMapModel::SampleColumn).data().toString());
        return rows.join(", ");
    }
};

TEST_F(HeadingMap, SelectedTextIsMappedToALevel) {
    perform("resetH1H2H3FontsMap:");
    EXPECT_EQ(map(), "");
    selectText("Section title");
    perform("useSelectionforH2:");
    selectText("Chapter title");
    perform("useSelectionforH1:");
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_EQ(table().model()->rowCount(), 2);
}

TEST_F(HeadingMap, AFontThatIsMappedKeepsItsLevel) {
    EXPECT_EQ(map(), "H1 24, H2 16");
    selectText("Section title");
    perform("useSelectionforH3:");
    EXPECT_EQ(map(), "H1 24, H2 16");
}

TEST_F(HeadingMap, LooksLikeAListAndIsSelectedByRows) {
    EXPECT_FALSE(table().showGrid());
    EXPECT_EQ(table().selectionBehavior(), QAbstractItemView::SelectRows);
}

TEST_F(HeadingMap, TheTabKeyLeavesIt) {
    document.window()->show();
    document.window()->activateWindow();
    table().setFocus();
    table().selectRow(0);
    ASSERT_EQ(document.window()->focusWidget(), &table());
    QTest::keyClick(&table(), Qt::Key_Tab);
    EXPECT_NE(document.window()->focusWidget(), &table());
}

TEST_F(HeadingMap, ItsHeadLooksTheSameWhateverIsSelected) {
    document.window()->show();
    table().clearSelection();
    const QImage before = table().horizontalHeader()->grab().toImage();
    table().selectRow(0);
    EXPECT_TRUE(table().horizontalHeader()->grab().toImage() == before) << "columns are not what is selected";
}

TEST_F(HeadingMap, SelectedRowsAreDeleted) {
    table().selectRow(0);
    perform("buttonDeleteSelectedH1H2H3RowsClicked:");
    EXPECT_EQ(map(), "H2 16");
    EXPECT_EQ(table().model()->rowCount(), 1);
}

TEST_F(HeadingMap, ASelectedRowSelectsItsRunsOnThePages) {
    table().selectRow(1);
    const auto &selection = document.pdfview()->currentSelection();
    ASSERT_TRUE(selection);
    EXPECT_TRUE(selection->string().contains("Section title"));
    EXPECT_FALSE(selection->string().contains("Chapter"));
    table().clearSelection();
    EXPECT_FALSE(document.pdfview()->currentSelection());
}

TEST_F(HeadingMap, ASavedMapIsLoadedAgain) {
    platform.filesToChoose = {dir.path("saved.txt"), dir.path("saved.txt")};
    perform("buttonClickedSaveH1H2H3Map:");
    EXPECT_TRUE(platform.userDefaults().stringForKey(mapKey).isNull()) << "saving does not remember";
    perform("resetH1H2H3FontsMap:");
    perform("buttonClickedLoadH1H2H3Map:");
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_EQ(platform.userDefaults().stringForKey(mapKey).toUtf8(), test::contentOf(dir.path("saved.txt")));
    EXPECT_EQ(platform.savePanels[0].allowedFileTypes, QStringList{"txt"});
    EXPECT_EQ(platform.openPanels[0].allowedFileTypes, QStringList{"txt"});
}

TEST_F(HeadingMap, AFileWithoutAMapBeepsAndChangesNothing) {
    platform.filesToChoose = {writeMap("; note\n")};
    perform("buttonClickedLoadH1H2H3Map:");
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_TRUE(platform.userDefaults().stringForKey(mapKey).isNull());
}

TEST_F(HeadingMap, LinesThatAreNoneAreIgnored) {
    platform.filesToChoose = {writeMap("H1/16.0/\"Helvetica\" +B\n; note\n")};
    perform("buttonClickedLoadH1H2H3Map:");
    EXPECT_EQ(map(), "H1 16");
}

TEST_F(HeadingMap, AnEmptyRememberedMapIsNoneAndClearsNothing) {
    EXPECT_FALSE(document.headingMapCommands().loadH1H2H3MapSavedInUserDefaults());
    platform.userDefaults().setValue(mapKey, QString(""));
    EXPECT_FALSE(document.headingMapCommands().loadH1H2H3MapSavedInUserDefaults());
    EXPECT_EQ(map(), "H1 24, H2 16");
}

TEST_F(HeadingMap, EachCommandHasItsLevel) {
    for (const int level : {1, 2, 3, 4}) {
        perform("resetH1H2H3FontsMap:");
        selectText("Section title");
        ASSERT_TRUE(document.actions().perform(QString("useSelectionforH%1:").arg(level)));
        EXPECT_EQ(map(), QString("H%1 16").arg(level));
        EXPECT_EQ(document.listH1H2H3Config()[0].fontText, "16.0 pt Helvetica Bold");
    }
}

TEST_F(HeadingMap, WithoutSelectedTextNothingIsMapped) {
    perform("resetH1H2H3FontsMap:");
    document.pdfview()->clearSelection();
    EXPECT_FALSE(isEnabled("useSelectionforH1:"));
    document.headingMapCommands().processSelectedTextForHLevel(1);
    EXPECT_EQ(map(), "");
}

TEST_F(HeadingMap, SelectedTextWithoutLettersIsNotMapped) {
    perform("resetH1H2H3FontsMap:");
    selectText(".\n");
    perform("useSelectionforH1:");
    EXPECT_EQ(map(), "");
}

TEST_F(HeadingMap, MappingTextClearsTheTablesSelection) {
    table().selectRow(0);
    selectText("Body text");
    perform("useSelectionforH3:");
    EXPECT_EQ(map(), "H1 24, H2 16, H3 10");
    EXPECT_TRUE(table().selectionModel()->selectedRows().isEmpty());
}

TEST_F(HeadingMap, SeveralRowsAreDeletedAtOnce) {
    selectText("Body text");
    perform("useSelectionforH3:");
    table().selectRow(0);
    table().selectionModel()->select(table().model()->index(2, 0),
                                     QItemSelectionModel::Select | QItemSelectionModel::Rows);
    perform("buttonDeleteSelectedH1H2H3RowsClicked:");
    EXPECT_EQ(map(), "H2 16");
    perform("buttonDeleteSelectedH1H2H3RowsClicked:");
    EXPECT_EQ(map(), "H2 16") << "no row is selected any more";
}

TEST_F(HeadingMap, TheTableShowsLevelAndFontOfEachRecord) {
    const QAbstractItemModel &model = *table().model();
    ASSERT_EQ(model.rowCount(), 2);
    EXPECT_EQ(HeadingMapModel::identifier(0), QLatin1String("Level"));
    EXPECT_EQ(HeadingMapModel::identifier(1), QLatin1String("FontTraits"));
    EXPECT_TRUE(HeadingMapModel::identifier(2).isNull()) << "no value of a record";
    EXPECT_EQ(model.index(1, 0).data().toString(), "H2");
    EXPECT_EQ(model.index(1, 1).data().toString(), "16.0 pt Helvetica Bold");
}

TEST_F(HeadingMap, TheTableShowsHowOftenTheDocumentUsesAFontAndTheFirstTextInIt) {
    EXPECT_EQ(rows(), "2 Chapter title, 2 Section title");
    selectText("Body text");
    perform("useSelectionforH3:");
    EXPECT_TRUE(rows().startsWith("2 Chapter title, 2 Section title, 2 Body text that fills the page. Body"));
    const QAbstractItemModel &model = *table().model();
    const QModelIndex sample = model.index(2, HeadingMapModel::SampleColumn);
    EXPECT_EQ(sample.data(Qt::ToolTipRole), sample.data()) << "a cell may be too narrow for it";
    const QModelIndex count = model.index(2, HeadingMapModel::CountColumn);
    EXPECT_EQ(count.data(Qt::AccessibleDescriptionRole), "Pieces of text in this font: 2");
    platform.filesToChoose = {writeMap("H1/30.0/\"Courier\"\n")};
    perform("buttonClickedLoadH1H2H3Map:");
    EXPECT_EQ(rows(), "0 ") << "a font that the document lacks";
    document.listH1H2H3Config() = {{1, "H1", "24.5 Helvetica Bold", std::nullopt}};
    document.reloadHeadingMap();
    EXPECT_EQ(rows(), "2 Chapter title") << "a record that has but the name of its font";
}

TEST_F(HeadingMap, UsesAreCountedAnewInOtherPagesAndTheMapStays) {
    selectText("Body text");
    perform("useSelectionforH3:");
    table().selectRow(1);
    PdfBuilder other;
    other.addPage(PdfBuilder::showText("F2", 16, 72, 660, "Other title") +
                  PdfBuilder::showText("F1", 12, 72, 640, "Other text"));
    other.save(dir.path("a.pdf"));
    perform("reloadFromDisk:");
    ASSERT_EQ(document.pdfDoc()->pageCount(), 1);
    EXPECT_EQ(rows(), " ,  ,  ") << "of the pages before nothing is shown";
    document.finishLoading();
    EXPECT_EQ(rows(), "0 , 1 Other title, 0 ");
    EXPECT_EQ(map(), "H1 24, H2 16, H3 10");
    EXPECT_EQ(table().selectionModel()->selectedRows().value(0).row(), 1);
}

TEST_F(HeadingMap, TheDeleteKeyInItRemovesItsRowsAndNoEntries) {
    setOutline("a b");
    document.window()->show();
    document.window()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(document.window()));
    select({{0}});
    table().setFocus();
    table().selectRow(0);
    // As the window system sends it: a command of the menus would take the key first.
    QTest::keyClick(document.window()->windowHandle(), Qt::Key_Delete);
    EXPECT_EQ(map(), "H2 16");
    table().clearSelection();
    QTest::keyClick(document.window()->windowHandle(), Qt::Key_Delete);
    EXPECT_EQ(map(), "H2 16");
    EXPECT_EQ(outline(), "a b");
    document.outlineview()->setFocus();
    QTest::keyClick(document.window()->windowHandle(), Qt::Key_Delete);
    EXPECT_EQ(outline(), "b");
}

TEST_F(HeadingMap, ADigitGivesTheSelectedRowsThatLevel) {
    table().selectRow(0);
    QTest::keyClick(&table(), Qt::Key_3);
    EXPECT_EQ(map(), "H2 16, H3 24");
    const auto selectedRow = [this] { return table().selectionModel()->selectedRows().value(0).row(); };
    EXPECT_EQ(table().selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(selectedRow(), 1) << "the same font";
    QTest::keyClick(&table(), Qt::Key_1, Qt::KeypadModifier);
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_EQ(selectedRow(), 0);
    for (const Qt::Key key : {Qt::Key_0, Qt::Key_A})
        QTest::keyClick(&table(), key);
    table().clearSelection();
    QTest::keyClick(&table(), Qt::Key_4);
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(HeadingMap, ALevelCanBeEnteredInItsCell) {
    document.window()->show();
    table().setFocus();
    const auto enter = [this](int row, int level) {
        table().setCurrentIndex(table().model()->index(row, HeadingMapModel::LevelColumn));
        QTest::keyClick(&table(), Qt::Key_F2);
        auto *editor = table().viewport()->findChild<QSpinBox *>();
        ASSERT_NE(editor, nullptr);
        editor->setValue(level);
        QTest::keyClick(editor, Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !table().viewport()->findChild<QSpinBox *>(); }));
    };
    document.pdfview()->goToPage(document.pdfDoc()->page(1));
    enter(0, 4);
    EXPECT_TRUE(QTest::qWaitFor([this] { return map() == "H2 16, H4 24"; })) << map().toStdString();
    for (const int level : {0, 10, -1})
        enter(1, level);
    enter(0, 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return map() == "H1 16, H4 24"; })) << map().toStdString();
    EXPECT_EQ(document.pdfview()->currentPage()->index(), 1) << "Return in a cell shows no text";
    EXPECT_FALSE(table().model()->flags(table().model()->index(0, HeadingMapModel::FontColumn)) &
                 Qt::ItemIsEditable);
}

TEST_F(HeadingMap, TheKeyThatEditsIsForTheLevelWhicheverCellIsCurrent) {
    document.window()->show();
    table().setFocus();
    table().setCurrentIndex(table().model()->index(1, HeadingMapModel::FontColumn));
    QTest::keyClick(&table(), Qt::Key_F2);
    auto *editor = table().viewport()->findChild<QSpinBox *>();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->value(), 2);
    editor->setValue(3);
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return map() == "H1 24, H3 16"; })) << map().toStdString();
}

TEST_F(HeadingMap, HomeAndEndGoToTheFirstAndToTheLastRow) {
    const auto selectedRows = [this] {
        QStringList rows;
        for (const QModelIndex &index : table().selectionModel()->selectedRows())
            rows.append(QString::number(index.row()));
        return rows.join(' ');
    };
    table().setCurrentIndex(table().model()->index(0, HeadingMapModel::FontColumn));
    QTest::keyClick(&table(), Qt::Key_End);
    EXPECT_EQ(selectedRows(), "1");
    QTest::keyClick(&table(), Qt::Key_Home);
    EXPECT_EQ(selectedRows(), "0");
    QTest::keyClick(&table(), Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(selectedRows(), "0 1");
    perform("resetH1H2H3FontsMap:");
    QTest::keyClick(&table(), Qt::Key_End);
    EXPECT_EQ(selectedRows(), "");
}

TEST_F(HeadingMap, SelectAllIsForItsRowsWhileItHasTheKeyboard) {
    setOutline("a b");
    document.window()->show();
    document.window()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(document.window()));
    table().setFocus();
    QTest::keyClick(document.window()->windowHandle(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(table().selectionModel()->selectedRows().size(), 2);
    EXPECT_TRUE(document.treecontroller().selectedNodes().empty());
}

TEST_F(HeadingMap, KeysGoOnWhereRowsWereDeletedOrGivenALevel) {
    perform("resetH1H2H3FontsMap:");
    for (const char *text : {"Chapter title", "Section title", "Body text"}) {
        selectText(text);
        perform("useSelectionforH1:");
    }
    ASSERT_EQ(map(), "H1 24, H1 16, H1 10");
    table().selectRow(1);
    QTest::keyClick(&table(), Qt::Key_2);
    EXPECT_EQ(map(), "H1 24, H1 10, H2 16");
    EXPECT_EQ(table().currentIndex().row(), 2);
    table().selectRow(1);
    ASSERT_TRUE(document.pdfview()->currentSelection());
    perform("buttonDeleteSelectedH1H2H3RowsClicked:");
    EXPECT_EQ(table().currentIndex().row(), 1);
    EXPECT_TRUE(table().selectionModel()->selectedRows().isEmpty());
    EXPECT_FALSE(document.pdfview()->currentSelection()) << "the font has no row any more";
    table().selectRow(1);
    perform("buttonDeleteSelectedH1H2H3RowsClicked:");
    EXPECT_EQ(table().currentIndex().row(), 0);
}

TEST_F(HeadingMap, ALevelBelowOneThatNoFontHasIsShownAsSuch) {
    const QAbstractItemModel &model = *table().model();
    const auto note = [&model](int row) {
        return model.index(row, HeadingMapModel::LevelColumn).data(Qt::AccessibleDescriptionRole).toString();
    };
    const auto color = [&model](int row) {
        return model.index(row, HeadingMapModel::LevelColumn).data(Qt::ForegroundRole);
    };
    EXPECT_EQ(note(1), "");
    EXPECT_FALSE(color(1).isValid());
    table().selectRow(1);
    QTest::keyClick(&table(), Qt::Key_4);
    EXPECT_EQ(note(0), "");
    EXPECT_EQ(note(1),
              "No font has the level H3. These headings stand a single level below those before them.");
    EXPECT_TRUE(color(1).isValid());
    EXPECT_FALSE(model.index(1, HeadingMapModel::FontColumn).data(Qt::ForegroundRole).isValid());
    table().selectRow(0);
    perform("buttonDeleteSelectedH1H2H3RowsClicked:");
    QTest::keyClick(&table(), Qt::Key_Home);
    table().selectRow(0);
    QTest::keyClick(&table(), Qt::Key_1);
    EXPECT_EQ(note(0), "") << "the top level is below none";
}

TEST_F(HeadingMap, ADoubleClickShowsTheNextTextInTheFont) {
    document.window()->resize(1000, 700);
    document.window()->show();
    QCoreApplication::processEvents();
    const QPoint row = table().visualRect(table().model()->index(0, 1)).center();
    const auto doubleClick = [&] {
        QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, row);
        QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, row);
        return document.pdfview()->currentPage()->index();
    };
    EXPECT_EQ(doubleClick(), 0);
    EXPECT_EQ(doubleClick(), 1);
    EXPECT_TRUE(document.pdfview()->currentSelection()->string().contains("Chapter title"));
    EXPECT_EQ(doubleClick(), 0) << "from the beginning again";
    QTest::keyClick(&table(), Qt::Key_Return);
    EXPECT_EQ(document.pdfview()->currentPage()->index(), 1);
    document.pdfview()->goToPage(document.pdfDoc()->page(0));
    EXPECT_EQ(doubleClick(), 0) << "from the page that is shown";
    EXPECT_EQ(platform.beeps, 0);
}

TEST_F(HeadingMap, AFontThatNoTextHasIsNotShown) {
    platform.filesToChoose = {writeMap("H1/30.0/\"Courier\"\n")};
    perform("buttonClickedLoadH1H2H3Map:");
    document.headingMapCommands().showNextOccurrence(0);
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(document.pdfview()->currentPage()->index(), 0);
}

TEST_F(HeadingMap, AnEmptiedMapCanBeBroughtBack) {
    const NoticeBars &notices = *document.myWindow()->notices();
    const auto press = [&notices] {
        for (auto *button : notices.bar("emptiedMap")->findChildren<QPushButton *>())
            if (button->text() == "Bring It Back") button->click();
    };
    perform("resetH1H2H3FontsMap:");
    ASSERT_TRUE(notices.bar("emptiedMap"));
    press();
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_FALSE(notices.bar("emptiedMap"));
    perform("resetH1H2H3FontsMap:");
    selectText("Body text");
    perform("useSelectionforH1:");
    EXPECT_FALSE(notices.bar("emptiedMap")) << "it would take away what has come since";
    perform("resetH1H2H3FontsMap:");
    perform("resetH1H2H3FontsMap:");
    press();
    EXPECT_EQ(map(), "H1 10") << "an empty map is nothing to come back to";
}

TEST_F(HeadingMap, SaysHowRowsComeThereWhileItHasNone) {
    document.window()->show();
    const auto lines = [this] {
        const QImage picture = table().viewport()->grab().toImage();
        const QColor ground = picture.pixelColor(1, picture.height() - 2);
        int count = 0;
        for (int y = picture.height() / 4; y < picture.height() * 3 / 4; ++y)
            for (int x = 0; x < picture.width(); ++x)
                count += picture.pixelColor(x, y) == ground ? 0 : 1;
        return count;
    };
    EXPECT_EQ(table().accessibleDescription(), "");
    perform("resetH1H2H3FontsMap:");
    EXPECT_GT(lines(), 100);
    EXPECT_TRUE(table().accessibleDescription().contains("Use Selection for H1"));
}

TEST_F(HeadingMap, ARowOfAnotherFontSelectsNothingOnThePages) {
    platform.filesToChoose = {writeMap("H1/30.0/\"Courier\"\n")};
    perform("buttonClickedLoadH1H2H3Map:");
    selectText("Chapter title");
    table().selectRow(0);
    EXPECT_FALSE(document.hasSelectedText());
}

TEST_F(HeadingMap, ARowsFontIsMarkedOnThePagesThatCanBeSeen) {
    table().selectRow(0);
    const auto [first, last] = document.pdfview()->visiblePages();
    EXPECT_EQ(document.pdfview()->currentSelection()->pages().size(), static_cast<size_t>(last - first + 1));
}

TEST_F(HeadingMap, ALoadedMapReplacesTheOldOneAndIsSorted) {
    platform.filesToChoose = {writeMap("H3/16.0/\"Helvetica\" +B\nH1/10.0/\"Helvetica\"\n")};
    table().selectRow(0);
    perform("buttonClickedLoadH1H2H3Map:");
    EXPECT_EQ(map(), "H1 10, H3 16");
    EXPECT_TRUE(table().selectionModel()->selectedRows().isEmpty());
    EXPECT_EQ(document.listH1H2H3Config()[1].font,
              document.pdfDoc()->pageText(0)->attributedString.runs.at(1).font);
}

TEST_F(HeadingMap, CancelledPanelsChangeNothing) {
    platform.filesToChoose = {std::nullopt, std::nullopt};
    perform("buttonClickedSaveH1H2H3Map:");
    perform("buttonClickedLoadH1H2H3Map:");
    EXPECT_EQ(platform.savePanels.size(), 1);
    EXPECT_EQ(platform.openPanels.size(), 1);
    EXPECT_EQ(platform.beeps, 0);
    EXPECT_EQ(map(), "H1 24, H2 16");
}

TEST_F(HeadingMap, AMapThatCannotBeWrittenIsNotReported) {
    const test::LogRecorder log;
    platform.filesToChoose = {dir.path("missing/map.txt")};
    perform("buttonClickedSaveH1H2H3Map:");
    EXPECT_EQ(platform.beeps, 0);
    EXPECT_TRUE(platform.alerts.isEmpty());
    EXPECT_TRUE(log.messages().join(' ').contains("could not be written"));
}

TEST_F(HeadingMap, AFullDiskLeavesTheOldMap) {
    platform.filesToChoose = {writeMap("H1/30.0/\"Courier\"\n")};
    {
        const test::FileSizeLimit limit(10);
        const test::LogRecorder log;
        perform("buttonClickedSaveH1H2H3Map:");
        EXPECT_TRUE(log.messages().join(' ').contains("could not be written"));
    }
    EXPECT_EQ(test::contentOf(dir.path("map.txt")), "H1/30.0/\"Courier\"\n");
}

TEST_F(HeadingMap, AFileTooLargeForAMapIsNone) {
    platform.filesToChoose = {writeMap("H2/24.0/\"Helvetica\" +B\n" + QByteArray(1 << 20, '\n'))};
    perform("buttonClickedLoadH1H2H3Map:");
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_TRUE(platform.userDefaults().stringForKey(mapKey).isEmpty());
}

TEST_F(HeadingMap, AFileThatCantBeReadIsToldAndChangesNothing) {
    const QString notUtf8 = writeMap("H1/10.0/\"Helvetica\"\nH2/12.0/\"caf\xE9\"\n");
    const QString pipe = dir.path("pipe");
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QList<std::pair<QString, QString>> cases{
        {notUtf8, notUtf8 + ":2: the text is not UTF-8"},
        {pipe, pipe + ": the map can't be read: it is a pipe or a device, and not a file"},
        {dir.path("."), dir.path(".") + ": the map can't be read: Is a directory"},
        {dir.path("none"), dir.path("none") + ": the map can't be read: No such file or directory"}};
    int beeps = 0;
    for (const auto &[path, message] : cases) {
        const test::LogRecorder log;
        platform.filesToChoose = {path};
        perform("buttonClickedLoadH1H2H3Map:");
        EXPECT_EQ(platform.beeps, ++beeps) << qPrintable(message);
        const NoticeBar *bar = document.myWindow()->notices()->bar("failedMap");
        ASSERT_TRUE(bar) << qPrintable(message);
        EXPECT_EQ(bar->text(), message);
    }
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_TRUE(platform.userDefaults().stringForKey(mapKey).isEmpty());
    EXPECT_TRUE(platform.alerts.isEmpty());
}

TEST_F(HeadingMap, AFontMappedByItsStringKeepsItsLevel) {
    document.listH1H2H3Config() = {{1, "H1", "24.5 Helvetica Bold", std::nullopt}};
    document.reloadHeadingMap();
    selectText("Chapter title");
    perform("useSelectionforH3:");
    ASSERT_EQ(document.listH1H2H3Config().size(), 1);
    EXPECT_EQ(document.listH1H2H3Config()[0].levelNumber, 1);
}

TEST_F(HeadingMap, ARememberedMapIsLoaded) {
    platform.userDefaults().setValue(mapKey, "; a note\nH2/24.0/\"Helvetica\" +B\n");
    EXPECT_TRUE(document.headingMapCommands().loadH1H2H3MapSavedInUserDefaults());
    EXPECT_EQ(map(), "H2 24");
    platform.userDefaults().setValue(mapKey, "; only a note\n");
    EXPECT_FALSE(document.headingMapCommands().loadH1H2H3MapSavedInUserDefaults());
    EXPECT_EQ(map(), "H2 24");
}

TEST_F(HeadingMap, TheMapIsTheDocumentsOwnAndNoChangeOfIt) {
    perform("resetH1H2H3FontsMap:");
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(HeadingMap, RecordsWithoutAFontAreMarkedAndSavedByTheirFontStrings) {
    document.listH1H2H3Config() = {{1, "H1", "24.5 Helvetica Bold", std::nullopt},
                                   {2, "H2", "30.0 Courier", std::nullopt}};
    document.reloadHeadingMap();
    table().selectRow(0);
    ASSERT_TRUE(document.hasSelectedText());
    EXPECT_TRUE(document.pdfview()->currentSelection()->string().startsWith("Chapter title"));
    platform.filesToChoose = {dir.path("saved.txt")};
    perform("buttonClickedSaveH1H2H3Map:");
    EXPECT_EQ(test::contentOf(dir.path("saved.txt")), "H1/24.0/\"Helvetica\" +B\n");
}

TEST_F(HeadingMap, FontsOfTheCurrentPageAreLogged) {
    const test::LogRecorder log;
    perform("dumpFontsOnCurrentPage:");
    ASSERT_EQ(log.messages().size(), 3);
    EXPECT_EQ(log.messages()[0], "\n\n[Font **24.5 Helvetica Bold**] - Chapter title\n");
    EXPECT_EQ(log.messages()[1], "\n\n[Font **16.5 Helvetica Bold**] - Section title\n");
    EXPECT_TRUE(log.messages()[2].startsWith("\n\n[Font **10.0 Helvetica**] - Body text that"));
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(HeadingMap, CountingTheFontsSaysAndChangesNothing) {
    const test::LogRecorder log;
    perform("debugPrintFontsInDocument:");
    EXPECT_TRUE(log.messages().isEmpty());
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_FALSE(document.isDocumentEdited());
}

/// A window whose heading map has not been guessed yet. A guess that a command does not wait for comes later,
/// and replaces what the command has made of the map.
class HeadingMapToBeGuessed : public HeadingMap {
protected:
    void SetUp() override { openWithoutWaiting(chapters()); }
    QString mapInTheEnd() {
        document.finishLoading();
        return map();
    }
};

TEST_F(HeadingMapToBeGuessed, SaysThatTheFontsAreBeingCounted) {
    EXPECT_EQ(table().accessibleDescription(), "The fonts of this PDF are being counted.");
    EXPECT_EQ(mapInTheEnd(), "H1 24, H2 16");
    EXPECT_EQ(table().accessibleDescription(), "");
}

TEST_F(HeadingMapToBeGuessed, IsSavedAsItIsGuessed) {
    platform.filesToChoose = {dir.path("saved.txt")};
    perform("buttonClickedSaveH1H2H3Map:");
    EXPECT_EQ(test::contentOf(dir.path("saved.txt")), "H1/24.0/\"Helvetica\" +B\nH2/16.0/\"Helvetica\" +B\n");
    EXPECT_EQ(mapInTheEnd(), "H1 24, H2 16");
}

TEST_F(HeadingMapToBeGuessed, StaysEmptyOnceItIsReset) {
    perform("resetH1H2H3FontsMap:");
    EXPECT_EQ(mapInTheEnd(), "");
}

TEST_F(HeadingMapToBeGuessed, IsReplacedByALoadedOneForGood) {
    platform.filesToChoose = {writeMap("H3/16.0/\"Helvetica\" +B\n")};
    perform("buttonClickedLoadH1H2H3Map:");
    EXPECT_EQ(mapInTheEnd(), "H3 16");
}

TEST_F(HeadingMapToBeGuessed, GetsTheSelectedTextBesideWhatIsGuessed) {
    selectText("Body text");
    perform("useSelectionforH3:");
    EXPECT_EQ(map(), "H1 24, H2 16, H3 10");
    EXPECT_EQ(mapInTheEnd(), "H1 24, H2 16, H3 10");
}

class HeadingMapWithoutText : public test::TreeWindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addPage();
        open(pdf);
    }
};

TEST_F(HeadingMapWithoutText, IsEmpty) {
    EXPECT_TRUE(document.listH1H2H3Config().empty());
    EXPECT_TRUE(document.myWindow()->tableViewH1H2H3Config()->accessibleDescription().startsWith(
        "No font counts as that of headings."));
    const test::LogRecorder log;
    perform("dumpFontsOnCurrentPage:");
    EXPECT_TRUE(log.messages().isEmpty());
}

class PrintedPage : public test::TreeWindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(9);
        pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /r >> 2 << /S /D >>] >>");
        open(pdf);
    }
    QString proposed() {
        perform("runPrintedPageSheet:");
        const QString text = field()->text();
        document.openSheet()->pressButton(0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return text;
    }
    QLineEdit *field() {
        return qobject_cast<QLineEdit *>(document.openSheet()->field("printedPageTextField"));
    }
    void showPage(int index) { document.pdfview()->goToPage(document.pdfDoc()->page(index)); }
    qint32 offset() { return static_cast<qint32>(document.printedPageOffset()); }
};

TEST_F(PrintedPage, TheSheetProposesWhatTheOffsetPredictsOrTheLabel) {
    showPage(6);  // label 5
    EXPECT_EQ(proposed(), "5");
    document.setPrintedPageOffset(2);
    EXPECT_EQ(proposed(), "3");
    document.setPrintedPageOffset(8);
    EXPECT_EQ(proposed(), "5") << "not -3";
}

TEST_F(PrintedPage, AConfirmedNumberGivesTheOffset) {
    showPage(6);
    perform("runPrintedPageSheet:");
    field()->setText("2");
    document.openSheet()->pressButton(1);
    EXPECT_EQ(offset(), 3);
    EXPECT_TRUE(document.userHasCheckedPrintedPageNumbers());
}

TEST_F(PrintedPage, WhatIsNoNumberIsToldAndMakesTheOffsetUnknown) {
    showPage(6);
    for (const char *text : {"iv", "0"}) {
        document.setPrintedPageOffset(8);
        document.printedPageCommands().takePrintedPage(text);
        EXPECT_EQ(offset(), 0);
    }
    EXPECT_EQ(platform.beeps, 2);
    ASSERT_EQ(platform.alerts.size(), 2);
    EXPECT_EQ(platform.alerts[0].message, "Could not interpret printed page number");
    EXPECT_EQ(platform.alerts[0].informativeText,
              "Both the page label and printed page number must be integers.");
    EXPECT_EQ(platform.alerts[0].buttons, QStringList{"OK"});
    EXPECT_FALSE(document.userHasCheckedPrintedPageNumbers());
}

TEST_F(PrintedPage, ACancelledSheetChangesNothing) {
    showPage(6);
    document.setPrintedPageOffset(8);
    perform("runPrintedPageSheet:");
    field()->setText("1");
    document.openSheet()->pressButton(0);
    EXPECT_EQ(offset(), 8);
}

TEST_F(PrintedPage, AnUnknownOffsetIsAskedForAtTheMiddlePageOnce) {
    EXPECT_FALSE(document.getRealPageArrayIndex("p400"));
    EXPECT_EQ(document.pdfview()->currentPage()->index(), 4);
    const Sheet *sheet = document.openSheet();
    ASSERT_NE(sheet, nullptr);
    document.getRealPageArrayIndex("p401");
    EXPECT_EQ(document.openSheet(), sheet) << "one question at a time";
}

TEST_F(PrintedPage, OnceConfirmedItIsNotAskedForAgain) {
    document.setUserHasCheckedPrintedPageNumbers(true);
    document.getRealPageArrayIndex("p3");
    EXPECT_EQ(document.openSheet(), nullptr);
}

}  // namespace
}  // namespace leafwright
