#pragma once

#include "document/commands/ActionTable.h"
#include "model/OutlineEdits.h"

#include <QMainWindow>
#include <QTimer>

#include <memory>
#include <optional>

class QSplitter;
class QTableView;

namespace leafwright {

class CurrentEntry;
class DocumentController;
class DocumentStatusBar;
class FindBar;
class HeadingMapMarks;
class HeadingMapView;
class LabelPDFView;
class MyDocument;
class NoticeBars;
class OKNSOutlineView;
class OutlineFilter;
class PasswordBar;
class RefusalTips;
class Sheet;
class SplitView;
class ThumbnailView;

/// A document's window: thumbnails, the page, and the outline with the heading map below it, side by side;
/// menus and toolbar made from the document's action table.
class DocumentWindow : public QMainWindow {
    Q_OBJECT

public:
    // The least widths of the three panes, in points.
    static constexpr double thumbnailsMinimum = 200;
    static constexpr double pageMinimum = 400;
    static constexpr double outlineMinimum = 300;

    /// @param document must outlive the window
    explicit DocumentWindow(MyDocument &document);
    ~DocumentWindow() override;

    LabelPDFView *pdfview() const { return pdfview_; }
    ThumbnailView *pdfthumbs() const { return pdfthumbs_; }
    OKNSOutlineView *outlineview() const { return outlineview_; }
    QTableView *tableViewH1H2H3Config() const;
    SplitView *splitViewTopLevel() const { return splitViewTopLevel_; }
    /// The bars above the pages.
    NoticeBars *notices() const { return notices_; }
    /// The bar that asks for a text on the pages.
    FindBar *findBar() const { return findBar_; }
    /// The bar that asks for the password of a locked file.
    PasswordBar *passwordBar() const { return passwordBar_; }
    /// The field above the outline that says which entries are shown.
    OutlineFilter *outlineFilter() const { return outlineFilter_; }
    /// The line at the foot.
    DocumentStatusBar &status() const { return *statusBar_; }
    /// Marks the entry that is being read.
    CurrentEntry *currentEntry() const { return currentEntry_.get(); }
    /// Marks the text of the heading map's selected row.
    HeadingMapMarks *headingMapMarks() const { return headingMapMarks_.get(); }
    /// The height of the outline, in pixels, above the divider between it and the heading map; while a panel
    /// has the place of that, the height it comes back to.
    int outlineHeight() const;
    /// Moves that divider, as far as there is room.
    void setOutlineHeight(int height);
    /// What holds the field that a command goes to, in which what is typed takes effect at once; null for all
    /// other commands.
    QWidget *fieldBarOf(const QString &selector) const;

    /// Shows a panel below the outline, in the place of the heading map, until it has ended. An empty outline
    /// makes room for it. The window owns it from then on.
    void showPanel(Sheet &panel);

    /// Offers the files opened lately in the File menu. @param controller must outlive the window
    void setRecentDocuments(DocumentController &controller);
    /// Enables the commands that may be chosen now, which otherwise happens a moment later.
    void updateActions();
    /// Tells why commands would do nothing; menus of commands are to be watched by it.
    RefusalTips &refusalTips() const { return *refusalTips_; }

Q_SIGNALS:
    /// Files were dropped on the window. Absolute paths.
    void filesDropped(const QStringList &paths);

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void makeViews();
    void makeMenus();
    QWidget *makeOutlinePane();
    QAction *makeAction(const ActionDescription &description);
    void connectViews();
    void connectHeadingMap();
    void unlock(const QString &password);
    void updateTitle();
    void restorePlace();
    /// Lets a command's title say which step it is about.
    void nameStep(const QString &selector, const OutlineEdits::Summary &step);
    void closeAfterWaiting();

    MyDocument &document_;
    ThumbnailView *pdfthumbs_ = nullptr;
    LabelPDFView *pdfview_ = nullptr;
    OKNSOutlineView *outlineview_ = nullptr;
    HeadingMapView *tableViewH1H2H3Config_ = nullptr;
    SplitView *splitViewTopLevel_ = nullptr;
    QSplitter *outlinePane_ = nullptr;
    NoticeBars *notices_ = nullptr;
    PasswordBar *passwordBar_ = nullptr;
    FindBar *findBar_ = nullptr;
    OutlineFilter *outlineFilter_ = nullptr;
    QWidget *outlineWithFilter_ = nullptr;
    DocumentStatusBar *statusBar_ = nullptr;
    QList<QAction *> tableActions_;  ///< Those whose enabled state the table decides.
    std::unique_ptr<RefusalTips> refusalTips_;
    std::unique_ptr<CurrentEntry> currentEntry_;
    std::unique_ptr<HeadingMapMarks> headingMapMarks_;
    std::optional<QList<int>>
        sizesWithoutPanel_;  ///< Of what stands in the outline's pane, while a panel does.
    bool closesWhenIdle_ = false;
    QTimer actionsUpdate_;  ///< Many changes at once lead to one update.
};

}  // namespace leafwright
