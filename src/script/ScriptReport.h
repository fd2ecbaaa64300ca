#pragma once

#include "script/ScriptPlatform.h"
#include "script/ScriptSheets.h"

#include <optional>

namespace leafwright {
class JsonWriter;
class MyDocument;
}  // namespace leafwright

namespace leafwright::script {

/// What came of one step.
struct StepRecord {
    QString name;                 ///< Null for the loading of the document.
    std::optional<bool> enabled;  ///< Whether the step could be taken; absent for the loading.
    Happenings happenings = {};
    std::vector<ShownSheet> sheets = {};
};

/// Writes a record: what happened during the step, and how things stand after it.
/// @param document null when it has been closed; then nothing is told of it
void writeRecord(const StepRecord &record, MyDocument *document, JsonWriter &json);

}  // namespace leafwright::script
