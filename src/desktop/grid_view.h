#pragma once

#include <QAbstractTableModel>
#include <QTableView>
#include <functional>

#include "platform/grid.h"

namespace tolva::desktop {

/// The body of a grid as Qt reads it, straight from the grid's own cells: nothing is copied. Its row 0 is the
/// grid's row 1; the heading row is the header.
class GridModel : public QAbstractTableModel {
  public:
    explicit GridModel(QObject* parent) : QAbstractTableModel(parent) {}

    /// The grid changed, or there is none any more (null).
    void show(const platform::Grid* grid);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    const platform::Grid* grid_ = nullptr;
    int rows_ = 0;
};

/// A table whose rows are chosen whole, one at a time. A click on a row or Enter opens it; the arrows, and
/// typing the beginning of a name, only move to it.
class GridView : public QTableView {
  public:
    explicit GridView(QWidget* parent = nullptr);

    GridModel& cells() { return *model_; }
    /// In twips, as the grid has them, and on show in proportion to the user's text size; a width that the
    /// user can't see hides the column.
    void set_widths(const std::vector<int>& twips);
    /// Makes the body row (counted from 1, as the grid counts) the current one and brings it into sight.
    void go_to_row(int row);

    /// Both with the row as the grid counts.
    std::function<void(int row)> on_open;
    std::function<void(int row)> on_move;

    void keyboardSearch(const QString& search) override;
    QSize sizeHint() const override;

  protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    int first_seen_column() const;
    int pixels(int twips) const;
    void share_out_width();

    GridModel* model_;
    std::vector<int> twips_;
    int pressed_row_ = -1;
    bool sharing_ = false;
    bool user_sized_ = false;
};

} // namespace tolva::desktop
