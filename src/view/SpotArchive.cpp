#include "view/SpotArchive.h"

#include "formats/KeyedArchive.h"

namespace leafwright {

namespace {

const QString pointKey = QStringLiteral("pagePointAsString");
const QString labelKey = QStringLiteral("pageLabel");

}  // namespace

QByteArray archivedSpot(const Spot &spot) {
    KeyedArchive archive;
    archive.encode(stringFromPoint(spot.point), pointKey);
    archive.encode(spot.pageLabel, labelKey);
    return archive.data();
}

std::optional<Spot> unarchivedSpot(const QByteArray &data) {
    const auto archive = KeyedArchive::unarchive(data);
    if (!archive) return std::nullopt;
    const QString point = archive->decode(pointKey);
    const QString label = archive->decode(labelKey);
    if (point.isNull() || label.isNull()) return std::nullopt;
    return Spot{pointFromString(point), label};
}

}  // namespace leafwright
