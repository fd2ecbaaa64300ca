#include "cli/FileClash.h"

#include "texts/Translated.h"

#include <algorithm>
#include <map>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"FileClash"};

bool isRegular(int descriptor) {
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

bool isOneOf(const QString &path, const QStringList &read) {
    const auto place = placeToWrite(path);
    return place && std::ranges::any_of(read, [&](const QString &other) {
               return !other.isEmpty() && placeToRead(other) == place;
           });
}

QString overwrites(const QString &path) {
    if (path == QLatin1String("-"))
        return translated("standard output leads to a file that is read; nothing was written");
    return translated("%1 is read, and would be overwritten; nothing was written").arg(path);
}

QString meet(const QString &path) {
    return translated("two results would be written to %1; nothing was written").arg(path);
}

/// A path to be written to that leads where one before it leads.
std::optional<QString> sharedPlace(const QStringList &paths) {
    std::set<FilePlace> seen;
    for (const QString &path : paths) {
        const auto place = path.isEmpty() ? std::nullopt : placeToWrite(path);
        if (place && !seen.insert(*place).second) return path;
    }
    return std::nullopt;
}

}  // namespace

std::optional<FilePlace> placeToRead(const QString &path) {
    if (path != QLatin1String("-")) return placeOf(path);
    return isRegular(STDIN_FILENO) ? placeOf(STDIN_FILENO) : std::nullopt;
}

std::optional<FilePlace> placeToWrite(const QString &path) {
    return path == QLatin1String("-") ? placeOf(STDOUT_FILENO) : placeOf(path);
}

std::optional<QString> clashOf(const FilesOfCommand &files) {
    if (const auto path = sharedPlace(files.written + QStringList{files.out})) return meet(*path);
    // Through a stream the new PDF would not take the old one's place, but stand behind it or in it.
    const QStringList kept = files.read + (isStream(files.out) ? QStringList{files.pdf} : QStringList());
    if (!files.out.isEmpty() && isOneOf(files.out, kept)) return overwrites(files.out);
    for (const QString &path : files.written)
        if (!path.isEmpty() && isOneOf(path, files.read + QStringList{files.pdf})) return overwrites(path);
    return std::nullopt;
}

std::optional<QString> clashOfPrinting(const QString &pdf) {
    return clashOf({.pdf = pdf, .written = {QStringLiteral("-")}});
}

std::optional<QString> clashOfResults(const QStringList &files, const QStringList &results) {
    if (const auto path = sharedPlace(results)) return meet(*path);
    std::map<FilePlace, qsizetype> read;
    for (qsizetype i = 0; i < files.size(); ++i)
        if (const auto place = placeOf(files[i])) read.emplace(*place, i);
    for (qsizetype i = 0; i < results.size(); ++i) {
        const auto place = placeOf(results[i]);
        const auto found = place ? read.find(*place) : read.end();
        if (found != read.end() && found->second != i) return overwrites(results[i]);
    }
    return std::nullopt;
}

}  // namespace leafwright::cli
