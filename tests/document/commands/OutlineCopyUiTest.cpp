#include "document/commands/OutlineCopy.h"
#include "support/WindowFixture.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::PdfBuilder;

TEST(Padding, BlanksAndFullStops) {
    EXPECT_EQ(spaceStringOfLength(3), "   ");
    EXPECT_EQ(spaceStringOfLength(0), "");
    EXPECT_FALSE(spaceStringOfLength(0).isNull());
    EXPECT_EQ(dotStringOfLength(3), "...");
    EXPECT_EQ(dotStringOfLength(0), "");
    EXPECT_EQ(dotStringOfLength(-1), "");
}

class Copying : public test::WindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(2);
        const std::string page = "[" + pdf.pageReference(0) + " /XYZ 72 700 null]";
        addOutline(pdf, {{"(Intro)", page, {{"(Scope)", page, {{"(Deep)", page}}}}}, {"()", page}});
        open(pdf);
        document.outlineview()->expandItem(*node({0}), true);
    }

    QString copied() {
        document.outlineview()->copy(nullptr);
        return platform.clipboardTexts.isEmpty() ? QString() : platform.clipboardTexts.last();
    }
};

TEST_F(Copying, WithNothingSelectedTheClipboardKeepsWhatItHolds) {
    select({});
    EXPECT_EQ(copied(), QString());
    EXPECT_TRUE(platform.clipboardTexts.isEmpty());
    EXPECT_EQ(platform.beeps, 0);
}

TEST_F(Copying, TheMenuCommandCopiesFromTheOutlineThatHasTheFocus) {
    document.outlineview()->setFocus();
    select({{0}});
    EXPECT_TRUE(document.actions().perform("copy:"));
    EXPECT_EQ(platform.clipboardTexts, QStringList{" Intro\n"});
}

TEST_F(Copying, ALevelIsTheNumberOfStepsToTheRoot) {
    EXPECT_EQ(levelOfItem(*node({0})), 1);
    EXPECT_EQ(levelOfItem(*node({0, 0, 0})), 3);
    EXPECT_EQ(levelOfItem(document.treecontroller().arrangedObjects()), 0);
}

}  // namespace
}  // namespace leafwright
