#pragma once

#include <QDialog>

#include <functional>

class QDialogButtonBox;
class QFormLayout;
class QPushButton;

namespace leafwright {

/// A dialog that belongs to one window and blocks only that. Its buttons carry tags; the one that ends the
/// sheet says by its tag what is to be done. 0 is cancel, as are Escape and the window's close button.
class Sheet : public QDialog {
    Q_OBJECT

public:
    using DidEnd = std::function<void(int returnCode)>;

    explicit Sheet(const QString &title, QWidget *parent = nullptr);

    /// Adds a sentence above what is added next.
    void addText(const QString &text);
    /// Adds an input, owned by the sheet from then on. @param label what people see beside it; "" for none,
    /// which leaves it in line with the other inputs
    /// @param name the outlet's name, by which field() finds it
    void addField(const QString &label, QWidget *input, const QString &name);
    /// Adds a button that ends the sheet. The first with a tag other than 0 is what Return presses.
    QPushButton *addButton(const QString &title, int tag);
    /// Where inputs go, for a sheet that arranges more than lines.
    QFormLayout *form() const { return form_; }

    /// Whether Escape and the close button cancel; off for a sheet that shows the progress of what can't be
    /// stopped. On at the start.
    void setCancellable(bool cancellable) { cancellable_ = cancellable; }

    /// Shows the sheet on a window, which owns it from then on, and returns at once. A sheet that is open
    /// stays as it is. @param didEnd called once, when the sheet is hidden again; it may begin the next
    void begin(QWidget *window, DidEnd didEnd);
    /// The same for a sheet that stands within a window, wherever it was put. It gets the keyboard, and
    /// blocks nothing.
    void beginInPlace(DidEnd didEnd);
    /// Ends the sheet with a return code; without effect if it is not open.
    void end(int returnCode);
    /// Ends the sheet with the tag of the button that asks for it.
    void endWithTagOf(const QObject *sender);
    /// Presses the button with a tag, as a hand would. @return false if there is none that can be pressed
    bool pressButton(int tag);

    /// The input of an outlet name; null if there is none.
    QWidget *field(const QString &name) const { return findChild<QWidget *>(name); }

    void reject() override;

private:
    void callDidEnd(int returnCode);

    QFormLayout *form_;
    QDialogButtonBox *buttons_;
    DidEnd didEnd_;
    bool cancellable_ = true;
};

/// The tag of a button or another control; 0 if it has none.
int tagOf(const QObject *control);
void setTag(QObject *control, int tag);

}  // namespace leafwright
