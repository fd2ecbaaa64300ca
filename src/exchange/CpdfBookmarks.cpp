#include "exchange/CpdfBookmarks.h"

#include "exchange/EntryParts.h"
#include "model/TreeWalk.h"
#include "texts/Translated.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace leafwright {

namespace {

constexpr Translated translated{"CpdfBookmarks"};

QString quoted(QStringView title) {
    QString text(u'"');
    for (const QChar c : title) {
        if (c == u'\n') {
            text += QLatin1String("\\n");
        } else if (c == u'\r') {
            text += QLatin1String("\\r");
        } else {
            if (c == u'"' || c == u'\\') text += u'\\';
            text += c;
        }
    }
    return text + u'"';
}

/// Takes a quoted text off the front of a line. @return it; absent where there is none
std::optional<QString> takeQuoted(QStringView &line) {
    if (!line.startsWith(u'"')) return std::nullopt;
    QString text = QStringLiteral("");
    for (qsizetype i = 1; i < line.size(); ++i) {
        if (line[i] == u'"') {
            line = line.sliced(i + 1).trimmed();
            return text;
        }
        if (line[i] != u'\\') {
            text += line[i];
            continue;
        }
        if (++i == line.size()) break;
        text += line[i] == u'n' ? QChar(u'\n') : line[i] == u'r' ? QChar(u'\r') : line[i];
    }
    return std::nullopt;
}

/// Takes what stands before the next blank off the front of a line.
QStringView takeWord(QStringView &line) {
    const auto end = std::ranges::find_if(line, [](QChar c) { return c.isSpace(); });
    const qsizetype length = end - line.begin();
    const QStringView word = line.first(length);
    line = line.sliced(length).trimmed();
    return word;
}

/// The spot of a destination such as "[7 /XYZ 72 700 null]"; (0, 0) for all others.
QPointF spotOf(const QString &destination) {
    static const QRegularExpression form(
        QStringLiteral(R"(^\s*\[\s*\d+\s*/XYZ\s+(-?[\d.]{1,20})\s+(-?[\d.]{1,20})\s)"));
    const QRegularExpressionMatch match = form.match(destination);
    constexpr double farthest = 1e7;  // as in JSON nodes
    bool isX = false;
    bool isY = false;
    const QPointF spot(match.captured(1).toDouble(&isX), match.captured(2).toDouble(&isY));
    const bool isNear = std::max(std::abs(spot.x()), std::abs(spot.y())) <= farthest;
    return isX && isY && isNear ? spot : QPointF();
}

struct Entry {
    EntryParts parts;
    qint64 level = 0;
};

std::optional<Entry> entryOf(QStringView line) {
    const auto level = pageNumberOf(takeWord(line));
    auto title = takeQuoted(line);
    const auto page = pageNumberOf(takeWord(line));
    if (!level || !title || !page) return std::nullopt;
    Entry entry{{.title = std::move(*title), .pageNumber = *page}, *level};
    if (line.startsWith(QLatin1String("open"))) {
        if (takeWord(line) != QLatin1String("open")) return std::nullopt;
        entry.parts.entry.open = true;
    }
    if (line.isEmpty()) return entry;
    const auto destination = takeQuoted(line);
    if (!destination || !line.isEmpty()) return std::nullopt;
    entry.parts.point = spotOf(*destination);
    return entry;
}

QString decimals(double number) {
    constexpr int precision = 4;  // of points, far finer than anybody sees
    static const QRegularExpression trailingZeros(QStringLiteral("\\.?0+$"));
    return QString::number(number, 'f', precision).remove(trailingZeros);
}

}  // namespace

void writeCpdfBookmarks(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink) {
    walkBelow(root, [&](const MyOutlineItem &item, size_t depth) {
        const int number = pageOf(item).value_or(-1) + 1;
        QString line =
            QString::number(depth) + u' ' + quoted(item.pageTitle()) + u' ' + QString::number(number);
        if (item.entry().open && !item.children().empty()) line += QLatin1String(" open");
        const QPointF spot = item.pointOnPage();
        if (number > 0 && (spot.x() != 0 || spot.y() != 0)) {
            line += QStringLiteral(" \"[%1 /XYZ %2 %3 null]\"")
                        .arg(QString::number(number), decimals(spot.x()), decimals(spot.y()));
        }
        sink((line + u'\n').toUtf8());
    });
}

OutlineTree readCpdfBookmarks(const QByteArray &text, const OutlineSource &source) {
    const auto decoded = textOfLines(text);
    if (const auto *error = std::get_if<TreeError>(&decoded)) return *error;
    Lines lines(std::get<QString>(decoded));
    LevelledItems items;
    qint64 deepest = 0;
    while (const auto line = lines.next()) {
        if (line->trimmed().isEmpty()) continue;
        const auto entry = entryOf(line->trimmed());
        if (!entry) return faultInLine(lines.number(), translated("not of the form 0 \"Title\" 12"));
        if (entry->level > deepest)
            return faultInLine(lines.number(), translated("its level is deeper by more than one"));
        deepest = entry->level + 1;
        auto item = itemOfEntry(entry->parts, source.pages);
        if (const auto *problem = std::get_if<QString>(&item)) return faultInLine(lines.number(), *problem);
        if (const auto problem =
                items.add(std::get<std::unique_ptr<MyOutlineItem>>(std::move(item)), entry->level))
            return faultInLine(lines.number(), *problem);
    }
    return items.take();
}

bool looksLikeCpdfBookmarks(QByteArrayView text) {
    const auto end = std::ranges::find_if_not(text, [](char c) { return c >= '0' && c <= '9'; });
    return end != text.begin() && text.sliced(end - text.begin()).startsWith(" \"");
}

}  // namespace leafwright
