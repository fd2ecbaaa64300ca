#pragma once

#include "model/LevelNumber.h"
#include "model/OutlineEntry.h"
#include "model/Target.h"

#include <QPointF>
#include <QString>
#include <QStringList>
#include <QVarLengthArray>

#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace leafwright {

class MyOutlineItem;

/// Told of changes of an item's properties, by key ("pageTitle", "children", ...).
class OutlineItemObserver {
public:
    virtual ~OutlineItemObserver() = default;
    virtual void willChangeValueForKey(const MyOutlineItem &item, QLatin1String key) = 0;
    virtual void didChangeValueForKey(const MyOutlineItem &item, QLatin1String key) = 0;
};

/// One entry of a document's table of contents: a title, the label of the page it points to, a spot on
/// that page, and its ordered children, which it owns. A plain object, made by the hundred thousand;
/// used on the main thread only. Trees of any depth are destroyed without recursion.
///
/// A null QString is "absent", which is not the same as empty.
class MyOutlineItem {
public:
    using Children = std::vector<std::unique_ptr<MyOutlineItem>>;

    /// Title "Untitled", page label "1", no particular spot, no children.
    MyOutlineItem();
    /// @param target with an absent label for no page
    MyOutlineItem(QString title, const PageTarget &target);
    ~MyOutlineItem();
    MyOutlineItem(const MyOutlineItem &) = delete;
    MyOutlineItem &operator=(const MyOutlineItem &) = delete;

    /// Reads one line of the plus form; see plusDescriptionForLevel(). Null if it has fewer than three
    /// fields. The item has its label, title and `pluslevelstr`, whose length is its depth; nothing else.
    /// Throws std::out_of_range when two blanks stand between the fields where one must.
    static std::unique_ptr<MyOutlineItem> initWithPlusString(const QString &line);

    /// The properties that are meant to be watched for undo: "pageTitle" and "pageLabel".
    static const QStringList &allProperties();

    /// A detached item that says the same, with copies of all below it. It has no number and no identity yet.
    std::unique_ptr<MyOutlineItem> copy() const;

    const QString &pageTitle() const { return pageTitle_; }
    void setPageTitle(const QString &title);

    /// The printed name of the page, such as "iv". It is resolved to a page through the document's page
    /// label map, and only when that is needed. Absent for an entry that leads to no page.
    const QString &pageLabel() const { return pageLabel_; }
    void setPageLabel(const QString &label);

    const Children &children() const { return children_; }
    /// The children there were live until observers have been told of the change.
    void setChildren(Children children);
    /// Hands all children over to the caller.
    Children takeChildren();
    /// Adds a child at the end without telling anyone; for detached trees, which no one observes.
    MyOutlineItem &appendChild(std::unique_ptr<MyOutlineItem> child);
    /// Takes the item over. Throws std::out_of_range unless index is within 0..count.
    void insertObjectInChildrenAtIndex(std::unique_ptr<MyOutlineItem> item, size_t index);
    /// Throws std::out_of_range unless index is below the count. @return the removed child
    std::unique_ptr<MyOutlineItem> removeObjectFromChildrenAtIndex(size_t index);
    /// The same of several, told as one change. Throws std::out_of_range unless index is within 0..count.
    /// @param items are left where they are if this throws
    void insertChildrenAtIndex(Children &&items, size_t index);
    /// Throws std::out_of_range unless there are so many from the index on. @return the removed children
    Children removeChildrenAtIndex(size_t index, size_t count);

    /// Positions of the item and its ancestors among their siblings, 0-based, outermost first, joined by
    /// "."; absent until an export has numbered the tree, and stale between exports.
    QString levelstr() const;
    void setLevelstr(const QString &levelstr);
    /// The same, with the text made when it is asked for. @param number not null
    void setLevelstr(std::shared_ptr<const LevelNumber> number);

    /// Depth as the last export numbered it: 1 for a top-level item.
    quint64 levelnum() const { return levelnum_; }
    void setLevelnum(quint64 levelnum);

    /// The "+" characters that the item was read with.
    const QString &pluslevelstr() const { return pluslevelstr_; }
    void setPluslevelstr(const QString &plus);

    /// The spot on the page, in page space (points, origin lower left); (0, 0) is no particular spot.
    QPointF pointOnPage() const { return pointOnPage_; }
    void setPointOnPage(const QPointF &point);

    quint64 initiallevel() const { return initiallevel_; }
    void setInitiallevel(quint64 level);

    /// Where the item leads, told by label, point and entry. Whoever asks for that asks here, not for absent
    /// labels, zero points and numbers that are 0.
    Target target() const;

    /// What the item is beside title, page and spot: the entry of the file that it stands for, how it looks,
    /// where it leads without a page.
    const OutlineEntry &entry() const { return entry_; }
    void setEntry(const OutlineEntry &entry);

    /// For an entry of the file that leads to a page, and for an item that was made for one: the page's
    /// 0-based index, for as long as nobody sets the label, which may stand for another page with the same
    /// label. Absent for any other item.
    std::optional<int> importedPage() const;
    /// @param index absent for no page; to be set after the label
    void setImportedPage(std::optional<int> index);

    /// The number that tells the item from all others that its outline has or had, wherever it moves and
    /// whether it is away for a while; 0 before it comes into one. OutlineEdits gives it.
    quint64 identity() const { return identity_; }
    void setIdentity(quint64 identity) { identity_ = identity; }

    /// The item's position among its siblings as the last export numbered it; 0 without one. Uncalled, but
    /// fixed from outside, as is wantedParent().
    qint32 attachPoint() const;
    /// The `levelstr` of the item's parent as the last export numbered it; "Root" for a top-level item.
    QString wantedParent() const;
    /// For logs: "pg[12] Introduction at (72,700) [#children=3]".
    QString description() const;
    /// Whether the title contains the text, letter for letter. Never true for an empty text.
    bool hasText(const QString &text) const;
    /// This item and its descendants whose titles contain the text, in tree order. Absent for absent text.
    /// Uncalled, but fixed from outside.
    std::optional<std::vector<MyOutlineItem *>> itemsMatchingText(const QString &text);
    /// The subtree in the plus form, a line an item: as many "+" as the level says (none if it is
    /// negative), a blank, "@" and the page label, a blank, the title. Nothing is escaped.
    QString plusDescriptionForLevel(qint32 level) const;

    /// Observers are called in the order of their addition, and must be removed before they go.
    void addObserver(OutlineItemObserver *observer);
    void removeObserver(OutlineItemObserver *observer);

private:
    struct Bare {};
    explicit MyOutlineItem(Bare /*tag*/) {}
    /// Makes a change between the two notices for its key.
    template <typename Change>
    void change(QLatin1String key, Change &&makeChange);

    QString pageTitle_;
    QString pageLabel_;
    Children children_;
    std::variant<QString, std::shared_ptr<const LevelNumber>> levelstr_;
    quint64 levelnum_ = 0;
    QString pluslevelstr_;
    QPointF pointOnPage_;
    quint64 initiallevel_ = 0;
    static constexpr int noPage = -1;
    int importedPage_ = noPage;
    quint64 identity_ = 0;
    OutlineEntry entry_;
    QVarLengthArray<OutlineItemObserver *, 1> observers_;  ///< Of which there mostly is one.
};

}  // namespace leafwright
