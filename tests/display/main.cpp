#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

/// The tests that need a screen with a window manager. Where there is none they say so and skip.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    std::unique_ptr<QApplication> application;
    if (!GTEST_FLAG_GET(list_tests) && qEnvironmentVariableIsSet("DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "xcb");
        application = std::make_unique<QApplication>(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
    }
    return RUN_ALL_TESTS();
}
