// The steps of a script.

#include "script/ScriptStep.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size) {
    using namespace leafwright::script;
    const auto steps = parseSteps(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    const auto *const parsed = std::get_if<std::vector<Step>>(&steps);
    for (const Step &step : parsed ? *parsed : std::vector<Step>()) {
        if (step.has("path")) pathOf(step["path"]);
        if (step.has("paths")) pathsOf(step["paths"]);
    }
    return 0;
}
