#include "contents/Numbering.h"

#include "contents/RomanNumbers.h"
#include "contents/TextFolding.h"

#include <QRegularExpression>

namespace leafwright {

namespace {

constexpr auto cased = QRegularExpression::UseUnicodePropertiesOption;
constexpr auto uncased = cased | QRegularExpression::CaseInsensitiveOption;

/// Words for the chapters and appendices of a book, in the languages that books are often written in.
QString chapterWords() {
    return QStringLiteral(
        "chapter|chap\\.|appendix|annex|kapitel|anhang|chapitre|annexe|cap[ií]tulo|ap[eé]ndice|capitolo|"
        "appendice|"
        "hoofdstuk|bijlage|глава|приложение|rozdział|dodatek|kapitola|příloha");
}

bool startsWithPart(const QString &title) {
    static const QRegularExpression part(
        QStringLiteral("^(?:part|teil|partie|parte|część|část|часть|volume|book|livre|band)\\s+"
                       "(?:\\d+|[ivxlc]+|[a-z]|one|two|three|four|five|six|seven)\\b"
                       "|^第\\s*[0-9一二三四五六七八九十百]+\\s*[部编編]"),
        uncased);
    return part.match(title).hasMatch();
}

std::optional<Numbering> chapterNumbering(const QString &title) {
    static const QRegularExpression chapter(
        QStringLiteral("^(?:%1)\\s+(\\d+|[ivxlc]+|[a-z])\\b|^第\\s*[0-9一二三四五六七八九十百]+\\s*章|"
                       "^付録\\s*[A-Z]|^附[录錄]\\s*[A-Z]")
            .arg(chapterWords()),
        uncased);
    const QRegularExpressionMatch match = chapter.match(title);
    if (!match.hasMatch()) return std::nullopt;
    return Numbering{NumberKind::Chapter, 1, {match.captured(1).toUpper()}};
}

std::optional<Numbering> dottedNumbering(const QString &title) {
    static const QRegularExpression dotted(
        QStringLiteral(
            "^(?:§\\s*)?((?:\\d{1,3}|[A-Z])(?:[.\\-]\\d{1,3})+)(?:[.:)]|\\.?(?=\\s)|(?=[^\\d\\s.]))"
            "\\s*(?=\\S)"),
        cased);
    static const QRegularExpression separator(QStringLiteral("[.\\-]"));
    const QRegularExpressionMatch match = dotted.match(title);
    if (!match.hasMatch()) return std::nullopt;
    const QStringList components = match.captured(1).split(separator, Qt::SkipEmptyParts);
    return Numbering{NumberKind::Dotted, static_cast<int>(components.size()), components};
}

std::optional<Numbering> singleNumbering(const QString &title) {
    static const QRegularExpression single(
        QStringLiteral("^(?:§\\s*)?(\\d{1,3}|[A-Z](?=[.:)]?\\s)|[IVXLC]{1,7}(?=[.:)]?\\s))[.:)]?\\s+(?=\\S)"),
        cased);
    const QRegularExpressionMatch match = single.match(title);
    if (!match.hasMatch()) return std::nullopt;
    const QString number = match.captured(1);
    const bool isWord = (number == u"A" || number == u"I") && title.size() > 1 && title[1].isSpace();
    return Numbering{isWord ? NumberKind::PerhapsSingle : NumberKind::Single, 1, {number}};
}

/// A number of any kind begins with one of these characters.
bool mayBeNumbered(const QString &title) {
    const QChar first = title[0];
    return first.isDigit() || first.isLetter() || first == QChar(0xa7);
}

}  // namespace

Numbering numberingOf(const QString &title) {
    const QString text = title.trimmed();
    if (text.isEmpty() || !mayBeNumbered(text)) return {};
    if (!text[0].isDigit() && startsWithPart(text)) return {NumberKind::Part, 0, {}};
    if (!text[0].isDigit()) {
        if (const auto chapter = chapterNumbering(text)) return *chapter;
    }
    if (startsWithWord(text)) return {};
    if (const auto dotted = dottedNumbering(text)) return *dotted;
    return singleNumbering(text).value_or(Numbering());
}

bool isNumberLabel(const QString &text) {
    static const QRegularExpression label(
        QStringLiteral(
            "^(?:§\\s*)?(?:(?:chapter|appendix|part|section|annex|kapitel|anhang|teil|chapitre|annexe|"
            "partie|cap[ií]tulo|ap[eé]ndice|parte|capitolo|appendice)\\s+)?"
            "(?:\\d{1,3}(?:[.\\-]\\d{1,3})*|[A-Z](?:[.\\-]\\d{1,3})*|[IVXLC]{1,6})\\s*[.:)]?$"),
        uncased);
    return label.match(text).hasMatch();
}

bool isChapterLabel(const QString &text) {
    constexpr int longest = 40;
    static const QRegularExpression label(
        QStringLiteral("^(?:(%1|part|teil|partie|parte|часть|část)\\s*(\\d{1,3}|[A-Z]|[IVXLC]{1,7})|"
                       "第\\s*[0-9一二三四五六七八九十百]+\\s*[章部编編])\\s*[.:\\-–—]?$")
            .arg(chapterWords()),
        uncased);
    return text.size() <= longest && label.match(text).hasMatch();
}

bool isBareNumber(const QString &text) {
    constexpr int longest = 14;
    static const QRegularExpression bare(
        QStringLiteral(
            "^(?:\\d{1,2}|[A-Z]|[IVX]{1,5}|(?:(?:twenty|thirty)[ -]?)?(?:one|two|three|four|five|six|seven|"
            "eight|nine)|ten|eleven|twelve|\\w+teen|twenty|thirty)\\.?$"),
        uncased);
    return text.size() <= longest && bare.match(text).hasMatch();
}

int ordinalOf(const QString &component) {
    static const QRegularExpression roman(QStringLiteral("^[IVX]+$"));
    if (isDecimalNumber(component)) return decimalValue(component);
    if (roman.match(component).hasMatch()) return romanValue(component);
    return component.isEmpty() ? 0 : component[0].unicode() - u'A' + 1;
}

}  // namespace leafwright
