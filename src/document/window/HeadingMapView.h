#pragma once

#include <QTableView>

namespace leafwright {

/// The heading map as a list, a row a font, and the keys that are for its rows as long as it has the
/// keyboard. While it is empty it says how rows come there.
class HeadingMapView final : public QTableView {
    Q_OBJECT

public:
    explicit HeadingMapView(QWidget *parent = nullptr);

    /// @param text what it says while it has no rows; null for how rows come there
    void setPlaceholderText(const QString &text);
    /// Has screen readers told what is to be read while there are no rows.
    void reset() override;

Q_SIGNALS:
    /// The selected rows are to go: the Delete key.
    void deletionRequested();
    /// The selected rows are to have another level: a key from 1 to 9.
    void levelRequested(int level);
    /// Text in the font of the row is to be shown: a double click on it, or Return.
    void occurrenceRequested(int row);

protected:
    /// Claims the keys Delete and Select All, which elsewhere in a window are for entries of the outline.
    bool event(QEvent *event) override;
    /// Home and End go to the first and to the last row.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void initViewItemOption(QStyleOptionViewItem *option) const override;

private:
    void editLevel(const QModelIndex &row);
    void describe();

    QString placeholderText_;
};

}  // namespace leafwright
