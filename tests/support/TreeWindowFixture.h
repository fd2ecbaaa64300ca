#pragma once

#include "support/OpenPdf.h"
#include "support/WindowFixture.h"

namespace leafwright::test {

/// A window with an outline that is written as its indented titles.
class TreeWindowFixture : public WindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(9);
        open(pdf);
    }

    /// Replaces the outline: a title a word, a level deeper in parentheses: "a b (c d (e)) f".
    void setOutline(const QString &text) {
        MyOutlineItem::Children top;
        std::vector<MyOutlineItem::Children *> lists{&top};
        QString spaced = text;
        spaced.replace("(", " ( ").replace(")", " ) ");
        for (const QString &word : spaced.split(' ', Qt::SkipEmptyParts)) {
            if (word == "(") {
                parents.push_back(lists.back()->back().get());
                lists.push_back(new MyOutlineItem::Children);
            } else if (word == ")") {
                parents.back()->setChildren(std::move(*lists.back()));
                parents.pop_back();
                delete lists.back();
                lists.pop_back();
            } else {
                lists.back()->push_back(std::make_unique<MyOutlineItem>());
                lists.back()->back()->setPageTitle(word);
                lists.back()->back()->setPointOnPage({1, 1});
            }
        }
        document.root().setChildren(std::move(top));
        expandAll(document.treecontroller().arrangedObjects());
        document.updateChangeCount(Document::Change::Cleared);
    }

    QString outline() { return textOf(document.root()); }
    /// The selected titles, in tree order.
    QString selected() {
        QStringList titles;
        for (const TreeNode *each : document.treecontroller().selectedNodes())
            titles.append(each->representedObject()->pageTitle());
        return titles.join(' ');
    }
    void perform(const char *selector) { ASSERT_TRUE(document.actions().perform(selector)) << selector; }
    bool isEnabled(const char *selector) { return document.actions().validateUserInterfaceItem(selector); }

private:
    static QString textOf(const MyOutlineItem &item) {
        QStringList parts;
        for (const auto &child : item.children()) {
            const QString below = textOf(*child);
            parts.append(child->pageTitle() + (below.isEmpty() ? QString() : " (" + below + ")"));
        }
        return parts.join(' ');
    }
    void expandAll(const TreeNode &top) {
        for (const TreeNode *child : top.childNodes())
            document.outlineview()->expandItem(*child, true);
    }

    std::vector<MyOutlineItem *> parents;
};

}  // namespace leafwright::test
