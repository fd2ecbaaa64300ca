#pragma once

#include "exchange/OutlineFormat.h"

namespace leafwright {

/// For people: titles indented by depth, each with its page label. Can't be read again.
void writePlainText(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink);

}  // namespace leafwright
