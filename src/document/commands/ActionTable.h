#pragma once

#include <QKeySequence>
#include <QString>

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <vector>

class QObject;

namespace leafwright {

/// The menus, in the order of the menu bar.
enum class Menu { File, Edit, Outline, Titles, Contents, View, Help, None };

/// How a command looks, wherever it is shown.
struct ActionDescription {
    const char *selector;  ///< The command's identity: "moveLeft:".
    Menu menu;             ///< None for commands that no menu lists.
    const char *title;     ///< Untranslated; an ellipsis at the end if the command asks something first.
    const char *shortcut;  ///< In portable text, such as "Ctrl+O"; empty for none.
    bool startsGroup;      ///< A separator stands before it in its menu.
    bool inToolBar;
};

/// Every command there is, menu by menu in the order of the menus.
std::span<const ActionDescription> actionDescriptions();
/// Null if there is no such command.
const ActionDescription *actionDescription(const QString &selector);
/// The menu's title, translated.
QString menuTitle(Menu menu);
/// The command's title, translated.
QString actionTitle(const ActionDescription &description);

/// The commands of one document: what each does, and when it may be chosen. Menus, toolbar, scripts and
/// tests all go through it. Commands without a handler are shown nowhere.
class ActionTable {
public:
    /// @param sender who asks, a view or a menu's action; may be null
    using Handler = std::function<void(QObject *sender)>;
    using Rule = std::function<bool()>;

    /// Says what a command does. The selector must be one of actionDescriptions(), and be handled once only;
    /// throws std::logic_error otherwise. @param isEnabled null: always
    void handle(const char *selector, Handler handler, Rule isEnabled = nullptr);

    bool isHandled(const QString &selector) const;
    /// Whether the command may be chosen now; false for one without a handler.
    bool validateUserInterfaceItem(const QString &selector) const;
    /// Sets what is asked before any command is carried out: none is while it says no.
    void setGate(Rule mayPerform) { mayPerform_ = std::move(mayPerform); }
    /// Carries the command out if it is enabled, and the gate is open. @return whether it was. One that runs
    /// out of memory ends there.
    bool perform(const QString &selector, QObject *sender = nullptr) const;
    /// Says who is told that a command ended for want of memory.
    void setWhenOutOfMemory(std::function<void()> tell) { whenOutOfMemory_ = std::move(tell); }
    /// The commands with a handler, in the order of actionDescriptions().
    std::vector<const ActionDescription *> handled() const;

private:
    struct Entry {
        Handler handler;
        Rule isEnabled;
    };
    std::map<QString, Entry> entries_;
    Rule mayPerform_;
    std::function<void()> whenOutOfMemory_;
};

}  // namespace leafwright
