#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    // Whoever wants to watch says which platform: QT_QPA_PLATFORM=xcb.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
