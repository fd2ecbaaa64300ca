#include "files/SystemError.h"

#include <system_error>

namespace leafwright {

QString reasonOfSystem(int error) {
    return QString::fromLocal8Bit(std::generic_category().message(error).c_str());
}

}  // namespace leafwright
