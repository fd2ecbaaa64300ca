#pragma once

#include "model/MyOutlineItem.h"

#include <vector>

namespace leafwright::test {

/// What an outline item is made of, for writing down trees: `{"Chapter", "1", {72, 700}, {{"Section",
/// "3"}}}`.
struct NewItem {
    QString title = QStringLiteral("Untitled");
    QString label = QStringLiteral("1");
    QPointF point = {};
    std::vector<NewItem> children = {};
};

std::unique_ptr<MyOutlineItem> makeItem(const NewItem &parts);

/// Makes all of them children of an item, after those it has.
void addItems(MyOutlineItem &parent, const std::vector<NewItem> &items);

/// Everything below an item, a line an item, as "++ [iv] Title (72,700.5)": depth, label ("-" instead of the
/// brackets when it is absent), title, point.
QString treeText(const MyOutlineItem &root);

}  // namespace leafwright::test
