#include "exchange/OutlineSource.h"

#include "model/TreeWalk.h"

namespace leafwright {

OutlineEntries entriesByNumber(const PDFOutline &root) {
    OutlineEntries entries;
    walkBelow(root, [&](const PDFOutline &outline, size_t /*depth*/) {
        if (const auto number = outline.entry().number)
            entries.insert(*number, {outline.label(), outline.destination(), outline.entry()});
    });
    return entries;
}

}  // namespace leafwright
