#pragma once

#include "exchange/ReadOutline.h"

#include <QJsonDocument>

namespace leafwright {

/// Parses JSON, or tells the line that is none.
std::variant<QJsonDocument, TreeError> parsedJson(const QByteArray &text);

}  // namespace leafwright
