#include "files/FileReading.h"

#include "files/FileName.h"
#include "files/SystemError.h"
#include "texts/Translated.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright {

namespace {

constexpr Translated translated{"FileReading"};

/// Nothing where it has been removed. The process stays in it, and its paths lead nowhere.
std::optional<std::filesystem::path> workingFolder() {
    char *current = ::get_current_dir_name();
    if (!current) return std::nullopt;
    std::filesystem::path folder(current);
    std::free(current);  // NOLINT(cppcoreguidelines-no-malloc): so the call above wants it
    return folder;
}

QString textOf(const std::filesystem::path &path) {
    return fileNameText(QByteArray::fromStdString(path.string()));
}

}  // namespace

std::variant<QByteArray, QString> readDescriptor(int descriptor, qsizetype longest) {
    constexpr qsizetype blockSize = 1 << 16;
    QByteArray content;
    while (true) {
        const auto block = readBlock(descriptor, blockSize);
        if (!block) return reasonOfSystem(errno);
        content += *block;
        constexpr int bitsOfMegabyte = 20;
        if (content.size() > longest)
            return translated("it is larger than %1 MB").arg(longest >> bitsOfMegabyte);
        if (block->size() < blockSize) return content;
    }
}

std::optional<QByteArray> readBlock(int descriptor, qsizetype longest) {
    QByteArray block(longest, Qt::Uninitialized);
    qsizetype filled = 0;
    while (filled < longest) {
        const ssize_t count =
            ::read(descriptor, block.data() + filled, static_cast<size_t>(longest - filled));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        filled += count;
    }
    block.truncate(filled);
    return block;
}

std::variant<QByteArray, QString> readFile(const QString &path, qsizetype longest) {
    const int descriptor = ::open(fileNameBytes(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return reasonOfSystem(errno);
    auto content = readDescriptor(descriptor, longest);
    ::close(descriptor);
    return content;
}

std::variant<QByteArray, QString> readRegularFile(const QString &path, qsizetype longest) {
    const int descriptor = openRegularFile(path);
    if (descriptor < 0) return reasonOfSystem(errno);
    auto content = readDescriptor(descriptor, longest);
    ::close(descriptor);
    return content;
}

int openRegularFile(const QString &path) {
    // Without O_NONBLOCK, opening a named pipe would wait for a writer.
    const int descriptor = ::open(fileNameBytes(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return -1;
    struct stat status = {};
    int error = ::fstat(descriptor, &status) == 0 ? 0 : errno;
    if (!error && S_ISDIR(status.st_mode)) error = EISDIR;
    if (!error && !S_ISREG(status.st_mode)) error = ESPIPE;
    if (!error) return descriptor;
    ::close(descriptor);
    errno = error;
    return -1;
}

std::optional<bool> beginsAsPdf(const QByteArray &path) {
    constexpr qsizetype longest = 1024;
    const int descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return errno == EACCES ? std::optional(false) : std::nullopt;
    const auto start = readBlock(descriptor, longest);
    const int error = errno;
    ::close(descriptor);
    errno = error;
    if (!start) return std::nullopt;
    QByteArray text = start->startsWith("\xEF\xBB\xBF") ? start->sliced(3) : *start;
    const auto lines = text.replace('\r', '\n').split('\n');
    return std::any_of(lines.begin(), lines.end(), [](const QByteArray &line) {
        return line.startsWith("%PDF-") || (line.startsWith("%!PS-Adobe-") && line.contains(" PDF-"));
    });
}

std::optional<QString> makeFolder(const QString &path) {
    std::error_code error;
    std::filesystem::create_directories(fileNameBytes(path).toStdString(), error);
    return error ? std::optional(reasonOfSystem(error.value())) : std::nullopt;
}

bool fileExists(const QString &path) {
    struct stat status = {};
    return ::stat(fileNameBytes(path).constData(), &status) == 0;
}

bool isReadOnly(const QString &path) {
    if (!fileExists(path)) return false;
    const auto mayNot = [](const QByteArray &place, int what) {
        return ::faccessat(AT_FDCWD, place.constData(), what, AT_EACCESS) != 0;
    };
    // Where a link leads, the file is replaced.
    const std::unique_ptr<char, decltype(&std::free)> real(
        ::realpath(fileNameBytes(path).constData(), nullptr), &std::free);
    if (!real) return true;
    const QByteArray place(real.get());
    return mayNot(place, W_OK) || mayNot(place.left(place.lastIndexOf('/') + 1), W_OK | X_OK);
}

std::optional<QString> absolutePath(const QString &path) {
    std::filesystem::path whole = fileNameBytes(path).toStdString();
    if (whole.is_relative()) {
        const auto folder = workingFolder();
        if (!folder) return std::nullopt;
        whole = *folder / whole;
    }
    std::filesystem::path clean;
    for (const std::filesystem::path &part : whole) {
        if (part.empty() || part == ".") continue;
        if (part != "..") {
            clean /= part;
            continue;
        }
        std::error_code error;
        if (std::filesystem::is_symlink(clean, error)) clean = std::filesystem::canonical(clean, error);
        if (error) return textOf(whole);
        clean = clean.parent_path();
    }
    return textOf(clean);
}

QString noWorkingFolder() {
    return translated(
        "the folder that this program was started in is gone, and with it what a relative path begins at; go "
        "to another folder, or give the whole path");
}

}  // namespace leafwright
