#pragma once

#include "platform/Platform.h"

#include <QFileDialog>

namespace leafwright {

/// The dialog that shows a FilePanel: the desktop's own, unless the panel wants what only Qt's can do.
class FilePanelDialog : public QFileDialog {
    Q_OBJECT

public:
    FilePanelDialog(const FilePanel &panel, QFileDialog::AcceptMode mode, QWidget *parent);

    /// The path chosen, once the dialog was accepted.
    QString chosenPath() const;

    void accept() override;

private:
    void restrictToEnabled();
    void proposeFolder(const QString &path);
    void showMessage();

    FilePanel panel_;
};

}  // namespace leafwright
