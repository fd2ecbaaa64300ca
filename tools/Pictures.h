#pragma once

#include <QEventLoop>
#include <QPalette>
#include <QTimer>

// What the programs that take pictures have in common.

inline QPalette darkPalette() {
    QPalette palette(QColor(49, 54, 59), QColor(35, 38, 41));
    palette.setColor(QPalette::Base, QColor(27, 30, 32));
    palette.setColor(QPalette::AlternateBase, QColor(35, 38, 41));
    palette.setColor(QPalette::Highlight, QColor(61, 174, 233));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

inline void handleEventsFor(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}
