#include "exchange/JsonNodeChecks.h"

#include "texts/Translated.h"

#include <QSet>

#include <algorithm>
#include <utility>
#include <vector>

namespace leafwright {

namespace {

constexpr Translated translated{"JsonNodeChecks"};

const QStringList knownKeys{QStringLiteral("title"), QStringLiteral("pageLabel"), QStringLiteral("pageIndex"),
                            QStringLiteral("point"), QStringLiteral("bold"),      QStringLiteral("italic"),
                            QStringLiteral("color"), QStringLiteral("open"),      QStringLiteral("action"),
                            QStringLiteral("entry"), QStringLiteral("children")};

/// What reports on found entries have besides, for people.
const QStringList keysOfReports{QStringLiteral("level"), QStringLiteral("evidence"),
                                QStringLiteral("confidence")};

/// Calls `use(node)` for all nodes, parents first.
template <typename Use>
void forEachNode(const QJsonArray &nodes, Use &&use) {
    std::vector<QJsonArray> open{nodes};
    while (!open.empty()) {
        const QJsonArray siblings = std::move(open.back());
        open.pop_back();
        for (const QJsonValue node : siblings) {
            use(node);
            if (QJsonArray children = node[QLatin1String("children")].toArray(); !children.isEmpty())
                open.push_back(std::move(children));
        }
    }
}

/// Whether a node does what an entry does where neither leads to a page, as far as nodes tell that.
bool hasSameAction(const QJsonValue &action, const std::optional<OutlineEntry::Action> &inFile) {
    if (!inFile) return false;  // To lead nowhere is nothing that two have in common.
    if (action[QLatin1String("type")].toString() != inFile->type) return false;
    const auto isTarget = [&](QLatin1String key) { return action[key].toString() == inFile->target; };
    return !inFile->target || isTarget(QLatin1String("uri")) || isTarget(QLatin1String("file"));
}

/// Whether a node leads where an entry leads.
bool leadsToSame(const QJsonValue &node, const FileEntry &entry) {
    const QJsonValue page = node[QLatin1String("pageIndex")];
    if (!entry.destination)
        return !page.isDouble() && hasSameAction(node[QLatin1String("action")], entry.entry.action);
    const QJsonValue point = node[QLatin1String("point")];
    return page.toInt(-1) == entry.destination->pageIndex &&
           samePoint({point[0].toDouble(), point[1].toDouble()}, entry.destination->point);
}

/// How the nodes are like the entries of the file that have their numbers.
struct Likeness {
    qsizetype titled = 0;   ///< So many have their titles.
    qsizetype renamed = 0;  ///< So many lead where those lead, with titles that no entry has.
    qsizetype another = 0;  ///< So many have the titles of others.
    QSet<int> alike;        ///< Their numbers.
    QSet<int> strangers;  ///< The numbers of nodes that have nothing of them, such as a copy that was edited.
    bool hasNumbers = false;  ///< Whether the file has any of them.

    void add(const QJsonValue &node, const QSet<QString> &titles, const OutlineEntries &inFile);
};

void Likeness::add(const QJsonValue &node, const QSet<QString> &titles, const OutlineEntries &inFile) {
    const QJsonValue value = node[QLatin1String("entry")];
    if (!value.isDouble()) return;
    const int number = value.toInt();
    const QString title = node[QLatin1String("title")].toString();
    const auto found = inFile.constFind(number);
    const bool isThere = found != inFile.constEnd();
    hasNumbers = hasNumbers || isThere;
    const bool isTitled = isThere && found->title == title;
    if (!isTitled && titles.contains(title)) {
        ++another;
    } else if (isTitled || (isThere && leadsToSame(node, *found))) {
        ++(isTitled ? titled : renamed);
        alike.insert(number);
    } else {
        strangers.insert(number);
    }
}

}  // namespace

bool areNumberedAsInFile(const QJsonArray &nodes, const OutlineEntries &inFile) {
    QSet<QString> titles;
    for (const FileEntry &entry : inFile)
        titles.insert(entry.title);
    Likeness like;
    forEachNode(nodes, [&](const QJsonValue &node) { like.add(node, titles, inFile); });
    if (!like.hasNumbers) return true;
    const qsizetype strangers = like.strangers.subtract(like.alike).size();
    // Two files may well have something that launches a program under the same number.
    if (like.titled == 0) return like.another == 0 && strangers < like.renamed;
    return like.another <= like.titled && strangers <= like.titled + like.renamed;
}

void UnknownKeys::lookAt(const QJsonObject &node, const std::function<QString()> &where) {
    constexpr qsizetype mostNamed = 5;
    for (auto member = node.constBegin(); member != node.constEnd(); ++member) {
        const QString key = member.key();
        if (knownKeys.contains(key) || keysOfReports.contains(key) || keys_.contains(key)) continue;
        hasMore_ = hasMore_ || keys_.size() == mostNamed;
        if (hasMore_) return;
        keys_.append(key);
        places_.append(where() + u'.' + key);
    }
}

std::optional<QString> UnknownKeys::notice() const {
    if (keys_.isEmpty()) return std::nullopt;
    const QString places = places_.join(QLatin1String(", ")) + QLatin1String(hasMore_ ? ", ..." : "");
    return translated("keys that are not known were passed over, with all that they hold: %1; known are %2")
        .arg(places, knownKeys.join(QLatin1String(", ")));
}

}  // namespace leafwright
