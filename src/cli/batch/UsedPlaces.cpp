#include "cli/batch/UsedPlaces.h"

#include "files/FilePlace.h"
#include "texts/Translated.h"

#include <algorithm>
#include <set>
#include <vector>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"UsedPlaces"};

constexpr std::uint64_t isRead = 1;
constexpr std::uint64_t isWritten = 2;

/// The name that a path leads to, as a key. Null where it leads nowhere; whoever writes there says so.
QByteArray keyOf(const QString &path) {
    const auto name = nameAt(path);
    if (!name) return {};
    return QByteArray::number(quint64{name->device}) + ' ' + QByteArray::number(quint64{name->inode}) + '/' +
           name->name;
}

}  // namespace

std::optional<QString> UsedPlaces::reserve(const QString &path) {
    const QByteArray name = keyOf(path);
    if (!name.isNull()) places_.put(name, isRead);
    return places_.problem();
}

std::optional<QString> UsedPlaces::add(const QStringList &read, const QString &pdf,
                                       const QStringList &written) {
    std::vector<QByteArray> sources;
    for (const QString &path : read) {
        sources.push_back(keyOf(path));
        if ((places_.find(sources.back()).value_or(0) & isWritten) == 0) continue;
        return sources.size() == 1 ? translated("another job writes to this file")
                                   : translated("another job writes to %1, which is read").arg(path);
    }
    std::set<QByteArray> own;
    for (const QString &path : QStringList{pdf} + written) {
        if (path.isEmpty()) continue;
        if (path == QLatin1String("-") || isStream(path))
            return translated("%1 is a stream, in which results would not be told apart").arg(path);
        const QByteArray name = keyOf(path);
        if (name.isNull()) continue;
        if (!own.insert(name).second || (places_.find(name).value_or(0) & isWritten) != 0)
            return translated("two results would be written to %1").arg(path);
        const auto source = std::ranges::find(sources, name);
        const bool isOwnFile = source == sources.begin() && path == pdf;
        if (places_.find(name) || (source != sources.end() && !isOwnFile))
            return translated("%1 is read, and would be overwritten").arg(path);
    }
    for (const QByteArray &name : sources)
        if (!name.isNull()) places_.put(name, isRead);
    for (const QByteArray &name : own)
        places_.put(name, isRead | isWritten);
    return places_.problem();
}

}  // namespace leafwright::cli
