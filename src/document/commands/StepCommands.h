#pragma once

#include "model/OutlineEdits.h"

namespace leafwright {

class MyDocument;

/// What a step did, for people: "Remove 47 Entries".
QString stepTitle(const OutlineEdits::Summary &step);

/// Taking back what was done to the outline, and doing it again: commands, drops, and titles and labels that
/// were typed in. Selection and folding come back with it.
class StepCommands {
public:
    /// Registers the commands. @param document must outlive this
    explicit StepCommands(MyDocument &document);

    /// Whether there is a step to take back, or to do again, in an outline that may be edited.
    bool canStepBack() const;
    bool canStepForward() const;
    /// Must be possible.
    void stepBack();
    void stepForward();

private:
    bool mayEdit() const;

    MyDocument &document_;
};

}  // namespace leafwright
