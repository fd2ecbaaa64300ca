#pragma once

#include <QFrame>
#include <QPointer>

class QLabel;
class QLineEdit;
class QToolButton;

namespace leafwright {

/// The bar in a window that asks for a text to be found on the pages, and tells what came of it. It knows
/// nothing of pages. Return asks for the next place, with the Shift key for the one before; Escape closes.
class FindBar final : public QFrame {
    Q_OBJECT

public:
    explicit FindBar(QWidget *parent = nullptr);

    /// Shows the bar, with the keyboard for it and its text selected.
    /// @param text in place of the one that is there; empty to leave that
    void open(const QString &text);
    bool isOpen() const { return !isHidden(); }
    /// Hides the bar, and gives the keyboard back to who had it before.
    void dismiss();

    QString text() const;
    /// What is told beside the field.
    QString result() const;
    /// @param isFailure whether it is to be seen that nothing was found
    void setResult(const QString &result, bool isFailure);

Q_SIGNALS:
    /// Another text is asked for.
    void textChanged(const QString &text);
    void nextRequested();
    void previousRequested();
    void closed();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QToolButton *addButton(const QString &text, const QString &name, const QString &objectName);

    QLineEdit *field_;
    QLabel *result_;
    QPointer<QWidget> focusBefore_;
};

}  // namespace leafwright
