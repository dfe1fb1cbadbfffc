#pragma once

#include <QCalendarWidget>
#include <functional>

#include "basic/date.h"

namespace tolva::desktop {

QDate to_qt(basic::Date date);
basic::Date from_qt(QDate date);

/// A month on show. A click on a day, or Enter on it, picks it; the arrow keys only go to it, and turning the
/// pages changes nothing.
class MonthCalendar : public QCalendarWidget {
  public:
    explicit MonthCalendar(QWidget* parent = nullptr);

    void show_day(basic::Date date);
    /// Which day has a frame around it.
    void mark_today(basic::Date today);

    std::function<void(basic::Date)> on_pick;
    std::function<void(basic::Date)> on_move;

  protected:
    void paintCell(QPainter* painter, const QRect& rect, QDate date) const override;

  private:
    QDate today_;
    bool showing_ = false;
};

} // namespace tolva::desktop
