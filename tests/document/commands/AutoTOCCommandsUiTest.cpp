#include "document/commands/AutoTOCCommands.h"
#include "document/commands/HeadingsWindowFixture.h"
#include "document/window/AutoTOCProgress.h"
#include "widgets/BusySheet.h"

#include <QLabel>
#include <QProgressBar>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::PdfBuilder;

class AutoTOCWindow : public test::HeadingsWindowFixture {
protected:
    /// What the three lines of the progress sheet show while a command runs, whenever there is a pause to
    /// look at them: their marks, and "*" for an indicator.
    QStringList looksAtProgress(const std::function<void()> &command) {
        QStringList looks;
        platform.whenPaused = [&] {
            QStringList lines;
            for (const int step : {1, 2, 3}) {
                const auto *text = shown<QLabel>(QString("guessPDFText%1").arg(step));
                lines.append((text ? text->text() : QString()) +
                             (shown<QProgressBar>(QString("guessPDFIndicator%1").arg(step)) ? "*" : ""));
            }
            looks.append(lines.join(' '));
        };
        command();
        platform.whenPaused = nullptr;
        return looks;
    }

private:
    /// A widget of that name that is visible; null if there is none.
    template <typename Widget>
    const Widget *shown(const QString &name) {
        for (const Widget *each : document.window()->findChildren<Widget *>(name))
            if (each->isVisible()) return each;
        return nullptr;
    }
};

TEST_F(AutoTOCWindow, AutoTOCPutsTheHeadingsUnderANewItemAndSelectsIt) {
    document.autoTOCCommands().runAutoTOCwithH1H2H3Map();
    const QString expected = "AutoTOC3 (Chapter title (Section title) Chapter title (Section title))";
    EXPECT_EQ(outline(), expected);
    EXPECT_EQ(selected(), "AutoTOC3");
    EXPECT_TRUE(document.isDocumentEdited());
    document.autoTOCCommands().runAutoTOCwithH1H2H3Map();
    EXPECT_EQ(outline(), expected + " " + expected) << "what is there stays";
}

TEST_F(AutoTOCWindow, AutoTOCAsksFirst) {
    for (const int tag : {0, 2}) {
        perform("runGuessPDF:");
        Sheet *sheet = document.openSheet();
        ASSERT_NE(sheet, nullptr);
        EXPECT_EQ(sheet->objectName(), "guessPDFWindow");
        sheet->end(tag);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(document.openSheet(), nullptr);
    }
    EXPECT_TRUE(platform.delays.isEmpty());
    EXPECT_EQ(outline(), "");
}

TEST_F(AutoTOCWindow, HalfASecondAfterAYesAutoTOCRuns) {
    perform("runGuessPDF:");
    ASSERT_TRUE(document.openSheet()->pressButton(1));
    EXPECT_EQ(platform.delays, QList<int>{500});
    EXPECT_EQ(outline(), "");
    EXPECT_TRUE(QTest::qWaitFor([&] { return outline().startsWith("AutoTOC3 (Chapter"); }, 10000));
}

TEST_F(AutoTOCWindow, AutoTOCGuessesAnEmptyMap) {
    perform("resetH1H2H3FontsMap:");
    document.autoTOCCommands().runAutoTOCWithFeedback();
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_TRUE(outline().startsWith("AutoTOC3 (Chapter"));
}

TEST_F(AutoTOCWindow, TheDeepestLevelIsASetting) {
    platform.userDefaults().setValue("autotocMaxDepth", 1);
    document.autoTOCCommands().runAutoTOCwithH1H2H3Map();
    EXPECT_EQ(outline(), "AutoTOC1 (Chapter title Chapter title)");
}

TEST_F(AutoTOCWindow, WithTheLastMapTheHeadingsComeToTheTopLevel) {
    platform.userDefaults().setValue(mapKey, "H1/24.0/\"Helvetica\" +B\n");
    perform("buttonClickedBotForAutoTOC:");
    EXPECT_EQ(outline(), "Chapter title Chapter title");
}

TEST_F(AutoTOCWindow, WithoutALastMapThatBeeps) {
    perform("buttonClickedBotForAutoTOC:");
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(outline(), "");
}

TEST_F(AutoTOCWindow, AutoTOCUsesTheMapThatIsThere) {
    document.listH1H2H3Config().erase(document.listH1H2H3Config().begin());
    document.autoTOCCommands().runAutoTOCWithFeedback();
    EXPECT_EQ(map(), "H2 16");
    EXPECT_EQ(outline(), "AutoTOC3 (Section title (Section title))");
}

TEST_F(AutoTOCWindow, TheDeepestLevelIsCutToAWholeNumber) {
    platform.userDefaults().setValue("autotocMaxDepth", 1.9);
    document.autoTOCCommands().runAutoTOCwithH1H2H3Map();
    EXPECT_EQ(outline(), "AutoTOC1 (Chapter title Chapter title)");
}

TEST_F(AutoTOCWindow, AutoTOCGoesBehindWhatIsThere) {
    setOutline("a (b) c");
    document.autoTOCCommands().runAutoTOCwithH1H2H3Map();
    EXPECT_TRUE(outline().startsWith("a (b) c AutoTOC3 (Chapter title"));
    EXPECT_EQ(selected(), "AutoTOC3");
}

TEST_F(AutoTOCWindow, WithTheLastMapWhatIsThereStaysAndNoItemWrapsTheHeadings) {
    setOutline("a (b) c");
    platform.userDefaults().setValue(mapKey, "H1/24.0/\"Helvetica\" +B\nH2/16.0/\"Helvetica\" +B\n");
    perform("buttonClickedBotForAutoTOC:");
    EXPECT_EQ(outline(), "a (b) c Chapter title (Section title) Chapter title (Section title)");
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(AutoTOCWindow, ACalibratedMapServesAutoTOC) {
    perform("testPageStructureKnowledge:");
    EXPECT_EQ(map(), "H1 0, H2 0");
    document.autoTOCCommands().runAutoTOCwithH1H2H3Map();
    const QString expected = "AutoTOC3 (Chapter title (Section title) Chapter title (Section title))";
    EXPECT_EQ(outline(), expected + " " + expected);
}

TEST_F(AutoTOCWindow, TheProgressSheetGoesThroughItsSteps) {
    AutoTOCProgress progress(document);
    const auto line = [&](int step) {
        const auto *text = progress.sheet().findChild<QLabel *>(QString("guessPDFText%1").arg(step));
        const auto *indicator =
            progress.sheet().findChild<QProgressBar *>(QString("guessPDFIndicator%1").arg(step));
        return (text->isHidden() ? "-" : "[" + text->text() + "]") + (indicator->isHidden() ? "" : "*");
    };
    const auto lines = [&] { return line(1) + " " + line(2) + " " + line(3); };
    for (int step = 1; step <= 3; ++step) {
        const auto *bar =
            progress.sheet().findChild<QProgressBar *>(QString("guessPDFIndicator%1").arg(step));
        EXPECT_EQ(bar->maximum(), 0) << "that something runs, not how far it is";
        EXPECT_FALSE(bar->isTextVisible());
    }
    progress.guessPDFStep1Begins();
    EXPECT_EQ(lines(), "-* [] []");
    progress.guessPDFStep2Begins();
    EXPECT_EQ(lines(), "[✔] -* []");
    progress.guessPDFStep3Begins();
    EXPECT_EQ(lines(), "[✔] [✔] -*");
    const qint64 before = platform.clock;
    progress.guessPDFStep3Ends("Failed");
    EXPECT_EQ(lines(), "[✘] [✘] [✘]");
    EXPECT_EQ(platform.clock - before, 1000);
    EXPECT_FALSE(progress.sheet().isVisible());
}

TEST_F(AutoTOCWindow, EveryGeneratorEndsWithAMarkForEachStep) {
    const QStringList success{"✔ ✔ ✔"};
    EXPECT_EQ(looksAtProgress([&] { document.autoTOCCommands().runAutoTOCWithFeedback(); }), success);
    EXPECT_EQ(looksAtProgress([&] { perform("testPageStructureKnowledge:"); }), success);
}

/// Notes which step's indicator comes up while a command runs.
class IndicatorsSeen : public QObject {
public:
    IndicatorsSeen() { qApp->installEventFilter(this); }
    QString steps;

protected:
    bool eventFilter(QObject *object, QEvent *event) override {
        const QString name = object->objectName();
        if (name.startsWith("guessPDFIndicator") && event->type() == QEvent::Show) steps += name.back();
        return false;
    }
};

TEST_F(AutoTOCWindow, EveryGeneratorGoesThroughTheThreeSteps) {
    document.window()->show();
    const IndicatorsSeen seen;
    document.autoTOCCommands().runAutoTOCWithFeedback();
    EXPECT_EQ(seen.steps, "123");
    perform("testPageStructureKnowledge:");
    EXPECT_EQ(seen.steps, "123123");
    perform("resetH1H2H3FontsMap:");
    document.autoTOCCommands().runAutoTOCWithFeedback();
    EXPECT_EQ(seen.steps, "123123123") << "with a map to be guessed";
}

TEST_F(AutoTOCWindow, TheOutlineHasTheFocusAfterwards) {
    document.window()->show();
    document.pdfview()->setFocus();
    perform("testPageStructureKnowledge:");
    EXPECT_EQ(document.window()->focusWidget(), document.outlineview());
    document.pdfview()->setFocus();
    document.autoTOCCommands().runAutoTOCWithFeedback();
    EXPECT_EQ(document.window()->focusWidget(), document.outlineview());
}

TEST_F(AutoTOCWindow, ALastMapWithoutAFontOfTheDocumentLeavesTheOutlineButCounts) {
    setOutline("a (b) c");
    platform.userDefaults().setValue(mapKey, "H1/30.0/\"Courier\"\n");
    perform("buttonClickedBotForAutoTOC:");
    EXPECT_EQ(outline(), "a (b) c");
    EXPECT_TRUE(document.isDocumentEdited());
}

/// A window whose heading map has not been guessed yet.
class AutoTOCBeforeTheGuess : public AutoTOCWindow {
protected:
    void SetUp() override { openWithoutWaiting(chapters()); }
};

TEST_F(AutoTOCBeforeTheGuess, TheMapOfTheHeadingsIsTheUsersFromThenOn) {
    document.autoTOCCommands().runAutoTOCWithFeedback();
    EXPECT_EQ(map(), "H1 24, H2 16");
    table().selectRow(0);
    perform("buttonDeleteSelectedH1H2H3RowsClicked:");
    document.finishLoading();
    EXPECT_EQ(map(), "H2 16") << "no guess comes later";
}

TEST_F(AutoTOCBeforeTheGuess, ACalibratedMapStays) {
    perform("testPageStructureKnowledge:");
    document.finishLoading();
    EXPECT_EQ(map(), "H1 0, H2 0") << "no guess comes later";
}

/// A document of one page without text, like a scanned one.
class AutoTOCWithoutText : public AutoTOCWindow {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addPage();
        open(pdf);
    }
};

TEST_F(AutoTOCWithoutText, LooksForASecondLikeAFailureAndMakesTheTopItemOnly) {
    const qint64 before = platform.clock;
    EXPECT_EQ(looksAtProgress([&] { document.autoTOCCommands().runAutoTOCWithFeedback(); }),
              QStringList("✘ ✘ ✘"))
        << "the failure is shown, and no success after it";
    EXPECT_EQ(outline(), "AutoTOC3");
    EXPECT_EQ(platform.clock - before, 1000);
    EXPECT_EQ(map(), "");
}

TEST_F(AutoTOCWithoutText, CalibratingTellsSoAndMakesNothing) {
    const qint64 before = platform.clock;
    EXPECT_EQ(looksAtProgress([&] { perform("testPageStructureKnowledge:"); }), QStringList("✘ ✘ ✘"));
    EXPECT_EQ(platform.beeps, 1);
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].message, "Unable to run AutoTOC");
    EXPECT_EQ(platform.alerts[0].informativeText,
              "Leafwright was unable to decipher the fonts used in this PDF.");
    EXPECT_EQ(platform.alerts[0].buttons, QStringList{"OK"});
    EXPECT_EQ(platform.clock - before, 1000);
    EXPECT_EQ(outline(), "");
    EXPECT_FALSE(document.isDocumentEdited());
}

class MiniTOCWindow : public test::HeadingsWindowFixture {};

TEST_F(MiniTOCWindow, IsEnabledWithSelectedTextOnly) {
    document.pdfview()->clearSelection();
    EXPECT_FALSE(isEnabled("runMiniTOC:"));
    document.autoTOCCommands().runMiniTOC();
    EXPECT_EQ(outline(), "");
    EXPECT_FALSE(document.isDocumentEdited());
    selectText("Section");
    EXPECT_TRUE(isEnabled("runMiniTOC:"));
}

TEST_F(MiniTOCWindow, PutsWhatLooksLikeTheSelectionUnderANewItemAndSelectsIt) {
    setOutline("a (b) c");
    selectText("Section title", 1);
    perform("runMiniTOC:");
    EXPECT_EQ(outline(), "a (b) c MiniTOC (Section title Section title)");
    EXPECT_EQ(selected(), "MiniTOC");
    EXPECT_TRUE(document.isDocumentEdited());
    EXPECT_EQ(document.myWindow()->focusWidget(), document.outlineview());
    EXPECT_EQ(map(), "H1 24, H2 16") << "no map is involved";
}

TEST_F(MiniTOCWindow, ASelectionOfTwoFontsFindsTheirSequence) {
    selectText("title\nSection");
    perform("runMiniTOC:");
    EXPECT_EQ(outline(), "MiniTOC (Chapter titleSection title Chapter titleSection title)");
}

TEST_F(MiniTOCWindow, EveryRunAddsAnItem) {
    selectText("Chapter");
    perform("runMiniTOC:");
    perform("runMiniTOC:");
    EXPECT_EQ(outline(), "MiniTOC (Chapter title Chapter title) MiniTOC (Chapter title Chapter title)");
}

class CalibratingWindow : public test::HeadingsWindowFixture {
protected:
    /// The map's font strings by level.
    QString fontStrings() {
        QStringList rows;
        for (const LevelRecord &record : document.listH1H2H3Config())
            rows.append(record.levelName + " " + record.fontText);
        return rows.join(", ");
    }
};

TEST_F(CalibratingWindow, MakesAMapAndPutsTheHeadingsUnderANewItem) {
    setOutline("a");
    perform("testPageStructureKnowledge:");
    EXPECT_EQ(fontStrings(), "H1 24.5 Helvetica Bold, H2 16.5 Helvetica Bold");
    EXPECT_EQ(table().model()->rowCount(), 2);
    EXPECT_EQ(outline(), "a AutoTOC3 (Chapter title (Section title) Chapter title (Section title))");
    EXPECT_EQ(selected(), "AutoTOC3");
    EXPECT_TRUE(document.isDocumentEdited());
    EXPECT_EQ(platform.beeps, 0);
}

TEST_F(CalibratingWindow, DoesNothingWhereEditingIsNotAllowed) {
    document.setAllowTOCediting(false);
    perform("testPageStructureKnowledge:");
    EXPECT_EQ(outline(), "");
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_EQ(platform.beeps, 0);
}

TEST_F(CalibratingWindow, GoesByTheSettings) {
    platform.userDefaults().setValue("autotocMaxDepth", 1);
    platform.userDefaults().setValue("autotocIgnoreHighFrequencyFonts", false);
    platform.userDefaults().setValue("LeafwrightShouldFindMOIPointInAutoTOC", false);
    perform("testPageStructureKnowledge:");
    EXPECT_EQ(fontStrings(), "H1 24.5 Helvetica Bold, H2 16.5 Helvetica Bold, H3 10.0 Helvetica")
        << "26 characters are more than 2 % of 1240";
    EXPECT_EQ(outline(), "AutoTOC1 (Chapter title Chapter title)");
    const MyOutlineItem &heading = *document.root().children().at(0)->children().at(0);
    EXPECT_EQ(heading.pointOnPage(), QPointF());
}

TEST_F(CalibratingWindow, GoesThroughTheStepsOfTheProgressSheet) {
    const qint64 before = platform.clock;
    perform("testPageStructureKnowledge:");
    EXPECT_EQ(platform.clock - before, 1000) << "how it went is shown for a second";
}

/// A document with a heading in a font that is rare.
class CalibratingWithARareFont : public CalibratingWindow {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        std::string content = PdfBuilder::showText("F2", 24, 72, 750, "Odd");
        for (int line = 0; line < 30; ++line) {
            content += PdfBuilder::showText("F2", 16, 72, 700 - 20 * line, "Heading") +
                       PdfBuilder::showText("F1", 10, 72, 690 - 20 * line, "Body text below a heading");
        }
        pdf.addPage(content);
        open(pdf);
    }
};

TEST_F(CalibratingWithARareFont, TheSettingTellsWhetherItIsIgnored) {
    perform("testPageStructureKnowledge:");
    EXPECT_EQ(fontStrings(), "H1 16.5 Helvetica Bold") << "4 characters are less than 2 % of 240";
    platform.userDefaults().setValue("autotocIgnoreLowFrequencyFonts", false);
    perform("testPageStructureKnowledge:");
    EXPECT_EQ(fontStrings(), "H1 24.5 Helvetica Bold, H2 16.5 Helvetica Bold");
}

/// A document whose headings are no larger than its text.
class CalibratingWithoutHeadings : public test::HeadingsWindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addPage(PdfBuilder::showText("F1", 12, 72, 700, "Text that is longer than the rest") +
                    PdfBuilder::showText("F1", 10, 72, 600, "A smaller note"));
        open(pdf);
    }
};

TEST_F(CalibratingWithoutHeadings, OnlyTheTopItemIsMade) {
    perform("testPageStructureKnowledge:");
    EXPECT_EQ(outline(), "AutoTOC3");
    EXPECT_EQ(map(), "");
    EXPECT_TRUE(platform.alerts.isEmpty());
}

}  // namespace
}  // namespace leafwright
