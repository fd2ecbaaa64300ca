#pragma once

#include "exchange/OutlineFormat.h"
#include "support/FakePages.h"
#include "support/OutlineItems.h"

#include <gtest/gtest.h>

namespace leafwright::test {

/// Five pages, labelled i, ii, 1, 2, 3, and outlines that are written and read for them.
class ExchangeFixture : public testing::Test {
protected:
    ExchangeFixture() {
        for (const char *label : {"i", "ii", "1", "2", "3"})
            pages.add(label, {});
    }

    std::optional<int> pageOf(const MyOutlineItem &item) const {
        for (int i = 0; i < pages.pageCount(); ++i)
            if (!item.pageLabel().isNull() && pages.pageLabel(i) == item.pageLabel()) return i;
        return std::nullopt;
    }
    QByteArray written(const char *format, const MyOutlineItem &root) const {
        QByteArray text;
        outlineFormatNamed(QString(format))
            ->write(
                root, [this](const MyOutlineItem &item) { return pageOf(item); },
                [&text](const QByteArray &bytes) { text += bytes; });
        return text;
    }
    QByteArray written(const char *format, const std::vector<NewItem> &items) const {
        MyOutlineItem root;
        addItems(root, items);
        return written(format, root);
    }
    OutlineTree read(const char *format, const QByteArray &text) const {
        return readOutline(*outlineFormatNamed(QString(format)), text, {pages});
    }
    /// The tree as treeText() has it, or where it can't be read and why.
    QString treeOf(const char *format, const QByteArray &text) const {
        const OutlineTree tree = read(format, text);
        if (const auto *error = std::get_if<TreeError>(&tree))
            return error->where.isEmpty() ? error->message : error->where + ": " + error->message;
        return treeText(*std::get<std::unique_ptr<MyOutlineItem>>(tree));
    }

    FakePages pages;
};

}  // namespace leafwright::test
