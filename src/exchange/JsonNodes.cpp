#include "exchange/JsonNodes.h"

#include "exchange/JsonNodeChecks.h"
#include "exchange/JsonText.h"
#include "formats/JsonWriter.h"
#include "model/TreeWalk.h"
#include "texts/Translated.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <utility>

namespace leafwright {

namespace {

constexpr Translated translated{"JsonNodes"};

void printAction(const std::optional<OutlineEntry::Action> &action, JsonWriter &json) {
    if (!action) {
        json.null();
        return;
    }
    json.beginObject(JsonWriter::Layout::Compact);
    json.member("type", action->type);
    if (action->target) json.member(action->type == QLatin1String("URI") ? "uri" : "file", *action->target);
    json.endObject();
}

void printWhatElse(const OutlineEntry &entry, JsonWriter &json) {
    json.member("bold", entry.bold);
    json.member("italic", entry.italic);
    json.key("color");
    if (entry.color) {
        json.beginArray(JsonWriter::Layout::Compact);
        for (const double part : *entry.color)
            json.value(part);
        json.endArray();
    } else {
        json.null();
    }
    json.member("open", entry.open);
    json.key("action");
    printAction(entry.action, json);
    json.key("entry");
    entry.number ? json.value(*entry.number) : json.null();
}

/// Reads one JSON node's own members into an item; its children are left to the caller.
class NodeReader {
public:
    NodeReader(const TextPages &pages, OutlineEntries inFile) : pages_(pages), inFile_(std::move(inFile)) {}

    /// @return what is wrong with the node; absent when all is well
    std::optional<QString> read(const QJsonValue &node, MyOutlineItem &item) const {
        if (!node.isObject()) return translated("a node must be an object");
        const QJsonValue title = node[QLatin1String("title")];
        if (!title.isString()) return translated("\"title\" must be a string");
        item.setPageTitle(title.toString());
        if (auto problem = readPage(node, item)) return problem;
        if (auto problem = readPoint(node, item)) return problem;
        if (auto problem = readWhatElse(node, item)) return problem;
        const QJsonValue children = node[QLatin1String("children")];
        if (!children.isUndefined() && !children.isNull() && !children.isArray()) {
            return translated("\"children\" must be an array");
        }
        return std::nullopt;
    }

private:
    std::optional<QString> readPage(const QJsonValue &node, MyOutlineItem &item) const {
        const QJsonValue label = node[QLatin1String("pageLabel")];
        const QJsonValue index = node[QLatin1String("pageIndex")];
        item.setPageLabel(QString());
        if (label.isString()) {
            item.setPageLabel(label.toString());
            // An index that belongs to the label is where the entry came from.
            if (const int page = index.toInt(-1);
                page >= 0 && page < pages_.pageCount() && pages_.pageLabel(page) == item.pageLabel())
                item.setImportedPage(page);
            return std::nullopt;
        }
        if (!label.isUndefined() && !label.isNull())
            return translated("\"pageLabel\" must be a string or null");
        if (index.isUndefined() || index.isNull()) return std::nullopt;
        const int page = index.toInt(-1);
        if (page < 0 || page >= pages_.pageCount()) {
            return translated("\"pageIndex\" must be a page, from 0 to %1").arg(pages_.pageCount() - 1);
        }
        item.setPageLabel(pages_.pageLabel(page));
        item.setImportedPage(page);
        return std::nullopt;
    }

    /// The entry of the file that a node stands for; null for none.
    const FileEntry *entryOf(const QJsonValue &node) const {
        const auto found = inFile_.constFind(node[QLatin1String("entry")].toInt());
        return found == inFile_.constEnd() ? nullptr : &*found;
    }

    std::optional<QString> readPoint(const QJsonValue &node, MyOutlineItem &item) const {
        const QJsonValue value = node[QLatin1String("point")];
        if (isAbsent(value)) return std::nullopt;
        const QJsonArray point = value.toArray();
        // What a page's coordinates can be at most (ISO 32000-1, annex C.2), with room to spare.
        constexpr double farthest = 1e7;
        const QPointF spot(point[0].toDouble(), point[1].toDouble());
        const bool isPoint = point.size() == 2 && point[0].isDouble() && point[1].isDouble();
        const bool isNear = std::abs(spot.x()) <= farthest && std::abs(spot.y()) <= farthest;
        const FileEntry *inFile = entryOf(node);
        const bool isOfFile = inFile && inFile->destination && samePoint(spot, inFile->destination->point);
        if (!isPoint || (!isNear && !isOfFile))
            return translated("\"point\" must be two numbers, [x, y], in points");
        item.setPointOnPage(spot);
        return std::nullopt;
    }

    /// What a node does not say, the entry of the file says that it stands for.
    std::optional<QString> readWhatElse(const QJsonValue &node, MyOutlineItem &item) const {
        const QJsonValue number = node[QLatin1String("entry")];
        if (!isAbsent(number) && number.toInt(0) <= 0)
            return translated("\"entry\" must be an object number or null");
        const FileEntry *inFile = entryOf(node);
        OutlineEntry entry = inFile ? inFile->entry : OutlineEntry();
        for (const auto &[key, truth] : {std::pair{"bold", &entry.bold}, std::pair{"italic", &entry.italic},
                                         std::pair{"open", &entry.open}}) {
            const QJsonValue value = node[QLatin1String(key)];
            if (!isAbsent(value) && !value.isBool())
                return translated("\"%1\" must be true or false").arg(QLatin1String(key));
            *truth = value.toBool(*truth);
        }
        if (auto problem = readColor(node[QLatin1String("color")], entry)) return problem;
        if (auto problem = readAction(node[QLatin1String("action")], entry)) return problem;
        item.setEntry(entry);
        return std::nullopt;
    }

    static bool isAbsent(const QJsonValue &value) { return value.isUndefined() || value.isNull(); }

    static std::optional<QString> readColor(const QJsonValue &value, OutlineEntry &entry) {
        if (value.isUndefined()) return std::nullopt;
        const auto inFile = std::exchange(entry.color, std::nullopt);
        if (value.isNull()) return std::nullopt;
        const QJsonArray parts = value.toArray();
        const bool areNumbers =
            parts.size() == 3 && std::ranges::all_of(parts, [](const QJsonValue &v) { return v.isDouble(); });
        const OutlineEntry::Color color{parts[0].toDouble(), parts[1].toDouble(), parts[2].toDouble()};
        const bool areParts = std::ranges::all_of(color, [](double part) { return part >= 0 && part <= 1; });
        // Files may have others.
        if (!areNumbers || (!areParts && color != inFile))
            return translated("\"color\" must be null or three numbers from 0 to 1, [red, green, blue]");
        entry.color = color;
        return std::nullopt;
    }

    static std::optional<QString> readAction(const QJsonValue &value, OutlineEntry &entry) {
        if (value.isUndefined()) return std::nullopt;
        const auto inFile = std::exchange(entry.action, std::nullopt);
        if (value.isNull()) return std::nullopt;
        const QJsonValue type = value[QLatin1String("type")];
        if (!type.isString()) return translated("\"action\" must be null or an object with a \"type\"");
        const QString kind = type.toString();
        entry.action = OutlineEntry::Action{kind};
        const char *key = kind == QLatin1String("URI")     ? "uri"
                          : kind == QLatin1String("GoToR") ? "file"
                                                           : nullptr;
        if (!key) return std::nullopt;
        const QJsonValue target = value[QLatin1String(key)];
        if (isAbsent(target) && inFile && inFile->type == kind) {
            entry.action = inFile;  // That of the file may lack it, too.
            return std::nullopt;
        }
        if (!target.isString())
            return translated("an \"action\" of type %1 must have a \"%2\"").arg(kind, QLatin1String(key));
        entry.action->target = target.toString();
        return std::nullopt;
    }

    const TextPages &pages_;
    OutlineEntries inFile_;
};

OutlineTree treeFromJson(const QJsonArray &nodes, const OutlineSource &source) {
    struct Siblings {
        QJsonArray nodes;
        MyOutlineItem *parent;
        qsizetype next = 0;
    };
    auto root = std::make_unique<MyOutlineItem>();
    const bool isOfFile = areNumberedAsInFile(nodes, source.inFile);
    if (!isOfFile && source.notices)
        source.notices->append(
            translated("the outline was made of another file, or of an earlier edition: what only the "
                       "entries of this file have is not kept"));
    const NodeReader reader(source.pages, isOfFile ? source.inFile : OutlineEntries());
    UnknownKeys unknownKeys;
    std::vector<Siblings> open;
    open.push_back({nodes, root.get()});
    qsizetype count = 0;
    const auto where = [&open] {
        QString path;
        for (const Siblings &siblings : open) {
            if (!path.isEmpty()) path += QLatin1String(".children");
            path += u'[' + QString::number(siblings.next - 1) + u']';
        }
        return path;
    };
    while (!open.empty()) {
        Siblings &siblings = open.back();
        if (siblings.next == siblings.nodes.size()) {
            open.pop_back();
            continue;
        }
        const QJsonValue node = siblings.nodes[siblings.next++];
        MyOutlineItem &item = siblings.parent->appendChild(std::make_unique<MyOutlineItem>());
        if (const auto problem = reader.read(node, item)) return TreeError{where(), *problem};
        unknownKeys.lookAt(node.toObject(), where);
        if (const auto problem = problemOfSize(++count, static_cast<qsizetype>(open.size())))
            return TreeError{where(), *problem};
        open.push_back({node[QLatin1String("children")].toArray(), &item});
    }
    if (const auto notice = unknownKeys.notice(); notice && source.notices) source.notices->append(*notice);
    return root;
}

}  // namespace

void writeJsonNodes(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink) {
    JsonWriter json(sink);
    json.beginArray();
    walkBelow(
        root,
        [&](const MyOutlineItem &item, size_t /*depth*/) {
            const auto page = pageOf(item);
            json.beginObject();
            json.member("title", item.pageTitle().isNull() ? QStringLiteral("") : item.pageTitle());
            json.member("pageLabel", item.pageLabel());
            json.key("pageIndex");
            page ? json.value(*page) : json.null();
            json.member("point", item.pointOnPage());
            printWhatElse(item.entry(), json);
            json.key("children");
            json.beginArray();
        },
        [&](const MyOutlineItem & /*item*/) {
            json.endArray();
            json.endObject();
        });
    json.endArray();
}

OutlineTree readJsonNodes(const QByteArray &text, const OutlineSource &source) {
    const auto parsed = parsedJson(text);
    if (const auto *error = std::get_if<TreeError>(&parsed)) return *error;
    const auto &json = std::get<QJsonDocument>(parsed);
    if (!json.isArray()) return TreeError{{}, translated("an outline in JSON is an array of nodes")};
    return treeFromJson(json.array(), source);
}

bool looksLikeJsonNodes(QByteArrayView text) {
    return text.startsWith('[') || (text.startsWith('{') && !text.contains("\"bookmarks\""));
}

}  // namespace leafwright
