#pragma once

#include <QList>
#include <QString>

#include <compare>
#include <initializer_list>

namespace leafwright {

/// Where an item stands in a tree: positions among siblings, 0-based, from the top level down. A value;
/// the empty path is the invisible root's.
class IndexPath {
public:
    IndexPath() = default;
    IndexPath(std::initializer_list<size_t> positions) : positions_(positions) {}
    static IndexPath indexPathWithIndex(size_t position) { return {position}; }
    static IndexPath indexPathWithIndexes(QList<size_t> positions);

    size_t length() const { return static_cast<size_t>(positions_.size()); }
    bool isEmpty() const { return positions_.isEmpty(); }
    /// Throws std::out_of_range unless index is below the length.
    size_t indexAtPosition(size_t index) const;
    /// The position among its siblings. Throws std::out_of_range for the empty path.
    size_t lastIndex() const { return indexAtPosition(length() - 1); }

    IndexPath indexPathByAddingIndex(size_t position) const;
    /// Of a path of one position, and of the empty path, the empty path.
    IndexPath indexPathByRemovingLastIndex() const;

    /// Tree order: an item comes before what is below it and before its later siblings.
    friend std::strong_ordering operator<=>(const IndexPath &a, const IndexPath &b);
    friend bool operator==(const IndexPath &, const IndexPath &) = default;

    /// "[2,5,1]"
    QString description() const;

private:
    QList<size_t> positions_;
};

}  // namespace leafwright
