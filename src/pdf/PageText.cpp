#include "pdf/PageText.h"

namespace leafwright {

void AttributedString::append(const QString &text, const Font &font) {
    if (text.isEmpty()) return;
    const int length = static_cast<int>(text.size());
    if (!runs.empty() && runs.back().font == font) {
        runs.back().range.length += length;
    } else {
        runs.push_back({{static_cast<int>(string.size()), length}, font});
    }
    string += text;
}

AttributedString AttributedString::part(const TextRange &range) const {
    const int begin = std::clamp(range.location, 0, static_cast<int>(string.size()));
    const int end = std::clamp(range.end(), begin, static_cast<int>(string.size()));
    AttributedString result;
    for (const FontRun &run : runs) {
        const int from = std::max(run.range.location, begin);
        const int to = std::min(run.range.end(), end);
        if (from < to) result.append(string.mid(from, to - from), run.font);
    }
    return result;
}

}  // namespace leafwright
