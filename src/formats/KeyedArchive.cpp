#include "formats/KeyedArchive.h"

#include <QCborMap>
#include <QCborValue>
#include <QLocale>
#include <QRegularExpression>

#include <algorithm>

namespace leafwright {

std::optional<KeyedArchive> KeyedArchive::unarchive(const QByteArray &data) {
    QCborParserError error;
    const QCborValue value = QCborValue::fromCbor(data, &error);
    if (error.error != QCborError::NoError || error.offset != data.size() || !value.isMap())
        return std::nullopt;
    KeyedArchive archive;
    for (const auto &entry : value.toMap()) {
        if (!entry.first.isString() || !entry.second.isString()) return std::nullopt;
        const QString text = entry.second.toString();
        // An empty text is not an absent one.
        archive.encode(text.isNull() ? QStringLiteral("") : text, entry.first.toString());
    }
    return archive;
}

QByteArray KeyedArchive::data() const {
    QCborMap map;
    for (const auto &[key, value] : strings_)
        map.insert(key, value);
    return map.toCborValue().toCbor();
}

QString KeyedArchive::decode(const QString &key) const {
    const auto found = std::ranges::find(strings_, key, &std::pair<QString, QString>::first);
    return found == strings_.end() ? QString() : found->second;
}

QString stringFromPoint(const QPointF &point) {
    const auto number = [](double value) {
        return QLocale::c().toString(value, 'g', QLocale::FloatingPointShortest);
    };
    return QStringLiteral("{%1, %2}").arg(number(point.x()), number(point.y()));
}

QPointF pointFromString(const QString &text) {
    static const QRegularExpression form(QStringLiteral(R"(^\s*\{\s*([^,\s]+)\s*,\s*([^}\s]+)\s*\}\s*$)"));
    const QRegularExpressionMatch match = form.match(text);
    bool isX = false;
    bool isY = false;
    const QPointF point(match.captured(1).toDouble(&isX), match.captured(2).toDouble(&isY));
    return match.hasMatch() && isX && isY ? point : QPointF();
}

}  // namespace leafwright
