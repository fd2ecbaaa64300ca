#include "tree/IndexPath.h"

#include <QStringList>

#include <algorithm>
#include <stdexcept>

namespace leafwright {

IndexPath IndexPath::indexPathWithIndexes(QList<size_t> positions) {
    IndexPath path;
    path.positions_ = std::move(positions);
    return path;
}

size_t IndexPath::indexAtPosition(size_t index) const {
    if (index >= length()) throw std::out_of_range("IndexPath: no such position");
    return positions_.at(static_cast<qsizetype>(index));
}

IndexPath IndexPath::indexPathByAddingIndex(size_t position) const {
    IndexPath result = *this;
    result.positions_.append(position);
    return result;
}

IndexPath IndexPath::indexPathByRemovingLastIndex() const {
    IndexPath result = *this;
    if (!result.positions_.isEmpty()) result.positions_.removeLast();
    return result;
}

std::strong_ordering operator<=>(const IndexPath &a, const IndexPath &b) {
    return std::lexicographical_compare_three_way(a.positions_.begin(), a.positions_.end(),
                                                  b.positions_.begin(), b.positions_.end());
}

QString IndexPath::description() const {
    QStringList parts;
    for (const size_t position : positions_)
        parts.append(QString::number(position));
    return QStringLiteral("[%1]").arg(parts.join(u','));
}

}  // namespace leafwright
