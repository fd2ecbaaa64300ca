#include "document/commands/EditMenuCommands.h"

#include "document/MyDocument.h"
#include "document/window/DocumentWindow.h"
#include "outlineview/OKNSOutlineView.h"
#include "view/LabelPDFView.h"

namespace leafwright {

EditMenuCommands::EditMenuCommands(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    actions.handle("undo:", [this](QObject *) { document_.undoManager().undo(); });
    actions.handle("redo:", [this](QObject *) { document_.undoManager().redo(); });
    actions.handle("copy:", [this](QObject *) { copy(); });
}

void EditMenuCommands::copy() {
    const QWidget *focus = document_.myWindow()->focusWidget();
    if (focus == document_.pdfview()) document_.pdfview()->copy();
    if (focus == document_.outlineview()) document_.outlineview()->copy(nullptr);
}

}  // namespace leafwright
