#include "exchange/PdftkBookmarks.h"

#include "exchange/CharacterReferences.h"
#include "exchange/EntryParts.h"
#include "model/TreeWalk.h"
#include "texts/Translated.h"

#include <QRegularExpression>

#include <utility>

namespace leafwright {

namespace {

constexpr QLatin1String beginLine("BookmarkBegin");
constexpr QLatin1String titleKey("BookmarkTitle:");
constexpr QLatin1String levelKey("BookmarkLevel:");
constexpr QLatin1String pageKey("BookmarkPageNumber:");
constexpr QLatin1String bookmarkPrefix("Bookmark");

constexpr Translated translated{"PdftkBookmarks"};

/// Only what would not come back as it is, so that titles read as they are in other programs.
QString spelled(QStringView title) {
    QString text;
    for (qsizetype i = 0; i < title.size(); ++i) {
        const bool isOuterBlank = title[i].isSpace() && (i == 0 || i + 1 == title.size());
        if (needsReference(title, i) || isOuterBlank) {
            text += numericReference(title[i].unicode());
        } else if (referenceAt(title.sliced(i))) {
            text += QLatin1String("&amp;");
        } else {
            text += title[i];
        }
    }
    return text;
}

/// Reads the lines of one entry after the other.
class Reader {
public:
    explicit Reader(const OutlineSource &source) : source_(source) {}

    /// @return what is wrong; absent when all is well
    std::optional<TreeError> readLine(QStringView line, qint64 number) {
        if (line == beginLine) {
            auto fault = finish();
            begunIn_ = number;
            return fault;
        }
        const bool isBookmarks = line.startsWith(bookmarkPrefix);
        if (begunIn_ == 0) {
            if (isBookmarks) return faultInLine(number, translated("there is no BookmarkBegin before it"));
            return std::nullopt;
        }
        if (isBookmarks) return readMember(line, number);
        // The next section of the file, or a title that goes on, which nothing tells apart.
        static const QRegularExpression sectionLine(QStringLiteral("^[A-Za-z0-9]+(:|$)"));
        if (!line.isEmpty() && !sectionLine.match(line).hasMatch())
            return faultInLine(number, translated("neither a line of a bookmark nor of another section"));
        return finish();
    }

    /// @return what is wrong with the last entry, if there is one
    std::optional<TreeError> finish() {
        if (begunIn_ == 0) return std::nullopt;
        const qint64 line = std::exchange(begunIn_, 0);
        const auto title = std::exchange(title_, std::nullopt);
        const auto level = std::exchange(level_, std::nullopt);
        const auto page = std::exchange(page_, std::nullopt);
        if (!title || !level)
            return faultInLine(line, translated("this bookmark lacks its BookmarkTitle or BookmarkLevel"));
        auto item = itemOfEntry({.title = *title, .pageNumber = page.value_or(0)}, source_.pages);
        if (const auto *problem = std::get_if<QString>(&item)) return faultInLine(line, *problem);
        const auto problem = items_.add(std::get<std::unique_ptr<MyOutlineItem>>(std::move(item)), *level);
        return problem ? std::optional(faultInLine(line, *problem)) : std::nullopt;
    }

    LevelledItems &items() { return items_; }

private:
    std::optional<TreeError> readMember(QStringView line, qint64 number) {
        const auto valueOf = [&](QLatin1String key) { return line.sliced(key.size()).trimmed(); };
        if (line.startsWith(titleKey)) {
            if (title_) return faultInLine(number, translated("there is no BookmarkBegin before it"));
            title_ = withoutReferences(valueOf(titleKey));
            return std::nullopt;
        }
        const bool isLevel = line.startsWith(levelKey);
        if (!isLevel && !line.startsWith(pageKey))
            return faultInLine(number, translated("a bookmark has a title, a level and a page number only"));
        const auto value = pageNumberOf(valueOf(isLevel ? levelKey : pageKey));
        if (!value || (isLevel && *value == 0))
            return faultInLine(number, translated("there must be a number behind the colon"));
        (isLevel ? level_ : page_) = value;
        return std::nullopt;
    }

    const OutlineSource &source_;
    LevelledItems items_;
    qint64 begunIn_ = 0;  ///< The line of the entry at hand; 0 for none.
    std::optional<QString> title_;
    std::optional<qint64> level_;
    std::optional<qint64> page_;
};

}  // namespace

void writePdftkBookmarks(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink) {
    walkBelow(root, [&](const MyOutlineItem &item, size_t depth) {
        const auto page = pageOf(item);
        sink(QStringLiteral("%1\n%2 %3\n%4 %5\n%6 %7\n")
                 .arg(beginLine, titleKey, spelled(item.pageTitle()), levelKey, QString::number(depth + 1),
                      pageKey, QString::number(page ? *page + 1 : 0))
                 .toUtf8());
    });
}

OutlineTree readPdftkBookmarks(const QByteArray &text, const OutlineSource &source) {
    const auto decoded = textOfLines(text);
    if (const auto *error = std::get_if<TreeError>(&decoded)) return *error;
    Lines lines(std::get<QString>(decoded));
    Reader reader(source);
    while (const auto line = lines.next())
        if (auto fault = reader.readLine(*line, lines.number())) return *std::move(fault);
    if (auto fault = reader.finish()) return *std::move(fault);
    if (reader.items().isEmpty()) return TreeError{{}, translated("there is no bookmark in it")};
    return reader.items().take();
}

bool looksLikePdftkBookmarks(QByteArrayView text) {
    constexpr QByteArrayView begin("BookmarkBegin");
    const qsizetype at = text.indexOf(begin);
    const auto isEnd = [](char c) { return c == '\n' || c == '\r'; };
    if (at < 0 || (at > 0 && !isEnd(text[at - 1]))) return false;
    return at + begin.size() == text.size() || isEnd(text[at + begin.size()]);
}

}  // namespace leafwright
