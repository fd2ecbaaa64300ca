#include "document/commands/StepCommands.h"

#include "document/MyDocument.h"
#include "document/window/DocumentWindow.h"
#include "outlineview/OKNSOutlineView.h"
#include "texts/Translated.h"

namespace leafwright {

namespace {

constexpr Translated translated{"StepCommands"};

QString titleOfRemoval(size_t count) {
    return count == 1 ? translated("Remove 1 Entry") : translated("Remove %1 Entries").arg(count);
}

}  // namespace

QString stepTitle(const OutlineEdits::Summary &step) {
    if (step.name == u"removeOutlineItems:" || step.name == u"removeNodeAtIndexPath:")
        return titleOfRemoval(step.itemsGone);
    if (step.name == u"setTitle") return translated("Edit Title");
    if (step.name == u"setPageLabel") return translated("Edit Page");
    if (step.name == u"acceptDrop:") return translated("Drop");
    if (step.name == u"recoverOutline") return translated("Recover Outline");
    const ActionDescription *command = actionDescription(step.name);
    QString title = command ? actionTitle(*command) : translated("Change");
    if (title.endsWith(u'…')) title.chop(1);
    return title;
}

StepCommands::StepCommands(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    actions.handle("stepBack:", [this](QObject *) { stepBack(); });
    actions.handle("stepForward:", [this](QObject *) { stepForward(); });
}

void StepCommands::stepBack() {
    const QString step = stepTitle(document_.edits().undoSummary());
    document_.edits().undo();
    document_.tell(translated("Taken back: %1").arg(step));
}

void StepCommands::stepForward() {
    const QString step = stepTitle(document_.edits().redoSummary());
    document_.edits().redo();
    document_.tell(translated("Done again: %1").arg(step));
}

bool StepCommands::mayEdit() const {
    return document_.allowTOCediting() && !document_.lockTOCediting();
}

bool StepCommands::canStepBack() const {
    return mayEdit() && document_.edits().canUndo();
}

bool StepCommands::canStepForward() const {
    return mayEdit() && document_.edits().canRedo();
}

}  // namespace leafwright
