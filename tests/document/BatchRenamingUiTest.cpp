#include "document/BatchRenaming.h"
#include "support/TreeWindowFixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

class Renaming : public test::TreeWindowFixture {
protected:
    template <typename Field>
    Field *field(const char *name) {
        return qobject_cast<Field *>(document.openSheet()->field(name));
    }
    void press(int tag) {
        ASSERT_NE(document.openSheet(), nullptr);
        EXPECT_TRUE(document.openSheet()->pressButton(tag));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(document.openSheet(), nullptr);
    }
};

TEST_F(Renaming, TheExampleFollowsTheFields) {
    setOutline("Intro");
    select({{0}});
    perform("renameSequentialNumbering:");
    field<QLineEdit>("sequentialNumberingPrefixField")->setText("Part");
    field<QSpinBox>("sequentialNumberingFirstNumberField")->setValue(7);
    EXPECT_EQ(field<QLabel>("exampleText")->text(), "Part 7. Intro");
    press(0);
}

TEST_F(Renaming, WithoutASelectionEveryCommandBeeps) {
    setOutline("a");
    select({});
    document.batchRenaming().changeCaseToTitleCase();
    document.batchRenaming().renameSelectedTOCItemsWithPrefix("x");
    document.batchRenaming().renameSelectedTOCItemsWithPrefix({"x", " ", " "}, 1, 1);
    document.batchRenaming().renameSelectedTOCItemsWithFindTerm("a", false, "b");
    EXPECT_EQ(platform.beeps, 4);
    EXPECT_EQ(outline(), "a");
    EXPECT_FALSE(document.isDocumentEdited());
}

}  // namespace
}  // namespace leafwright
