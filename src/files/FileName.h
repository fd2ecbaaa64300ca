#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>

namespace leafwright {

// File names are bytes to the system, and need not be UTF-8. So that none is lost on its way through a text,
// a byte that belongs to no character stands there as a lone surrogate: U+DC80 for 0x80 to U+DCFF for 0xFF,
// which no valid name contains. Whatever is handed to the system by its name has to go through these two.

/// The bytes of a path that the system knows it by.
QByteArray fileNameBytes(const QString &path);
/// A path as a text from which fileNameBytes() makes the same bytes again.
QString fileNameText(const QByteArray &bytes);

/// The path of a local file's address, which has any byte percent-encoded.
QString pathOfFileUrl(const QUrl &url);
/// The address of a local file.
QUrl urlOfFile(const QString &path);

/// The arguments of a program as main() has them, as texts in the same way. Without the program's name.
QStringList argumentTexts(int argc, const char *const *argv);

}  // namespace leafwright
