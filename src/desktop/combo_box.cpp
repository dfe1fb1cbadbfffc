#include "desktop/combo_box.h"

#include <QStyleOptionComboBox>
#include <QWheelEvent>

namespace tolva::desktop {

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent), edit_(new LineEdit) {
    setEditable(true);
    setLineEdit(edit_);
    setCompleter(nullptr);
    setInsertPolicy(QComboBox::NoInsert);
    setFocusPolicy(Qt::StrongFocus); // not by the wheel
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ComboBox::showPopup() {
    // A click on the arrow ends here: its release goes to the list.
    if (edit_->on_click_over)
        edit_->on_click_over();
    QComboBox::showPopup();
}

QSize ComboBox::sizeHint() const {
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QSize content(edit_->room() * fontMetrics().horizontalAdvance(QLatin1Char('0')),
                        fontMetrics().height());
    return {style()->sizeFromContents(QStyle::CT_ComboBox, &option, content, this).width(),
            QComboBox::sizeHint().height()};
}

QSize ComboBox::minimumSizeHint() const {
    return sizeHint();
}

void ComboBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace tolva::desktop
