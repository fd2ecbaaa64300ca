#pragma once

#include "model/MyOutlineItem.h"

#include <vector>

namespace leafwright::test {

/// What an outline item is made of, for writing down trees: `{"Chapter", "1", {72, 700}, {{"Section",
/// "3"}}}`.
struct ItemSpec {
    QString title = QStringLiteral("Untitled");
    QString label = QStringLiteral("1");
    QPointF point = {};
    std::vector<ItemSpec> children = {};
};

std::unique_ptr<MyOutlineItem> makeItem(const ItemSpec &spec);

/// Makes all of them children of an item, after those it has.
void addItems(MyOutlineItem &parent, const std::vector<ItemSpec> &specs);

/// Everything below an item, a line an item, as "++ [iv] Title (72,700.5)": depth, label ("-" instead of the
/// brackets when it is absent), title, point.
QString treeText(const MyOutlineItem &root);

}  // namespace leafwright::test
