#include <QApplication>

#include "desktop/application_icon.h"
#include "desktop/qt_host.h"
#include "desktop/text.h"
#include "shell/assembly.h"

/// The program's folder is where its file lies; there is nothing else to be told. Ends with 1 after a failure
/// that no routine handled.
int main(int argc, char** argv) {
    using namespace tolva;
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("TOLVA"));
    QApplication::setWindowIcon(desktop::application_icon());
    // Windows are hidden and shown again; the end is the main menu's business.
    QApplication::setQuitOnLastWindowClosed(false);

    const auto disk = files::make_disk();
    platform::SystemClock clock;
    desktop::QtHost host(*disk);
    platform::Runtime runtime(host, clock);
    module::Module module(runtime, *disk, desktop::from_qt(QCoreApplication::applicationDirPath()));
    shell::assemble(module);
    shell::start(module);
    if (!runtime.ended()) {
        host.start_clock(runtime);
        QApplication::exec();
    }
    return host.failed() ? 1 : 0;
}
