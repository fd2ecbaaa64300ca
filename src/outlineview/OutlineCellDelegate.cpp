#include "outlineview/OutlineCellDelegate.h"

#include "tree/TreeController.h"

#include <QWidget>

#include <algorithm>

namespace leafwright {

namespace {

constexpr int longestText = 500;
constexpr int breathingSpace = 6;  // pixels between the texts of two rows
constexpr int largestShare = 3;    // of the view's width

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

}  // namespace leafwright
