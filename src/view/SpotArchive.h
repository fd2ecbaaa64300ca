#pragma once

#include <QByteArray>
#include <QPointF>
#include <QString>

#include <optional>

namespace leafwright {

/// The drag type of a spot on a page; its data is a spot archive. Not a MIME type, as only this program
/// knows what to do with it.
inline const QString NSPOINT_PBOARD_TYPE = QStringLiteral("NSPOINT_PBOARD_TYPE");

/// A spot on a page, named by the page's label.
struct Spot {
    QPointF point;  ///< In page space.
    QString pageLabel;
};

/// A keyed archive with the entries "pagePointAsString" and "pageLabel".
QByteArray archivedSpot(const Spot &spot);
/// Absent if the data is no archive that has both entries.
std::optional<Spot> unarchivedSpot(const QByteArray &data);

}  // namespace leafwright
