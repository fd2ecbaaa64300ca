#pragma once

#include <QObject>

class QAction;
class QMenu;

namespace leafwright {

class MyDocument;

/// Tells beforehand why a command would do nothing: in its tooltip, in the menus as well, and at the foot of
/// the window while it is looked at in a menu. Of other commands menus show no tooltip.
class RefusalTips final : public QObject {
    Q_OBJECT

public:
    /// @param document must outlive this
    explicit RefusalTips(const MyDocument &document) : document_(document) {}

    /// Has a menu show them, for all commands that come into it.
    void watch(QMenu &menu);
    void setFileIsReadOnly(bool isReadOnly) { fileIsReadOnly_ = isReadOnly; }
    /// Tells of a command as things are now. @param action bears its selector as its object name
    void update(QAction &action) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const MyDocument &document_;
    bool fileIsReadOnly_ = false;
};

}  // namespace leafwright
