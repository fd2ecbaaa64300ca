#pragma once

#include "tree/TreeController.h"

#include <QAbstractItemModelTester>

namespace leafwright::test {

/// A tree written down as "A(B C(D)) E": titles without blanks, children in parentheses.
inline void addItems(MyOutlineItem &root, const QString &text) {
    std::vector<MyOutlineItem *> open{&root};
    QString title;
    const auto endTitle = [&] {
        if (title.isEmpty()) return;
        open.back()->appendChild(std::make_unique<MyOutlineItem>()).setPageTitle(title);
        title.clear();
    };
    for (const QChar c : text) {
        if (c == u'(' || c == u')' || c == u' ') endTitle();
        if (c == u'(') {
            open.push_back(open.back()->children().back().get());
        } else if (c == u')') {
            open.pop_back();
        } else if (c != u' ') {
            title += c;
        }
    }
    endTitle();
}

inline std::unique_ptr<MyOutlineItem> newItem(const QString &title) {
    auto item = std::make_unique<MyOutlineItem>();
    item->setPageTitle(title);
    return item;
}

/// What is below an item, written in the same way.
inline QString written(const MyOutlineItem &item) {
    QStringList parts;
    for (const auto &child : item.children()) {
        const QString below = written(*child);
        parts.append(below.isEmpty() ? child->pageTitle() : child->pageTitle() + u'(' + below + u')');
    }
    return parts.join(u' ');
}

inline QString written(const TreeNode &node) {
    QStringList parts;
    for (const TreeNode *child : node.childNodes()) {
        const QString title = child->representedObject()->pageTitle();
        parts.append(child->childNodes().empty() ? title : title + u'(' + written(*child) + u')');
    }
    return parts.join(u' ');
}

inline QString titles(const std::vector<TreeNode *> &nodes) {
    QStringList parts;
    for (const TreeNode *node : nodes)
        parts.append(node->representedObject()->pageTitle());
    return parts.join(u' ');
}

/// A tree with its controller, over which Qt's model tester watches.
struct Tree {
    explicit Tree(const QString &text) {
        addItems(root, text);
        controller = std::make_unique<TreeController>(edits);
        tester = std::make_unique<QAbstractItemModelTester>(
            controller.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    }

    /// The node with this title. Throws if there is none.
    TreeNode &node(const QString &title) const {
        std::vector<TreeNode *> pending{&controller->arrangedObjects()};
        while (!pending.empty()) {
            TreeNode *found = pending.back();
            pending.pop_back();
            if (found->parentNode() && found->representedObject()->pageTitle() == title) return *found;
            pending.insert(pending.end(), found->childNodes().begin(), found->childNodes().end());
        }
        throw std::runtime_error("no such node");
    }
    std::vector<TreeNode *> nodes(const QStringList &wanted) const {
        std::vector<TreeNode *> result;
        for (const QString &title : wanted)
            result.push_back(&node(title));
        return result;
    }
    MyOutlineItem &item(const QString &title) const { return *node(title).representedObject(); }
    QModelIndex index(const QString &title, int column = 0) const {
        return controller->indexForNode(node(title), column);
    }
    /// The nodes, after a look whether the items say the same.
    QString text() const {
        const QString nodes = written(controller->arrangedObjects());
        return nodes == written(root) ? nodes : "nodes " + nodes + ", items " + written(root);
    }
    QString selection() const { return titles(controller->selectedNodes()); }

    MyOutlineItem root;
    OutlineEdits edits{root};
    std::unique_ptr<TreeController> controller;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

}  // namespace leafwright::test
