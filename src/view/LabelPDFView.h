#pragma once

#include "pageview/PDFView.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <optional>

class QMimeData;

namespace leafwright {

/// A document window's page view: a badge with its label on every page, and a target icon at the spot that
/// was picked last. A double click picks a spot and starts a drag of it (see SpotArchive.h), to be dropped on
/// the outline; the icon can be dragged there later, too. Escape takes it away.
class LabelPDFView : public PDFView {
    Q_OBJECT

public:
    explicit LabelPDFView(QWidget *parent = nullptr);

    /// The corner that the badge is in: "Q1" (top right), "Q2" (top left), "Q3" (bottom left) or "Q4" (bottom
    /// right), or "None" for neither badge nor icon. "Q1" at the start. Setting doesn't redraw, see
    /// setNeedsDisplay().
    const QString &pageLabelLocation() const { return pageLabelLocation_; }
    void setPageLabelLocation(const QString &location) { pageLabelLocation_ = location; }
    /// The spot that shows the icon, as an archive; null for none, as at the start. Setting doesn't redraw.
    const QByteArray &iconLocationData() const { return iconLocationData_; }
    void setIconLocationData(const QByteArray &archive) { iconLocationData_ = archive; }
    /// Draws all pages anew, soon.
    void setNeedsDisplay() { viewport()->update(); }

    const QImage &targeticon() const { return targeticon_; }
    /// What may become of a spot that is dragged: it is copied, wherever it goes.
    static constexpr Qt::DropActions draggingSessionSourceOperationMask() { return Qt::CopyAction; }

protected:
    void drawPage(QPainter &painter, const PDFPage &page) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

    /// Starts a drag and returns when it is over. @param mimeData the spot; the drag owns it from then on
    /// @param hotSpot where the mouse holds the image, from its top left
    virtual void dragImage(const QImage &image, const QPoint &hotSpot, QMimeData *mimeData);

private:
    void awakeFromNib();
    void pickSpot(const QPointF &viewPoint);
    bool isOnIcon(const QPointF &viewPoint) const;
    void dragSpot();

    QString pageLabelLocation_ = QStringLiteral("Q1");
    QByteArray iconLocationData_;
    QImage targeticon_;
    std::optional<QPoint> iconHeldAt_;  ///< Where the icon was pressed that is not dragged yet.
};

}  // namespace leafwright
