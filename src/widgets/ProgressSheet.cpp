#include "widgets/ProgressSheet.h"

#include <QApplication>
#include <QPointer>

namespace leafwright {

namespace {

constexpr qint64 frame = 15;  // milliseconds

}  // namespace

ProgressSheet::ProgressSheet(const QString &title, QWidget *parent) : Sheet(title, parent) {
    setCancellable(false);
}

void ProgressSheet::drawAtOnce() {
    const QPointer<ProgressSheet> self(this);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    if (!self) return;  // an event has closed its window
    repaint();
    sinceDrawn_.start();
}

void ProgressSheet::drawIfDue() {
    if (!sinceDrawn_.isValid() || sinceDrawn_.elapsed() >= frame) drawAtOnce();
}

}  // namespace leafwright
