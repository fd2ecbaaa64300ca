#pragma once

#include <QByteArrayView>

#include <algorithm>
#include <utility>

namespace leafwright {

/// What hasTooManyAttributes() is made of. A text is UTF-8 or a string, and places in it are indexes.
namespace xml {

template <typename Text>
bool standsAt(const Text &xml, qsizetype place, QByteArrayView ascii) {
    return xml.size() - place >= ascii.size() &&
           std::equal(ascii.begin(), ascii.end(), xml.begin() + place,
                      [](char expected, auto c) { return c == static_cast<char16_t>(expected); });
}

/// Goes behind what is no tag though it begins as one, if that stands at a place. @return whether it does
template <typename Text>
bool passOverUntagged(const Text &xml, qsizetype &place) {
    constexpr std::pair<const char *, const char *> forms[] = {
        {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
    for (const auto &[begin, end] : forms) {
        if (!standsAt(xml, place, begin)) continue;
        place += static_cast<qsizetype>(qstrlen(begin));
        while (place < xml.size() && !standsAt(xml, place, end))
            ++place;
        return true;
    }
    return false;
}

/// Goes to the end of the tag at a place. @return how many attributes it can have at most: each has a "=",
/// while those in quotes are text
template <typename Text>
qsizetype passOverTag(const Text &xml, qsizetype &place) {
    qsizetype signs = 0;
    char16_t quote = 0;
    for (; place < xml.size(); ++place) {
        const auto c = xml[place];
        if (quote != 0) {
            if (c == quote) quote = 0;
        } else if (c == u'"' || c == u'\'') {
            quote = c == u'"' ? u'"' : u'\'';
        } else if (c == u'=') {
            ++signs;
        } else if (c == u'>') {
            break;
        }
    }
    return signs;
}

}  // namespace xml

/// Whether some tag of an XML text, in UTF-8 or as a text, may have more attributes than Qt reads in no time:
/// it compares the names of each two.
template <typename Text>
bool hasTooManyAttributes(const Text &text) {
    constexpr qsizetype mostAttributes = 2'000;
    for (qsizetype place = 0; place < text.size(); ++place) {
        if (text[place] != u'<' || xml::passOverUntagged(text, place)) continue;
        if (xml::passOverTag(text, place) > mostAttributes) return true;
    }
    return false;
}

}  // namespace leafwright
