#include <gtest/gtest.h>

#include <QApplication>
#include <cstring>

/// The tests of the windows run without a display, each window in front when it is to be, unless
/// TOLVA_TEST_PLATFORM names one of the toolkit's other platforms. What needs a window manager is tested
/// elsewhere.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    qputenv("QT_QPA_PLATFORM", qEnvironmentVariable("TOLVA_TEST_PLATFORM", "offscreen").toLatin1());
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("TOLVA"));
    QApplication::setQuitOnLastWindowClosed(false);
    // What the hands type into is ours: a system's own file dialog is out of their reach.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    return RUN_ALL_TESTS();
}
