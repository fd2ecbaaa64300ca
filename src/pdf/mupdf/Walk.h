#pragma once

#include "pdf/mupdf/Object.h"

#include <QSet>

namespace leafwright::mupdf {

/// Keeps a walk over objects that lead to each other from going in circles, or on for ever. Nodes without an
/// object number can be told apart from nothing else, and a file can share what they lead to so that there
/// are 2^40 ways through some dozens of them; so the lists that lead on are entered once as well, and all
/// steps count.
class Walk {
public:
    /// No file has more pages, names or fields than this in good faith.
    static constexpr int mostSteps = 10'000'000;
    /// Nor more bytes of labels, titles and names.
    static constexpr qsizetype mostKeptBytes = qsizetype{128} << 20;

    /// Takes a step to an object. @return whether it is new: a direct one always is
    /// Throws Error when the walk has become too long.
    bool enter(const Object &object);
    /// Takes a step to something that is not looked into.
    void step();
    /// Counts a string that is kept. A file can spell a long one once and use it everywhere. Throws
    /// ReadProblem when all of them would take too much memory.
    void keep(qsizetype bytes);

private:
    QSet<int> entered_;  ///< By object number.
    int steps_ = 0;
    qsizetype keptBytes_ = 0;
};

}  // namespace leafwright::mupdf
