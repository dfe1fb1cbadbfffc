#include "desktop/printer_boxes.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "desktop/text.h"

namespace tolva::desktop {

namespace {

using Kind = PrintTarget::Kind;

/// The printers that there are, and a folder for those who want files.
class TargetBox : public QDialog {
  public:
    TargetBox(QWidget* behind, const PrintTarget& target) : QDialog(behind) {
        setObjectName(QStringLiteral("printers"));
        setWindowTitle(QStringLiteral("Change Default Printer"));
        auto* const whole = new QVBoxLayout(this);

        paper_ = new QRadioButton(QStringLiteral("&Print on paper:"), this);
        whole->addWidget(paper_);
        queues_ = new QListWidget(this);
        queues_->setObjectName(QStringLiteral("queues"));
        queues_->setAccessibleName(QStringLiteral("Printers"));
        fill_queues(target);
        whole->addWidget(queues_);

        files_ = new QRadioButton(QStringLiteral("Print to PDF &files in this folder:"), this);
        files_->setObjectName(QStringLiteral("files"));
        whole->addWidget(files_);
        auto* const row = new QHBoxLayout;
        folder_ = new QLineEdit(this);
        folder_->setObjectName(QStringLiteral("folder"));
        folder_->setAccessibleName(QStringLiteral("Folder"));
        folder_->setText(QDir::toNativeSeparators(
            target.kind == Kind::pdf_folder
                ? target.name
                : QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)));
        folder_->setMinimumWidth(fontMetrics().horizontalAdvance(QLatin1Char('0')) * 40);
        row->addWidget(folder_, 1);
        browse_ = new QPushButton(QStringLiteral("&Browse..."), this);
        row->addWidget(browse_);
        whole->addLayout(row);

        buttons_ = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
        whole->addWidget(buttons_);

        paper_->setEnabled(queues_->count() > 0);
        (target.kind == Kind::pdf_folder || !paper_->isEnabled() ? files_ : paper_)->setChecked(true);
        connect(paper_, &QRadioButton::toggled, this, [this] { follow(); });
        const auto print_on_paper = [this] { paper_->setChecked(true); };
        connect(queues_, &QListWidget::currentRowChanged, this, print_on_paper);
        // A click on the one that is current already changes no row.
        connect(queues_, &QListWidget::itemClicked, this, print_on_paper);
        connect(folder_, &QLineEdit::textEdited, this, [this] {
            files_->setChecked(true);
            follow();
        });
        connect(browse_, &QPushButton::clicked, this, [this] { browse(); });
        connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
        follow();
    }

    PrintTarget target() const {
        if (files_->isChecked())
            return {Kind::pdf_folder, QDir::fromNativeSeparators(folder_->text().trimmed())};
        if (const QListWidgetItem* const queue = queues_->currentItem())
            return {Kind::queue, queue->text()};
        return {};
    }

  private:
    void fill_queues(const PrintTarget& target) {
        queues_->addItems(QPrinterInfo::availablePrinterNames());
        const QString current = target.kind == Kind::queue ? target.name : QPrinterInfo::defaultPrinterName();
        for (int row = 0; row < queues_->count(); ++row)
            if (queues_->item(row)->text() == current)
                queues_->setCurrentRow(row);
    }

    void browse() {
        const QString folder =
            QFileDialog::getExistingDirectory(this, QStringLiteral("Folder for PDF Files"), folder_->text());
        if (folder.isEmpty())
            return;
        folder_->setText(QDir::toNativeSeparators(folder));
        files_->setChecked(true);
        follow();
    }

    /// OK only for what can be printed to.
    void follow() { buttons_->button(QDialogButtonBox::Ok)->setEnabled(is_ready(target())); }

    QRadioButton* paper_;
    QRadioButton* files_;
    QListWidget* queues_;
    QLineEdit* folder_;
    QPushButton* browse_;
    QDialogButtonBox* buttons_;
};

/// The job's box where the toolkit's own is no help: on Windows that is the system's, which knows printers
/// only and not the files that stand for one.
bool ask_file_job(QWidget* behind, const QString& title, QPrinter& printer) {
    QMessageBox box(QMessageBox::NoIcon, title,
                    QStringLiteral("The pages go to the file\n%1").arg(printer.outputFileName()),
                    QMessageBox::NoButton, behind);
    QPushButton* const print = box.addButton(QStringLiteral("Print"), QMessageBox::AcceptRole);
    box.addButton(QStringLiteral("Cancel"), QMessageBox::RejectRole);
    QCheckBox selection(QStringLiteral("Selection only"));
    if (printer.printRange() == QPrinter::Selection) {
        selection.setChecked(true);
        box.setCheckBox(&selection);
    }
    box.exec();
    printer.setPrintRange(selection.isChecked() ? QPrinter::Selection : QPrinter::AllPages);
    return box.clickedButton() == print;
}

bool ask_system_job(QWidget* behind, const QString& title, QPrinter& printer) {
    QPrintDialog box(&printer, behind);
    box.setOption(QAbstractPrintDialog::PrintPageRange, false);
    box.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
    box.setOption(QAbstractPrintDialog::PrintSelection, printer.printRange() == QPrinter::Selection);
    box.setWindowTitle(title);
    return box.exec() == QDialog::Accepted;
}

} // namespace

bool ask_print_target(QWidget* behind, PrintTarget& target) {
    TargetBox box(behind, target);
    if (box.exec() != QDialog::Accepted)
        return false;
    target = box.target();
    return true;
}

platform::PrintScope ask_print_job(QWidget* behind, const std::string& title, bool has_selection,
                                   const PrintTarget& target, std::unique_ptr<QPrinter>& device) {
    auto printer = make_printer(target);
    if (!printer) // the box offers files where there is no queue
        printer = make_printer({Kind::pdf_folder, QDir::homePath()});
    if (!printer)
        return platform::PrintScope::cancelled;
    if (printer->outputFormat() == QPrinter::PdfFormat)
        printer->setOutputFileName(next_pdf_file(
            target.kind == Kind::pdf_folder ? target.name : QDir::homePath(), QStringLiteral("TOLVA")));
    if (has_selection)
        printer->setPrintRange(QPrinter::Selection);
    const QString heading = title.empty() ? QStringLiteral("Print") : to_qt(title);
#ifdef Q_OS_WIN
    const bool to_file = printer->outputFormat() == QPrinter::PdfFormat;
#else
    const bool to_file = false;
#endif
    if (!(to_file ? ask_file_job : ask_system_job)(behind, heading, *printer))
        return platform::PrintScope::cancelled;
    const bool selection = has_selection && printer->printRange() == QPrinter::Selection;
    device = std::move(printer);
    return selection ? platform::PrintScope::selection : platform::PrintScope::all;
}

} // namespace tolva::desktop
