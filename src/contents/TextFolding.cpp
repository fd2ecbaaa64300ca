#include "contents/TextFolding.h"

#include <QRegularExpression>

namespace leafwright {

namespace {

constexpr auto regexOptions =
    QRegularExpression::UseUnicodePropertiesOption | QRegularExpression::CaseInsensitiveOption;

bool isInvisible(QChar c) {
    const char16_t u = c.unicode();
    return c.isSpace() || u < 0x20 || (u >= 0x200b && u <= 0x200f) || u == 0xfeff || u == 0xfffd;
}

bool isAscii(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

/// The title in compatibility forms and without accents.
QString withoutAccents(const QString &title) {
    QString text;
    text.reserve(title.size());
    for (const QChar c : title) {
        if (isLooseAccent(c.unicode())) continue;
        text += c == QChar(0x0131) ? QChar(u'i') : c;  // the dotless i of accented letters
    }
    text = text.normalized(QString::NormalizationForm_KD);
    text.removeIf([](QChar c) { return c.unicode() >= 0x0300 && c.unicode() <= 0x036f; });
    return text.normalized(QString::NormalizationForm_KC).toCaseFolded();
}

/// What a number before a title looks like. Each takes the blanks behind the number, too.
const std::vector<QRegularExpression> &leadingNumbers() {
    static const std::vector<QRegularExpression> patterns = [] {
        const QString words = QStringLiteral(
            "chapter|chap\\.|appendix|part|section|sect\\.|annex|kapitel|anhang|teil|abschnitt|chapitre|"
            "annexe|"
            "partie|cap[ií]tulo|ap[eé]ndice|parte|capitolo|appendice|hoofdstuk|bijlage|глава|приложение|"
            "часть|"
            "rozdział|dodatek|kapitola|příloha|část|część|sección");
        const QString spelled = QStringLiteral(
            "one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|thirteen|fourteen|fifteen");
        const auto cased = QRegularExpression::UseUnicodePropertiesOption;
        return std::vector<QRegularExpression>{
            // Chapter 3. | Appendix A: | Part One
            QRegularExpression(QStringLiteral("^(?:%1)\\s*(?:\\d+|%2|[ivxlcdm]{1,7}|[a-z])(?:\\.\\d+)*\\s*"
                                              "[.:)\\-–—]?\\s+(?=\\S)")
                                   .arg(words, spelled),
                               regexOptions),
            // 1.2 | § 3) | A.1 | IV.
            QRegularExpression(QStringLiteral("^(?:§\\s*)?(?:\\d+|[A-Z](?=\\.\\d)|[IVXLC]+(?=[.:)]))"
                                              "(?:[.\\-]\\d+|\\.[A-Za-z](?=[\\s.]))*[.:)]?\\s+(?=\\S)"),
                               cased),
            // 1.2Title
            QRegularExpression(QStringLiteral("^(?:\\d+|[A-Z])(?:\\.\\d+)+\\.?\\s*(?=[^\\W\\d])"), cased),
            // A. | b) | II
            QRegularExpression(QStringLiteral("^(?:[A-Z]|[IVX]+|[a-z](?=\\)))[.:)]?\\s+(?=\\S)"), cased),
            QRegularExpression(
                QStringLiteral("^(?:第\\s*[0-9一二三四五六七八九十百]+\\s*[章節节部编編])\\s*(?=\\S)"),
                cased),
            // 1.2 before a title in an ideographic script
            QRegularExpression(QStringLiteral("^(?:付録|附录|附錄)?\\s*(?:\\d+|[A-Z])(?:\\.\\d+)*[.:)]?\\s*"
                                              "(?=[^\\x{0000}-\\x{2fff}])"),
                               cased),
        };
    }();
    return patterns;
}

/// A number before a title begins with one of these.
bool mayStartWithNumber(QStringView title) {
    return !title.isEmpty() && (title[0].isDigit() || title[0].isLetter() || title[0] == QChar(0xa7));
}

}  // namespace

QString foldedTitle(const QString &title) {
    const QString text = isAscii(title) ? title.toLower() : withoutAccents(title);
    const auto goes = [](QChar c) { return c == u'.' || c == u':'; };
    QString folded(text.size(), Qt::Uninitialized);
    QChar *const begin = folded.data();
    QChar *end = begin;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u == u'_' || isInvisible(c) || isQuote(u) || (end == begin && goes(c))) continue;
        if (!isDash(u)) {
            *end++ = c;
        } else if (end == begin || end[-1] != u'-') {
            *end++ = u'-';
        }
    }
    while (end != begin && goes(end[-1]))
        --end;
    folded.truncate(end - begin);
    return folded;
}

QStringList titleForms(const QString &title) {
    const QString text =
        withSingleBlanks(isAscii(title) ? title : title.normalized(QString::NormalizationForm_KC));
    QStringList forms;
    const auto add = [&forms](const QString &form) {
        if (!form.isEmpty() && !forms.contains(form)) forms += form;
    };
    add(foldedTitle(text));
    if (!mayStartWithNumber(text)) return forms;
    // All but the first are of numbers that no word comes before.
    const size_t patterns = startsWithWord(text) ? 1 : leadingNumbers().size();
    for (size_t i = 0; i < patterns; ++i) {
        const QRegularExpressionMatch match = leadingNumbers()[i].match(text);
        if (match.hasMatch()) add(foldedTitle(text.mid(match.capturedEnd())));
    }
    return forms;
}

QStringList searchForms(const QString &title) {
    const QStringList all = titleForms(title);
    QStringList forms;
    for (const QString &form : all) {
        if (form.size() >= 2) forms += form;
    }
    return forms.isEmpty() ? all : forms;
}

bool shareForm(const QStringList &a, const QStringList &b) {
    return std::any_of(a.begin(), a.end(), [&b](const QString &form) { return b.contains(form); });
}

QString withSingleBlanks(const QString &text) {
    QString result(text.size(), Qt::Uninitialized);
    QChar *const begin = result.data();
    QChar *end = begin;
    bool blank = false;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (c.isSpace() || u < 0x20 || u == 0x200b || u == 0xfeff) {
            blank = end != begin;
            continue;
        }
        if (blank) *end++ = u' ';
        blank = false;
        *end++ = c;
    }
    result.truncate(end - begin);
    return result;
}

bool hasIdeographs(QStringView text) {
    return std::any_of(text.begin(), text.end(), isIdeographic);
}

bool meetWithoutBlank(QStringView before, QStringView after) {
    return !before.isEmpty() && !after.isEmpty() &&
           (isIdeographic(before.back()) || isIdeographic(after.front()));
}

int countLettersAndDigits(QStringView text) {
    return static_cast<int>(
        std::count_if(text.begin(), text.end(), [](QChar c) { return c.isLetterOrNumber(); }));
}

int countLetters(QStringView text) {
    return static_cast<int>(std::count_if(text.begin(), text.end(), [](QChar c) { return c.isLetter(); }));
}

bool isDecimalNumber(QStringView text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
}

int decimalValue(QStringView text) {
    constexpr qsizetype mostDigits = 9;
    int value = 0;
    for (const QChar c : text.left(mostDigits)) {
        if (!c.isDigit()) break;
        value = 10 * value + c.digitValue();
    }
    return value;
}

bool startsWithWord(QStringView text) {
    constexpr QStringView roman = u"IVXLC";
    const auto isAsciiLetter = [](QChar c) { return c.unicode() < 0x80 && c.isLetter(); };
    return text.size() >= 2 && isAsciiLetter(text[0]) && isAsciiLetter(text[1]) &&
           !(roman.contains(text[0]) && roman.contains(text[1]));
}

bool startsLowercase(QStringView text) {
    return !text.isEmpty() && text.front().isLower();
}

}  // namespace leafwright
