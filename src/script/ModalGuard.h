#pragma once

#include <QString>
#include <QTimer>

namespace leafwright::script {

/// Closes windows that would wait for a person, for as long as it lives. Commands ask through the platform or
/// by sheets, which a script answers; a dialog that runs by itself would hang it for ever.
class ModalGuard {
public:
    ModalGuard();

    /// The title of the first window that was closed; null if there was none.
    const QString &closed() const { return closed_; }

private:
    void closeModalWindow();

    QTimer timer_;
    QString closed_;
};

}  // namespace leafwright::script
