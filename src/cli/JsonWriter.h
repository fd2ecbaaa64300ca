#pragma once

#include "cli/Console.h"
#include "formats/JsonWriter.h"

namespace leafwright::cli {

/// Writes JSON to a console's results.
class JsonWriter : public leafwright::JsonWriter {
public:
    explicit JsonWriter(Console &console, Layout layout = Layout::Lines)
        : leafwright::JsonWriter([&console](const QByteArray &bytes) { console.write(bytes); }, layout) {}
};

}  // namespace leafwright::cli
