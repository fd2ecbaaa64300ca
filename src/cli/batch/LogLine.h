#pragma once

#include <QByteArray>

namespace leafwright::cli {

/// How much of a line of a log, as logLineOf() writes it, some bytes are.
enum class LogLine {
    No,        ///< They are something else.
    Start,     ///< Its start, as far as a batch's input or output might have it too.
    OwnStart,  ///< Its start, with a member that nothing but a log has.
    Whole,     ///< All of it but the line feed.
};

LogLine logLineIn(const QByteArray &bytes);

}  // namespace leafwright::cli
