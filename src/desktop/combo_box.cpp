#include "desktop/combo_box.h"

#include <QAbstractItemView>
#include <QKeyEvent>
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

void ComboBox::keep_to_list() {
    keeps_to_list_ = true;
    edit_->setReadOnly(true);
    edit_->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void ComboBox::keyPressEvent(QKeyEvent* event) {
    const QString letter = event->text();
    if (!keeps_to_list_ || letter.isEmpty() || !letter[0].isLetterOrNumber()) {
        QComboBox::keyPressEvent(event);
        return;
    }
    for (int step = 1; step <= count(); ++step) {
        const int entry = (currentIndex() + step) % count();
        if (!itemText(entry).startsWith(letter, Qt::CaseInsensitive))
            continue;
        setCurrentIndex(entry);
        return;
    }
}

void ComboBox::mouseReleaseEvent(QMouseEvent* event) {
    QComboBox::mouseReleaseEvent(event);
    if (keeps_to_list_ && event->button() == Qt::LeftButton && rect().contains(event->pos()) &&
        !view()->isVisible())
        showPopup();
}

void ComboBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace tolva::desktop
