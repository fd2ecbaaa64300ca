#include "cli/batch/LogLine.h"

#include <QByteArrayView>

#include <algorithm>
#include <cstring>

namespace leafwright::cli {

namespace {

enum class Kind { Text, Status, Number };

struct Member {
    const char *before = "";  ///< What stands in front of its value.
    Kind kind = Kind::Text;
    bool isOwn = false;  ///< Nothing else that a batch reads or writes has it at this place.
};

constexpr Member members[] = {{"{\"file\": ", Kind::Text},          {", \"out\": ", Kind::Text},
                              {", \"status\": ", Kind::Status},     {", \"seconds\": ", Kind::Number},
                              {", \"pages\": ", Kind::Number},      {", \"entries\": ", Kind::Number},
                              {", \"peakMB\": ", Kind::Number},     {", \"message\": ", Kind::Text},
                              {", \"size\": ", Kind::Number, true}, {", \"modified\": ", Kind::Number, true},
                              {", \"job\": ", Kind::Text, true}};

enum class Match { No, CutOff, Yes };

/// Takes a text off the front of what is left.
Match take(QByteArrayView &rest, QByteArrayView text) {
    const QByteArrayView shown = rest.first(std::min(rest.size(), text.size()));
    if (!text.startsWith(shown)) return Match::No;
    rest = rest.sliced(shown.size());
    return shown.size() == text.size() ? Match::Yes : Match::CutOff;
}

Match takeEither(QByteArrayView &rest, QByteArrayView one, QByteArrayView other) {
    const Match match = take(rest, one);
    return match == Match::No ? take(rest, other) : match;
}

/// A string with its quotes. What JSON spells by a backslash does not stand in it as it is.
Match takeString(QByteArrayView &rest) {
    qsizetype i = 1;
    for (; i < rest.size() && rest[i] != '"'; ++i) {
        if (static_cast<unsigned char>(rest[i]) < ' ') return Match::No;
        if (rest[i] == '\\') ++i;
    }
    const bool isWhole = i < rest.size();
    rest = rest.sliced(isWhole ? i + 1 : rest.size());
    return isWhole ? Match::Yes : Match::CutOff;
}

Match takeNumber(QByteArrayView &rest) {
    const auto *end = std::ranges::find_if(
        rest, [](char c) { return std::strchr("0123456789.+-e", c) == nullptr || c == '\0'; });
    const qsizetype size = end - rest.begin();
    rest = rest.sliced(size);
    return size > 0 ? Match::Yes : Match::No;
}

Match takeValue(QByteArrayView &rest, Kind kind) {
    if (rest.isEmpty()) return Match::CutOff;
    if (kind == Kind::Status) return takeEither(rest, "\"done\"", "\"failed\"");
    if (rest.front() == 'n') return take(rest, "null");
    if (kind == Kind::Number) return takeNumber(rest);
    return rest.front() == '"' ? takeString(rest) : Match::No;
}

}  // namespace

LogLine logLineIn(const QByteArray &bytes) {
    QByteArrayView rest = bytes;
    LogLine start = LogLine::Start;
    for (const Member &member : members) {
        Match match = take(rest, member.before);
        if (match == Match::Yes && member.isOwn) start = LogLine::OwnStart;
        if (match == Match::Yes) match = takeValue(rest, member.kind);
        if (match != Match::Yes) return match == Match::No ? LogLine::No : start;
    }
    const Match end = take(rest, "}");
    if (end == Match::CutOff) return start;
    return end == Match::Yes && rest.isEmpty() ? LogLine::Whole : LogLine::No;
}

}  // namespace leafwright::cli
