#pragma once

#include "document/commands/ContentsCommands.h"
#include "document/window/ContentsProposal.h"
#include "support/BookPdf.h"
#include "support/TreeWindowFixture.h"

#include <QTableWidget>
#include <QTreeWidget>

namespace leafwright {

/// A window with a book whose outline is one entry, "Old Entry".
class FindContentsWindow : public test::TreeWindowFixture {
protected:
    void SetUp() override { open(test::makeBook()); }

    void find() { perform("findContents:"); }
    ContentsProposal *proposal() { return document.contentsCommands().proposal(); }
    template <typename Widget>
    Widget &part(const char *name) {
        return *proposal()->findChild<Widget *>(name);
    }
    QTreeWidget &entries() { return part<QTreeWidget>("contentsEntries"); }
    QTreeWidgetItem &chapter(int index) { return *entries().topLevelItem(index); }
    QTreeWidgetItem &section(int index, int child) { return *chapter(index).child(child); }
    QTableWidget &styles() { return part<QTableWidget>("contentsStyles"); }
    int rowOfStyle(const QString &sample) {
        int row = 0;
        while (row < styles().rowCount() && styles().item(row, 0)->text() != sample)
            ++row;
        return row;
    }
    void take() { ASSERT_TRUE(proposal()->pressButton(1)); }
    Sheet *progressSheet() { return document.window()->findChild<Sheet *>("progressSheet"); }
    /// Calls a function while the pages are being read.
    void whileReading(const std::function<void()> &function) {
        QMetaObject::invokeMethod(&document, function, Qt::QueuedConnection);
    }

    const QString book =
        "1 Soil (1.1 What is in the Ground 1.2 Compost) 2 Water (2.1 Rain 2.2 Wells) "
        "3 Light (3.1 Shade 3.2 Glass)";
};

}  // namespace leafwright
