#include "cli/HeadingMapFile.h"

#include "files/FileReading.h"
#include "formats/Utf8Text.h"
#include "texts/Translated.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"HeadingMapFile"};

HeadingLevelMap mapFromJson(const QJsonArray &rows, DocumentFonts fonts) {
    HeadingLevelMap map;
    for (const QJsonValue row : rows) {
        const int level = row[QLatin1String("levelNumber")].toInt();
        const double size = row[QLatin1String("size")].toDouble();
        const FontTraits traits = (row[QLatin1String("bold")].toBool() ? BoldTrait : 0U) |
                                  (row[QLatin1String("italic")].toBool() ? ItalicTrait : 0U);
        const QString name = row[QLatin1String("font")].toString();
        if (level < 1 || !(size > 0) || name.isEmpty()) continue;
        map.push_back(levelRecord(level, fontMatchingPrinted({name, traits, size}, fonts)));
    }
    sortByLevel(map);
    return map;
}

}  // namespace

HeadingLevelMap readHeadingMap(const QString &path, const FontCensus &census, Console &console) {
    const auto content = readFile(path);
    if (const auto *reason = std::get_if<QString>(&content)) {
        console.message(translated("%1: the map can't be read: %2").arg(path, *reason));
        return {};
    }
    const auto &bytes = std::get<QByteArray>(content);
    DocumentFonts fonts(census);
    HeadingLevelMap map;
    if (const QJsonDocument json = QJsonDocument::fromJson(bytes); !json.isNull()) {
        const QJsonArray rows = json.isArray() ? json.array() : json.object()[QLatin1String("map")].toArray();
        map = mapFromJson(rows, fonts);
    } else {
        const auto text = textOfUtf8(bytes);
        if (const auto *fault = std::get_if<NotUtf8>(&text)) {
            console.message(translated("%1:%2: the text is not UTF-8").arg(path).arg(fault->line));
            return {};
        }
        LoadedMap loaded = loadHeadingMap(std::get<QString>(text), fonts);
        for (const int line : loaded.unreadableLines) {
            console.message(translated("%1:%2: not of the form H1/18.0/\"Times\" +B; the line is passed over")
                                .arg(path)
                                .arg(line));
        }
        map = std::move(loaded.map);
    }
    if (map.empty()) console.message(translated("%1: there is no heading font in this map").arg(path));
    return map;
}

}  // namespace leafwright::cli
