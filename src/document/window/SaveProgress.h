#pragma once

#include "pdf/PDFDocument.h"
#include "widgets/BusySheet.h"

#include <QPointer>
#include <QProgressBar>

namespace leafwright {

/// Shows a sheet with a bar that moves while a document is written.
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
    BusySheet *saveWindow() const { return saveWindow_; }
    QProgressBar *saveProgressBar() const { return saveProgressBar_; }

private:
    void makeSheet();

    QWidget *window_;
    QString text_;
    QPointer<BusySheet> saveWindow_;
    QPointer<QProgressBar> saveProgressBar_;
};

}  // namespace leafwright
