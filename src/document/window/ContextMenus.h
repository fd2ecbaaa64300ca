#pragma once

namespace leafwright {

class DocumentWindow;

/// Gives the views of a window the menus that come up where one clicks with the second button: commands of
/// the menu bar that act on what is there.
void addContextMenus(DocumentWindow &window);

}  // namespace leafwright
