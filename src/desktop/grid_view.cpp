#include "desktop/grid_view.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>

#include "desktop/text.h"

namespace tolva::desktop {

namespace {

/// A column as narrow as this can't be seen.
constexpr int unseen_twips = 1;
/// How wide a digit of the font is for which the widths are told.
constexpr int twips_per_digit = 90;

/// The grid's alignments: 0 to 2 left, 3 to 5 centred, 6 to 8 right; top, middle, bottom in each.
Qt::Alignment alignment_of(int alignment) {
    constexpr Qt::AlignmentFlag across[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    constexpr Qt::AlignmentFlag down[] = {Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom};
    if (alignment < 0 || alignment > 8)
        return Qt::AlignLeft | Qt::AlignVCenter;
    return across[alignment / 3] | down[alignment % 3];
}

} // namespace

// --- The model ---

void GridModel::show(const platform::Grid* grid) {
    beginResetModel();
    grid_ = grid;
    rows_ = grid ? grid->Rows() - 1 : 0;
    endResetModel();
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() || !grid_ ? 0 : grid_->Cols();
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    // While a handler rebuilds the grid there may be fewer rows than are on show.
    if (!grid_ || !index.isValid() || index.row() + 1 >= grid_->Rows())
        return {};
    if (role == Qt::DisplayRole)
        return to_qt(grid_->cell(index.row() + 1, index.column()));
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(alignment_of(grid_->alignment(index.column())));
    return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (!grid_ || orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return to_qt(grid_->cell(0, section));
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(alignment_of(grid_->alignment(section)));
    return {};
}

// --- The view ---

GridView::GridView(QWidget* parent) : QTableView(parent), model_(new GridModel(this)) {
    setModel(model_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);

    // Sizing rows to their contents would look at every cell of a long list.
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + fontMetrics().height() / 2);

    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setMinimumSectionSize(2 * fontMetrics().averageCharWidth());
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] {
        // The last column also stretches by itself.
        if (!sharing_ && QGuiApplication::mouseButtons() != Qt::NoButton)
            user_sized_ = true;
    });
}

int GridView::first_seen_column() const {
    for (int column = 0; column < model_->columnCount(); ++column)
        if (!isColumnHidden(column))
            return column;
    return 0;
}

int GridView::pixels(int twips) const {
    return twips * fontMetrics().horizontalAdvance(QLatin1Char('0')) / twips_per_digit;
}

void GridView::set_widths(const std::vector<int>& twips) {
    if (twips == twips_)
        return;
    twips_ = twips;
    user_sized_ = false;
    for (std::size_t column = 0; column < twips_.size(); ++column)
        setColumnHidden(static_cast<int>(column), twips_[column] <= unseen_twips);
    share_out_width();
    updateGeometry();
}

/// The told widths are the least; a wider view widens each column alike, until the user moves an edge.
void GridView::share_out_width() {
    if (user_sized_ || twips_.empty() || horizontalHeader()->count() != static_cast<int>(twips_.size()))
        return;
    int wanted = 0;
    for (const int twips : twips_)
        if (twips > unseen_twips)
            wanted += pixels(twips);
    if (wanted == 0)
        return;
    const double factor = std::max(1.0, static_cast<double>(viewport()->width()) / wanted);
    sharing_ = true;
    for (int column = 0; column < static_cast<int>(twips_.size()); ++column) {
        const int twips = twips_[static_cast<std::size_t>(column)];
        if (twips > unseen_twips)
            setColumnWidth(column, std::max(static_cast<int>(pixels(twips) * factor),
                                            horizontalHeader()->sectionSizeHint(column)));
    }
    sharing_ = false;
}

QSize GridView::sizeHint() const {
    int width = verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
    for (const int twips : twips_)
        if (twips > unseen_twips)
            width += pixels(twips);
    constexpr int rows = 16;
    constexpr double air = 1.15; // long names and addresses have more to show
    return {static_cast<int>(width * air), horizontalHeader()->sizeHint().height() +
                                               rows * verticalHeader()->defaultSectionSize() +
                                               2 * frameWidth()};
}

void GridView::go_to_row(int row) {
    const QModelIndex index = model_->index(row - 1, first_seen_column());
    if (!index.isValid())
        return;
    setCurrentIndex(index);
    scrollTo(index);
}

void GridView::keyboardSearch(const QString& search) {
    // The name stands in the first column; the search would otherwise follow the arrows sideways.
    if (currentIndex().isValid() && currentIndex().column() != first_seen_column())
        setCurrentIndex(currentIndex().siblingAtColumn(first_seen_column()));
    QTableView::keyboardSearch(search);
}

void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (current.isValid() && on_move)
        on_move(current.row() + 1);
}

void GridView::mousePressEvent(QMouseEvent* event) {
    QTableView::mousePressEvent(event);
    pressed_row_ = event->button() == Qt::LeftButton ? indexAt(event->position().toPoint()).row() : -1;
}

void GridView::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    const int row = event->button() == Qt::LeftButton ? indexAt(event->position().toPoint()).row() : -1;
    const bool clicked = row >= 0 && row == pressed_row_;
    pressed_row_ = -1;
    if (clicked && on_open)
        on_open(row + 1);
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
    // The first click has opened the row; the second one isn't another.
    event->accept();
}

void GridView::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter) {
        QTableView::keyPressEvent(event);
        return;
    }
    event->accept();
    if (!event->isAutoRepeat() && currentIndex().isValid() && on_open)
        on_open(currentIndex().row() + 1);
}

void GridView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    share_out_width();
}

} // namespace tolva::desktop
