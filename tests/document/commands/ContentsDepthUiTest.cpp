#include "document/commands/FindContentsFixture.h"

#include <QCheckBox>
#include <QSpinBox>

namespace leafwright {
namespace {

/// A window with a book that has headings below those of its contents.
class DeepContentsWindow : public FindContentsWindow {
protected:
    void SetUp() override {
        open(test::makeBook(
            {}, {.headingsBelow = {"", "Worms", "Leaves", "", "Clouds", "Pumps", "", "Dusk", "Panes"}}));
    }
    QCheckBox &deeper() { return part<QCheckBox>("deeper"); }

    const QString deepBook =
        "1 Soil (1.1 What is in the Ground (Worms) 1.2 Compost (Leaves)) "
        "2 Water (2.1 Rain (Clouds) 2.2 Wells (Pumps)) 3 Light (3.1 Shade (Dusk) 3.2 Glass (Panes))";
};

TEST_F(DeepContentsWindow, WithoutTheBoxItGoesAsDeepAsTheContents) {
    find();
    EXPECT_FALSE(deeper().isHidden());
    EXPECT_FALSE(deeper().isChecked());
    EXPECT_EQ(section(0, 0).childCount(), 0);
    take();
    EXPECT_EQ(outline(), book);
}

TEST_F(DeepContentsWindow, TheBoxAddsTheHeadingsBelow) {
    find();
    deeper().setChecked(true);
    ASSERT_EQ(section(0, 0).childCount(), 1);
    EXPECT_EQ(section(0, 0).child(0)->text(0), "Worms");
    EXPECT_EQ(section(2, 1).childCount(), 1);
    take();
    EXPECT_EQ(outline(), deepBook);
}

TEST_F(DeepContentsWindow, UncheckedTheyAreGoneAgain) {
    find();
    deeper().setChecked(true);
    deeper().setChecked(false);
    EXPECT_EQ(section(0, 0).childCount(), 0);
    take();
    EXPECT_EQ(outline(), book);
}

TEST_F(DeepContentsWindow, TheLevelsLimitThemToo) {
    find();
    deeper().setChecked(true);
    part<QSpinBox>("depth").setValue(2);
    EXPECT_EQ(section(0, 0).childCount(), 0);
    take();
    EXPECT_EQ(outline(), book);
}

}  // namespace
}  // namespace leafwright
