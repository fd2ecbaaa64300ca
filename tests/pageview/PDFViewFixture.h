#pragma once

#include "pageview/PDFView.h"
#include "support/OpenPdf.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTest>

#include <gmock/gmock.h>

namespace leafwright::test {

/// A page view that notes which text would be dragged out of it.
class DraggedTextView final : public PDFView {
public:
    QStringList dragged;

protected:
    void dragText(const QString &text) override { dragged.append(text); }
};

/// The usual patience of these tests, in milliseconds; it is used up by failing ones alone.
constexpr int patience = 60'000;

/// A page view with a document, and a mouse for it.
class PDFViewFixture : public testing::Test {
protected:
    /// Opens a document in a view with a viewport of 640 by 400 pixels, at one pixel a point.
    void show(const PdfBuilder &pdf) {
        document = openPdf(pdf);
        view.setFrameShape(QFrame::NoFrame);
        view.resize(640, 400);
        view.show();
        view.resize(640 + view.width() - view.viewport()->width(),
                    400 + view.height() - view.viewport()->height());
        view.setDocument(document.get());
        ASSERT_EQ(view.viewport()->size(), QSize(640, 400));
        waitUntilRendered();
    }

    void waitUntilRendered() {
        ASSERT_TRUE(QTest::qWaitFor([this] { return view.visiblePagesAreRendered(); }, patience));
    }

    template <typename Condition>
    static void waitUntil(Condition condition) {
        ASSERT_TRUE(QTest::qWaitFor(condition, patience));
    }

    int scrollPosition() const { return view.verticalScrollBar()->value(); }
    int currentIndex() const { return view.currentPage() ? view.currentPage()->index() : -1; }
    const PDFPage &page(int index) const { return *document->page(index); }
    void picture() { view.viewport()->grab(); }
    QColor colourAt(const QPointF &viewPoint) { return colourOf(view, viewPoint); }
    /// The colour at a point of a view's viewport.
    static QColor colourOf(QAbstractScrollArea &area, const QPointF &viewPoint) {
        const QImage image = area.viewport()->grab().toImage();
        return image.pixelColor((viewPoint * image.devicePixelRatio()).toPoint()).toRgb();
    }
    QPoint at(double x, double y, int pageIndex = 0) const {
        return view.convertPointFromPage({x, y}, page(pageIndex)).toPoint();
    }
    QString selected() const {
        return view.currentSelection() ? view.currentSelection()->string() : QString();
    }

    /// Sends a mouse event. Time goes on by so much that clicks don't add up, unless `soon` says otherwise.
    void mouse(QEvent::Type type, const QPoint &point, Qt::MouseButtons held,
               Qt::KeyboardModifiers modifiers = {}, bool soon = false) {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, point, view.viewport()->mapToGlobal(point), button, held, modifiers);
        time += soon ? 1 : 10'000;
        event.setTimestamp(time);
        QApplication::sendEvent(view.viewport(), &event);
    }
    void press(const QPoint &point, Qt::KeyboardModifiers modifiers = {}) {
        mouse(QEvent::MouseButtonPress, point, Qt::LeftButton, modifiers);
    }
    void moveTo(const QPoint &point) { mouse(QEvent::MouseMove, point, Qt::LeftButton); }
    void release(const QPoint &point) { mouse(QEvent::MouseButtonRelease, point, {}); }
    void hover(const QPoint &point) { mouse(QEvent::MouseMove, point, {}); }
    void click(const QPoint &point, Qt::KeyboardModifiers modifiers = {}) {
        press(point, modifiers);
        release(point);
    }
    void drag(const QPoint &from, const QPoint &to) {
        press(from);
        moveTo((from + to) / 2);
        moveTo(to);
        release(to);
    }
    void doubleClick(const QPoint &point) {
        click(point);
        mouse(QEvent::MouseButtonDblClick, point, Qt::LeftButton, {}, true);
        mouse(QEvent::MouseButtonRelease, point, {}, {}, true);
    }
    void tripleClick(const QPoint &point) {
        doubleClick(point);
        mouse(QEvent::MouseButtonPress, point, Qt::LeftButton, {}, true);
        mouse(QEvent::MouseButtonRelease, point, {}, {}, true);
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&view, key, modifiers); }

    std::unique_ptr<PDFDocument> document;  // outlives the view
    DraggedTextView view;
    quint64 time = 1'000'000;
};

inline PdfBuilder numberedPages(int count) {
    PdfBuilder pdf;
    pdf.addNumberedPages(count);
    return pdf;
}

/// Small pages of which several can be seen at once.
inline PdfBuilder smallPages(int count) {
    PdfBuilder pdf;
    for (int i = 0; i < count; ++i)
        pdf.addPage({}, "/MediaBox [0 0 100 120]");
    return pdf;
}

/// A page whose content takes longer to draw than anybody waits.
inline std::string endlessContent() {
    std::string content;
    for (int i = 0; i < 300'000; ++i)
        content += "0 0 m 612 792 l 612 0 l 0 792 l f* ";
    return content;
}

}  // namespace leafwright::test
