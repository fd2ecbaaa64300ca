#include "e2e/Hand.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QThread>
#include <QWidget>

#include <gtest/gtest.h>
#include <thread>

namespace leafwright::test {

namespace {

constexpr int patience = 60'000;  // milliseconds
constexpr unsigned long betweenLooks = 20;

}  // namespace

void Hand::act(const std::function<void()> &script) {
    QEventLoop loop;
    std::thread hand([&] {
        script();
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    hand.join();
}

void Hand::onMain(const std::function<void()> &function) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), function, Qt::BlockingQueuedConnection);
}

bool Hand::waitFor(const char *what, const std::function<bool()> &holds,
                   const std::function<void()> &meanwhile) {
    QElapsedTimer timer;
    timer.start();
    while (!timer.hasExpired(patience)) {
        bool held = false;
        onMain([&] { held = holds(); });
        if (held) return true;
        if (meanwhile) meanwhile();
        QThread::msleep(betweenLooks);
    }
    ADD_FAILURE() << "waited in vain for " << what;
    return false;
}

QByteArray Hand::tool(const QStringList &arguments) {
    QProcess xdotool;
    xdotool.start("xdotool", arguments);
    const bool finished = xdotool.waitForFinished(patience);
    EXPECT_TRUE(finished && xdotool.exitCode() == 0) << "xdotool " << qPrintable(arguments.join(' '));
    return xdotool.readAllStandardOutput();
}

void Hand::moveTo(const QPoint &place) {
    tool({"mousemove", QString::number(place.x()), QString::number(place.y())});
}

void Hand::press() {
    tool({"mousedown", "1"});
}

void Hand::release() {
    tool({"mouseup", "1"});
}

void Hand::pressTwice() {
    tool({"mousedown", "1", "mouseup", "1", "mousedown", "1"});
}

void Hand::key(const QString &name) {
    tool({"key", name});
}

void Hand::type(const QString &text) {
    tool({"type", text});
}

QPoint onScreen(const QWidget &widget, const QPoint &position) {
    return (QPointF(widget.mapToGlobal(position)) * widget.devicePixelRatioF()).toPoint();
}

}  // namespace leafwright::test
