#include "outlineview/OKNSOutlineView.h"

#include <QKeyEvent>

namespace leafwright {

OKNSOutlineView::OKNSOutlineView(QWidget *parent) : OutlineView(parent) {}

void OKNSOutlineView::copy(QObject * /*sender*/) {
    if (delegate()) delegate()->copySelectedItemsToClipboard(this);
}

void OKNSOutlineView::keyPressEvent(QKeyEvent *event) {
    if (event->matches(QKeySequence::Copy)) {
        // Qt's own copies the text of the current cell.
        copy(this);
        return;
    }
    OutlineView::keyPressEvent(event);
}

}  // namespace leafwright
