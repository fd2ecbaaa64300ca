#pragma once

#include "pdf/PDFSelection.h"

#include <QObject>
#include <QTimer>

#include <map>
#include <vector>

class QTableView;
class QWidget;

namespace leafwright {

class MyDocument;
class PDFView;

/// Marks the text in the font of the heading map's selected row on the pages as they are scrolled into sight,
/// where it is not selected and nothing is looked for: what is found looks the same. Pages whose text nobody
/// has read yet are marked when the fonts have been counted.
class HeadingMapMarks final : public QObject {
    Q_OBJECT

public:
    /// All must outlive this. @param pages that are scrolled @param table that shows the map
    /// @param findBar that is hidden while nothing is looked for on the pages
    HeadingMapMarks(MyDocument &document, PDFView &pages, QTableView &table, QWidget &findBar);

    /// Marks what can be seen now, which otherwise happens a moment later.
    void update();

    /// Of the find bar: its marks come or go.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QString selectedFont() const;
    const std::vector<TextRange> &rangesOn(const PDFPage &page);
    std::vector<TextRange> marksOn(const PDFPage &page);
    void show(const std::map<int, std::vector<TextRange>> &marks);
    void forget();

    MyDocument &document_;
    PDFView &pages_;
    QTableView &table_;
    QWidget &findBar_;
    QTimer timer_;                                  ///< Many changes at once lead to one update.
    QString font_;                                  ///< Its font ID string; null for none.
    std::map<int, std::vector<TextRange>> ranges_;  ///< In that font, by page, of those that were seen.
    std::map<int, std::vector<TextRange>> marks_;   ///< By page, as they are shown.
};

}  // namespace leafwright
