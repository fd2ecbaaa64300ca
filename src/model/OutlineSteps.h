#pragma once

#include "model/MyOutlineItem.h"

#include <variant>
#include <vector>

namespace leafwright {

// The kinds of steps that change an outline. Each holds what is not in force now: what it took out or has yet
// to bring, the old or the new value. So to take a step back, and to do it again, is to exchange the two.

/// Siblings next to each other, and the gap that they move to. Positions are as they are before the move; the
/// gap is the one before the child at its position, or behind the last.
struct OutlineMove {
    MyOutlineItem *source;
    size_t first;
    size_t count;
    MyOutlineItem *target;
    size_t gap;

    /// The move that takes this one back once it is done.
    OutlineMove back() const;
};

/// The children that an item has at the end of a rearrangement, in their order.
struct OutlineArrangement {
    MyOutlineItem *parent;
    std::vector<MyOutlineItem *> children;
};

/// Told of moves, so that what stands for the items can move with them. All other changes are told by the
/// items themselves; so are these, but as lists of children that become others.
class OutlineMoveObserver {
public:
    virtual ~OutlineMoveObserver() = default;
    /// Moves up to the next call may be looked at together, once they are over.
    virtual void beginManyMoves() = 0;
    virtual void endManyMoves() = 0;
    virtual void willMove(const OutlineMove &move) = 0;
    virtual void didMove(const OutlineMove &move) = 0;
    /// Between calls for many moves. @param parents those whose children are others now, or in another order
    virtual void didRearrange(const std::vector<OutlineArrangement> &parents) = 0;
};

/// Siblings next to each other come to a place, or go from it, with all that is below them.
struct PresenceStep {
    MyOutlineItem *parent;
    size_t first;
    size_t count;
    MyOutlineItem::Children away;  ///< Empty while they are in their place.
};

/// Items change places, all at once; for very many.
struct RearrangementStep {
    std::vector<OutlineArrangement> other;
};

/// A label with the page that it came with; see MyOutlineItem::importedPage().
struct LabelAndPage {
    QString label;
    std::optional<int> importedPage;
};

/// What an item is told to be: a title, a label, a point on its page, or all that an OutlineEntry holds.
struct ValueStep {
    struct Title {
        QString text;
    };
    using Value = std::variant<Title, LabelAndPage, QPointF, OutlineEntry>;

    MyOutlineItem *item;
    Value other;
};

using OutlineStep = std::variant<PresenceStep, OutlineMove, RearrangementStep, ValueStep>;

/// Does a step, or takes it back.
/// @param observer told of moves; may be null
void exchange(OutlineStep &step, OutlineMoveObserver *observer);

/// Whether a step has given an item the value that it had.
bool changesNothing(const OutlineStep &step);

/// How many bytes, about, a step keeps.
size_t bytesKeptBy(const OutlineStep &step);

/// How many items a step has taken out of the outline and keeps, with those below them.
size_t itemsTakenOutBy(const OutlineStep &step);

}  // namespace leafwright
