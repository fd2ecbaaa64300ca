#pragma once

#include <QWidget>

namespace leafwright {

class SplitView;

/// The handle between two panes of a split view. Arrow keys move it by 10 points (with Shift by 1), Home and
/// End as far as it goes.
class SplitViewDivider : public QWidget {
    Q_OBJECT

public:
    /// @param index 0-based, of the divider @param splitView the parent
    SplitViewDivider(int index, SplitView &splitView);

    /// Takes orientation and accessible name from the split view again.
    void refresh();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    double alongAxis(const QMouseEvent &event) const;
    void moveTo(double position);

    int index_;
    SplitView &splitView_;
    double grabbedAt_ = 0;  ///< From the divider's near edge to where the mouse holds it.
};

}  // namespace leafwright
