#include "system/Document.h"

#include <QFileInfo>
#include <QPointer>

namespace leafwright {

thread_local std::vector<Document *> Document::busyDocuments_;

QString Document::displayName() const {
    return QFileInfo(fileURL()).fileName();
}

void Document::whenIdle(std::function<void()> function) {
    if (!isBusy() && waiting_.empty()) return function();
    waiting_.push_back(std::move(function));
}

void Document::whenNoneIsBusy(std::function<void()> function) {
    if (busyDocuments_.empty()) return function();
    busyDocuments_.front()->whenIdle([function = std::move(function)] { whenNoneIsBusy(function); });
}

void Document::beginBusy() {
    if (++busy_ == 1) busyDocuments_.push_back(this);
}

void Document::endBusy() {
    if (--busy_ > 0) return;
    std::erase(busyDocuments_, this);
    // Not from within the call that ends here: who made it may not expect more to happen.
    if (!waiting_.empty()) QMetaObject::invokeMethod(this, &Document::callWaiting, Qt::QueuedConnection);
}

void Document::callWaiting() {
    while (!isBusy() && !waiting_.empty()) {
        const std::function<void()> function = std::move(waiting_.front());
        waiting_.pop_front();
        function();
    }
}

int Document::runModal(Alert alert) {
    const Busy busy(*this);
    alert.title = displayName();
    return platform_.runModal(alert);
}

std::optional<QString> Document::runOpenPanel(const FilePanel &panel) {
    const Busy busy(*this);
    return platform_.runOpenPanel(panel);
}

std::optional<QString> Document::runSavePanel(const FilePanel &panel) {
    const Busy busy(*this);
    return platform_.runSavePanel(panel);
}

void Document::performAfterDelay(int milliseconds, std::function<void()> function) {
    platform_.performAfterDelay(milliseconds, this, [this, function = std::move(function)] {
        whenNoneIsBusy([self = QPointer(this), function] {
            if (self) function();
        });
    });
}

Document::Closing Document::prepareToClose() {
    if (isBusy()) return Closing::Refused;
    if (!isDocumentEdited()) return Closing::Allowed;
    enum Answer { Save, Discard, Cancel };
    switch (runModal({tr("Do you want to save the changes to “%1”?").arg(displayName()),
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
