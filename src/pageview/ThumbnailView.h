#pragma once

#include "pageview/PDFView.h"

#include <QListView>
#include <QPointer>

namespace leafwright {

/// Small images of all pages of the document that a page view shows, with the page's label below each.
/// The current page is marked and kept in view; choosing a page goes there. Images are drawn on the page
/// view's threads, when they are about to be seen and the page view needs nothing.
class ThumbnailView final : public QListView {
    Q_OBJECT

public:
    explicit ThumbnailView(QWidget *parent = nullptr);
    ~ThumbnailView() override;

    /// Follows a page view and its document. @param view not owned; null to follow none
    void setPDFView(PDFView *view);
    PDFView *pdfView() const { return view_; }

    /// How many columns there are at most; 0 stands for as many as fit. One at first.
    int maximumNumberOfColumns() const { return maximumColumns_; }
    void setMaximumNumberOfColumns(int columns);
    /// The size that images fit in, in points, which are pixels here. 100 by 130 at first. Where the view is
    /// narrower, they fit in its width.
    QSizeF thumbnailSize() const { return thumbnailSize_; }
    void setThumbnailSize(const QSizeF &size);
    QFont labelFont() const { return labelFont_; }
    void setLabelFont(const QFont &font);

    /// The bytes that the images take at the moment, and how many they may.
    qint64 imageBytes() const { return images_.bytes(); }
    qint64 imageCapacity() const { return images_.capacity(); }
    /// The image of a page; null until it is drawn. @param index 0-based, within range
    QImage thumbnail(int index);
    /// The size at which a page is shown, in pixels. @param index 0-based, within range
    QSize paperSize(int index) const;

Q_SIGNALS:
    /// All thumbnails that can be seen are drawn.
    void visibleThumbnailsRendered();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;
    void initViewItemOption(QStyleOptionViewItem *option) const override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    const PDFDocument *document() const;
    void takeDocument();
    void followPage();
    void choosePage(int index);
    void layOut();
    double pageScale(int index) const;
    RenderRequest requestFor(int index) const;
    std::pair<int, int> visibleRows() const;
    void scheduleRequests();
    void updateRequests();
    void takeResult(const PageResult &result);

    QPointer<PDFView> view_;
    PageImageCache images_;
    QSizeF thumbnailSize_{100, 130};
    QSizeF place_;        ///< What images fit in, given the width of the view.
    double tallest_ = 0;  ///< The greatest ratio of height to width among the pages.
    QFont labelFont_;
    int maximumColumns_ = 1;
    bool following_ = false;  ///< While the page view sets the current page.
    bool rendered_ = false;
    bool requestsScheduled_ = false;
};

}  // namespace leafwright
