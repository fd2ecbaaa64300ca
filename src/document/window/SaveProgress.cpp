#include "document/window/SaveProgress.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace leafwright {

namespace {

constexpr int sheetWidth = 360;
constexpr qint64 frame = 15;  // milliseconds: drawing more often than a screen shows only delays the writing

}  // namespace

SaveProgress::~SaveProgress() {
    delete saveWindow_;
}

void SaveProgress::makeSheet() {
    saveWindow_ = new QDialog(window_, Qt::Sheet);
    saveWindow_->setObjectName(QStringLiteral("_saveWindow"));
    saveWindow_->setWindowModality(Qt::WindowModal);
    saveWindow_->setWindowTitle(QObject::tr("Saving"));
    auto *text = new QLabel(text_);
    text->setObjectName(QStringLiteral("savePDFProgressPanelText"));
    saveProgressBar_ = new QProgressBar;
    saveProgressBar_->setObjectName(QStringLiteral("_saveProgressBar"));
    saveProgressBar_->setAccessibleName(text_);
    auto *layout = new QVBoxLayout(saveWindow_);
    layout->addWidget(text);
    layout->addWidget(saveProgressBar_);
    saveWindow_->setFixedSize(sheetWidth, saveWindow_->sizeHint().height());
}

void SaveProgress::documentBeginWrite(int pageCount) {
    delete saveWindow_;
    makeSheet();
    saveProgressBar_->setRange(0, pageCount);
    saveProgressBar_->setValue(0);
    saveWindow_->show();
    drawAtOnce();
}

void SaveProgress::documentEndPageWrite(int pageIndex) {
    saveProgressBar_->setValue(pageIndex);
    if (sinceDrawn_.elapsed() >= frame) drawAtOnce();
}

void SaveProgress::documentEndWrite() {
    delete saveWindow_;
}

void SaveProgress::drawAtOnce() {
    // The window system's answers (that the sheet is on the screen, say) come as events; the user's wait.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    if (saveWindow_) saveWindow_->repaint();
    sinceDrawn_.start();
}

}  // namespace leafwright
