#include "document/outline/KeptOutline.h"

#include "formats/JsonWriter.h"
#include "model/TreeWalk.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>

namespace leafwright {

namespace {

constexpr int version = 1;

/// The spelling of a file's mark; times do not fit into the numbers of JSON.
void writeHead(const KeptOutline &outline, JsonWriter &json) {
    json.beginObject(JsonWriter::Layout::Compact);
    json.member("leafwrightOutline", version);
    json.member("pdf", outline.pdf);
    json.member("size", QString::number(outline.file.size));
    json.member("modified", QString::number(outline.file.modified));
    json.member("hash", QString::fromLatin1(outline.file.hash.toHex()));
    json.member("date", QString::number(outline.date));
    json.member("order", outline.order);
    json.member("entries", static_cast<qint64>(outline.entries.size()));
    json.endObject();
}

void writeEntry(const KeptEntry &kept, JsonWriter &json) {
    json.beginObject(JsonWriter::Layout::Compact);
    json.member("depth", static_cast<qint64>(kept.depth));
    json.member("title", kept.title);
    json.member("pageLabel", kept.label);
    json.member("page", kept.page.value_or(-1));
    json.member("point", kept.point);
    json.member("entry", kept.entry.number.value_or(0));
    json.member("bold", kept.entry.bold);
    json.member("italic", kept.entry.italic);
    json.member("open", kept.entry.open);
    if (kept.entry.color) {
        json.key("color");
        json.beginArray();
        for (const double part : *kept.entry.color)
            json.value(part);
        json.endArray();
    }
    if (const auto &action = kept.entry.action) {
        json.member("action", action->type);
        if (action->target) json.member("target", *action->target);
    }
    if (kept.inFile) {
        json.member("titleInFile", kept.inFile->title);
        json.member("actionInFile", kept.inFile->action);
    }
    json.endObject();
}

/// Absent where it is null; Qt makes no difference for an empty one.
QString textOf(const QJsonValue &value) {
    if (!value.isString()) return {};
    const QString text = value.toString();
    return text.isNull() ? QStringLiteral("") : text;
}

std::optional<std::array<double, 3>> readColor(const QJsonValue &value) {
    const QJsonArray parts = value.toArray();
    // Files have colours beyond 0 and 1, too.
    const auto isPart = [](const QJsonValue &part) { return part.isDouble(); };
    if (parts.size() != 3 || !std::all_of(parts.begin(), parts.end(), isPart)) return std::nullopt;
    return {{parts[0].toDouble(), parts[1].toDouble(), parts[2].toDouble()}};
}

std::optional<OutlineEntry::Action> readAction(const QJsonObject &entry) {
    const QJsonValue type = entry[QLatin1String("action")];
    if (!type.isString()) return std::nullopt;
    OutlineEntry::Action action{type.toString()};
    if (const auto target = entry.find(QLatin1String("target")); target != entry.end())
        action.target = textOf(*target);
    return action;
}

/// @param deepest the depth of an entry below the one before it
std::optional<KeptEntry> readEntry(const QByteArray &line, size_t deepest) {
    const QJsonObject object = QJsonDocument::fromJson(line).object();
    const QJsonArray point = object[QLatin1String("point")].toArray();
    const double depth = object[QLatin1String("depth")].toDouble(-1);
    if (point.size() != 2 || !(depth >= 0 && depth <= static_cast<double>(deepest))) return std::nullopt;
    KeptEntry kept;
    kept.depth = static_cast<size_t>(depth);
    kept.title = textOf(object[QLatin1String("title")]);
    kept.label = textOf(object[QLatin1String("pageLabel")]);
    if (const int page = object[QLatin1String("page")].toInt(-1); page >= 0) kept.page = page;
    kept.point = {point[0].toDouble(), point[1].toDouble()};
    if (const int number = object[QLatin1String("entry")].toInt(); number > 0) kept.entry.number = number;
    kept.entry.bold = object[QLatin1String("bold")].toBool();
    kept.entry.italic = object[QLatin1String("italic")].toBool();
    kept.entry.open = object[QLatin1String("open")].toBool();
    kept.entry.color = readColor(object[QLatin1String("color")]);
    kept.entry.action = readAction(object);
    if (const auto title = object.find(QLatin1String("titleInFile")); title != object.end())
        kept.inFile = EntryKey{textOf(*title), textOf(object[QLatin1String("actionInFile")])};
    return kept;
}

/// Calls `use(line)` for each line until that says no. @return whether all were used
template <typename Use>
bool forEachLine(const QByteArray &text, Use &&use) {
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype found = text.indexOf('\n', begin);
        const qsizetype end = found < 0 ? text.size() : found;
        if (!use(QByteArray::fromRawData(text.constData() + begin, end - begin))) return false;
        begin = end + 1;
    }
    return true;
}

EntryKey keyByWhatItSays(const KeptEntry &kept) {
    return entryKey(kept.title, !kept.label.isNull(), kept.entry);
}

qint64 numberOf(const QJsonValue &value) {
    return value.toString().toLongLong();
}

/// @param count set to how many entries it has
std::optional<KeptOutline> readHead(const QByteArray &line, size_t &count) {
    const QJsonObject head = QJsonDocument::fromJson(line).object();
    const int entries = head[QLatin1String("entries")].toInt(-1);
    if (head[QLatin1String("leafwrightOutline")].toInt() != version || entries < 0) return std::nullopt;
    count = static_cast<size_t>(entries);
    return KeptOutline{textOf(head[QLatin1String("pdf")]),
                       {numberOf(head[QLatin1String("size")]), numberOf(head[QLatin1String("modified")]),
                        QByteArray::fromHex(head[QLatin1String("hash")].toString().toLatin1())},
                       numberOf(head[QLatin1String("date")]),
                       {},
                       head[QLatin1String("order")].toInt()};
}

}  // namespace

std::vector<KeptEntry> keptEntries(const MyOutlineItem &root) {
    std::vector<KeptEntry> entries;
    walkBelow(root, [&entries](const MyOutlineItem &item, size_t depth) {
        entries.push_back({depth, item.pageTitle(), item.pageLabel(), item.importedPage(), item.pointOnPage(),
                           item.entry()});
    });
    return entries;
}

void noteKeysInFile(std::vector<KeptEntry> &entries, const PDFOutline &outlineOfFile) {
    QHash<int, const PDFOutline *> inFile;
    inFile.reserve(static_cast<qsizetype>(entries.size()));
    walkBelow(outlineOfFile, [&inFile](const PDFOutline &entry, size_t /*depth*/) {
        // Copies of an entry have its number, too, but stand behind it.
        if (const auto number = entry.entry().number; number && !inFile.contains(*number))
            inFile.insert(*number, &entry);
    });
    for (KeptEntry &kept : entries) {
        const auto found = inFile.constFind(kept.entry.number.value_or(0));
        if (found == inFile.constEnd()) continue;
        if (EntryKey key = entryKey(**found); key != keyByWhatItSays(kept)) kept.inFile = std::move(key);
    }
}

std::vector<EntryInFile> entriesInFile(const std::vector<KeptEntry> &entries) {
    std::vector<EntryInFile> result;
    for (const KeptEntry &kept : entries)
        if (kept.entry.number)
            result.push_back({*kept.entry.number, kept.inFile.value_or(keyByWhatItSays(kept))});
    return result;
}

MyOutlineItem::Children itemsOfKeptEntries(const std::vector<KeptEntry> &entries) {
    MyOutlineItem root;
    std::vector<MyOutlineItem *> path{&root};
    for (const KeptEntry &kept : entries) {
        path.resize(std::min(path.size(), kept.depth + 1));
        MyOutlineItem &item = path.back()->appendChild(std::make_unique<MyOutlineItem>());
        item.setPageTitle(kept.title);
        item.setPageLabel(kept.label);
        item.setImportedPage(kept.page);
        item.setPointOnPage(kept.point);
        item.setEntry(kept.entry);
        path.push_back(&item);
    }
    return root.takeChildren();
}

void writeKeptOutline(const KeptOutline &outline, const std::function<void(const QByteArray &bytes)> &sink) {
    JsonWriter json(sink, JsonWriter::Layout::Compact);
    writeHead(outline, json);
    for (const KeptEntry &kept : outline.entries)
        writeEntry(kept, json);
}

std::optional<KeptOutline> readKeptOutline(const QByteArray &text) {
    std::optional<KeptOutline> outline;
    size_t count = 0;
    const bool isUnderstood = forEachLine(text, [&](const QByteArray &line) {
        if (!outline) {
            outline = readHead(line, count);
            return outline.has_value();
        }
        const size_t deepest = outline->entries.empty() ? 0 : outline->entries.back().depth + 1;
        auto entry = readEntry(line, deepest);
        if (entry) outline->entries.push_back(std::move(*entry));
        return entry.has_value();
    });
    return isUnderstood && outline && outline->entries.size() == count ? std::move(outline) : std::nullopt;
}

bool isHeadOfLaterVersion(const QByteArray &line) {
    return QJsonDocument::fromJson(line).object()[QLatin1String("leafwrightOutline")].toInt() > version;
}

std::optional<KeptOutline> readHeadOfKeptOutline(const QByteArray &line) {
    size_t count = 0;
    return readHead(line, count);
}

}  // namespace leafwright
