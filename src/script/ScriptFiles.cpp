#include "script/ScriptFiles.h"

#include "files/FileName.h"
#include "files/FileReading.h"
#include "files/FileReplacement.h"
#include "files/FileWriting.h"
#include "files/SystemError.h"
#include "texts/Translated.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright::script {

namespace {

constexpr Translated translated{"ScriptFiles"};

constexpr qsizetype blockSize = 1 << 20;

/// A descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    int number() const { return number_; }

private:
    int number_;
};

/// @return why not all was copied
std::optional<QString> copyInto(int target, int source) {
    while (true) {
        const auto block = readBlock(source, blockSize);
        if (!block) return reasonOfSystem(errno);
        if (const int error = writeWhole(target, block->constData(), block->size()))
            return reasonOfSystem(error);
        if (block->size() < blockSize) return std::nullopt;
    }
}

/// Whether two files can be read and hold the same.
bool areEqual(const QString &path, const QString &other) {
    const Descriptor a(openRegularFile(path));
    const Descriptor b(openRegularFile(other));
    if (a.number() < 0 || b.number() < 0) return false;
    while (true) {
        const auto block = readBlock(a.number(), blockSize);
        if (!block || block != readBlock(b.number(), blockSize)) return false;
        if (block->size() < blockSize) return true;
    }
}

PDFError unreadable(int error) {
    const bool missing = error == ENOENT || error == ENOTDIR;
    return {missing ? PDFError::Kind::FileMissing : PDFError::Kind::FileUnreadable, reasonOfSystem(error)};
}

QString notWritten(const QString &path, const QString &reason) {
    return translated("%1 could not be written: %2").arg(path, reason);
}

PDFError refusal(const QString &reason) {
    return {PDFError::Kind::WriteFailed, reason};
}

/// Gives all files their names, or none. @return why not, or why it is not for certain
std::optional<QString> putInPlace(std::vector<std::unique_ptr<FileReplacement>> &files,
                                  QStringList &notices) {
    // Nothing brings back what has gone into a pipe, so whatever else can fail comes behind it.
    std::stable_partition(files.begin(), files.end(), [](const auto &file) { return file->isStream(); });
    if (files.size() > 1)
        for (const auto &file : files)
            file->keepOld();
    std::optional<QString> notDurable;
    for (auto file = files.begin(); file != files.end(); ++file) {
        const FileReplacement::Outcome outcome = (*file)->commit();
        if (outcome == FileReplacement::Outcome::NotWritten) {
            QString message = (*file)->message();
            for (auto written = files.begin(); written != file; ++written)
                if (const auto stays = (*written)->undo()) message += QLatin1String("; ") + *stays;
            return message;
        }
        if (outcome == FileReplacement::Outcome::NotDurable) notDurable = (*file)->message();
        notices += (*file)->notices();
    }
    return notDurable;
}

}  // namespace

ScriptFiles::ScriptFiles(std::optional<QString> baseFolder) : base_(std::move(baseFolder)) {
    if (folder_.isThere()) makeOwnFolder(temporaryDirectory());
}

std::optional<QString> ScriptFiles::problem() const {
    return folder_.isThere() ? problem_ : std::optional(folder_.errorString());
}

void ScriptFiles::makeOwnFolder(const QString &path) {
    if (const auto reason = makeFolder(path))
        problem_ = translated("the folder %1 could not be made: %2").arg(path, *reason);
}

std::optional<QString> ScriptFiles::absolute(const QString &path) const {
    if (path.startsWith(u'/')) return absolutePath(path);
    return base_ ? absolutePath(*base_ + u'/' + path) : std::nullopt;
}

void ScriptFiles::keepRead(const std::optional<FilePlace> &place) {
    if (place) read_.push_back(*place);
}

void ScriptFiles::keepWritten(const std::optional<FilePlace> &place) {
    if (place) written_.push_back(*place);
}

void ScriptFiles::replaceOnly(const QStringList &paths, const QString &reason) {
    replaceable_.clear();
    for (const QString &path : paths)
        if (const auto name = nameAt(path)) replaceable_.push_back(*name);
    whyNotReplaceable_ = reason;
}

bool ScriptFiles::mayReplace(const QString &path) const {
    const auto name = whyNotReplaceable_ ? nameAt(path) : std::nullopt;
    return !whyNotReplaceable_ || (name && std::ranges::find(replaceable_, *name) != replaceable_.end());
}

const ScriptFiles::Staged *ScriptFiles::stagedFor(const QString &wanted) const {
    const auto found = std::ranges::find(staged_, wanted, &Staged::path);
    return found == staged_.end() ? nullptr : &*found;
}

/// Why something may not be written to a place; absent where it may.
std::optional<QString> ScriptFiles::objectionTo(const QString &wanted, Content content) const {
    const auto place = placeOf(wanted);
    const auto leadsThere = [&](const Staged &staged) {
        return staged.path == wanted || (place && placeOf(staged.path) == place);
    };
    bool isRead = place && std::ranges::find(read_, *place) != read_.end();
    bool isWritten = place && std::ranges::find(written_, *place) != written_.end();
    for (const Staged &staged : staged_) {
        if (!leadsThere(staged)) continue;
        if (staged.original) {
            isRead |= content != Content::PDF || isStream(wanted);
        } else {
            isWritten |= content != staged.content || content == Content::Report;
        }
    }
    if (isRead) return translated("it is read, and would be overwritten");
    if (isWritten) return translated("two results would be written to it");
    return std::nullopt;
}

/// @return where to write it
QString ScriptFiles::stage(const QString &wanted, Content content) {
    if (const Staged *staged = stagedFor(wanted)) return staged->place;
    // A folder each: the documents go by their files' names.
    const QString folder = folder_.filePath(QString::number(staged_.size()));
    makeOwnFolder(folder);
    QString place = QDir(folder).filePath(QFileInfo(wanted).fileName());
    staged_.push_back({wanted, place, content});
    return place;
}

Result<QString> ScriptFiles::placeFor(const QString &path, Content content) {
    const auto wanted = absolute(path);
    if (!wanted) return refusal(noWorkingFolder());
    if (const auto objection = objectionTo(*wanted, content)) return refusal(*objection);
    return stage(*wanted, content);
}

Result<QString> ScriptFiles::copyOf(const QString &path) {
    const auto wanted = absolute(path);
    if (!wanted) return refusal(noWorkingFolder());
    const Descriptor source(openRegularFile(*wanted));
    auto asItWas = source.number() < 0 ? nullptr : FileSnapshot::of(source.number());
    if (!asItWas) return unreadable(errno);
    const QString place = stage(*wanted, Content::PDF);
    const auto notCopied = [&place](const QString &reason) {
        return PDFError{PDFError::Kind::WriteFailed,
                        translated("it could not be copied to %1: %2").arg(QFileInfo(place).path(), reason)};
    };
    // Only ever a new file: a copy must not be written over what somebody has.
    const Descriptor copy(
        ::open(fileNameBytes(place).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (copy.number() < 0) return notCopied(reasonOfSystem(errno));
    if (const auto reason = copyInto(copy.number(), source.number())) return notCopied(*reason);
    const std::optional<bool> isWhole = asItWas->isAsItWas();
    if (!isWhole) return notCopied(reasonOfSystem(errno));
    if (!*isWhole) return notCopied(translated("another program writes to it at the moment"));
    Staged &staged = *std::ranges::find(staged_, place, &Staged::place);
    staged.original = std::make_shared<FileOnDisk>(std::move(asItWas), staged.path);
    staged.copy = FileSnapshot::of(copy.number());
    return place;
}

QString ScriptFiles::placeToRead(const QString &path) const {
    const Staged *staged = stagedFor(path);
    return staged && fileExists(staged->place) ? staged->place : path;
}

QString ScriptFiles::told(const QString &path) const {
    const auto found = std::ranges::find(staged_, path, &Staged::place);
    const QString belongs = found == staged_.end() ? path : found->path;
    const QString temporary = temporaryDirectory() + u'/';
    if (belongs.startsWith(temporary)) return QLatin1String("<temporary>/") + belongs.mid(temporary.size());
    const QString inBase = base_.value_or(QString()) + u'/';
    return base_ && belongs.startsWith(inBase) ? belongs.mid(inBase.size()) : belongs;
}

QString ScriptFiles::toldIn(QString message) const {
    for (const Staged &staged : staged_)
        message.replace(staged.place, told(staged.place));
    return message.replace(temporaryDirectory(), QLatin1String("<temporary>"));
}

/// Whether it is a copy that the script has not saved. The original may be another by now.
bool ScriptFiles::isLeftAlone(const Staged &staged) {
    struct stat status = {};
    return staged.copy && ::stat(fileNameBytes(staged.place).constData(), &status) == 0 &&
           staged.copy->isAlso(status) == true;
}

std::optional<QString> ScriptFiles::publish(QStringList &notices,
                                            const std::function<std::optional<QString>()> &first) const {
    std::vector<std::unique_ptr<FileReplacement>> files;
    std::set<FilePlace> taken;
    for (const Staged &staged : staged_) {
        if (!fileExists(staged.place) || isLeftAlone(staged) || areEqual(staged.place, staged.path)) continue;
        const auto wanted = placeOf(staged.path);
        if (wanted && !taken.insert(*wanted).second) {
            return notWritten(staged.path, translated("something else is to be written there too"));
        }
        const Descriptor source(openRegularFile(staged.place));
        if (source.number() < 0) return notWritten(staged.path, reasonOfSystem(errno));
        FileReplacement &target = *files.emplace_back(std::make_unique<FileReplacement>(staged.path));
        if (staged.content == Content::PDF) target.setIsPdf();
        if (staged.original) target.heed(*staged.original);
        if (!mayReplace(staged.path)) target.keepWhatIsThere(*whyNotReplaceable_);
        if (!target.start()) return target.message();
        if (const auto reason = copyInto(target.descriptor(), source.number()))
            return notWritten(staged.path, *reason);
        if (!target.prepare()) return target.message();
    }
    if (first)
        if (auto problem = first()) return problem;
    return putInPlace(files, notices);
}

}  // namespace leafwright::script
