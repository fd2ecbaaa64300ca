#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>
#include <QUrl>
#include <QVersionNumber>

#include <optional>

namespace leafwright {

/// A version of the program, as its feed announces it.
struct AppcastItem {
    QVersionNumber version;  ///< What versions are compared by, without zeros at the end.
    QString displayVersion;  ///< What people call the version.
    QString notes;           ///< What is new, as plain text (see plainTextOfHtml()); may be empty.
    QUrl downloadPage;       ///< Where it can be had, http or https only; may be empty.
};

/// A version such as "1.10.2": numbers parted by dots. Zeros at the end count for nothing, so that 1.0 is 1.
/// Absent if the text is anything else.
std::optional<QVersionNumber> versionFromString(const QString &text);

/// The newest version of a feed: RSS 2.0 whose items carry a version, as the attribute `version` of their
/// enclosure or as an element, and perhaps a `shortVersionString` for people; the prefix does not matter.
/// Items without a version that can be compared are passed over. Absent if none is left, or if the text is
/// not a feed; one with a document type is not, for only entities need it, and neither is one that is nested
/// more deeply, or has more attributes in a tag, than feeds do.
/// @param deadline when to give up
std::optional<AppcastItem> newestVersionInAppcast(
    const QByteArray &xml, QDeadlineTimer deadline = QDeadlineTimer(std::chrono::seconds(5)));

}  // namespace leafwright
