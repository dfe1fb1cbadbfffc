#pragma once

#include <QScrollArea>

namespace tolva::desktop {

/// A scroll area that would rather not scroll: it asks for all the room that its content wants, and scrolls
/// only where the screen has less.
class FittingScrollArea : public QScrollArea {
  public:
    explicit FittingScrollArea(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    bool eventFilter(QObject* object, QEvent* event) override;
};

} // namespace tolva::desktop
