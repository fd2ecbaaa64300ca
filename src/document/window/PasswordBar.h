#pragma once

#include <QFrame>

class QLabel;
class QLineEdit;

namespace leafwright {

/// The bar above the pages that asks for the password of a locked file, until it is the right one. It does
/// not know which is. What was typed stands in its field alone, and not even there when the bar has gone.
class PasswordBar final : public QFrame {
    Q_OBJECT

public:
    explicit PasswordBar(QWidget *parent = nullptr);

    /// Shows the bar, with the keyboard for its field, and tells assistive programs.
    void open();
    bool isOpen() const { return !isHidden(); }
    /// Hides the bar, and forgets what was typed.
    void dismiss();
    /// Says why what was typed does not do, and waits for something else. Plain text.
    void refuse(const QString &reason);

Q_SIGNALS:
    /// Somebody has typed a password, which may be the wrong one.
    void entered(const QString &password);

private:
    void enter();

    QLabel *text_;
    QLineEdit *field_;
    QLabel *refusal_;
};

}  // namespace leafwright
