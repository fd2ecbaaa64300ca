#include "autotoc/HeadingMapText.h"

#include "categories/FontIdentity.h"
#include "model/FixedDecimals.h"

#include <QStringList>

#include <charconv>
#include <cmath>

namespace leafwright {

namespace {

FontTraits traitsFromToken(QStringView token) {
    if (token == u"+BI") return BoldTrait | ItalicTrait;
    if (token == u"+B") return BoldTrait;
    if (token == u"+I") return ItalicTrait;
    return 0;
}

/// A number's text without blanks around it and without the sign that is not known below.
QStringView withoutPlus(QStringView text) {
    text = text.trimmed();
    return text.startsWith(u'+') && !text.startsWith(u"+-") ? text.sliced(1) : text;
}

/// The decimal number that a text begins with, after blanks; 0 if there is none. What follows it counts not.
double leadingNumber(QStringView text) {
    const QByteArray bytes = withoutPlus(text).toLatin1();
    double number = 0;
    std::from_chars(bytes.begin(), bytes.end(), number, std::chars_format::general);
    return std::isfinite(number) ? number : 0;
}

/// The whole number that a text begins with, likewise; 0 also if it is too large. It has no exponent.
int leadingInteger(QStringView text) {
    const QByteArray bytes = withoutPlus(text).toLatin1();
    int number = 0;
    std::from_chars(bytes.begin(), bytes.end(), number);
    return number;
}

QLatin1String traitSuffix(const Font &font) {
    if (isBold(font) && isItalic(font)) return QLatin1String(" +BI");
    if (isBold(font)) return QLatin1String(" +B");
    return isItalic(font) ? QLatin1String(" +I") : QLatin1String();
}

/// What a line of a saved map says.
struct SavedLine {
    int level = 1;
    QString levelText;
    FontDescription font;
};

/// Absent for a line of another form.
std::optional<SavedLine> savedLine(const QString &line) {
    const QStringList pieces = line.split(u'/');
    const qsizetype quote = line.indexOf(u'"');
    const qsizetype endQuote = line.indexOf(u'"', quote + 1);
    if (pieces.size() < 3 || endQuote < 0 || quote < pieces[0].size() || pieces[0].size() < 2)
        return std::nullopt;

    const int level = leadingInteger(QStringView(pieces[0]).sliced(1));
    const auto size = static_cast<float>(leadingNumber(pieces[1]));
    // Smaller ones would be saved as 0.0, and what is no number any more in single precision as "inf".
    constexpr float leastSize = 0.1F;
    if (level < 1 || !(size >= leastSize) || !std::isfinite(size)) return std::nullopt;

    const QStringView trimmed = QStringView(line).trimmed();
    const FontTraits traits = traitsFromToken(trimmed.sliced(trimmed.lastIndexOf(u' ') + 1));
    return SavedLine{level, pieces[0], {line.sliced(quote + 1, endQuote - quote - 1), traits, size}};
}

/// The lines of a saved map that tell of fonts, by their numbers. Others are comments.
std::vector<std::pair<int, QString>> fontLines(const QString &text) {
    std::vector<std::pair<int, QString>> lines;
    int number = 0;
    for (QString line : text.split(u'\n')) {
        ++number;
        if (!line.startsWith(u'H')) continue;
        if (line.endsWith(u'\r')) line.chop(1);  // written by an editor of another system
        lines.emplace_back(number, line);
    }
    return lines;
}

}  // namespace

QString stringToSaveListH1H2H3(const HeadingLevelMap &map) {
    QString text;
    for (const LevelRecord &record : map) {
        if (!record.font) continue;
        text += record.levelName + u'/' + fixedDecimals(record.font->pointSize(), 1) + QLatin1String("/\"") +
                record.font->familyName() + u'"' + traitSuffix(*record.font) + u'\n';
    }
    return text;
}

std::optional<LevelRecord> savedH1H2H3StringToFontLevelInfo(const QString &line, DocumentFonts &fonts) {
    const auto saved = savedLine(line);
    if (!saved) return std::nullopt;
    LevelRecord record = levelRecord(saved->level, fontMatching(saved->font, fonts));
    record.levelName = saved->levelText;
    return record;
}

LoadedMap loadHeadingMap(const QString &text, DocumentFonts fonts) {
    const auto lines = fontLines(text);
    for (const auto &[number, line] : lines)
        if (const auto saved = savedLine(line)) fonts.expect(saved->font);
    LoadedMap loaded;
    for (const auto &[number, line] : lines) {
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
