#include "support/OutlineItems.h"

namespace leafwright::test {

std::unique_ptr<MyOutlineItem> makeItem(const NewItem &parts) {
    auto item = std::make_unique<MyOutlineItem>();
    item->setPageTitle(parts.title);
    item->setPageLabel(parts.label);
    item->setPointOnPage(parts.point);
    addItems(*item, parts.children);
    return item;
}

void addItems(MyOutlineItem &parent, const std::vector<NewItem> &items) {
    for (const NewItem &item : items)
        parent.appendChild(makeItem(item));
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
