#include "desktop/fitting_scroll_area.h"

#include <QEvent>

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

bool FittingScrollArea::eventFilter(QObject* object, QEvent* event) {
    const bool done = QScrollArea::eventFilter(object, event);
    if (object == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return done;
}

} // namespace tolva::desktop
