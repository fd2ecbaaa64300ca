#include "desktop/Document.h"

#include <QFileInfo>

namespace leafwright {

QString Document::displayName() const {
    return QFileInfo(fileURL()).fileName();
}

void Document::updateChangeCount(Change change) {
    const bool edited = change == Change::Done;
    if (edited == edited_) return;
    edited_ = edited;
    Q_EMIT editedChanged(edited_);
}

Document::Closing Document::prepareToClose() {
    if (!edited_) return Closing::Allowed;
    enum Answer { Save, Discard, Cancel };
    switch (platform_.runModal({tr("Do you want to save the changes to “%1”?").arg(displayName()),
                                tr("Your changes to the outline are lost if you don’t save them."),
                                {tr("Save"), tr("Discard"), tr("Cancel")}})) {
        case Save:
            return saveBeforeClosing() ? Closing::Allowed : Closing::Refused;
        case Discard:
            return Closing::Allowed;
        default:
            return Closing::Refused;
    }
}

}  // namespace leafwright
