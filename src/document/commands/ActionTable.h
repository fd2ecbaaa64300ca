#pragma once

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

/// What must be there for a command to be enabled.
enum class Needs {
    Nothing,
    Entries,     ///< Selected ones.
    OneEntry,    ///< A single selected one.
    OneParent,   ///< One selected entry, with others below it.
    Text,        ///< Selected text.
    PageBehind,  ///< A page to go back to.
    PageAhead,
    StepBehind,         ///< A change to take back, in an outline that may be edited.
    StepAhead,          ///< One to do again.
    RoomForProposal,    ///< An outline that may be edited, for which nothing is proposed yet.
    EntriesToComplete,  ///< The same, with entries.
    AnyEntries,         ///< Selected or not.
    EditableOutline,    ///< An outline that may be edited.
};

/// Where commands are offered besides the menu bar: the menus of the second mouse button.
enum class Place { OnEntries, BesideEntries, OnText, OnPages, OnThumbnails, OnMapRows };

/// A command: how it looks, wherever it is shown, what it needs, and whether it asks something first.
struct ActionDescription {
    enum Mark : unsigned {
        StartsGroup = 1,  ///< A separator stands before it in its menu.
        InToolBar = 2,
        HasSheet = 4,  ///< It opens a sheet of its own, which asks how it is to be done.
    };

    const char *selector = "";  ///< The command's identity: "moveLeft:".
    Menu menu = Menu::None;     ///< None for commands that no menu lists.
    const char *title = "";     ///< Untranslated; an ellipsis at the end if the command asks something first.
    const char *shortcut = "";  ///< In portable text, such as "Ctrl+O"; empty for none.
    unsigned marks = 0;         ///< Those that it has, added up.
    Needs needs = Needs::Nothing;

    bool has(Mark mark) const { return (marks & mark) != 0; }
};

/// Every command there is, menu by menu in the order of the menus.
std::span<const ActionDescription> actionDescriptions();
/// Null if there is no such command.
const ActionDescription *actionDescription(const QString &selector);
/// The selectors of the commands that a place offers, in its order; an empty one stands between groups.
std::span<const char *const> commandsIn(Place place);
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
    using Condition = std::function<bool(Needs)>;

    /// Says what a command does. The selector must be one of actionDescriptions(), and be handled once only;
    /// throws std::logic_error otherwise.
    void handle(const char *selector, Handler handler);
    /// Says who knows whether what a command needs is there. Never asked for Needs::Nothing.
    void setCondition(Condition isThere) { isThere_ = std::move(isThere); }

    /// Says who knows whether a command that turns something on and off has it on now. Of a handled command.
    void setState(const char *selector, Rule isOn);
    /// Whether what the command turns on and off is on; absent for all other commands.
    std::optional<bool> isOn(const QString &selector) const;

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
        Needs needs;
        Rule isOn = {};
    };
    std::map<QString, Entry> entries_;
    Condition isThere_;
    Rule mayPerform_;
    std::function<void()> whenOutOfMemory_;
};

}  // namespace leafwright
