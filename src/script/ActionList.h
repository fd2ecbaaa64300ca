#pragma once

namespace leafwright {
class JsonWriter;
}

namespace leafwright::script {

/// Writes every command there is, in the order of the menus, as an array of objects {"selector", "title",
/// "menu", "shortcut"}; menu and shortcut are null for a command that has none. Nothing is translated, since
/// programs read it.
void writeActionList(JsonWriter &json);

}  // namespace leafwright::script
