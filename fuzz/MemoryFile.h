#pragma once

#include <QByteArrayView>
#include <QString>

#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

namespace leafwright::fuzz {

/// A file in memory, with a path for what wants one.
class MemoryFile {
public:
    explicit MemoryFile(QByteArrayView content = {}) : descriptor_(::memfd_create("input", MFD_CLOEXEC)) {
        const auto size = static_cast<size_t>(content.size());
        if (descriptor_ < 0 || ::write(descriptor_, content.data(), size) != content.size()) std::abort();
    }
    ~MemoryFile() { ::close(descriptor_); }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    int descriptor() const { return descriptor_; }
    QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(descriptor_); }

private:
    int descriptor_;
};

}  // namespace leafwright::fuzz
