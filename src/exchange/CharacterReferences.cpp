#include "exchange/CharacterReferences.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <utility>

namespace leafwright {

namespace {

constexpr char16_t firstPrintable = u' ';
constexpr char16_t del = u'\x7F';
constexpr char16_t afterC1Controls = u'\xA0';
constexpr char32_t lastCharacter = 0x10FFFF;

/// The names of the characters from U+00A0 on, in their order (HTML 4.01, section 24.2.1).
constexpr QLatin1String namesOfLatin1(
    "nbsp iexcl cent pound curren yen brvbar sect uml copy ordf laquo not shy reg macr deg plusmn sup2 sup3 "
    "acute "
    "micro para middot cedil sup1 ordm raquo frac14 frac12 frac34 iquest Agrave Aacute Acirc Atilde Auml "
    "Aring "
    "AElig Ccedil Egrave Eacute Ecirc Euml Igrave Iacute Icirc Iuml ETH Ntilde Ograve Oacute Ocirc Otilde "
    "Ouml "
    "times Oslash Ugrave Uacute Ucirc Uuml Yacute THORN szlig agrave aacute acirc atilde auml aring aelig "
    "ccedil "
    "egrave eacute ecirc euml igrave iacute icirc iuml eth ntilde ograve oacute ocirc otilde ouml divide "
    "oslash "
    "ugrave uacute ucirc uuml yacute thorn yuml");

/// Those of XML, and what titles have besides: dashes, quotes and the like (HTML 4.01, sections 24.3
/// and 24.4).
constexpr auto furtherNames = std::to_array<std::pair<QLatin1String, char16_t>>(
    {{QLatin1String("amp"), u'&'},         {QLatin1String("lt"), u'<'},
     {QLatin1String("gt"), u'>'},          {QLatin1String("quot"), u'"'},
     {QLatin1String("apos"), u'\''},       {QLatin1String("OElig"), u'\x152'},
     {QLatin1String("oelig"), u'\x153'},   {QLatin1String("Scaron"), u'\x160'},
     {QLatin1String("scaron"), u'\x161'},  {QLatin1String("Yuml"), u'\x178'},
     {QLatin1String("ensp"), u'\x2002'},   {QLatin1String("emsp"), u'\x2003'},
     {QLatin1String("thinsp"), u'\x2009'}, {QLatin1String("zwnj"), u'\x200C'},
     {QLatin1String("zwj"), u'\x200D'},    {QLatin1String("lrm"), u'\x200E'},
     {QLatin1String("rlm"), u'\x200F'},    {QLatin1String("ndash"), u'\x2013'},
     {QLatin1String("mdash"), u'\x2014'},  {QLatin1String("lsquo"), u'\x2018'},
     {QLatin1String("rsquo"), u'\x2019'},  {QLatin1String("sbquo"), u'\x201A'},
     {QLatin1String("ldquo"), u'\x201C'},  {QLatin1String("rdquo"), u'\x201D'},
     {QLatin1String("bdquo"), u'\x201E'},  {QLatin1String("dagger"), u'\x2020'},
     {QLatin1String("Dagger"), u'\x2021'}, {QLatin1String("bull"), u'\x2022'},
     {QLatin1String("hellip"), u'\x2026'}, {QLatin1String("permil"), u'\x2030'},
     {QLatin1String("lsaquo"), u'\x2039'}, {QLatin1String("rsaquo"), u'\x203A'},
     {QLatin1String("euro"), u'\x20AC'},   {QLatin1String("trade"), u'\x2122'}});

/// The character of a name; nothing for a name that we don't know.
std::optional<char16_t> characterNamed(QStringView name) {
    static const QHash<QString, char16_t> characters = [] {
        QHash<QString, char16_t> all;
        char16_t next = afterC1Controls;
        for (const QString &each : QString(namesOfLatin1).split(u' '))
            all.insert(each, next++);
        for (const auto &[each, character] : furtherNames)
            all.insert(each, character);
        return all;
    }();
    const auto found = characters.constFind(name.toString());
    return found == characters.constEnd() ? std::nullopt : std::optional(*found);
}

QString textOf(char32_t character) {
    // A half of a pair is a character of its own here.
    if (!QChar::requiresSurrogates(character)) return QString(QChar(static_cast<char16_t>(character)));
    return QString::fromUcs4(&character, 1);
}

/// What stands between "&" and ";".
std::optional<QString> referredTo(QStringView name) {
    if (name.startsWith(u'#')) {
        const bool isHex = name.size() > 1 && (name[1] == u'x' || name[1] == u'X');
        const QStringView digits = name.sliced(isHex ? 2 : 1);
        constexpr qsizetype mostDigits = 8;
        // The conversion would take signs and blanks as well.
        if (digits.isEmpty() || digits.size() > mostDigits || !digits.front().isLetterOrNumber())
            return std::nullopt;
        bool isNumber = false;
        const uint number = digits.toUInt(&isNumber, isHex ? 16 : 10);
        return isNumber && number <= lastCharacter ? std::optional(textOf(number)) : std::nullopt;
    }
    const auto character = characterNamed(name);
    return character ? std::optional(QString(QChar(*character))) : std::nullopt;
}

}  // namespace

QString numericReference(char16_t unit) {
    return QLatin1String("&#") + QString::number(static_cast<uint>(unit)) + u';';
}

bool needsReference(QStringView text, qsizetype index) {
    const QChar c = text[index];
    if (c.isHighSurrogate()) return index + 1 == text.size() || !text[index + 1].isLowSurrogate();
    if (c.isLowSurrogate()) return index == 0 || !text[index - 1].isHighSurrogate();
    const char16_t unit = c.unicode();
    const bool isSeparator = unit == QChar::LineSeparator || unit == QChar::ParagraphSeparator;
    return unit < firstPrintable || (unit >= del && unit < afterC1Controls) || isSeparator;
}

std::optional<CharacterReference> referenceAt(QStringView text) {
    constexpr qsizetype longest = 12;
    if (!text.startsWith(u'&')) return std::nullopt;
    const qsizetype end = text.first(std::min(text.size(), longest)).indexOf(u';');
    if (end < 0) return std::nullopt;
    auto character = referredTo(text.sliced(1, end - 1));
    if (!character) return std::nullopt;
    return CharacterReference{std::move(*character), end + 1};
}

QString withoutReferences(QStringView text) {
    QString result;
    for (qsizetype i = 0; i < text.size();) {
        if (const auto reference = referenceAt(text.sliced(i))) {
            result += reference->text;
            i += reference->length;
        } else {
            result += text[i++];
        }
    }
    return result;
}

}  // namespace leafwright
