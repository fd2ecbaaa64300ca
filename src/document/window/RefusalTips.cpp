#include "document/window/RefusalTips.h"

#include "document/MyDocument.h"
#include "document/commands/Refusals.h"

#include <QAction>
#include <QHelpEvent>
#include <QKeySequence>
#include <QMenu>
#include <QToolTip>

namespace leafwright {

namespace {

/// The command with its keys, for who looks at its picture.
QString nameWithKeys(const ActionDescription &description, const QAction &action) {
    const QString keys = action.shortcut().toString(QKeySequence::NativeText);
    const QString name = actionTitle(description);
    return keys.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, keys);
}

}  // namespace

void RefusalTips::watch(QMenu &menu) {
    menu.installEventFilter(this);
}

void RefusalTips::update(QAction &action) const {
    const ActionDescription *description = actionDescription(action.objectName());
    if (!description) return;
    const QString refusal = whyRefused(document_, *description, fileIsReadOnly_);
    action.setStatusTip(refusal);
    const QString name = nameWithKeys(*description, action);
    action.setToolTip(refusal.isEmpty() ? name : name + u'\n' + refusal);
}

bool RefusalTips::eventFilter(QObject *watched, QEvent *event) {
    auto *menu = qobject_cast<QMenu *>(watched);
    if (!menu || event->type() != QEvent::ToolTip) return QObject::eventFilter(watched, event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const QAction *action = menu->actionAt(help->pos());
    const QString tip = action ? action->statusTip() : QString();
    tip.isEmpty() ? QToolTip::hideText() : QToolTip::showText(help->globalPos(), tip, menu);
    return true;
}

}  // namespace leafwright
