#include "desktop/qt_printer.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <cmath>

#include "basic/run_time_error.h"
#include "desktop/text.h"
#include "desktop/twip_device.h"

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
    // A job that nobody ended was cut short by a failure; half of it is better not sent.
    if (painter_.isActive()) {
        device()->abort();
        painter_.end();
    }
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
    if (!painter_.begin(printer))
        throw basic::RunTimeError(printer_error);
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
    if (!device()->newPage())
        throw basic::RunTimeError(printer_error);
    turn_page_origin();
}

void QtPrinter::end_job() {
    if (!painter_.isActive())
        return;
    const bool ended = painter_.end() && device()->printerState() != QPrinter::Error;
    device_for_once_.reset();
    if (!ended)
        throw basic::RunTimeError(printer_error);
}

// --- What is printed ---

std::size_t QtPrinter::set_rich_text(const rtf::RichText& text, const platform::PaperRectangle& where,
                                     std::size_t start) {
    QPainter& painter = page();
    // Characters, not code units.
    const QList<uint> all = to_qt(text.text()).toUcs4();
    double y = where.top;
    for (std::size_t at = start; at < text.length();) {
        std::size_t end = at;
        while (end < text.length() && all[static_cast<qsizetype>(end)] != '\r')
            ++end;
        const QString line = QString::fromUcs4(reinterpret_cast<const char32_t*>(all.constData()) + at,
                                               static_cast<qsizetype>(end - at));
        QTextLayout layout(line, font());
        layout.beginLayout();
        for (QTextLine row = layout.createLine(); row.isValid(); row = layout.createLine()) {
            row.setLineWidth(where.right - where.left);
            if (y + row.height() > where.bottom)
                return at + static_cast<std::size_t>(line.left(row.textStart()).toUcs4().size());
            row.draw(&painter, QPointF(where.left, y));
            y += row.height();
        }
        layout.endLayout();
        at = end + 2;
    }
    return text.length();
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
