#pragma once

#include <QDBusConnection>
#include <QString>

#include <functional>

namespace leafwright {

/// Asks the desktop's file viewer, over a message bus, to show a file, selected, in its folder. Returns at
/// once. @param otherwise called, later or at once, if there is no such viewer or it refuses
void showInFileManager(const QString &path, const QDBusConnection &bus,
                       const std::function<void()> &otherwise);

}  // namespace leafwright
