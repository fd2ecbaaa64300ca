#include "document/commands/OutlineCopy.h"

#include "document/MyDocument.h"
#include "outlineview/OKNSOutlineView.h"
#include "outlineview/OutlineViewExtensions.h"
#include "tree/TreeNode.h"

namespace leafwright {

int levelOfItem(const TreeNode &node) {
    int level = 0;
    for (const TreeNode *parent = node.parentNode(); parent; parent = parent->parentNode())
        ++level;
    return level;
}

QString spaceStringOfLength(quint32 n) {
    return {static_cast<qsizetype>(n), u' '};
}

QString dotStringOfLength(qint32 n) {
    return {std::max(n, 0), u'.'};
}

void OutlineCopy::copySelectedItemsToClipboard() {
    const auto nodes = document_.selectedNodes();
    if (nodes.empty()) return;
    QString text;
    for (const TreeNode *node : nodes)
        text += spaceStringOfLength(levelOfItem(*node)) + node->representedObject()->pageTitle() + u'\n';
    document_.platform().setClipboardText(text);
}

}  // namespace leafwright
