#include "outlineview/OutlineCellDelegate.h"

#include "outlineview/LegibleColor.h"
#include "tree/TreeController.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>

namespace leafwright {

namespace {

constexpr int longestText = 500;
constexpr int breathingSpace = 6;  // pixels between the texts of two rows
constexpr int largestShare = 3;    // of the view's width

/// Of a cell of an outline's titles; null for any other.
const MyOutlineItem *titledItem(const QModelIndex &index) {
    const auto *tree = qobject_cast<const TreeController *>(index.model());
    if (!tree || index.column() != TreeController::TitleColumn) return nullptr;
    return tree->nodeForIndex(index).representedObject();
}

}  // namespace

QString OutlineCellDelegate::displayText(const QVariant &value, const QLocale & /*locale*/) const {
    QString text = value.toString().left(longestText);
    for (QChar &c : text) {
        if (c.unicode() < u' ' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator) c = u' ';
    }
    return text;
}

QSize OutlineCellDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    if (index.column() == TreeController::PageColumn && option.widget)
        size.setWidth(std::min(size.width(), option.widget->width() / largestShare));
    size.rheight() += breathingSpace;
    return size;
}

void OutlineCellDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.data(TreeController::LostLabelRole).toBool())
        option->palette.setColor(QPalette::Text,
                                 legibleColor(Qt::red, option->palette.color(QPalette::Base)));
    const MyOutlineItem *item = titledItem(index);
    if (!item) return;
    const OutlineEntry &entry = item->entry();
    if (entry.bold || entry.italic) {
        option->font.setBold(entry.bold);
        option->font.setItalic(entry.italic);
        option->fontMetrics = QFontMetrics(option->font);
    }
    if (!entry.color) return;
    const auto &[red, green, blue] = *entry.color;
    const QColor color =
        QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue));
    option->palette.setColor(QPalette::Text, legibleColor(color, option->palette.color(QPalette::Base)));
}

void OutlineCellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                const QModelIndex &index) const {
    QStyledItemDelegate::paint(painter, option, index);
    const QString elsewhere =
        titledItem(index) ? index.data(TreeController::ElsewhereRole).toString() : QString();
    if (elsewhere.isEmpty()) return;
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QStyle &style = cell.widget ? *cell.widget->style() : *QApplication::style();
    const QRect text = style.subElementRect(QStyle::SE_ItemViewItemText, &cell, cell.widget);
    const QFontMetrics metrics(option.font);
    const int taken = cell.fontMetrics.horizontalAdvance(cell.text) + 2 * metrics.averageCharWidth();
    QRect rest = text.adjusted(taken, 0, 0, 0);
    if (rest.width() < 4 * metrics.averageCharWidth()) return;
    rest = QStyle::visualRect(cell.direction, text, rest);
    const bool isSelected = cell.state.testFlag(QStyle::State_Selected);
    painter->save();
    painter->setFont(option.font);
    painter->setPen(cell.palette.color(isSelected ? QPalette::HighlightedText : QPalette::PlaceholderText));
    painter->drawText(rest, Qt::AlignVCenter | Qt::TextSingleLine,
                      metrics.elidedText(displayText(elsewhere, cell.locale), Qt::ElideMiddle, rest.width()));
    painter->restore();
}

}  // namespace leafwright
