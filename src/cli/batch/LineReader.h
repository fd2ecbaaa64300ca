#pragma once

#include <QByteArray>

namespace leafwright::cli {

/// Reads lines from a descriptor as they come, of which none takes more memory than is said. Listens to
/// requests to end the program (Interruption) while it waits.
class LineReader {
public:
    enum class Got {
        Line,
        TooLong,      ///< A line that is longer than is taken; it has been passed over.
        End,          ///< There are no more.
        Interrupted,  ///< The program was asked to end, or no more lines are wanted.
        Failed        ///< It can't be read: errno says why.
    };

    /// @param stop can be read from when no more lines are wanted; -1 for none
    /// @param longest in bytes, without the line feed
    explicit LineReader(int descriptor, int stop = -1, qsizetype longest = 1 << 20)
        : descriptor_(descriptor), stop_(stop), longest_(longest) {}

    /// @param line gets the next one without its line feed, which the last one may lack
    Got next(QByteArray &line);
    /// The number of the line that came last, from 1.
    qint64 number() const { return number_; }
    /// Whether the line that came last has no line feed, as no other line.
    bool lastIsCutOff() const { return cutOff_; }

private:
    Got fill();
    Got passOver(QByteArray &line);

    int descriptor_;
    int stop_;
    qsizetype longest_;
    qint64 number_ = 0;
    QByteArray buffer_;
    qsizetype start_ = 0;  ///< Where the next line begins in the buffer.
    bool atEnd_ = false;
    bool cutOff_ = false;
};

}  // namespace leafwright::cli
