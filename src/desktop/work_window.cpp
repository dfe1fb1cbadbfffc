#include "desktop/work_window.h"

#include <QCloseEvent>
#include <QProgressBar>
#include <QVBoxLayout>

#include "desktop/text.h"

namespace tolva::desktop {

WorkWindow::WorkWindow(QWidget* behind, const std::string& what)
    : QWidget(behind, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint), what_(to_qt(what)),
      text_(new QLabel(this)) {
    setObjectName(QStringLiteral("work"));
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(QStringLiteral("TOLVA"));
    auto* const whole = new QVBoxLayout(this);
    text_->setTextFormat(Qt::PlainText);
    text_->setText(what_);
    text_->setMinimumWidth(fontMetrics().horizontalAdvance(QLatin1Char('0')) * 40);
    whole->addWidget(text_);
    auto* const bar = new QProgressBar(this);
    bar->setRange(0, 0); // nobody knows how much there is to come
    bar->setTextVisible(false);
    whole->addWidget(bar);
    since_.start();
}

void WorkWindow::show_steps(int steps) {
    text_->setText(QStringLiteral("%1: %2").arg(what_).arg(steps));
    if (isVisible() || since_.elapsed() < patience.count())
        return;
    show();
}

void WorkWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
}

} // namespace tolva::desktop
