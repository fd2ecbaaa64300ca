#include "script/ScriptFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace leafwright::script {

namespace {

constexpr qint64 blockSize = 1 << 20;

bool copyInto(QIODevice &target, QIODevice &source) {
    while (!source.atEnd()) {
        const QByteArray block = source.read(blockSize);
        if (block.isEmpty() || target.write(block) != block.size()) return false;
    }
    return true;
}

bool areEqual(const QString &path, const QString &other) {
    QFile a(path);
    QFile b(other);
    if (!a.open(QIODevice::ReadOnly) || !b.open(QIODevice::ReadOnly) || a.size() != b.size()) return false;
    while (!a.atEnd()) {
        const QByteArray block = a.read(blockSize);
        if (block.isEmpty() || block != b.read(blockSize)) return false;
    }
    return true;
}

QString failure(const QString &path, const QString &reason) {
    return QCoreApplication::translate("ScriptFiles", "%1 could not be written: %2").arg(path, reason);
}

}  // namespace

ScriptFiles::ScriptFiles(QString baseFolder) : base_(std::move(baseFolder)) {
    QDir().mkpath(temporaryDirectory());
}

QString ScriptFiles::absolute(const QString &path) const {
    return QDir::cleanPath(QDir(base_).absoluteFilePath(path));
}

const ScriptFiles::Staged *ScriptFiles::stagedFor(const QString &path) const {
    const auto found = std::ranges::find(staged_, absolute(path), &Staged::path);
    return found == staged_.end() ? nullptr : &*found;
}

QString ScriptFiles::placeFor(const QString &path) {
    if (const Staged *staged = stagedFor(path)) return staged->place;
    // A folder each: the documents go by their files' names.
    const QString folder = folder_.filePath(QString::number(staged_.size()));
    QDir().mkpath(folder);
    const QString wanted = absolute(path);
    staged_.push_back({wanted, QDir(folder).filePath(QFileInfo(wanted).fileName())});
    return staged_.back().place;
}

std::optional<QString> ScriptFiles::copyOf(const QString &path) {
    QFile source(absolute(path));
    if (!source.open(QIODevice::ReadOnly)) return std::nullopt;
    const QString place = placeFor(path);
    QFile copy(place);
    if (!copy.open(QIODevice::WriteOnly) || !copyInto(copy, source) || !copy.flush()) return std::nullopt;
    return place;
}

QString ScriptFiles::placeToRead(const QString &path) const {
    const Staged *staged = stagedFor(path);
    return staged && QFileInfo::exists(staged->place) ? staged->place : absolute(path);
}

QString ScriptFiles::told(const QString &path) const {
    const auto found = std::ranges::find(staged_, path, &Staged::place);
    const QString belongs = found == staged_.end() ? path : found->path;
    const QString temporary = temporaryDirectory() + u'/';
    if (belongs.startsWith(temporary)) return QLatin1String("<temporary>/") + belongs.mid(temporary.size());
    const QString inBase = base_ + u'/';
    return belongs.startsWith(inBase) ? belongs.mid(inBase.size()) : belongs;
}

std::optional<QString> ScriptFiles::publish() const {
    std::vector<std::unique_ptr<QSaveFile>> files;
    for (const Staged &staged : staged_) {
        QFile source(staged.place);
        if (!source.exists() || areEqual(staged.place, staged.path)) continue;
        const auto &target = files.emplace_back(std::make_unique<QSaveFile>(staged.path));
        if (!source.open(QIODevice::ReadOnly)) return failure(staged.path, source.errorString());
        if (!target->open(QIODevice::WriteOnly) || !copyInto(*target, source) || !target->flush())
            return failure(staged.path, target->errorString());
    }
    for (const auto &file : files)
        if (!file->commit()) return failure(file->fileName(), file->errorString());
    return std::nullopt;
}

}  // namespace leafwright::script
