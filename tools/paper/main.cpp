#include <QApplication>
#include <QFileInfo>
#include <cstdio>
#include <exception>

#include "basic/run_time_error.h"
#include "desktop/qt_printer.h"
#include "desktop/text.h"
#include "files/file_system.h"
#include "printing/page.h"

// Prints rich text documents to PDF files by the road that letters take: tolva-paper FILE.rtf FILE.pdf ...

namespace tolva::paper {

namespace {

/// The paper that the document is written for.
std::unique_ptr<QPrinter> make_device(const rtf::PageSetup& page, const QString& file) {
    constexpr double twips_a_point = 20;
    auto device = std::make_unique<QPrinter>(QPrinter::HighResolution);
    device->setOutputFormat(QPrinter::PdfFormat);
    device->setOutputFileName(file);
    device->setPageSize(QPageSize(QSizeF(page.width / twips_a_point, page.height / twips_a_point),
                                  QPageSize::Point, {}, QPageSize::ExactMatch));
    device->setFullPage(true);
    return device;
}

void print(files::FileSystem& disk, const QString& document, const QString& file) {
    const files::Bytes bytes = files::read_whole(disk, desktop::from_qt(document));
    rtf::RichText text;
    text.load(std::string(bytes.begin(), bytes.end()));
    desktop::QtPrinter printer;
    printer.use_once(make_device(text.document().page, file));
    printing::print_selection(printer, text, platform::PrintScope::all);
}

} // namespace

} // namespace tolva::paper

/// Ends with 1 when a document could not be printed; the others are.
int main(int argc, char** argv) {
    using namespace tolva;
    QApplication application(argc, argv);
    const QStringList names = QCoreApplication::arguments().mid(1);
    const auto disk = files::make_disk();
    int status = names.isEmpty() || names.size() % 2 != 0 ? 2 : 0;
    for (qsizetype at = 0; status != 2 && at < names.size(); at += 2) {
        try {
            paper::print(*disk, names[at], names[at + 1]);
        } catch (const basic::RunTimeError& error) {
            std::fprintf(stderr, "%s: %s\n", qPrintable(names[at]), error.text().c_str());
            status = 1;
        }
    }
    if (status == 2)
        std::fprintf(stderr, "usage: tolva-paper FILE.rtf FILE.pdf ...\n");
    return status;
}
