#include "outlineview/OutlineViewExtensions.h"

#include <QLoggingCategory>

#include <set>

namespace leafwright {

namespace {

Q_LOGGING_CATEGORY(log, "leafwright.outlineview", QtWarningMsg)

/// "0-2 5", as index sets are written.
QString description(const std::set<int> &rows) {
    QStringList parts;
    for (auto row = rows.begin(); row != rows.end();) {
        const int first = *row;
        int last = first;
        while (++row != rows.end() && *row == last + 1)
            last = *row;
        parts.append(first == last ? QString::number(first) : QStringLiteral("%1-%2").arg(first).arg(last));
    }
    return parts.join(u' ');
}

}  // namespace

std::vector<TreeNode *> selectedItems(const OutlineView &view) {
    std::vector<TreeNode *> items;
    for (const int row : view.selectedRows())
        items.push_back(view.itemAtRow(row));
    return items;
}

void setSelectedItems(OutlineView &view, const std::vector<TreeNode *> &items) {
    std::set<int> rows;
    for (const TreeNode *item : items) {
        const int row = view.rowForItem(*item);
        qCDebug(log).noquote() << QStringLiteral("==> row [%1] for item [%2]")
                                      .arg(QString::number(row), item->representedObject()->description());
        if (row >= 0) rows.insert(row);
    }
    qCDebug(log).noquote() << QStringLiteral("select index paths [%1]").arg(description(rows));
    view.selectRowIndexes({rows.begin(), rows.end()});
}

}  // namespace leafwright
