#include "document/window/HeadingMapView.h"

#include "widgets/DimmedSelection.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

namespace leafwright {

namespace {

constexpr int breathingSpace = 6;  // pixels between the texts of two rows

/// The level that a key stands for; 0 for all other keys.
int levelOf(const QKeyEvent &event) {
    const bool isPlain = (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const int digit = event.key() - Qt::Key_0;
    return isPlain && digit >= 1 && digit <= 9 ? digit : 0;
}

bool isDelete(const QKeyEvent &event) {
    return event.key() == Qt::Key_Delete && event.modifiers() == Qt::NoModifier;
}

}  // namespace

HeadingMapView::HeadingMapView(QWidget *parent) : QTableView(parent) {
    setAccessibleName(tr("Heading map"));
    setSelectionBehavior(SelectRows);
    setEditTriggers(EditKeyPressed | SelectedClicked);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + breathingSpace);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

bool HeadingMapView::event(QEvent *event) {
    if (event->type() == QEvent::ShortcutOverride && isDelete(*static_cast<QKeyEvent *>(event))) {
        event->accept();
        return true;
    }
    return QTableView::event(event);
}

void HeadingMapView::keyPressEvent(QKeyEvent *event) {
    // What the editor of a cell has no use for comes here, too: Return, which ends it.
    if (state() == EditingState) return QTableView::keyPressEvent(event);
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isDelete(*event)) {
        Q_EMIT deletionRequested();
    } else if (const int level = levelOf(*event); level > 0) {
        Q_EMIT levelRequested(level);
    } else if (isReturn && currentIndex().isValid()) {
        Q_EMIT occurrenceRequested(currentIndex().row());
    } else {
        QTableView::keyPressEvent(event);
    }
}

void HeadingMapView::mouseDoubleClickEvent(QMouseEvent *event) {
    QTableView::mouseDoubleClickEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid()) Q_EMIT occurrenceRequested(index.row());
}

void HeadingMapView::initViewItemOption(QStyleOptionViewItem *option) const {
    QTableView::initViewItemOption(option);
    dimSelection(*option);
}

void HeadingMapView::paintEvent(QPaintEvent *event) {
    QTableView::paintEvent(event);
    if (!model() || model()->rowCount() > 0) return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int margin = fontMetrics().height();
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignCenter | Qt::TextWordWrap,
                     tr("No font counts as that of headings. Select text of a heading on the page and choose "
                        "Contents > Use Selection for H1, or load a map."));
}

}  // namespace leafwright
