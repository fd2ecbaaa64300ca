#pragma once

#include "document/outline/KeptOutline.h"

#include <QByteArray>

#include <optional>
#include <sys/stat.h>

namespace leafwright {

/// How long is kept what nobody asks for.
constexpr qint64 fourWeeks = qint64{28} * 24 * 60 * 60 * 1000;  // milliseconds

/// A PDF that is opened, as those know it who have kept something for it.
class OpenedPdf {
public:
    explicit OpenedPdf(const QString &path);

    /// Whether something was kept for it: by its path, by another one to the same file, or by its content
    /// where that has been moved. @param head without its entries
    bool isMeantBy(const KeptOutline &head);

private:
    bool hasContentOf(const KeptOutline &head);

    QString path_;
    std::optional<struct stat> status_;
    std::optional<FileMark> mark_;  ///< Taken when it matters.
};

/// Whether a PDF has been missing for four weeks. Since when it is, a note says: a file with that number of
/// milliseconds as a line. One look at it proves little, nor does the date of what was kept for it, since
/// clocks go wrong; and where its folder is gone too, it may be on another disk that is away.
/// @param note made, or emptied, by this; what can't be noted is tried again the next time
/// @param now milliseconds since the start of 1970, UTC
bool isMissingForLong(const QString &pdf, const QByteArray &note, qint64 now);

}  // namespace leafwright
