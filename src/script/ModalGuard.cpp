#include "script/ModalGuard.h"

#include <QApplication>
#include <QWidget>

namespace leafwright::script {

namespace {

constexpr int milliseconds = 50;

}  // namespace

ModalGuard::ModalGuard() {
    timer_.setInterval(milliseconds);
    QObject::connect(&timer_, &QTimer::timeout, [this] { closeModalWindow(); });
    timer_.start();
}

void ModalGuard::closeModalWindow() {
    QWidget *window = QApplication::activeModalWidget();
    // Sheets are modal to their window only, and do not wait.
    if (!window || window->windowModality() != Qt::ApplicationModal) return;
    if (closed_.isNull()) closed_ = window->windowTitle() + QLatin1String("");
    window->close();
}

}  // namespace leafwright::script
