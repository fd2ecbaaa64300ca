#pragma once

namespace leafwright {

class MyDocument;

/// The command that changes where an entry leads.
class TargetCommands {
public:
    /// Registers the command. @param document must outlive this
    explicit TargetCommands(MyDocument &document);

    /// Has the one selected entry lead to the spot that was picked on a page, which is let go of; without
    /// one, to the top of what is seen of the current page. Title and children stay. Refuses with a beep.
    void pointSelectedEntryHere();

private:
    MyDocument &document_;
};

}  // namespace leafwright
