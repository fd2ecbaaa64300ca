#include "document/window/HeadingMapView.h"

#include "document/window/HeadingMapModel.h"
#include "widgets/DimmedSelection.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace leafwright {

namespace {

constexpr int breathingSpace = 6;  // pixels between the texts of two rows

/// The level that a key stands for; 0 for all other keys.
int levelOf(const QKeyEvent &event) {
    const bool isPlain = (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const int digit = event.key() - Qt::Key_0;
    return isPlain && digit >= 1 && digit <= 9 ? digit : 0;
}

bool isPlain(const QKeyEvent &event, Qt::Key key) {
    return event.key() == key && event.modifiers() == Qt::NoModifier;
}

bool isDelete(const QKeyEvent &event) {
    return isPlain(event, Qt::Key_Delete);
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
    setPlaceholderText({});
}

void HeadingMapView::setPlaceholderText(const QString &text) {
    placeholderText_ = !text.isNull()
                           ? text
                           : tr("No font counts as that of headings. Select text of a heading on "
                                "the page and choose Contents > Use Selection for H1, or load a map.");
    describe();
    viewport()->update();
}

void HeadingMapView::reset() {
    QTableView::reset();
    describe();
}

void HeadingMapView::describe() {
    setAccessibleDescription(model() && model()->rowCount() > 0 ? QString() : placeholderText_);
}

bool HeadingMapView::event(QEvent *event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (isDelete(*key) || key->matches(QKeySequence::SelectAll)) {
            event->accept();
            return true;
        }
    }
    return QTableView::event(event);
}

QModelIndex HeadingMapView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const int rows = model() ? model()->rowCount() : 0;
    if ((action != MoveHome && action != MoveEnd) || rows == 0)
        return QTableView::moveCursor(action, modifiers);
    return model()->index(action == MoveHome ? 0 : rows - 1, std::max(currentIndex().column(), 0));
}

void HeadingMapView::editLevel(const QModelIndex &row) {
    const QModelIndex cell = row.siblingAtColumn(HeadingMapModel::LevelColumn);
    selectionModel()->setCurrentIndex(cell, QItemSelectionModel::NoUpdate);
    edit(cell);
}

void HeadingMapView::keyPressEvent(QKeyEvent *event) {
    // What the editor of a cell has no use for comes here, too: Return, which ends it.
    if (state() == EditingState) return QTableView::keyPressEvent(event);
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isDelete(*event)) {
        Q_EMIT deletionRequested();
    } else if (const int level = levelOf(*event); level > 0) {
        Q_EMIT levelRequested(level);
    } else if (isPlain(*event, Qt::Key_F2) && currentIndex().isValid()) {
        editLevel(currentIndex());
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
                     Qt::AlignCenter | Qt::TextWordWrap, placeholderText_);
}

}  // namespace leafwright
