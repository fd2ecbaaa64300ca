#pragma once

#include "categories/FontIdentity.h"

#include <QHash>

namespace leafwright {

/// The font strings of the few fonts that many runs are set in: each is put together once.
class FontStrings {
public:
    const QString &of(const Font &font) {
        auto known = strings_.find(font);
        if (known == strings_.end()) known = strings_.insert(font, fontString(font));
        return *known;
    }

private:
    QHash<Font, QString> strings_;
};

}  // namespace leafwright
