#pragma once

#include <QtGlobal>

#include <vector>

namespace leafwright {

/// How an outline is shown, beside what it says: which of its items are selected and which are unfolded, by
/// their identities, in tree order.
struct OutlineLook {
    std::vector<quint64> selected;
    std::vector<quint64> unfolded;

    friend bool operator==(const OutlineLook &, const OutlineLook &) = default;
};

/// What shows an outline, and can show it again as it was.
class OutlineDisplay {
public:
    virtual ~OutlineDisplay() = default;
    virtual OutlineLook look() const = 0;
    /// What changes up to the next call may be drawn together, once it is over.
    virtual void beginManyChanges() = 0;
    virtual void endManyChanges() = 0;
    /// Items that are not in the outline are passed over.
    virtual void setLook(const OutlineLook &look) = 0;
};

}  // namespace leafwright
