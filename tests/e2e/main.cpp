#include "e2e/XServer.h"

#include <QApplication>

#include <gtest/gtest.h>

// Tests with real windows, a real mouse and a real keyboard, as far as an X server without a screen has them.
int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    // The build asks for the tests' names and has no use for a server.
    if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
    const leafwright::test::XServer server;
    qputenv("QT_QPA_PLATFORM", "xcb");
    // Nothing here needs a session bus: the one of whoever runs the tests is left alone, and none is launched
    // for the server.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
