#pragma once

#include <QDialog>

class QCheckBox;
class QLabel;
class QVBoxLayout;

namespace leafwright {

class UserDefaults;

/// The settings that the user can change, in groups. Each control shows its setting as it is and changes it
/// at once; there is nothing to confirm.
class PreferencesWindow : public QDialog {
    Q_OBJECT

public:
    /// @param defaults must outlive the window
    explicit PreferencesWindow(UserDefaults &defaults);

    /// The control of what a double click in the outline does, and the text beside it that explains it.
    QCheckBox *doubleClickEditing() const { return doubleClickEditing_; }
    QLabel *labelDoubleClickEditingMessage() const { return labelDoubleClickEditingMessage_; }

private:
    QVBoxLayout *addGroup(const QString &title);
    QCheckBox *addCheckBox(QVBoxLayout *group, const QString &title, const QString &key);
    QLabel *addExplanation(QVBoxLayout *group, const QString &text);
    void addOpeningGroup();
    void addOutlineGroup();
    void addSavingGroup();
    void addContentsGroup();
    void addButtons();
    void restoreDefaults();

    UserDefaults &defaults_;
    QCheckBox *doubleClickEditing_ = nullptr;
    QLabel *labelDoubleClickEditingMessage_ = nullptr;
};

}  // namespace leafwright
