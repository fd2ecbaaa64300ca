#include "model/LevelNumber.h"

#include <QStringList>

#include <algorithm>

namespace leafwright {

LevelNumber::~LevelNumber() {
    while (parent_ && parent_.use_count() == 1)
        parent_ = std::move(parent_->parent_);
}

QString LevelNumber::text() const {
    QStringList positions;
    for (const LevelNumber *number = this; number; number = number->parent_.get())
        positions.append(QString::number(number->position_));
    std::ranges::reverse(positions);
    return positions.join(u'.');
}

}  // namespace leafwright
