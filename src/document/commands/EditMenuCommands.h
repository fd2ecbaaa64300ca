#pragma once

class QObject;

namespace leafwright {

class MyDocument;
class StepCommands;

/// Undo, redo and copy, which act on whatever the user is working in.
class EditMenuCommands {
public:
    /// Registers the commands. @param document must outlive this
    explicit EditMenuCommands(MyDocument &document);

private:
    void undo();
    void redo();
    /// Where undo and redo have nothing to do: steps, if the user wants it so, or tells that there are steps.
    void insteadOf(bool (StepCommands::*canStep)() const, const char *selector);
    void copy();

    MyDocument &document_;
};

}  // namespace leafwright
