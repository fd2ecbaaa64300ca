// Lets one system call of the program that it is preloaded into fail or wait, or kills the program there.
//
//   LEAFWRIGHT_FAULT_ROOT   the folder whose files count; calls that concern others pass unseen
//   LEAFWRIGHT_FAULT_LOG    a file that gets a line for each call that counts, such as "fsync", and numbers
//   the
//                           calls of all processes of the run
//   LEAFWRIGHT_FAULT_AT     the number, from 0, of the call that fails
//   LEAFWRIGHT_FAULT_ERROR  the errno that it fails with; 0 kills the program instead, -1 lets it wait for a
//                           minute, as for a disk that does not answer, -2 stops it until it gets SIGCONT
//   LEAFWRIGHT_FAULT_CALL   the name of the only calls that count; empty for all
//
// The functions of the system's library are defined here once more, and so come before it.

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

const char *setting(const char *name) {
    const char *value = std::getenv(name);
    return value ? value : "";
}

struct Plan {
    std::string root = setting("LEAFWRIGHT_FAULT_ROOT");
    std::string log = setting("LEAFWRIGHT_FAULT_LOG");
    long at = *setting("LEAFWRIGHT_FAULT_AT") ? std::atol(setting("LEAFWRIGHT_FAULT_AT")) : -1;
    int error = std::atoi(setting("LEAFWRIGHT_FAULT_ERROR"));
    std::string call = setting("LEAFWRIGHT_FAULT_CALL");
};

const Plan &plan() {
    static const Plan single;
    return single;
}

std::string pathOf(int descriptor) {
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    char target[PATH_MAX];
    const long length = syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), target, sizeof target);
    return length < 0 ? std::string() : std::string(target, static_cast<size_t>(length));
}

std::string pathAt(int folder, const char *path) {
    if (path[0] == '/') return path;
    if (folder != AT_FDCWD) return pathOf(folder) + '/' + path;
    char current[PATH_MAX];
    return syscall(SYS_getcwd, current, sizeof current) < 0 ? std::string()
                                                            : std::string(current) + '/' + path;
}

/// Notes a call. Lines are of one length, so that the place of a line is its number, whoever else writes
/// there.
/// @return its number, from 0
long note(const char *call) {
    constexpr size_t length = 24;
    std::string line = call;
    line.resize(length - 1, ' ');
    line += '\n';
    const long log = syscall(SYS_openat, AT_FDCWD, plan().log.c_str(), O_WRONLY | O_APPEND | O_CREAT, 0600);
    syscall(SYS_write, log, line.c_str(), line.size());
    const long end = syscall(SYS_lseek, log, 0, SEEK_CUR);
    syscall(SYS_close, log);
    return end / static_cast<long>(length) - 1;
}

/// Counts a call. @return whether it is to fail, with errno set
bool fails(const char *call, const std::string &path) {
    if (plan().root.empty() || plan().log.empty()) return false;
    if (path.compare(0, plan().root.size(), plan().root) != 0) return false;
    if (!plan().call.empty() && plan().call != call) return false;
    if (note(call) != plan().at) return false;
    constexpr unsigned minute = 60;
    if (plan().error == -2) return syscall(SYS_kill, syscall(SYS_getpid), SIGSTOP) != 0;
    if (plan().error < 0) return sleep(minute) > minute;
    if (plan().error == 0) syscall(SYS_kill, syscall(SYS_getpid), SIGKILL);
    errno = plan().error;
    return true;
}

template <typename Function>
Function *next(const char *name) {
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

mode_t modeFrom(int flags, va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

// What the headers say of parameters that must not be null, and of what is thrown, is the same here.
#pragma GCC diagnostic ignored "-Wpragmas"
#pragma GCC diagnostic ignored "-Wnonnull-compare"

#define OPEN(name)                                                                           \
    extern "C" int name(const char *path, int flags, ...) {                                  \
        va_list arguments;                                                                   \
        va_start(arguments, flags);                                                          \
        const mode_t mode = modeFrom(flags, arguments);                                      \
        va_end(arguments);                                                                   \
        if (fails((flags & O_CREAT) ? "create" : "open", pathAt(AT_FDCWD, path))) return -1; \
        return next<int(const char *, int, ...)>(#name)(path, flags, mode);                  \
    }
#define OPENAT(name)                                                                       \
    extern "C" int name(int folder, const char *path, int flags, ...) {                    \
        va_list arguments;                                                                 \
        va_start(arguments, flags);                                                        \
        const mode_t mode = modeFrom(flags, arguments);                                    \
        va_end(arguments);                                                                 \
        if (fails((flags & O_CREAT) ? "create" : "open", pathAt(folder, path))) return -1; \
        return next<int(int, const char *, int, ...)>(#name)(folder, path, flags, mode);   \
    }
/// A function whose first parameter is a descriptor.
#define ON_DESCRIPTOR(type, name, parameters, ...)                                  \
    extern "C" type name parameters {                                               \
        if (fails(#name, pathOf(descriptor))) return -1;                            \
        return next<type parameters>(#name)(descriptor __VA_OPT__(, ) __VA_ARGS__); \
    }
#define ON_PATH(name, parameters, folder, path, ...)       \
    extern "C" int name parameters {                       \
        if (fails(#name, pathAt(folder, path))) return -1; \
        return next<int parameters>(#name)(__VA_ARGS__);   \
    }

OPEN(open)
OPEN(open64)
OPENAT(openat)
OPENAT(openat64)
ON_DESCRIPTOR(ssize_t, read, (int descriptor, void *data, size_t size), data, size)
ON_DESCRIPTOR(ssize_t, pread, (int descriptor, void *data, size_t size, off_t offset), data, size, offset)
ON_DESCRIPTOR(ssize_t, pread64, (int descriptor, void *data, size_t size, off64_t offset), data, size, offset)
ON_DESCRIPTOR(ssize_t, write, (int descriptor, const void *data, size_t size), data, size)
ON_DESCRIPTOR(ssize_t, pwrite, (int descriptor, const void *data, size_t size, off_t offset), data, size,
              offset)
ON_DESCRIPTOR(ssize_t, pwrite64, (int descriptor, const void *data, size_t size, off64_t offset), data, size,
              offset)
ON_DESCRIPTOR(int, fsync, (int descriptor))
ON_DESCRIPTOR(int, fdatasync, (int descriptor))
ON_DESCRIPTOR(int, ftruncate, (int descriptor, off_t size), size)
ON_DESCRIPTOR(int, ftruncate64, (int descriptor, off64_t size), size)
ON_DESCRIPTOR(int, fallocate, (int descriptor, int mode, off_t offset, off_t size), mode, offset, size)
ON_DESCRIPTOR(int, fchmod, (int descriptor, mode_t mode), mode)
ON_DESCRIPTOR(int, fchown, (int descriptor, uid_t user, gid_t group), user, group)
ON_DESCRIPTOR(int, flock, (int descriptor, int operation), operation)
ON_PATH(rename, (const char *from, const char *to), AT_FDCWD, to, from, to)
ON_PATH(renameat, (int from, const char *name, int to, const char *newName), to, newName, from, name, to,
        newName)
ON_PATH(renameat2, (int from, const char *name, int to, const char *newName, unsigned flags), to, newName,
        from, name, to, newName, flags)
ON_PATH(link, (const char *from, const char *to), AT_FDCWD, to, from, to)
ON_PATH(linkat, (int from, const char *name, int to, const char *newName, int flags), to, newName, from, name,
        to, newName, flags)
ON_PATH(unlink, (const char *path), AT_FDCWD, path, path)
ON_PATH(unlinkat, (int folder, const char *path, int flags), folder, path, folder, path, flags)
ON_PATH(rmdir, (const char *path), AT_FDCWD, path, path)
ON_PATH(mkdir, (const char *path, mode_t mode), AT_FDCWD, path, path, mode)
ON_PATH(mkdirat, (int folder, const char *path, mode_t mode), folder, path, folder, path, mode)

extern "C" int fsetxattr(int descriptor, const char *name, const void *value, size_t size, int flags) {
    if (fails("fsetxattr", pathOf(descriptor))) return -1;
    return next<int(int, const char *, const void *, size_t, int)>("fsetxattr")(descriptor, name, value, size,
                                                                                flags);
}

extern "C" ssize_t copy_file_range(int from, off64_t *offset, int to, off64_t *newOffset, size_t size,
                                   unsigned flags) {
    if (fails("copy_file_range", pathOf(to))) return -1;
    return next<ssize_t(int, off64_t *, int, off64_t *, size_t, unsigned)>("copy_file_range")(
        from, offset, to, newOffset, size, flags);
}

extern "C" ssize_t sendfile(int to, int from, off_t *offset, size_t size) {
    if (fails("sendfile", pathOf(to))) return -1;
    return next<ssize_t(int, int, off_t *, size_t)>("sendfile")(to, from, offset, size);
}

/// A descriptor is gone whatever close() says, so the call is made before it is said to have failed.
extern "C" int close(int descriptor) {
    const bool failed = fails("close", pathOf(descriptor));
    const int error = errno;
    const int result = next<int(int)>("close")(descriptor);
    if (!failed) return result;
    errno = error;
    return -1;
}
