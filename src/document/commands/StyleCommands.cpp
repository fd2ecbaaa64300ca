#include "document/commands/StyleCommands.h"

#include "document/MyDocument.h"
#include "document/window/TitleColorSheet.h"
#include "tree/TreeController.h"

#include <algorithm>

namespace leafwright {

namespace {

constexpr const char *colorCommand = "chooseTitleColor:";

}  // namespace

StyleCommands::StyleCommands(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    const auto handleToggle = [this, &actions](const char *command, bool OutlineEntry::*property) {
        actions.handle(command, [this, command, property](QObject *) { toggle(command, property); });
        actions.setState(command, [this, property] { return allHave(property); });
    };
    handleToggle("toggleBold:", &OutlineEntry::bold);
    handleToggle("toggleItalic:", &OutlineEntry::italic);
    handleToggle("toggleOpenInViewers:", &OutlineEntry::open);
    actions.handle(colorCommand, [this](QObject *) { chooseTitleColor(); });
}

bool StyleCommands::allHave(bool OutlineEntry::*property) const {
    const auto nodes = document_.treecontroller().selectedNodes();
    return !nodes.empty() && std::ranges::all_of(nodes, [property](const TreeNode *node) {
        return node->representedObject()->entry().*property;
    });
}

void StyleCommands::toggle(const char *command, bool OutlineEntry::*property) {
    const auto nodes = document_.treecontroller().selectedNodes();
    if (nodes.empty()) return document_.platform().beep();
    const bool isOn = !allHave(property);
    const OutlineEdits::Transaction edit(document_.edits(), QString::fromLatin1(command));
    for (const TreeNode *node : nodes) {
        OutlineEntry entry = node->representedObject()->entry();
        entry.*property = isOn;
        document_.edits().setEntry(*node->representedObject(), entry);
    }
}

void StyleCommands::chooseTitleColor() {
    const auto nodes = document_.treecontroller().selectedNodes();
    if (nodes.empty()) return document_.platform().beep();
    auto *sheet = new TitleColorSheet(nodes.front()->representedObject()->entry().color);
    document_.beginSheet(sheet, [this, sheet](int returnCode) {
        if (returnCode != 0) setTitleColor(sheet->chosen(returnCode));
    });
}

void StyleCommands::setTitleColor(const std::optional<OutlineEntry::Color> &color) {
    const OutlineEdits::Transaction edit(document_.edits(), QString::fromLatin1(colorCommand));
    for (const TreeNode *node : document_.treecontroller().selectedNodes()) {
        OutlineEntry entry = node->representedObject()->entry();
        entry.color = color;
        document_.edits().setEntry(*node->representedObject(), entry);
    }
}

}  // namespace leafwright
