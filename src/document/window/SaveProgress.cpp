#include "document/window/SaveProgress.h"

#include "widgets/BusySheet.h"

#include <QFormLayout>
#include <QLabel>
#include <QProgressBar>

namespace leafwright {

namespace {

constexpr int sheetWidth = 360;

}  // namespace

SaveProgress::~SaveProgress() {
    delete saveWindow_;
}

void SaveProgress::makeSheet() {
    saveWindow_ = new BusySheet(QObject::tr("Saving"), window_);
    saveWindow_->setObjectName(QStringLiteral("_saveWindow"));
    auto *text = new QLabel(text_);
    text->setObjectName(QStringLiteral("savePDFProgressPanelText"));
    saveProgressBar_ = new QProgressBar;
    saveProgressBar_->setObjectName(QStringLiteral("_saveProgressBar"));
    saveProgressBar_->setAccessibleName(text_);
    saveWindow_->form()->addRow(text);
    saveWindow_->form()->addRow(saveProgressBar_);
    saveWindow_->setFixedSize(sheetWidth, saveWindow_->sizeHint().height());
}

void SaveProgress::documentBeginWrite(int pageCount) {
    delete saveWindow_;
    makeSheet();
    saveProgressBar_->setRange(0, pageCount);
    saveProgressBar_->setValue(0);
    saveWindow_->begin(window_, [](int) {});
    saveWindow_->drawAtOnce();
}

void SaveProgress::documentEndPageWrite(int pageIndex) {
    if (!saveWindow_) return;
    saveProgressBar_->setValue(pageIndex);
    saveWindow_->drawIfDue();
}

void SaveProgress::documentEndWrite() {
    delete saveWindow_;
}

}  // namespace leafwright
