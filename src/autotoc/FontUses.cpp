#include "autotoc/FontUses.h"

#include "categories/FontIdentity.h"

namespace leafwright {

FontUses fontUses(const FontCensus &census) {
    FontUses uses;
    for (const FontCensus::Entry &entry : census.entries()) {
        FontUse &use = uses[fontIDString(entry.font)];
        if (use.count == 0) use.sample = entry.sample;
        use.count += entry.record.instances;
    }
    return uses;
}

}  // namespace leafwright
