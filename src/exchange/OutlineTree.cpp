#include "exchange/OutlineTree.h"

#include "formats/Utf8Text.h"
#include "model/TreeWalk.h"
#include "texts/Translated.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cctype>
#include <cmath>
#include <stdexcept>

namespace leafwright {

namespace {

using Tree = std::variant<std::unique_ptr<MyOutlineItem>, TreeError>;

constexpr Translated translated{"OutlineTree"};

/// Reads one JSON node's own members into an item; its children are left to the caller.
class NodeReader {
public:
    NodeReader(const TextPages &pages, const OutlineEntries &inFile) : pages_(pages), inFile_(inFile) {}

    /// @return what is wrong with the node; absent when all is well
    std::optional<QString> read(const QJsonValue &node, MyOutlineItem &item) const {
        if (!node.isObject()) return translated("a node must be an object");
        const QJsonValue title = node[QLatin1String("title")];
        if (!title.isString()) return translated("\"title\" must be a string");
        item.setPageTitle(title.toString());
        if (auto problem = readPage(node, item)) return problem;
        if (auto problem = readPoint(node[QLatin1String("point")], item)) return problem;
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

    static std::optional<QString> readPoint(const QJsonValue &value, MyOutlineItem &item) {
        if (value.isUndefined() || value.isNull()) return std::nullopt;
        const QJsonArray point = value.toArray();
        // What a page's coordinates can be at most (ISO 32000-1, annex C.2), with room to spare.
        constexpr double farthest = 1e7;
        const auto isCoordinate = [](const QJsonValue &v) {
            return v.isDouble() && std::abs(v.toDouble()) <= farthest;
        };
        if (point.size() != 2 || !isCoordinate(point[0]) || !isCoordinate(point[1])) {
            return translated("\"point\" must be two numbers, [x, y], in points");
        }
        item.setPointOnPage({point[0].toDouble(), point[1].toDouble()});
        return std::nullopt;
    }

    /// What a node does not say, the entry of the file says that it stands for.
    std::optional<QString> readWhatElse(const QJsonValue &node, MyOutlineItem &item) const {
        const QJsonValue number = node[QLatin1String("entry")];
        if (!isAbsent(number) && number.toInt(0) <= 0)
            return translated("\"entry\" must be an object number or null");
        OutlineEntry entry = isAbsent(number) ? OutlineEntry() : inFile_.value(number.toInt());
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
        entry.color.reset();
        if (value.isNull()) return std::nullopt;
        const QJsonArray parts = value.toArray();
        const auto isPart = [](const QJsonValue &v) {
            return v.isDouble() && v.toDouble() >= 0 && v.toDouble() <= 1;
        };
        if (parts.size() != 3 || !std::all_of(parts.begin(), parts.end(), isPart))
            return translated("\"color\" must be null or three numbers from 0 to 1, [red, green, blue]");
        entry.color = {parts[0].toDouble(), parts[1].toDouble(), parts[2].toDouble()};
        return std::nullopt;
    }

    static std::optional<QString> readAction(const QJsonValue &value, OutlineEntry &entry) {
        if (value.isUndefined()) return std::nullopt;
        entry.action.reset();
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
        if (!target.isString())
            return translated("an \"action\" of type %1 must have a \"%2\"").arg(kind, QLatin1String(key));
        entry.action->target = target.toString();
        return std::nullopt;
    }

    const TextPages &pages_;
    const OutlineEntries &inFile_;
};

Tree treeFromJson(const QJsonArray &nodes, const TextPages &pages, const OutlineEntries &inFile) {
    struct Siblings {
        QJsonArray nodes;
        MyOutlineItem *parent;
        qsizetype next = 0;
    };
    auto root = std::make_unique<MyOutlineItem>();
    const NodeReader reader(pages, inFile);
    std::vector<Siblings> open;
    open.push_back({nodes, root.get()});
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
        open.push_back({node[QLatin1String("children")].toArray(), &item});
    }
    return root;
}

bool looksLikeJson(QByteArrayView text) {
    constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    if (text.startsWith(byteOrderMark)) text = text.sliced(byteOrderMark.size());
    const auto first = std::find_if_not(text.begin(), text.end(),
                                        [](char c) { return std::isspace(static_cast<unsigned char>(c)); });
    return first != text.end() && (*first == '[' || *first == '{');
}

bool anyPageIsLabelled(const TextPages &pages, QStringView label) {
    for (int i = 0; i < pages.pageCount(); ++i) {
        if (pages.pageLabel(i) == label) return true;
    }
    return false;
}

Tree treeFromPlusLines(const QString &text, const TextPages &pages) {
    struct Level {
        MyOutlineItem *item;
        qsizetype plusCount;
    };
    auto root = std::make_unique<MyOutlineItem>();
    std::vector<Level> path{{root.get(), -1}};
    const bool isLabel = anyPageIsLabelled(pages, u"");
    int number = 0;
    for (QString line : text.split(u'\n')) {
        ++number;
        if (line.endsWith(u'\r')) line.chop(1);
        if (line.isEmpty()) continue;
        std::unique_ptr<MyOutlineItem> item;
        try {
            item = MyOutlineItem::initWithPlusString(line);
        } catch (const std::out_of_range &) {
        }
        const bool plusesOnly = item && item->pluslevelstr().count(u'+') == item->pluslevelstr().size();
        if (!plusesOnly) {
            return TreeError{translated("line %1").arg(number),
                             translated("not of the form \"+ @12 Title\"")};
        }
        // No label behind the "@" is the empty one of a page, or how an entry that leads to none is written.
        if (item->pageLabel().isEmpty() && !isLabel) item->setPageLabel(QString());
        const qsizetype depth = item->pluslevelstr().size();
        while (path.back().plusCount >= depth)
            path.pop_back();
        path.push_back({&path.back().item->appendChild(std::move(item)), depth});
    }
    return root;
}

}  // namespace

OutlineEntries entriesByNumber(const PDFOutline &root) {
    OutlineEntries entries;
    walkBelow(root, [&](const PDFOutline &outline, size_t /*depth*/) {
        if (const auto number = outline.entry().number) entries.insert(*number, outline.entry());
    });
    return entries;
}

Tree parseOutlineTree(const QByteArray &text, const TextPages &pages, const OutlineEntries &inFile) {
    if (!looksLikeJson(text)) {
        const auto lines = textOfUtf8(text);
        if (const auto *fault = std::get_if<NotUtf8>(&lines))
            return TreeError{translated("line %1").arg(fault->line), translated("the text is not UTF-8")};
        return treeFromPlusLines(std::get<QString>(lines), pages);
    }
    QJsonParseError error;
    const QJsonDocument json = QJsonDocument::fromJson(text, &error);
    if (error.error == QJsonParseError::DeepNesting) {
        return TreeError{{},
                         translated("the JSON is nested too deeply; plus lines hold outlines of any depth")};
    }
    if (error.error != QJsonParseError::NoError) {
        const auto line = text.left(error.offset).count('\n') + 1;
        return TreeError{translated("line %1").arg(line), error.errorString()};
    }
    if (!json.isArray()) return TreeError{{}, translated("an outline in JSON is an array of nodes")};
    return treeFromJson(json.array(), pages, inFile);
}

}  // namespace leafwright
