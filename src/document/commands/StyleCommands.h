#pragma once

#include "model/OutlineEntry.h"

namespace leafwright {

class MyDocument;

/// The commands that change how the selected entries look in viewers: bold, italic, a colour, and whether
/// their children are shown at first.
class StyleCommands {
public:
    /// Registers the commands. @param document must outlive this
    explicit StyleCommands(MyDocument &document);

    /// Gives all selected entries a property, or takes it from them if all of them have it; beeps without
    /// any.
    /// @param command the selector, by which the change is named
    void toggle(const char *command, bool OutlineEntry::*property);
    /// Whether entries are selected, and all of them have a property.
    bool allHave(bool OutlineEntry::*property) const;
    /// Opens a sheet that asks for a colour, for all selected entries; beeps without any.
    void chooseTitleColor();
    /// @param color absent for the colour that viewers give titles
    void setTitleColor(const std::optional<OutlineEntry::Color> &color);

private:
    MyDocument &document_;
};

}  // namespace leafwright
