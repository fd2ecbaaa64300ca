#pragma once

#include <QChar>

#include <bitset>

namespace leafwright {

/// A set of UTF-16 units. A value.
class CharacterSet {
public:
    /// The empty set.
    CharacterSet() = default;

    static const CharacterSet &letters();        ///< Unicode categories L and M.
    static const CharacterSet &alphanumerics();  ///< Unicode categories L, M and N.
    static const CharacterSet &symbols();        ///< Unicode category S.
    static const CharacterSet &whitespaces();    ///< Unicode category Zs and the tab; no newlines.
    static const CharacterSet &newlines();       ///< U+000A to U+000D, U+0085, U+2028 and U+2029.

    bool contains(QChar unit) const { return members_[unit.unicode()]; }
    bool isEmpty() const { return members_.none(); }
    CharacterSet inverted() const;
    void formIntersection(const CharacterSet &other) { members_ &= other.members_; }
    void formUnion(const CharacterSet &other) { members_ |= other.members_; }

    friend bool operator==(const CharacterSet &, const CharacterSet &) = default;

private:
    template <typename Predicate>
    static CharacterSet ofUnits(Predicate &&isMember);

    std::bitset<0x10000> members_;
};

}  // namespace leafwright
