#pragma once

#include "platform/Platform.h"

#include <QFileDialog>

namespace leafwright {

/// The dialog that shows a FilePanel: the desktop's own, unless the panel wants what only Qt's can do. In a
/// sandbox it is always the desktop's, through its portal, which alone can let the program use what is
/// chosen; there it has no message, and restricts nothing.
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
    bool isPortals_;  ///< Whether the desktop shows it from outside of the sandbox that we are in.
};

}  // namespace leafwright
