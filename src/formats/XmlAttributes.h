#pragma once

#include <QtGlobal>

namespace leafwright {

/// Whether some tag of an XML text, in UTF-8 or as a text, may have more attributes than Qt reads in no time:
/// it compares the names of each two. No text of an attribute holds a "<".
template <typename Text>
bool hasTooManyAttributes(const Text &xml) {
    constexpr qsizetype mostAttributes = 2'000;
    qsizetype signs = 0;
    for (const auto c : xml) {
        if (c == u'<') signs = 0;
        if (c == u'=' && ++signs > mostAttributes) return true;
    }
    return false;
}

}  // namespace leafwright
