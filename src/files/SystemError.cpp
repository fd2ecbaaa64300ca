#include "files/SystemError.h"

#include "texts/Translated.h"

#include <cerrno>
#include <system_error>

namespace leafwright {

namespace {

constexpr Translated translated{"SystemError"};

}  // namespace

QString reasonOfSystem(int error) {
    // The system's "Illegal seek" says what is wrong to nobody.
    if (error == ESPIPE) return translated("it is a pipe or a device, and not a file");
    return QString::fromLocal8Bit(std::generic_category().message(error).c_str());
}

}  // namespace leafwright
