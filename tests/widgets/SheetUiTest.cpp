#include "widgets/Sheet.h"

#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTest>

namespace leafwright {
namespace {

class SheetTest : public testing::Test {
protected:
    void SetUp() override {
        window.show();
        sheet = new Sheet("Add Prefix", &window);
        cancel = sheet->addButton("Cancel", 0);
        ok = sheet->addButton("OK", 1);
        other = sheet->addButton("OK for All", 7);
    }
    void begin() {
        sheet->begin(&window, [this](int code) { codes.push_back(code); });
        ASSERT_TRUE(QTest::qWaitForWindowExposed(sheet));
    }

    QMainWindow window;
    Sheet *sheet = nullptr;
    QPushButton *cancel = nullptr;
    QPushButton *ok = nullptr;
    QPushButton *other = nullptr;
    std::vector<int> codes;
};

TEST_F(SheetTest, BlocksItsWindowOnlyAndReturnsAtOnce) {
    begin();
    EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
    EXPECT_EQ(sheet->parentWidget(), &window);
    EXPECT_EQ(QApplication::activeModalWidget(), sheet);
    EXPECT_TRUE(codes.empty());
}

TEST_F(SheetTest, AButtonEndsItWithItsTag) {
    for (QPushButton *button : {ok, other, cancel}) {
        begin();
        QTest::mouseClick(button, Qt::LeftButton);
        EXPECT_FALSE(sheet->isVisible());
    }
    EXPECT_EQ(codes, (std::vector{1, 7, 0}));
}

TEST_F(SheetTest, EscapeIsCancel) {
    begin();
    QTest::keyClick(sheet, Qt::Key_Escape);
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_EQ(codes, std::vector{0});
}

TEST_F(SheetTest, ClosingIsCancel) {
    begin();
    sheet->close();
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_EQ(codes, std::vector{0});
}

TEST_F(SheetTest, ReturnPressesTheFirstButtonThatDoesSomething) {
    EXPECT_TRUE(ok->isDefault());
    EXPECT_FALSE(cancel->isDefault());
    EXPECT_FALSE(other->isDefault());
    auto *term = new QLineEdit;
    sheet->addField("Prefix", term, "term");
    begin();
    QTest::keyClick(term, Qt::Key_Return);
    EXPECT_EQ(codes, std::vector{1});
}

TEST_F(SheetTest, FieldsAreFoundByTheirOutletNames) {
    auto *term = new QLineEdit;
    sheet->addText("What should <all> titles begin with?");
    sheet->addField("Prefix", term, "addPrefixPrefixTermField");
    EXPECT_EQ(sheet->field("addPrefixPrefixTermField"), term);
    EXPECT_EQ(sheet->field("another"), nullptr);
}

TEST_F(SheetTest, AnyControlEndsItWithItsTag) {
    QObject control;
    setTag(&control, 42);
    begin();
    sheet->endWithTagOf(&control);
    begin();
    sheet->endWithTagOf(nullptr);
    EXPECT_EQ(codes, (std::vector{42, 0}));
}

TEST_F(SheetTest, ButtonsArePressedByTagAsByHand) {
    begin();
    EXPECT_FALSE(sheet->pressButton(5));
    ok->setEnabled(false);
    EXPECT_FALSE(sheet->pressButton(1));
    EXPECT_TRUE(codes.empty());
    EXPECT_TRUE(sheet->pressButton(7));
    EXPECT_EQ(codes, std::vector{7});
}

TEST_F(SheetTest, EndingItTwiceTellsOnce) {
    sheet->end(3);
    begin();
    sheet->end(1);
    sheet->end(2);
    sheet->close();
    EXPECT_EQ(codes, std::vector{1});
}

TEST_F(SheetTest, AnOpenSheetIsNotBegunAnew) {
    begin();
    sheet->begin(&window, [](int) { FAIL() << "the second beginning must not count"; });
    sheet->end(1);
    EXPECT_EQ(codes, std::vector{1});
}

TEST_F(SheetTest, TheHandlerMayBeginTheSheetAgain) {
    for (const bool byClosing : {false, true}) {
        codes.clear();
        sheet->begin(&window, [this](int first) {
            codes.push_back(first);
            EXPECT_FALSE(sheet->isVisible());
            begin();
        });
        byClosing ? void(sheet->close()) : sheet->end(0);
        EXPECT_TRUE(sheet->isVisible());
        sheet->end(1);
        EXPECT_EQ(codes, (std::vector{0, 1}));
    }
}

TEST_F(SheetTest, WhatCantBeCancelledIsEndedByTheProgramOnly) {
    sheet->setCancellable(false);
    begin();
    QTest::keyClick(sheet, Qt::Key_Escape);
    sheet->close();
    EXPECT_TRUE(sheet->isVisible());
    sheet->end(1);
    EXPECT_EQ(codes, std::vector{1});
}

TEST_F(SheetTest, StandsWithinAWindow) {
    QMainWindow owner;
    auto *within = new Sheet("Panel");
    within->addButton("Go", 1);
    owner.setCentralWidget(within);
    owner.show();
    within->hide();
    std::vector<int> ended;
    const auto didEnd = [&](int code) { ended.push_back(code); };
    within->beginInPlace(didEnd);
    EXPECT_TRUE(within->isVisible());
    EXPECT_FALSE(within->isWindow());
    EXPECT_FALSE(within->isModal());
    QTest::keyClick(within, Qt::Key_Return);
    EXPECT_FALSE(within->isVisible());
    within->beginInPlace(didEnd);
    QTest::keyClick(within, Qt::Key_Escape);
    EXPECT_EQ(ended, (std::vector{1, 0}));
}

TEST_F(SheetTest, GoesWithItsWindow) {
    auto owner = std::make_unique<QMainWindow>();
    owner->show();
    QPointer<Sheet> owned = new Sheet("Progress");
    owned->begin(owner.get(), [](int) { FAIL() << "nobody is left to tell"; });
    owner.reset();
    EXPECT_TRUE(owned.isNull());
}

}  // namespace
}  // namespace leafwright
