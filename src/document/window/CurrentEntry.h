#pragma once

#include "document/outline/EntryPlaces.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

namespace leafwright {

class MyDocument;
class OutlineView;
class PDFView;
class TreeNode;

/// Knows which entry of the outline is being read, and has it marked there while the pages are scrolled.
/// Where entries lead is found out a piece at a time, so that very many keep nobody waiting.
class CurrentEntry final : public QObject {
    Q_OBJECT

public:
    /// All must outlive this. @param pages where they are read @param outline where the entry is marked
    CurrentEntry(MyDocument &document, PDFView &pages, OutlineView &outline);
    ~CurrentEntry() override;

    /// Selects the entry that is being read and shows it, at once or when it is known; beeps where there is
    /// none.
    void reveal();
    /// Waits until the entry that is being read is known and marked, so that nothing is pending.
    void finish();

private:
    void lookAgain();
    void look();
    bool placesAreCurrent() const;
    void beginPlaces();
    bool addPlaces();
    std::optional<ReadingPlace> placeOf(const TreeNode &node) const;
    std::optional<ReadingPlace> placeShown() const;
    TreeNode *entryShown() const;

    MyDocument &document_;
    PDFView &pages_;
    OutlineView &outline_;
    QTimer timer_;
    bool reveals_ = false;  ///< As soon as it is known.

    /// Those of the tree, as it was at a revision of the tree and one of the outline.
    struct Places {
        std::vector<TreeNode *> nodes;  ///< In tree order.
        EntryPlaces entries;
        size_t added = 0;  ///< So many nodes have been looked at.
        quint64 structureRevision = 0;
        quint64 revision = 0;
        quint64 printedPageOffset = 0;
    };
    std::unique_ptr<Places> places_;
};

}  // namespace leafwright
