#pragma once

#include "outlineview/OKNSOutlineView.h"
#include "outlineview/OutlineViewExtensions.h"
#include "tree/TreeFixture.h"

#include <QTest>

namespace leafwright::test {

/// A tree shown in an outline view. On the screen after show().
struct Outline : Tree {
    explicit Outline(const QString &text) : Tree(text) {
        view.setTreeController(controller.get());
        view.resize(400, 300);
    }
    ~Outline() { view.setTreeController(nullptr); }

    void show() {
        view.show();
        if (!QTest::qWaitForWindowExposed(&view)) throw std::runtime_error("the view does not show");
    }
    /// The titles of the rows.
    QString rows() const {
        std::vector<TreeNode *> nodes;
        for (int row = 0; row < view.numberOfRows(); ++row)
            nodes.push_back(view.itemAtRow(row));
        return titles(nodes);
    }
    QPoint center(const QString &title, int column = 0) const {
        return view.visualRect(index(title, column)).center();
    }

    OKNSOutlineView view;
};

}  // namespace leafwright::test
