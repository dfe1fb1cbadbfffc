#include "desktop/month_calendar.h"

#include <QLocale>
#include <QPainter>

namespace tolva::desktop {

QDate to_qt(basic::Date date) {
    const basic::DateParts parts = basic::parts_of(date);
    return {parts.year, parts.month, parts.day};
}

basic::Date from_qt(QDate date) {
    return basic::make_date(date.year(), date.month(), date.day());
}

MonthCalendar::MonthCalendar(QWidget* parent) : QCalendarWidget(parent) {
    // The program speaks English, and its weeks begin as its agent's do.
    setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    setGridVisible(true);
    connect(this, &QCalendarWidget::clicked, this, [this](QDate date) {
        if (on_pick)
            on_pick(from_qt(date));
    });
    connect(this, &QCalendarWidget::activated, this, [this](QDate date) {
        if (on_pick)
            on_pick(from_qt(date));
    });
    connect(this, &QCalendarWidget::selectionChanged, this, [this] {
        if (!showing_ && on_move)
            on_move(from_qt(selectedDate()));
    });
}

void MonthCalendar::show_day(basic::Date date) {
    showing_ = true;
    setSelectedDate(to_qt(date));
    showing_ = false;
}

void MonthCalendar::mark_today(basic::Date today) {
    const QDate day = to_qt(today);
    if (today_ == day)
        return;
    today_ = day;
    updateCells();
}

void MonthCalendar::paintCell(QPainter* painter, const QRect& rect, QDate date) const {
    QCalendarWidget::paintCell(painter, rect, date);
    if (date != today_)
        return;
    const bool selected = date == selectedDate();
    constexpr int thickness = 2;
    painter->save();
    painter->setPen(
        QPen(palette().color(selected ? QPalette::HighlightedText : QPalette::Highlight), thickness));
    painter->drawRect(rect.adjusted(thickness, thickness, -thickness - 1, -thickness - 1));
    painter->restore();
}

} // namespace tolva::desktop
