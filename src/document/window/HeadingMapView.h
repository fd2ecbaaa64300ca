#pragma once

#include <QTableView>

namespace leafwright {

/// The heading map as a list, a row a font, and the keys that are for its rows as long as it has the
/// keyboard. While it is empty it says how rows come there.
class HeadingMapView final : public QTableView {
    Q_OBJECT

public:
    explicit HeadingMapView(QWidget *parent = nullptr);

Q_SIGNALS:
    /// The selected rows are to go: the Delete key.
    void deletionRequested();
    /// The selected rows are to have another level: a key from 1 to 9.
    void levelRequested(int level);
    /// Text in the font of the row is to be shown: a double click on it, or Return.
    void occurrenceRequested(int row);

protected:
    /// Claims the Delete key, which elsewhere in a window removes entries of the outline.
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void initViewItemOption(QStyleOptionViewItem *option) const override;
};

}  // namespace leafwright
