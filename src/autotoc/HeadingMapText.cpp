#include "autotoc/HeadingMapText.h"

#include "categories/FontIdentity.h"
#include "model/FixedDecimals.h"

#include <QStringList>

#include <charconv>
#include <climits>
#include <cmath>

namespace leafwright {

namespace {

FontTraits traitsFromToken(QStringView token) {
    if (token == u"+BI") return BoldTrait | ItalicTrait;
    if (token == u"+B") return BoldTrait;
    if (token == u"+I") return ItalicTrait;
    return 0;
}

/// The decimal number that a text begins with, after blanks; 0 if there is none. What follows it counts not.
double leadingNumber(QStringView text) {
    const QByteArray bytes = text.trimmed().toLatin1();
    double number = 0;
    std::from_chars(bytes.begin(), bytes.end(), number, std::chars_format::general);
    return std::isfinite(number) ? number : 0;
}

QLatin1String traitSuffix(const Font &font) {
    if (isBold(font) && isItalic(font)) return QLatin1String(" +BI");
    if (isBold(font)) return QLatin1String(" +B");
    return isItalic(font) ? QLatin1String(" +I") : QLatin1String();
}

}  // namespace

QString stringToSaveListH1H2H3(const HeadingLevelMap &map) {
    QString text;
    for (const LevelRecord &record : map) {
        if (!record.font) continue;
        text += record.level + u'/' + fixedDecimals(record.font->pointSize(), 1) + QLatin1String("/\"") +
                record.font->familyName() + u'"' + traitSuffix(*record.font) + u'\n';
    }
    return text;
}

std::optional<LevelRecord> savedH1H2H3StringToFontLevelInfo(const QString &line, DocumentFonts &fonts) {
    const QStringList pieces = line.split(u'/');
    const qsizetype quote = line.indexOf(u'"');
    const qsizetype endQuote = line.indexOf(u'"', quote + 1);
    if (pieces.size() < 3 || quote < 0 || endQuote < 0 || pieces[0].size() < 2) return std::nullopt;

    const double level = leadingNumber(pieces[0].sliced(1));
    const auto size = static_cast<float>(leadingNumber(pieces[1]));
    if (!(level >= 1 && level <= INT_MAX) || !(size > 0)) return std::nullopt;

    const QStringView trimmed = QStringView(line).trimmed();
    const FontTraits traits = traitsFromToken(trimmed.sliced(trimmed.lastIndexOf(u' ') + 1));
    const QString family = line.sliced(quote + 1, endQuote - quote - 1);
    LevelRecord record = levelRecord(static_cast<int>(level), fontMatching({family, traits, size}, fonts));
    record.level = pieces[0];
    return record;
}

LoadedMap loadHeadingMap(const QString &text, DocumentFonts fonts) {
    LoadedMap loaded;
    int number = 0;
    for (QString line : text.split(u'\n')) {
        ++number;
        if (!line.startsWith(u'H')) continue;
        if (line.endsWith(u'\r')) line.chop(1);  // written by an editor of another system
        if (auto record = savedH1H2H3StringToFontLevelInfo(line, fonts)) {
            loaded.map.push_back(std::move(*record));
        } else {
            loaded.unreadableLines.push_back(number);
        }
    }
    sortByLevel(loaded.map);
    return loaded;
}

}  // namespace leafwright
