#include "desktop/qt_printer.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "basic/run_time_error.h"
#include "desktop/text.h"
#include "desktop/twip_device.h"
#include "rtf/edit.h"

namespace tolva::desktop {

namespace {

constexpr int printer_error = 482;
constexpr double twips_a_point = 20;
/// Half a point.
constexpr double rule_width = 10;

QPageLayout::Orientation orientation_of(int orientation) {
    return orientation == platform::Printer::landscape ? QPageLayout::Landscape : QPageLayout::Portrait;
}

} // namespace

QtPrinter::~QtPrinter() {
    // A job that nobody ended was cut short by a failure.
    drop_job();
}

/// Half a job is better not sent, and half a file not left behind.
void QtPrinter::drop_job() {
    if (painter_.isActive()) {
        device()->abort();
        painter_.end();
        setting_.reset();
        remove_pdf_file(device()->outputFileName());
    }
    // Chosen for a job that doesn't come.
    device_for_once_.reset();
}

void QtPrinter::use(const PrintTarget& target) {
    target_ = target;
    device_.reset();
}

void QtPrinter::use_once(std::unique_ptr<QPrinter> device) {
    device_for_once_ = std::move(device);
}

QPrinter* QtPrinter::device() const {
    if (device_for_once_)
        return device_for_once_.get();
    if (!device_ && (device_ = make_printer(target_)))
        device_->setPageOrientation(orientation_of(orientation_));
    return device_.get();
}

// --- The page ---

void QtPrinter::set_Orientation(int orientation) {
    orientation_ = orientation;
    if (QPrinter* const printer = device())
        printer->setPageOrientation(orientation_of(orientation));
}

QPageLayout QtPrinter::paper() const {
    if (QPrinter* const printer = device()) {
        QPageLayout layout = printer->pageLayout();
        layout.setUnits(QPageLayout::Point);
        return layout;
    }
    // Where nothing can be printed on, measures are those of a sheet without edges.
    return {QPageSize(QPageSize::Letter), orientation_of(orientation_), QMarginsF()};
}

QMarginsF QtPrinter::edges() const {
    return paper().minimumMargins();
}

double QtPrinter::Width() const {
    return paper().fullRect().width() * twips_a_point;
}

double QtPrinter::Height() const {
    return paper().fullRect().height() * twips_a_point;
}

double QtPrinter::ScaleWidth() const {
    return Width() - (edges().left() + edges().right()) * twips_a_point;
}

double QtPrinter::ScaleHeight() const {
    return Height() - (edges().top() + edges().bottom()) * twips_a_point;
}

double QtPrinter::OffsetX() const {
    return edges().left() * twips_a_point;
}

double QtPrinter::OffsetY() const {
    return edges().top() * twips_a_point;
}

// --- The job ---

void QtPrinter::open_job() {
    if (painter_.isActive())
        return;
    QPrinter* const printer = device();
    if (!printer)
        throw basic::RunTimeError(printer_error);
    printer->setDocName(to_qt(job_name));
    if (printer == device_.get() && target_.kind == PrintTarget::Kind::pdf_folder) {
        const QString file = reserve_pdf_file(target_.name, to_qt(job_name));
        if (file.isEmpty())
            throw basic::RunTimeError(printer_error);
        printer->setOutputFileName(file);
    }
    if (!painter_.begin(printer)) {
        drop_job();
        throw basic::RunTimeError(printer_error);
    }
    turn_page_origin();
}

/// Lets the painter count in twips from the corner of what can be printed on.
void QtPrinter::turn_page_origin() {
    painter_.resetTransform();
    const double scale = static_cast<double>(device()->resolution()) / TwipDevice::twips_an_inch;
    painter_.scale(scale, scale);
    painter_.translate(OffsetX(), OffsetY());
}

QPainter& QtPrinter::page() {
    open_job();
    return painter_;
}

void QtPrinter::begin_page() {
    open_job();
    if (!device()->newPage()) {
        drop_job();
        throw basic::RunTimeError(printer_error);
    }
    turn_page_origin();
}

void QtPrinter::end_job() {
    if (!painter_.isActive())
        return;
    setting_.reset();
    const QString file = device()->outputFileName();
    const bool ended = painter_.end() && device()->printerState() != QPrinter::Error;
    const bool arrived = file.isEmpty() ? !queue_refused_job() : is_whole_pdf_file(file);
    device_for_once_.reset();
    if (ended && arrived)
        return;
    remove_pdf_file(file);
    // The toolkit's printer writes nothing more once a file was cut short.
    device_.reset();
    throw basic::RunTimeError(printer_error);
}

// --- What is printed ---

PagedText& QtPrinter::pages_of(const rtf::Document& document, double width, double height) {
    if (!setting_ || setting_->width != width || setting_->height != height || setting_->document != document)
        setting_ = Setting{document, width, height, std::make_unique<PagedText>(document, width, height)};
    return *setting_->pages;
}

std::size_t QtPrinter::set_rich_text(const rtf::RichText& text, const platform::PaperRectangle& where,
                                     std::size_t start) {
    const std::size_t length = text.length();
    const double width = where.right - where.left;
    const double height = where.bottom - where.top;
    if (width <= 0 || height <= 0)
        return start;
    PagedText* pages = &pages_of(text.document(), width, height);
    int at = pages->page_from(start);
    std::size_t passed = 0;
    if (at < 0) {
        // Not where a page of the whole text begins: what is left is a text of its own.
        pages = &pages_of(rtf::slice(text.document(), start, length), width, height);
        at = 0;
        passed = start;
    }
    QPainter& painter = page();
    painter.save();
    painter.translate(where.left, where.top);
    pages->draw(painter, at);
    painter.restore();
    return at + 1 < pages->page_count() ? std::min(passed + pages->start_of(at + 1), length) : length;
}

QFont QtPrinter::font() const {
    QFont font(to_qt(FontName));
    font.setPixelSize(static_cast<int>(std::lround(static_cast<double>(FontSize) * twips_a_point)));
    font.setBold(FontBold);
    font.setUnderline(FontUnderline);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(false);
    return font;
}

float QtPrinter::write(const std::string& text) {
    QPainter& painter = page();
    const QFont with = font();
    const QFontMetricsF metrics(with);
    const QString words = to_qt(text);
    painter.setFont(with);
    painter.drawText(
        QPointF(static_cast<double>(CurrentX()), static_cast<double>(CurrentY()) + metrics.ascent()), words);
    return static_cast<float>(metrics.horizontalAdvance(words));
}

float QtPrinter::line_height() const {
    return static_cast<float>(QFontMetricsF(font()).lineSpacing());
}

void QtPrinter::Line(double x1, double y1, double x2, double y2) {
    QPainter& painter = page();
    painter.setPen(QPen(Qt::black, rule_width, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QLineF(x1, y1, x2, y2));
}

} // namespace tolva::desktop
