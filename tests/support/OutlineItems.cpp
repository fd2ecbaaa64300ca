#include "support/OutlineItems.h"

namespace leafwright::test {

std::unique_ptr<MyOutlineItem> makeItem(const ItemSpec &spec) {
    auto item = std::make_unique<MyOutlineItem>();
    item->setPageTitle(spec.title);
    item->setPageLabel(spec.label);
    item->setPointOnPage(spec.point);
    addItems(*item, spec.children);
    return item;
}

void addItems(MyOutlineItem &parent, const std::vector<ItemSpec> &specs) {
    for (const ItemSpec &spec : specs)
        parent.appendChild(makeItem(spec));
}

namespace {

void appendTree(const MyOutlineItem &parent, int depth, QString &text) {
    for (const auto &child : parent.children()) {
        const QString &label = child->pageLabel();
        const QPointF point = child->pointOnPage();
        text += QString(depth, u'+') + (label.isNull() ? QStringLiteral(" -") : " [" + label + "]");
        text += " " + child->pageTitle() + " (" + QString::number(point.x(), 'g', 12) + "," +
                QString::number(point.y(), 'g', 12) + ")\n";
        appendTree(*child, depth + 1, text);
    }
}

}  // namespace

QString treeText(const MyOutlineItem &root) {
    QString text;
    appendTree(root, 1, text);
    return text;
}

}  // namespace leafwright::test
