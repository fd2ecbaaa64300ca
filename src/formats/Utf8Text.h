#pragma once

#include <QByteArrayView>
#include <QString>

#include <variant>

namespace leafwright {

/// The line, counted from 1, in which a text is not UTF-8.
struct NotUtf8 {
    qsizetype line;
};

/// Decodes a text of somebody else's, which nothing is to be made up for: what other decoders turn into
/// replacement characters is an error here. A byte order mark at the beginning is left out.
std::variant<QString, NotUtf8> textOfUtf8(QByteArrayView bytes);

}  // namespace leafwright
