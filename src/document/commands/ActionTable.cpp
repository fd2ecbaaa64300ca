#include "document/commands/ActionTable.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <string>

namespace leafwright {

const ActionDescription *actionDescription(const QString &selector) {
    const auto all = actionDescriptions();
    const auto found = std::ranges::find_if(
        all, [&](const ActionDescription &each) { return selector == QLatin1String(each.selector); });
    return found == all.end() ? nullptr : &*found;
}

void ActionTable::handle(const char *selector, Handler handler) {
    const QString key = QString::fromLatin1(selector);
    const ActionDescription *description = actionDescription(key);
    if (!description) throw std::logic_error(std::string("no such command: ") + selector);
    if (!entries_.try_emplace(key, Entry{std::move(handler), description->needs}).second)
        throw std::logic_error(std::string("handled twice: ") + selector);
}

void ActionTable::setState(const char *selector, Rule isOn) {
    entries_.at(QString::fromLatin1(selector)).isOn = std::move(isOn);
}

std::optional<bool> ActionTable::isOn(const QString &selector) const {
    const auto found = entries_.find(selector);
    if (found == entries_.end() || !found->second.isOn) return std::nullopt;
    return found->second.isOn();
}

bool ActionTable::isHandled(const QString &selector) const {
    return entries_.contains(selector);
}

bool ActionTable::validateUserInterfaceItem(const QString &selector) const {
    const auto found = entries_.find(selector);
    if (found == entries_.end()) return false;
    const Needs needs = found->second.needs;
    return needs == Needs::Nothing || !isThere_ || isThere_(needs);
}

bool ActionTable::perform(const QString &selector, QObject *sender) const {
    if ((mayPerform_ && !mayPerform_()) || !validateUserInterfaceItem(selector)) return false;
    // Copies: the command may close the document and the table with it.
    const Handler handler = entries_.at(selector).handler;
    const auto whenOutOfMemory = whenOutOfMemory_;
    try {
        handler(sender);
    } catch (const std::bad_alloc &) {
        if (!whenOutOfMemory) throw;
        whenOutOfMemory();
    }
    return true;
}

std::vector<const ActionDescription *> ActionTable::handled() const {
    std::vector<const ActionDescription *> result;
    for (const ActionDescription &description : actionDescriptions())
        if (isHandled(QString::fromLatin1(description.selector))) result.push_back(&description);
    return result;
}

}  // namespace leafwright
