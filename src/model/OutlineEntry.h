#pragma once

#include <QString>

#include <array>
#include <optional>

namespace leafwright {

/// What an outline entry is beside its title, the page it leads to and its children (ISO 32000-1, tables 153
/// and 154): all that travels with it, unseen or not, from the file to an item and back. A new entry is
/// closed, so that what a generator makes of a long book opens in a viewer as its chapters; plain and black.
struct OutlineEntry {
    /// Red, green and blue, each from 0 to 1.
    using Color = std::array<double, 3>;

    /// What happens where no page is led to.
    struct Action {
        /// As the file calls it: "URI", "GoToR", "Launch", ...
        QString type;
        /// The address of a URI, the file of a GoToR; absent for others.
        std::optional<QString> target = {};

        /// Whether it can be written without the entry of the file that it comes from.
        bool isKnownInFull() const { return target && (type == u"URI" || type == u"GoToR"); }

        friend bool operator==(const Action &, const Action &) = default;
    };

    /// The object number, in the file, of the entry that this one stands for; absent for a new one. What it
    /// has that we don't know is written again.
    std::optional<int> number = {};
    bool bold = false;
    bool italic = false;
    bool open = false;  ///< Whether viewers show its children at first.
    std::optional<Color> color = {};
    std::optional<Action> action = {};

    friend bool operator==(const OutlineEntry &, const OutlineEntry &) = default;
};

}  // namespace leafwright
