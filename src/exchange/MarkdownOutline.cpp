#include "exchange/MarkdownOutline.h"

#include "exchange/CharacterReferences.h"
#include "exchange/PageLink.h"
#include "model/TreeWalk.h"
#include "texts/Translated.h"

#include <algorithm>

namespace leafwright {

namespace {

constexpr QLatin1String escapedInLinks("\\`*_[]<>~|\"");
/// Without brackets around them, titles may begin with what makes a block.
constexpr QLatin1String escapedInText("\\`*_[]<>~|#+-.)=:!");

constexpr Translated translated{"MarkdownOutline"};

QString escaped(QStringView text, QLatin1String special) {
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isOuterBlank = text[i].isSpace() && (i == 0 || i + 1 == text.size());
        if (needsReference(text, i) || isOuterBlank) {
            result += numericReference(text[i].unicode());
        } else if (text[i] == u'&') {
            result += QLatin1String("&amp;");
        } else {
            if (special.contains(text[i])) result += u'\\';
            result += text[i];
        }
    }
    return result;
}

QString unescaped(QStringView text) {
    constexpr QLatin1String punctuation("!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~");
    QString result = QStringLiteral("");
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'\\' && i + 1 < text.size() && punctuation.contains(text[i + 1])) {
            result += text[++i];
        } else if (const auto reference = referenceAt(text.sliced(i))) {
            result += reference->text;
            i += reference->length - 1;
        } else {
            result += text[i];
        }
    }
    return result;
}

/// Where a character stands that is not escaped; -1 for nowhere.
qsizetype indexOfBare(QStringView text, QChar wanted, qsizetype from) {
    for (qsizetype i = from; i < text.size(); ++i) {
        if (text[i] == u'\\') {
            ++i;
        } else if (text[i] == wanted) {
            return i;
        }
    }
    return -1;
}

/// Takes the mark of a list's item off the front of a line, with the blanks around it.
/// @return how far it is indented, in columns; absent where there is no mark
std::optional<qint64> takeMark(QStringView &line) {
    constexpr qint64 tabWidth = 4;
    qint64 indentation = 0;
    qsizetype begin = 0;
    for (; begin < line.size() && (line[begin] == u' ' || line[begin] == u'\t'); ++begin)
        indentation += line[begin] == u'\t' ? tabWidth - indentation % tabWidth : 1;
    const QStringView rest = line.sliced(begin);
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    const auto digits = std::ranges::find_if_not(rest, isDigit) - rest.begin();
    if (digits == rest.size()) return std::nullopt;
    const QChar mark = rest[digits];
    const bool isMark =
        digits > 0 ? mark == u'.' || mark == u')' : mark == u'-' || mark == u'*' || mark == u'+';
    const QStringView content = rest.sliced(digits + 1);
    if (!isMark || (!content.isEmpty() && content[0] != u' ' && content[0] != u'\t')) return std::nullopt;
    line = content.trimmed();
    return indentation;
}

/// Reads what stands between the parentheses of a link: where it leads, and a title in quotes.
bool readDestination(QStringView text, EntryParts &parts) {
    text = text.trimmed();
    const qsizetype blank = text.startsWith(u'"') ? 0 : text.indexOf(u' ');
    QStringView link = blank < 0 ? text : text.first(blank);
    if (link.startsWith(u'<') && link.endsWith(u'>')) link = link.sliced(1, link.size() - 2);
    const QStringView title = blank < 0 ? QStringView() : text.sliced(blank).trimmed();
    if (!title.isEmpty()) {
        if (title.size() < 2 || title[0] != u'"' || indexOfBare(title, u'"', 1) != title.size() - 1)
            return false;
        parts.pageLabel = unescaped(title.sliced(1, title.size() - 2));
    }
    return readLink(unescaped(link), parts);
}

/// Reads an item: a link, or a title alone. @return absent for a link that does not end, or leads elsewhere
std::optional<EntryParts> partsOf(QStringView content) {
    EntryParts parts;
    if (!content.startsWith(u'[')) {
        parts.title = unescaped(content);
        return parts;
    }
    const qsizetype bracket = indexOfBare(content, u']', 1);
    if (bracket < 0 || !content.endsWith(u')') || !content.sliced(bracket).startsWith(QLatin1String("](")))
        return std::nullopt;
    parts.title = unescaped(content.sliced(1, bracket - 1));
    const QStringView destination = content.sliced(bracket + 2).chopped(1);
    return readDestination(destination, parts) ? std::optional(std::move(parts)) : std::nullopt;
}

QString spelledLink(const QString &link) {
    if (link.isEmpty()) return QStringLiteral("<>");
    // Addresses may have parentheses and blanks, which would end them.
    QString text = link.contains(u' ') ? QString(link).replace(u' ', QLatin1String("%20")) : link;
    return escaped(text, QLatin1String("\\()<>"));
}

}  // namespace

void writeMarkdownOutline(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink) {
    walkBelow(root, [&](const MyOutlineItem &item, size_t depth) {
        const QString link = linkOf(item, pageOf(item));
        const bool hasLabel = !item.pageLabel().isNull();
        QString line(static_cast<qsizetype>(2 * depth), u' ');
        line += QLatin1String("- ");
        if (link.isEmpty() && !hasLabel) {
            line += escaped(item.pageTitle(), escapedInText);
        } else {
            line +=
                u'[' + escaped(item.pageTitle(), escapedInLinks) + QLatin1String("](") + spelledLink(link);
            if (hasLabel) line += QLatin1String(" \"") + escaped(item.pageLabel(), escapedInLinks) + u'"';
            line += u')';
        }
        sink((line + u'\n').toUtf8());
    });
}

OutlineTree readMarkdownOutline(const QByteArray &text, const OutlineSource &source) {
    const auto decoded = textOfLines(text);
    if (const auto *error = std::get_if<TreeError>(&decoded)) return *error;
    Lines lines(std::get<QString>(decoded));
    LevelledItems items;
    while (auto line = lines.next()) {
        if (line->trimmed().isEmpty()) continue;
        const auto indentation = takeMark(*line);
        const auto parts = indentation ? partsOf(*line) : std::nullopt;
        if (!parts) return faultInLine(lines.number(), translated("not of the form \"- [Title](#page=12)\""));
        auto item = itemOfEntry(*parts, source.pages);
        if (const auto *problem = std::get_if<QString>(&item)) return faultInLine(lines.number(), *problem);
        if (const auto problem =
                items.add(std::get<std::unique_ptr<MyOutlineItem>>(std::move(item)), *indentation))
            return faultInLine(lines.number(), *problem);
    }
    return items.take();
}

}  // namespace leafwright
