#include "exchange/PlainText.h"

#include "model/TreeWalk.h"

#include <algorithm>

namespace leafwright {

void writePlainText(const MyOutlineItem &root, const PageOfItem & /*pageOf*/, const TextSink &sink) {
    constexpr size_t deepestIndent = 40;
    walkBelow(root, [&](const MyOutlineItem &item, size_t depth) {
        QString line(static_cast<qsizetype>(2 * std::min(depth, deepestIndent)), u' ');
        line += item.pageTitle().simplified();
        if (!item.pageLabel().isNull()) line += QLatin1String("  [") + item.pageLabel() + u']';
        sink((line + u'\n').toUtf8());
    });
}

}  // namespace leafwright
