#include "document/commands/EditMenuCommands.h"

#include "document/MyDocument.h"
#include "document/commands/StepCommands.h"
#include "document/window/DocumentWindow.h"
#include "outlineview/OKNSOutlineView.h"
#include "platform/Settings.h"
#include "platform/UserDefaults.h"
#include "texts/Translated.h"
#include "view/LabelPDFView.h"

#include <QKeySequence>

namespace leafwright {

namespace {

constexpr Translated translated{"EditMenuCommands"};

QString titleWithKeys(const char *selector) {
    const ActionDescription &command = *actionDescription(QString::fromLatin1(selector));
    const QKeySequence keys(QString::fromLatin1(command.shortcut));
    return QStringLiteral("%1 (%2)").arg(actionTitle(command), keys.toString(QKeySequence::NativeText));
}

}  // namespace

EditMenuCommands::EditMenuCommands(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    actions.handle("undo:", [this](QObject *) { undo(); });
    actions.handle("redo:", [this](QObject *) { redo(); });
    actions.handle("copy:", [this](QObject *) { copy(); });
}

void EditMenuCommands::undo() {
    if (document_.undoManager().canUndo()) return document_.undoManager().undo();
    insteadOf(&StepCommands::canStepBack, "stepBack:");
}

void EditMenuCommands::redo() {
    if (document_.undoManager().canRedo()) return document_.undoManager().redo();
    insteadOf(&StepCommands::canStepForward, "stepForward:");
}

void EditMenuCommands::insteadOf(bool (StepCommands::*canStep)() const, const char *selector) {
    if (!(document_.stepCommands().*canStep)()) return;
    const QString command = QString::fromLatin1(selector);
    if (document_.platform().userDefaults().boolForKey(setting::undoStepsBack)) {
        document_.actions().perform(command);
    } else {
        document_.tell(translated("“%1” takes changes of the outline back, “%2” does them again.")
                           .arg(titleWithKeys("stepBack:"), titleWithKeys("stepForward:")));
    }
}

void EditMenuCommands::copy() {
    const QWidget *focus = document_.myWindow()->focusWidget();
    if (focus == document_.pdfview()) document_.pdfview()->copy();
    if (focus == document_.outlineview()) document_.outlineview()->copy(nullptr);
}

}  // namespace leafwright
