#pragma once

#include <sys/fsuid.h>
#include <unistd.h>

namespace leafwright::test {

/// Lets this thread use files as one who may not do everything, for as long as it lives: a folder that is
/// read-only is read-only for root as well. Without effect for other users.
class Unprivileged {
public:
    Unprivileged() { setfsuid(nobody); }
    ~Unprivileged() { setfsuid(geteuid()); }
    Unprivileged(const Unprivileged &) = delete;
    Unprivileged &operator=(const Unprivileged &) = delete;

private:
    static constexpr uid_t nobody = 65534;
};

}  // namespace leafwright::test
