#pragma once

#include "pdf/PDFDocument.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>
#include <QProgressBar>

namespace leafwright {

/// Shows a sheet with a bar that moves while a document is written. The main thread is busy with the writing,
/// so the sheet is drawn at once rather than when events are next handled.
class SaveProgress : public PDFWriteObserver {
public:
    /// @param window the sheet's parent; it must outlive this
    explicit SaveProgress(QWidget *window) : window_(window) {}
    ~SaveProgress() override;

    /// What the sheet says while the next document is written.
    void setText(const QString &text) { text_ = text; }

    void documentBeginWrite(int pageCount) override;
    void documentEndPageWrite(int pageIndex) override;
    void documentEndWrite() override;

    /// Null unless a document is being written.
    QDialog *saveWindow() const { return saveWindow_; }
    QProgressBar *saveProgressBar() const { return saveProgressBar_; }

private:
    void makeSheet();
    void drawAtOnce();

    QWidget *window_;
    QString text_;
    QPointer<QDialog> saveWindow_;
    QPointer<QProgressBar> saveProgressBar_;
    QElapsedTimer sinceDrawn_;
};

}  // namespace leafwright
