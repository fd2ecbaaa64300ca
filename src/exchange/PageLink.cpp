#include "exchange/PageLink.h"

#include <algorithm>
#include <array>

namespace leafwright {

namespace {

constexpr QLatin1String pageFragment("#page=");
constexpr QLatin1String addressAction("URI");

bool isAddress(QStringView link) {
    constexpr auto schemes = std::to_array<QLatin1String>(
        {QLatin1String("http://"), QLatin1String("https://"), QLatin1String("mailto:")});
    return std::ranges::any_of(
        schemes, [&](QLatin1String scheme) { return link.startsWith(scheme, Qt::CaseInsensitive); });
}

}  // namespace

QString linkOf(const MyOutlineItem &item, std::optional<int> page) {
    if (page) return pageFragment + QString::number(*page + 1);
    const auto &action = item.entry().action;
    const bool leadsToAddress = item.pageLabel().isNull() && action && action->type == addressAction &&
                                action->target && isAddress(*action->target);
    return leadsToAddress ? *action->target : QString();
}

bool readLink(QStringView link, EntryParts &parts) {
    if (link.isEmpty()) return true;
    if (isAddress(link)) {
        parts.entry.action = OutlineEntry::Action{addressAction, link.toString()};
        return true;
    }
    if (!link.startsWith(pageFragment)) return false;
    const auto number = pageNumberOf(link.sliced(pageFragment.size()));
    parts.pageNumber = number.value_or(0);
    return parts.pageNumber > 0;
}

}  // namespace leafwright
