#include "categories/CharacterSet.h"

namespace leafwright {

template <typename Predicate>
CharacterSet CharacterSet::ofUnits(Predicate &&isMember) {
    CharacterSet set;
    for (size_t unit = 0; unit < set.members_.size(); ++unit) {
        set.members_[unit] = isMember(QChar(static_cast<char16_t>(unit)));
    }
    return set;
}

const CharacterSet &CharacterSet::letters() {
    static const CharacterSet set = ofUnits([](QChar c) { return c.isLetter() || c.isMark(); });
    return set;
}

const CharacterSet &CharacterSet::alphanumerics() {
    static const CharacterSet set = ofUnits([](QChar c) { return c.isLetterOrNumber() || c.isMark(); });
    return set;
}

const CharacterSet &CharacterSet::symbols() {
    static const CharacterSet set = ofUnits([](QChar c) { return c.isSymbol(); });
    return set;
}

const CharacterSet &CharacterSet::whitespaces() {
    static const CharacterSet set =
        ofUnits([](QChar c) { return c == u'\t' || c.category() == QChar::Separator_Space; });
    return set;
}

const CharacterSet &CharacterSet::newlines() {
    static const CharacterSet set = ofUnits([](QChar c) {
        return (c >= u'\n' && c <= u'\r') || c == u'\u0085' || c == u'\u2028' || c == u'\u2029';
    });
    return set;
}

CharacterSet CharacterSet::inverted() const {
    CharacterSet set;
    set.members_ = ~members_;
    return set;
}

}  // namespace leafwright
