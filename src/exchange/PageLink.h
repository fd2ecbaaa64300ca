#pragma once

#include "exchange/EntryParts.h"

namespace leafwright {

// How forms that have links lead to pages: "#page=5" (RFC 8118, section 3), pages counted from 1.

/// The link of an item: to its page or, without one, to the web address or mailbox that a click opens. Empty
/// for neither: what else a file has for actions must not become something to click on.
/// @param page the 0-based page of the item
QString linkOf(const MyOutlineItem &item, std::optional<int> page);

/// Reads a link into the parts of an entry; an empty one leads nowhere. @return whether it is one of these
bool readLink(QStringView link, EntryParts &parts);

}  // namespace leafwright
