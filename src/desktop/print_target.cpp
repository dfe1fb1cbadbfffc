#include "desktop/print_target.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <algorithm>

namespace tolva::desktop {

namespace {

const QString section = QStringLiteral("Printing");
const QString queue_key = QStringLiteral("Queue");
const QString folder_key = QStringLiteral("PdfFolder");

} // namespace

PrintTarget load_print_target(const UserSettings& settings) {
    using Kind = PrintTarget::Kind;
    if (const QString folder = settings.value(section, folder_key); !folder.isEmpty())
        return {Kind::pdf_folder, folder};
    if (const QString queue = settings.value(section, queue_key); !queue.isEmpty())
        return {Kind::queue, queue};
    return {};
}

void save_print_target(UserSettings& settings, const PrintTarget& target) {
    using Kind = PrintTarget::Kind;
    settings.save(section, folder_key, target.kind == Kind::pdf_folder ? target.name : QString());
    settings.save(section, queue_key, target.kind == Kind::queue ? target.name : QString());
}

bool is_ready(const PrintTarget& target) {
    switch (target.kind) {
    case PrintTarget::Kind::pdf_folder: {
        const QFileInfo folder(target.name);
        return folder.isDir() && folder.isWritable();
    }
    case PrintTarget::Kind::queue:
        return QPrinterInfo::availablePrinterNames().contains(target.name);
    case PrintTarget::Kind::system_default:
        break;
    }
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

std::unique_ptr<QPrinter> make_printer(const PrintTarget& target) {
    if (!is_ready(target))
        return nullptr;
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    switch (target.kind) {
    case PrintTarget::Kind::pdf_folder:
        printer->setOutputFormat(QPrinter::PdfFormat);
        break;
    case PrintTarget::Kind::queue:
        printer->setPrinterName(target.name);
        // A queue that went since it was looked for is silently another one.
        if (printer->printerName() != target.name)
            return nullptr;
        break;
    case PrintTarget::Kind::system_default:
        break;
    }
    printer->setPageSize(QPageSize(QPageSize::Letter));
    printer->setFullPage(true);
    return printer;
}

bool queue_refused_job() {
    // The statuses of the internet printing protocol from here on are errors.
    constexpr int first_error = 0x0400;
    QLibrary cups(QStringLiteral("cups"), 2);
    const auto last_status = reinterpret_cast<int (*)()>(cups.resolve("cupsLastError"));
    return last_status != nullptr && last_status() >= first_error;
}

QString next_pdf_file(const QString& folder, const QString& job) {
    const QDir directory(folder);
    static const QRegularExpression numbered(QStringLiteral("^(\\d+)\\b.*\\.pdf$"),
                                             QRegularExpression::CaseInsensitiveOption);
    int last = 0;
    for (const QString& name : directory.entryList(QDir::Files | QDir::Hidden))
        if (const auto match = numbered.match(name); match.hasMatch())
            last = std::max(last, match.captured(1).toInt());
    QString title = job;
    title.replace(QRegularExpression(QStringLiteral("[^\\w .-]")), QStringLiteral("_"));
    return directory.filePath(QStringLiteral("%1 %2.pdf").arg(last + 1, 4, 10, QLatin1Char('0')).arg(title));
}

QString reserve_pdf_file(const QString& folder, const QString& job) {
    // Another program may be numbering files there too.
    constexpr int most_tries = 100;
    for (int tries = 0; tries < most_tries; ++tries) {
        QFile file(next_pdf_file(folder, job));
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
            return file.fileName();
    }
    return {};
}

bool is_whole_pdf_file(const QString& name) {
    constexpr qint64 room_for_end = 32;
    QFile file(name);
    return file.open(QIODevice::ReadOnly) && file.seek(std::max<qint64>(file.size() - room_for_end, 0)) &&
           file.readAll().contains("%%EOF");
}

void remove_pdf_file(const QString& file) {
    if (QFileInfo(file).isFile())
        QFile::remove(file);
}

} // namespace tolva::desktop
