#pragma once

#include "app/Updater.h"

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace leafwright {

class Platform;

/// Shows a check for updates: that it is going on, and what it has found, with a button that opens the page
/// where the newer version can be had. That there is none, or no telling, is said in an alert.
class UpdateWindow : public QDialog {
    Q_OBJECT

public:
    /// Shows itself as soon as the updater checks. @param updater, platform must outlive the window
    UpdateWindow(Updater &updater, Platform &platform);

    /// Escape and the close button: ends the check, or leaves the newer version for later.
    void reject() override;

private:
    void showChecking(bool isChecking);
    void showUpdate(const AppcastItem &item);
    void showUpToDate();
    void showFailure(const QString &reason);
    void openDownloadPage();
    void comeToFront();

    Updater &updater_;
    Platform &platform_;
    QUrl downloadPage_;
    QLabel *headline_;
    QLabel *text_;
    QProgressBar *progress_;
    QPlainTextEdit *notes_;
    QPushButton *download_;
    QPushButton *close_;
};

}  // namespace leafwright
