#pragma once

#include <QByteArray>
#include <QString>

namespace leafwright {

/// Decodes a PDF text string (ISO 32000-2, 7.9.2.2): UTF-16 with a byte order mark of either order,
/// UTF-8 with its mark, else PDFDocEncoding. Language escapes of UTF-16 strings go; everything else
/// stays, lone surrogates too. Never fails: bytes without a meaning become U+FFFD.
QString decodeTextString(const QByteArray &bytes);

/// Encodes a text string: as it stands when it is plain ASCII, else UTF-16BE with a byte order mark.
QByteArray encodeTextString(const QString &text);

}  // namespace leafwright
