#pragma once

#include "outlineview/OutlineView.h"

namespace leafwright {

/// The outline view of a document window: Copy copies the selected items.
class OKNSOutlineView : public OutlineView {
    Q_OBJECT

public:
    explicit OKNSOutlineView(QWidget *parent = nullptr);

    /// Has the delegate copy, with this view as the sender; does nothing without one.
    void copy(QObject *sender);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

}  // namespace leafwright
