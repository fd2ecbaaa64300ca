#include "exchange/OutlineSource.h"

#include "model/TreeWalk.h"

namespace leafwright {

OutlineEntries entriesByNumber(const PDFOutline &root) {
    OutlineEntries entries;
    walkBelow(root, [&](const PDFOutline &outline, size_t /*depth*/) {
        const auto &destination = outline.destination();
        if (const auto number = outline.entry().number)
            entries.insert(*number,
                           {outline.label(), destination ? std::optional(destination->point) : std::nullopt,
                            outline.entry()});
    });
    return entries;
}

}  // namespace leafwright
