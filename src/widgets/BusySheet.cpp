#include "widgets/BusySheet.h"

#include <QApplication>
#include <QPointer>

namespace leafwright {

namespace {

constexpr qint64 frame = 15;  // milliseconds

}  // namespace

BusySheet::BusySheet(const QString &title, QWidget *parent) : Sheet(title, parent) {
    setCancellable(false);
}

void BusySheet::drawAtOnce() {
    const QPointer<BusySheet> self(this);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    if (!self) return;  // an event has closed its window
    repaint();
    sinceDrawn_.start();
}

void BusySheet::drawIfDue() {
    if (!sinceDrawn_.isValid() || sinceDrawn_.elapsed() >= frame) drawAtOnce();
}

}  // namespace leafwright
