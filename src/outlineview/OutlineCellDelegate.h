#pragma once

#include <QStyledItemDelegate>

namespace leafwright {

/// Draws the cells of an outline view: each text on one line, and no more of it than could ever be seen,
/// because a file may bring texts of any length. Titles look as viewers show them: bold, italic, in their
/// colour. Behind one that leads to no page stands where it leads instead. A label that no page has is red.
class OutlineCellDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QString displayText(const QVariant &value, const QLocale &locale) const override;
    /// Page labels ask for a third of the view at most.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

}  // namespace leafwright
