#include "script/ModalGuard.h"

#include <QDialog>
#include <QMessageBox>

#include <gtest/gtest.h>

namespace leafwright::script {
namespace {

TEST(ModalGuard, ClosesWhatWouldWaitForAPerson) {
    const ModalGuard guard;
    QMessageBox box;
    box.setWindowTitle("About");
    box.exec();
    EXPECT_EQ(guard.closed(), "About");
}

TEST(ModalGuard, LeavesSheetsAlone) {
    QWidget window;
    window.show();
    QDialog sheet(&window);
    const ModalGuard guard;
    sheet.open();
    QDialog dialog;
    dialog.setWindowTitle("Dialog");
    dialog.exec();
    EXPECT_EQ(guard.closed(), "Dialog");
    EXPECT_TRUE(sheet.isVisible());
}

}  // namespace
}  // namespace leafwright::script
