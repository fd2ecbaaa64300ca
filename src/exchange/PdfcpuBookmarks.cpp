#include "exchange/PdfcpuBookmarks.h"

#include "exchange/EntryParts.h"
#include "exchange/JsonText.h"
#include "formats/JsonWriter.h"
#include "model/TreeWalk.h"
#include "texts/Translated.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <utility>
#include <vector>

namespace leafwright {

namespace {

const QString bookmarksKey = QStringLiteral("bookmarks");
const QString kidsKey = QStringLiteral("kids");

constexpr std::array colorKeys{QLatin1String("R"), QLatin1String("G"), QLatin1String("B")};

constexpr Translated translated{"PdfcpuBookmarks"};

bool isAbsent(const QJsonValue &value) {
    return value.isUndefined() || value.isNull();
}

std::optional<QString> readColor(const QJsonValue &value, OutlineEntry &entry) {
    if (isAbsent(value)) return std::nullopt;
    OutlineEntry::Color color{};
    for (size_t i = 0; i < color.size(); ++i) {
        const QJsonValue part = value[colorKeys[i]];
        if (!part.isDouble() || part.toDouble() < 0 || part.toDouble() > 1)
            return translated("\"color\" must have R, G and B, numbers from 0 to 1");
        color[i] = part.toDouble();
    }
    entry.color = color;
    return std::nullopt;
}

/// Reads a bookmark without its kids. @return what is wrong with it
std::optional<QString> readBookmark(const QJsonValue &value, EntryParts &parts) {
    if (!value.isObject()) return translated("a bookmark must be an object");
    const QJsonValue title = value[QLatin1String("title")];
    if (!title.isString()) return translated("\"title\" must be a string");
    parts.title = title.toString();
    const QJsonValue page = value[QLatin1String("page")];
    parts.pageNumber = page.toInt(-1);
    if (isAbsent(page)) parts.pageNumber = 0;
    if (parts.pageNumber < 0) return translated("\"page\" must be the number of a page");
    for (const auto &[key, truth] :
         {std::pair{"bold", &parts.entry.bold}, std::pair{"italic", &parts.entry.italic}}) {
        const QJsonValue style = value[QLatin1String(key)];
        if (!isAbsent(style) && !style.isBool())
            return translated("\"%1\" must be true or false").arg(QLatin1String(key));
        *truth = style.toBool();
    }
    const QJsonValue kids = value[kidsKey];
    if (!isAbsent(kids) && !kids.isArray()) return translated("\"kids\" must be an array");
    return readColor(value[QLatin1String("color")], parts.entry);
}

/// An array of siblings, and the one that is next.
struct Siblings {
    QJsonArray bookmarks;
    qsizetype next = 0;
};

QString placeOf(const std::vector<Siblings> &open) {
    QString path = bookmarksKey;
    for (const Siblings &siblings : open) {
        if (&siblings != &open.front()) path += u'.' + kidsKey;
        path += u'[' + QString::number(siblings.next - 1) + u']';
    }
    return path;
}

OutlineTree treeOf(const QJsonArray &bookmarks, const OutlineSource &source) {
    LevelledItems items;
    std::vector<Siblings> open{{bookmarks}};
    while (!open.empty()) {
        Siblings &siblings = open.back();
        if (siblings.next == siblings.bookmarks.size()) {
            open.pop_back();
            continue;
        }
        const QJsonValue bookmark = siblings.bookmarks[siblings.next++];
        EntryParts parts;
        if (const auto problem = readBookmark(bookmark, parts)) return TreeError{placeOf(open), *problem};
        auto item = itemOfEntry(parts, source.pages);
        if (const auto *problem = std::get_if<QString>(&item)) return TreeError{placeOf(open), *problem};
        const auto level = static_cast<qint64>(open.size());
        if (const auto problem = items.add(std::get<std::unique_ptr<MyOutlineItem>>(std::move(item)), level))
            return TreeError{placeOf(open), *problem};
        open.push_back({bookmark[kidsKey].toArray()});
    }
    return items.take();
}

void writeLook(const OutlineEntry &entry, JsonWriter &json) {
    if (entry.bold) json.member("bold", true);
    if (entry.italic) json.member("italic", true);
    if (!entry.color) return;
    json.key("color");
    json.beginObject(JsonWriter::Layout::Compact);
    for (size_t i = 0; i < colorKeys.size(); ++i)
        json.member(colorKeys[i].data(), (*entry.color)[i]);
    json.endObject();
}

}  // namespace

void writePdfcpuBookmarks(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink) {
    JsonWriter json(sink);
    json.beginObject();
    json.key("bookmarks");
    json.beginArray();
    walkBelow(
        root,
        [&](const MyOutlineItem &item, size_t /*depth*/) {
            json.beginObject();
            json.member("title", item.pageTitle().isNull() ? QStringLiteral("") : item.pageTitle());
            json.member("page", pageOf(item).value_or(-1) + 1);
            writeLook(item.entry(), json);
            if (item.children().empty()) return;
            json.key("kids");
            json.beginArray();
        },
        [&](const MyOutlineItem &item) {
            if (!item.children().empty()) json.endArray();
            json.endObject();
        });
    json.endArray();
    json.endObject();
}

OutlineTree readPdfcpuBookmarks(const QByteArray &text, const OutlineSource &source) {
    const auto parsed = parsedJson(text);
    if (const auto *error = std::get_if<TreeError>(&parsed)) return *error;
    const QJsonValue bookmarks = std::get<QJsonDocument>(parsed)[bookmarksKey];
    if (!bookmarks.isArray()) return TreeError{{}, translated("there is no array \"bookmarks\" in it")};
    return treeOf(bookmarks.toArray(), source);
}

bool looksLikePdfcpuBookmarks(QByteArrayView text) {
    return text.startsWith('{') && text.contains("\"bookmarks\"");
}

}  // namespace leafwright
