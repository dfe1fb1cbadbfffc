#include <gtest/gtest.h>

#include <QApplication>

#include "support/samples.h"

/// The tests of what leaves the program on paper. They need no display.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    // The machine's own printers are left alone: the only ones are those of a server that a test starts
    // there.
    const tolva::support::TemporaryFolder folder;
    qputenv("CUPS_SERVER", QByteArray::fromStdString(folder.file("cups.sock")));
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("TOLVA"));
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
