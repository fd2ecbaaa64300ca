#include "document/commands/ContentsCommands.h"
#include "document/commands/HeadingsWindowFixture.h"
#include "document/window/ContentsProposal.h"
#include "model/TreeWalk.h"
#include "support/BookPdf.h"

#include <QCheckBox>
#include <QLineEdit>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// All of an outline that steps have to bring back.
struct Seen {
    QStringList entries;   ///< With all that they are, and who they are.
    QStringList selected;  ///< Who.
    QStringList unfolded;
    bool isEdited = false;

    friend bool operator==(const Seen &, const Seen &) = default;
};

void PrintTo(const Seen &seen, std::ostream *out) {
    *out << "\n"
         << qPrintable(seen.entries.join('\n')) << "\nselected " << qPrintable(seen.selected.join(' '))
         << ", unfolded " << qPrintable(seen.unfolded.join(' ')) << (seen.isEdited ? ", edited" : "");
}

class StepsOver;

struct CommandCase {
    const char *name;
    void (StepsOver::*run)();
};

void PrintTo(const CommandCase &command, std::ostream *out) {
    *out << command.name;
}

/// A window with an outline of several levels, of which some are unfolded, on which a command is run.
class StepsOver : public test::HeadingsWindowFixture, public testing::WithParamInterface<CommandCase> {
public:
    // The commands

    void findContents() {
        open(test::makeBook());
        fill("1");
        take("findContents:");
    }
    void findContentsBehind() {
        open(test::makeBook());
        fill("1");
        perform("findContents:");
        document.contentsCommands().proposal()->findChild<QCheckBox *>("replace")->setChecked(false);
        pressTake();
    }
    void completeContents() {
        open(test::makeBook());
        fill("8");
        take("completeContents:");
    }
    void autoTOC() {
        openChapters();
        perform("runGuessPDF:");
        ASSERT_TRUE(document.openSheet()->pressButton(1));
        EXPECT_TRUE(QTest::qWaitFor([this] { return outline().contains("AutoTOC3 (Chapter"); }, 10'000));
    }
    void autoTOCByTheLastMap() {
        openChapters();
        platform.userDefaults().setValue(mapKey, "H1/24.0/\"Helvetica\" +B\nH2/16.0/\"Helvetica\" +B\n");
        perform("buttonClickedBotForAutoTOC:");
    }
    void autoTOCCalibrated() {
        openChapters();
        perform("testPageStructureKnowledge:");
    }
    void miniTOC() {
        openChapters();
        selectText("Section title", 1);
        perform("runMiniTOC:");
    }
    void typeTitle() { type(TreeController::TitleColumn, "Typed"); }
    void typeLabel() { type(TreeController::PageColumn, "2"); }
    void makeBold() { performOnChapters("toggleBold:"); }
    void makeItalic() { performOnChapters("toggleItalic:"); }
    void openInViewers() { performOnChapters("toggleOpenInViewers:"); }
    void chooseColor() {
        openChapters();
        perform("chooseTitleColor:");
        qobject_cast<QLineEdit *>(document.openSheet()->field("titleColorField"))->setText("#ff0033");
        ASSERT_TRUE(document.openSheet()->pressButton(1));
    }

protected:
    void SetUp() override {}

    void openChapters() {
        open(chapters());
        fill("1");
    }
    /// Makes the outline as somebody has left it who has saved it. @param label of "Light"
    void fill(const QString &label) {
        OutlineEdits &edits = document.edits();
        edits.removeAll(document.root());
        const auto add = [&edits](MyOutlineItem &parent, const QString &title, const QString &page) {
            const size_t position = parent.children().size();
            edits.insert(parent, position, std::make_unique<MyOutlineItem>(title, PageTarget{page}));
            return parent.children()[position].get();
        };
        MyOutlineItem *part = add(document.root(), "cover", "1");
        add(*add(*part, "folded", "1"), "deep", "1");
        add(*add(*part, "unfolded", "1"), "deep", "1");
        add(document.root(), "Light", label);
        document.outlineview()->expandItem(*node({0}));
        document.outlineview()->expandItem(*node({0, 1}));
        select({{0}, {0, 1, 0}});
        document.edits().forgetHistory();
        document.updateChangeCount(Document::Change::Cleared);
        before = seen();
    }
    void take(const char *selector) {
        perform(selector);
        pressTake();
    }
    void pressTake() {
        ASSERT_NE(document.contentsCommands().proposal(), nullptr);
        ASSERT_TRUE(document.contentsCommands().proposal()->pressButton(1));
    }
    void type(int column, const QString &text) {
        openChapters();
        const QModelIndex index = document.treecontroller().indexForNode(*node({0, 1}), column);
        ASSERT_TRUE(document.treecontroller().setData(index, text));
    }
    void performOnChapters(const char *selector) {
        openChapters();
        perform(selector);
    }

    Seen seen() {
        Seen now;
        const auto nameOf = [](const TreeNode &of) {
            return QString::number(of.representedObject()->identity());
        };
        walkBelow(document.root(), [&now](const MyOutlineItem &item, size_t depth) {
            const OutlineEntry &entry = item.entry();
            const auto color = entry.color.value_or(OutlineEntry::Color{-1, -1, -1});
            now.entries.append(QStringLiteral("%1%2 [%3, %4] %5 (%6, %7) %8 %9")
                                   .arg(QString(qsizetype(depth) * 2, ' '))
                                   .arg(item.identity())
                                   .arg(item.pageLabel())
                                   .arg(item.importedPage().value_or(-1))
                                   .arg(item.pageTitle())
                                   .arg(item.pointOnPage().x())
                                   .arg(item.pointOnPage().y())
                                   .arg(int(entry.bold) + 2 * int(entry.italic) + 4 * int(entry.open))
                                   .arg(color[0] + 10 * color[1] + 100 * color[2]));
        });
        for (const TreeNode *each : document.treecontroller().selectedNodes())
            now.selected.append(nameOf(*each));
        walkBelow(document.treecontroller().arrangedObjects(), [&](const TreeNode &each, size_t /*depth*/) {
            if (document.outlineview()->isItemExpanded(each)) now.unfolded.append(nameOf(each));
        });
        now.isEdited = document.isDocumentEdited();
        return now;
    }

    Seen before;
};

TEST_P(StepsOver, BringBackTreeAndLook) {
    (this->*GetParam().run)();
    ASSERT_FALSE(HasFatalFailure());
    const Seen after = seen();
    ASSERT_NE(after.entries, before.entries) << "it has done nothing";
    EXPECT_TRUE(after.isEdited);
    for (int i = 0; i < 2; ++i) {
        perform("stepBack:");
        EXPECT_EQ(seen(), before);
        EXPECT_FALSE(isEnabled("stepBack:")) << "it is one step";
        perform("stepForward:");
        EXPECT_EQ(seen(), after);
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, StepsOver,
                         testing::Values(CommandCase{"FindContents", &StepsOver::findContents},
                                         CommandCase{"FindContentsBehind", &StepsOver::findContentsBehind},
                                         CommandCase{"CompleteContents", &StepsOver::completeContents},
                                         CommandCase{"AutoTOC", &StepsOver::autoTOC},
                                         CommandCase{"AutoTOCByTheLastMap", &StepsOver::autoTOCByTheLastMap},
                                         CommandCase{"AutoTOCCalibrated", &StepsOver::autoTOCCalibrated},
                                         CommandCase{"MiniTOC", &StepsOver::miniTOC},
                                         CommandCase{"TypedTitle", &StepsOver::typeTitle},
                                         CommandCase{"TypedLabel", &StepsOver::typeLabel},
                                         CommandCase{"Bold", &StepsOver::makeBold},
                                         CommandCase{"Italic", &StepsOver::makeItalic},
                                         CommandCase{"OpenInViewers", &StepsOver::openInViewers},
                                         CommandCase{"Colour", &StepsOver::chooseColor}),
                         [](const auto &command) { return std::string(command.param.name); });

}  // namespace
}  // namespace leafwright
