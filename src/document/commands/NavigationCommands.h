#pragma once

#include <QString>

namespace leafwright {

class MyDocument;
class MyOutlineItem;
class PDFPage;

/// From the outline to the pages, and from page to page.
class NavigationCommands {
public:
    /// Registers the commands. @param document must outlive this
    explicit NavigationCommands(MyDocument &document);

    /// The outline's double click: edits the clicked title, or shows where the item leads. The setting
    /// LeafwrightEnableDoubleClickEditing says which, and the Control key turns it round.
    void doubleClickAction(Qt::KeyboardModifiers modifiers);
    /// Shows an item's spot, or the top of its page if it has none in particular.
    void moveToMOI(const MyOutlineItem &item);
    /// Shows where the first selected item leads; the first page without a selection.
    void moveToPageOfOutlineItem();
    /// Shows the page with a label, which may be a printed page number; the first page if there is none.
    void moveToPageLabel(const QString &label);
    /// Asks for a page, by its label or else by its number in the file, counted from 1, and shows it.
    void goToPageLabel();
    void nextPage();
    void prevPage();
    /// Moves the page labels to the next corner: none, top right, bottom right, bottom left, top left.
    void nextPageLabelLocation();

private:
    /// The page that people call so; null if there is none.
    const PDFPage *pageCalled(const QString &text) const;
    void editClickedCell();

    MyDocument &document_;
};

}  // namespace leafwright
