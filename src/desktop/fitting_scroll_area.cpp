#include "desktop/fitting_scroll_area.h"

namespace tolva::desktop {

FittingScrollArea::FittingScrollArea(QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
}

QSize FittingScrollArea::sizeHint() const {
    const int frame = 2 * frameWidth();
    return widget() ? widget()->sizeHint() + QSize(frame, frame) : QScrollArea::sizeHint();
}

} // namespace tolva::desktop
