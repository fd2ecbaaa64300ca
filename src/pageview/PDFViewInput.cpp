#include "pageview/PDFView.h"
#include "pageview/PDFViewTextDrag.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyleHints>
#include <QTimerEvent>

#include <cmath>

namespace leafwright {

namespace {

constexpr double zoomOfWheelNotch = 1.2;
constexpr double degreesOfWheelNotch = 120;  // in eighths

/// How often pages move on while text is dragged over beyond the view, and how far for each pixel beyond it.
constexpr int autoScrollMilliseconds = 30;
constexpr double autoScrollSpeed = 0.5;

/// Whether a key leads to a place that was left: back is -1, forward 1, any other key 0.
int stepInHistory(const QKeyEvent &event) {
    const bool alt = (event.modifiers() & ~Qt::KeypadModifier) == Qt::AltModifier;
    if ((alt && event.key() == Qt::Key_Left) || event.key() == Qt::Key_Back) return -1;
    return (alt && event.key() == Qt::Key_Right) || event.key() == Qt::Key_Forward ? 1 : 0;
}

bool isFarApart(const QPoint &a, const QPoint &b) {
    return (a - b).manhattanLength() >= QApplication::startDragDistance();
}

}  // namespace

bool PDFView::viewportEvent(QEvent *event) {
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick) {
        auto &click = *static_cast<QMouseEvent *>(event);
        countClick(click);
        // Qt calls every other one of quick clicks a double click.
        if (event->type() == QEvent::MouseButtonDblClick && clickCount_ != 2) {
            mousePressEvent(&click);
            return true;
        }
    } else if (event->type() == QEvent::Leave) {
        pointerPage_.reset();
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void PDFView::countClick(const QMouseEvent &event) {
    const auto interval = static_cast<quint64>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    const QPoint place = event.position().toPoint();
    const bool addsUp = event.button() == clickButton_ && event.timestamp() - clickTime_ <= interval &&
                        !isFarApart(place, clickedAt_);
    const int before = addsUp ? clickCount_ : 0;
    // Whether two clicks belong together, the window system has decided.
    clickCount_ = event.type() == QEvent::MouseButtonDblClick ? std::max(before, 1) + 1 : before + 1;
    clickButton_ = event.button();
    clickTime_ = event.timestamp();
    clickedAt_ = place;
}

void PDFView::mousePressEvent(QMouseEvent *event) {
    if (event->button() == Qt::BackButton) goBack();
    if (event->button() == Qt::ForwardButton) goForward();
    if (event->button() == Qt::MiddleButton && !isEmpty()) {
        pulledFrom_ = event->position().toPoint();
        viewport()->setCursor(Qt::ClosedHandCursor);
    }
    if (event->button() != Qt::LeftButton || isEmpty()) return;
    if (clickCount_ > 2) {
        ask(Awaited::Line, pagePointNear(event->position()));
    } else {
        press(event->position().toPoint(), event->modifiers().testFlag(Qt::ShiftModifier));
    }
}

void PDFView::press(const QPoint &viewPoint, bool extend) {
    const PagePoint place = pagePointNear(viewPoint);
    pressedAt_ = viewPoint;
    pointer_ = viewPoint;
    awaited_ = Awaited::None;
    if (extend && currentSelection_) {
        gesture_ = Gesture::Selecting;
        dragSelectionTo(viewPoint);
    } else if (isOnSelection(place)) {
        gesture_ = Gesture::OnSelection;
    } else {
        gesture_ = Gesture::Click;
        dragIsOpen_ = false;
        anchor_ = head_ = place;
        requestContents();
    }
}

void PDFView::mouseMoveEvent(QMouseEvent *event) {
    if (isEmpty()) return;
    pointer_ = event->position().toPoint();
    if (event->buttons().testFlag(Qt::MiddleButton)) return pullTo(pointer_);
    if (!event->buttons().testFlag(Qt::LeftButton)) {
        pointAt(event->position());
        return;
    }
    const bool moved = isFarApart(pointer_, pressedAt_);
    if (gesture_ == Gesture::OnSelection && moved) {
        gesture_ = Gesture::None;
        if (currentSelection_) dragText(currentSelection_->string());
        return;
    }
    if (gesture_ == Gesture::Click && moved) gesture_ = Gesture::Selecting;
    if (gesture_ != Gesture::Selecting) return;
    dragSelectionTo(event->position());
    if (viewport()->rect().contains(pointer_)) {
        autoScrollTimer_.stop();
    } else if (!autoScrollTimer_.isActive()) {
        autoScrollTimer_.start(autoScrollMilliseconds, this);
    }
}

/// Takes the pages along with the pointer.
void PDFView::pullTo(const QPoint &viewPoint) {
    if (!pulledFrom_) return;
    const QPoint way = viewPoint - *pulledFrom_;
    pulledFrom_ = viewPoint;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - way.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - way.y());
}

void PDFView::mouseReleaseEvent(QMouseEvent *event) {
    if (event->button() == Qt::MiddleButton && pulledFrom_) {
        pulledFrom_.reset();
        pointAt(event->position());
    }
    if (event->button() != Qt::LeftButton || isEmpty()) return;
    autoScrollTimer_.stop();
    const Gesture gesture = std::exchange(gesture_, Gesture::None);
    if (gesture == Gesture::Click || gesture == Gesture::OnSelection) clearSelection();
    if (gesture == Gesture::Click) ask(Awaited::Link, anchor_);
}

void PDFView::mouseDoubleClickEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton) {
        mousePressEvent(event);
    } else if (!isEmpty()) {
        ask(Awaited::Word, pagePointNear(event->position()));
    }
}

void PDFView::timerEvent(QTimerEvent *event) {
    if (event->timerId() != autoScrollTimer_.timerId()) {
        QAbstractScrollArea::timerEvent(event);
        return;
    }
    const QRect view = viewport()->rect();
    const auto beyond = [](int position, int low, int high) {
        return static_cast<int>(autoScrollSpeed *
                                (std::max(0, position - high) - std::max(0, low - position)));
    };
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() +
                                    beyond(pointer_.x(), view.left(), view.right()));
    verticalScrollBar()->setValue(verticalScrollBar()->value() +
                                  beyond(pointer_.y(), view.top(), view.bottom()));
    if (!isEmpty()) dragSelectionTo(pointer_);
}

/// Does what a click asks for, at once or when the page has been read.
void PDFView::ask(Awaited awaited, const PagePoint &place) {
    awaited_ = awaited;
    awaitedPoint_ = place;
    answer();
    if (awaited_ != Awaited::None) requestContents();
}

void PDFView::answer() {
    const auto contents = awaited_ == Awaited::None ? nullptr : contentsOf(awaitedPoint_.pageIndex);
    if (!contents) return;
    const PDFPage &asked = page(awaitedPoint_.pageIndex);
    const QPointF point = awaitedPoint_.point;
    const Awaited awaited = std::exchange(awaited_, Awaited::None);
    if (awaited == Awaited::Link) {
        if (const auto link = linkAt(convertPointFromPage(point, asked))) follow(*link);
        return;
    }
    PDFSelection selection;
    selection.add(asked,
                  awaited == Awaited::Word ? contents->text.wordAt(point) : contents->text.lineAt(point));
    setCurrentSelection(selection);
}

void PDFView::follow(const PDFLink &link) {
    if (link.destination) {
        goToDestination(*link.destination);
    } else {
        Q_EMIT linkClicked(link.uri);
    }
}

/// Notes what the pointer is over, and shows it.
void PDFView::pointAt(const QPointF &viewPoint) {
    const PDFPage *const under = pageForPoint(viewPoint, false);
    const auto contents = under ? contentsOf(under->index()) : nullptr;
    pointerPage_ = under ? std::optional(under->index()) : std::nullopt;
    if (linkAt(viewPoint)) {
        viewport()->setCursor(Qt::PointingHandCursor);
    } else if (contents && contents->text.hasTextAt(convertPointToPage(viewPoint, *under))) {
        viewport()->setCursor(Qt::IBeamCursor);
    } else {
        viewport()->unsetCursor();
    }
    if (under && !contents) requestContents();
}

void PDFView::dragText(const QString &text) {
    textDrag_->exec(text);
}

void PDFView::wheelEvent(QWheelEvent *event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    autoScales_ = false;
    const double notches = event->angleDelta().y() / degreesOfWheelNotch;
    applyScale(layout_.scale() * std::pow(zoomOfWheelNotch, notches), event->position());
    event->accept();
}

bool PDFView::event(QEvent *event) {
    if (event->type() == QEvent::ShortcutOverride && stepInHistory(*static_cast<QKeyEvent *>(event)) != 0) {
        event->accept();
        return true;
    }
    // What is selected looks otherwise then.
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) viewport()->update();
    return QAbstractScrollArea::event(event);
}

void PDFView::keyPressEvent(QKeyEvent *event) {
    if (event->matches(QKeySequence::Copy)) {
        copy();
        return;
    }
    if (const int step = stepInHistory(*event); step != 0) {
        step < 0 ? goBack() : goForward();
        return;
    }
    const bool control = event->modifiers().testFlag(Qt::ControlModifier);
    QScrollBar *const bar = verticalScrollBar();
    switch (event->key()) {
        case Qt::Key_Space:
            bar->triggerAction(event->modifiers().testFlag(Qt::ShiftModifier)
                                   ? QAbstractSlider::SliderPageStepSub
                                   : QAbstractSlider::SliderPageStepAdd);
            return;
        case Qt::Key_Home:
            control ? goToFirstPage() : goToPage(currentPage());
            return;
        case Qt::Key_End:
            if (control) {
                bar->setValue(bar->maximum());
            } else if (!isEmpty()) {
                const QRect rect = pageRectInView(currentPageIndex());
                bar->setValue(bar->value() + rect.bottom() + 1 + PageLayout::gap - viewport()->height());
            }
            return;
        case Qt::Key_Left:
        case Qt::Key_Right:
            if (horizontalScrollBar()->maximum() > 0) break;
            event->key() == Qt::Key_Left ? goToPreviousPage() : goToNextPage();
            return;
        default:
            break;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

}  // namespace leafwright
