#pragma once

#include <QString>

#include <memory>

namespace leafwright {

/// Where an item stands in its tree: its position among its siblings, and where its parent stands. The text
/// of a number is made when it is asked for: those of all items of a deep tree would be as long as the square
/// of its depth.
class LevelNumber {
public:
    /// @param parent null for a top-level item @param position 0-based
    LevelNumber(std::shared_ptr<const LevelNumber> parent, size_t position)
        : parent_(std::move(parent)), position_(position) {}
    /// Ends without recursion, however deep it stands.
    ~LevelNumber();
    LevelNumber(const LevelNumber &) = delete;
    LevelNumber &operator=(const LevelNumber &) = delete;

    /// The positions of the item and its ancestors, outermost first, joined by ".".
    QString text() const;

private:
    mutable std::shared_ptr<const LevelNumber> parent_;  ///< Taken out of a number that ends.
    size_t position_;
};

}  // namespace leafwright
