#pragma once

class QObject;

namespace leafwright {

class MyDocument;

/// Undo, redo and copy, which act on whatever the user is working in.
class EditMenuCommands {
public:
    /// Registers the commands. @param document must outlive this
    explicit EditMenuCommands(MyDocument &document);

private:
    void copy();

    MyDocument &document_;
};

}  // namespace leafwright
