#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace leafwright {

// Walks over trees of items, of their nodes, or of a file's entries: parents before what is below them,
// siblings in order. None recurses, since files nest as deep as they like. The children of what is visited
// may be changed by the visit; other parts of the tree may not.

/// The number of children of an item, a node or an entry.
template <typename Node>
size_t childCountOf(const Node &node) {
    if constexpr (requires { node.children(); }) {
        return node.children().size();
    } else if constexpr (requires { node.childNodes(); }) {
        return node.childNodes().size();
    } else {
        return static_cast<size_t>(node.numberOfChildren());
    }
}

/// A child of an item, a node or an entry. @param index below childCountOf()
template <typename Node>
Node &childOf(Node &node, size_t index) {
    if constexpr (requires { node.children(); }) {
        return *node.children()[index];
    } else if constexpr (requires { node.childNodes(); }) {
        return *node.childNodes()[index];
    } else {
        return node.childAtIndex(static_cast<int>(index));
    }
}

/// Calls `enter(node, depth)` for all below the top, and `leave(node)` behind what is below each; the depth
/// of the top's children is 0. An `enter` that returns false is one below which nothing is visited; it is
/// left all the same.
template <typename Node, typename Enter, typename Leave>
void walkBelow(Node &top, Enter &&enter, Leave &&leave) {
    struct Siblings {
        Node *parent;
        size_t next = 0;
    };
    std::vector<Siblings> open{{&top}};  // the way down to where we are
    while (!open.empty()) {
        Siblings &siblings = open.back();
        if (siblings.next == childCountOf(*siblings.parent)) {
            Node &left = *siblings.parent;
            open.pop_back();
            if (!open.empty()) leave(left);
            continue;
        }
        Node &node = childOf(*siblings.parent, siblings.next++);
        bool goesOn = true;
        if constexpr (std::same_as<std::invoke_result_t<Enter &, Node &, size_t>, bool>) {
            goesOn = enter(node, open.size() - 1);
        } else {
            enter(node, open.size() - 1);
        }
        if (goesOn) {
            open.push_back({&node});
        } else {
            leave(node);
        }
    }
}

/// The same for who need not know when a node is left.
template <typename Node, typename Enter>
void walkBelow(Node &top, Enter &&enter) {
    walkBelow(top, std::forward<Enter>(enter), [](Node &) {});
}

/// How many there are below the top.
template <typename Node>
std::int64_t countBelow(Node &top) {
    std::int64_t count = 0;
    walkBelow(top, [&count](Node & /*node*/, size_t /*depth*/) { ++count; });
    return count;
}

/// Calls `visit(node, depth)` for the top, with depth 0, and for all below it, unless it returns false.
template <typename Node, typename Visit>
void walkTree(Node &top, Visit &&visit) {
    const auto below = [&] {
        walkBelow(top, [&visit](Node &node, size_t depth) { return visit(node, depth + 1); });
    };
    if constexpr (std::same_as<std::invoke_result_t<Visit &, Node &, size_t>, bool>) {
        if (visit(top, size_t{0})) below();
    } else {
        visit(top, size_t{0});
        below();
    }
}

}  // namespace leafwright
