#pragma once

#include <QPointF>
#include <QString>

#include <algorithm>
#include <functional>
#include <optional>
#include <vector>

namespace leafwright::test {

/// What the commands of a document do to an outline, done the long way: values inside each other, found by
/// walking over all of them each time. Knows nothing of items, nodes, controllers and views.
class NaiveOutline {
public:
    /// Positions among siblings, from the top level down.
    using Path = std::vector<size_t>;

    struct Item {
        int id = 0;
        QString title;
        QString label;
        QPointF point;
        bool isOfItsPage = false;  ///< Made for a page, and not only by that page's label.
        bool bold = false;
        bool italic = false;
        bool openInViewers = false;
        QString color;  ///< By its name; null for none.
        bool selected = false;
        bool unfolded = false;
        bool hadChildren = false;  ///< Before the command; of others nobody says how they are unfolded.
        std::vector<Item> children;
    };

    /// Where something dragged is let go: the path of the parent; absent for the top level.
    struct Place {
        std::optional<Path> parent;
        int childIndex = -1;
    };

    Item root;
    bool allowed = true;
    bool locked = false;
    bool edited = false;
    int beeps = 0;

    // Finding

    using Visit = std::function<void(Item &item, const Path &path)>;
    /// Visits every item in tree order.
    void walk(const Visit &visit) { walkBelow(root, {}, visit); }
    Item &at(const Path &path) {
        Item *item = &root;
        for (const size_t position : path)
            item = &item->children.at(position);
        return *item;
    }
    Path pathOf(int id) {
        std::optional<Path> found;
        walk([&](const Item &item, const Path &path) {
            if (item.id == id) found = path;
        });
        return found.value();
    }
    std::vector<int> where(const std::function<bool(const Item &)> &holds) {
        std::vector<int> ids;
        walk([&](const Item &item, const Path &) {
            if (holds(item)) ids.push_back(item.id);
        });
        return ids;
    }
    bool has(int id) {
        return !where([id](const Item &item) { return item.id == id; }).empty();
    }
    size_t size() { return all().size(); }
    std::vector<int> all() {
        return where([](const Item &) { return true; });
    }
    std::vector<int> selected() {
        return where([](const Item &item) { return item.selected; });
    }
    /// Those whose ancestors are all unfolded.
    std::vector<int> rows() {
        std::vector<int> ids;
        std::vector<Path> folded;
        walk([&](const Item &item, const Path &path) {
            const auto isAbove = [&](const Path &above) { return startsWith(path, above); };
            if (std::any_of(folded.begin(), folded.end(), isAbove)) return;
            ids.push_back(item.id);
            if (!item.unfolded && !item.children.empty()) folded.push_back(path);
        });
        return ids;
    }
    std::vector<int> selectedRows() {
        std::vector<int> ids = rows();
        std::erase_if(ids, [this](int id) { return !at(pathOf(id)).selected; });
        return ids;
    }
    static bool startsWith(const Path &path, const Path &start) {
        return path.size() >= start.size() && std::equal(start.begin(), start.end(), path.begin());
    }

    // Selecting

    void select(const std::vector<int> &ids) {
        walk([&](Item &item, const Path &) {
            item.selected = std::find(ids.begin(), ids.end(), item.id) != ids.end();
        });
    }
    void selectAll() { select(rows()); }
    void selectLevel(size_t level) {
        std::vector<int> ids;
        walk([&](const Item &item, const Path &path) {
            if (path.size() == level) ids.push_back(item.id);
        });
        select(ids);
    }
    void search(const QString &term) {
        const std::vector<int> found = where([&](const Item &item) { return contains(item.title, term); });
        if (found.empty()) {
            ++beeps;
        } else {
            select(found);
        }
    }
    /// Unfolds or folds the selected items that are shown, with everything below them. What is folded away is
    /// not selected any more, since what it is in is.
    void setUnfolded(bool unfolded) {
        for (const int id : selectedRows()) {
            const Path top = pathOf(id);
            walk([&](Item &item, const Path &path) {
                if (!startsWith(path, top)) return;
                if (!item.children.empty()) item.unfolded = unfolded;
                if (!unfolded && path != top) item.selected = false;
            });
        }
    }

    // Moving

    void moveLeft() {
        std::vector<int> ids = selected();
        std::reverse(ids.begin(), ids.end());
        for (const int id : ids) {
            Path parent = pathOf(id);
            parent.pop_back();
            if (parent.empty()) continue;
            const size_t position = parent.back() + 1;
            parent.pop_back();
            move({id}, parent, position);
        }
        reveal(selected());
        edited = true;
    }
    void moveRight() {
        for (const int id : selected()) {
            Path sibling = pathOf(id);
            if (sibling.back() == 0) continue;
            --sibling.back();
            move({id}, sibling, at(sibling).children.size());
        }
        reveal(selected());
        edited = true;
    }
    void moveUp() {
        for (const int id : selected()) {
            Path parent = pathOf(id);
            const size_t position = parent.back();
            parent.pop_back();
            if (position > 0) move({id}, parent, position - 1);
        }
        reveal(selected());
        edited = true;
    }
    void moveDown() {
        struct Run {
            int first;
            int last;
            Path next;
        };
        std::vector<Run> runs;
        for (const int id : selected()) {
            const Path path = pathOf(id);
            Path next = path;
            ++next.back();
            const auto run =
                std::find_if(runs.begin(), runs.end(), [&](const Run &each) { return each.next == path; });
            if (run == runs.end()) {
                runs.push_back({id, id, next});
            } else {
                run->last = id;
                run->next = next;
            }
        }
        for (const Run &run : runs) {
            Path after = pathOf(run.last);
            Path parent = pathOf(run.first);
            const size_t position = parent.back();
            parent.pop_back();
            if (++after.back() < at(parent).children.size()) move({at(after).id}, parent, position);
        }
        reveal(selected());
        edited = true;
    }

    // Adding and removing

    void addSibling(const Item &item) {
        if (!allowed || locked) return;
        insertBesideSelection(item);
    }
    void addChild(const Item &item) {
        if (!allowed || locked) {
            ++beeps;
            return;
        }
        const std::vector<int> ids = selected();
        insertBelowSelection(item);
        if (ids.empty()) return;
        Item &parent = at(pathOf(ids.front()));
        parent.unfolded = true;
        parent.hadChildren = true;
    }
    void insertBesideSelection(const Item &item) {
        Path path{root.children.size()};
        if (const std::vector<int> ids = selected(); !ids.empty()) {
            path = pathOf(ids.front());
            ++path.back();
        }
        insert(item, path);
    }
    void insertBelowSelection(const Item &item) {
        const std::vector<int> ids = selected();
        Path path = ids.empty() ? Path() : pathOf(ids.front());
        path.push_back(at(path).children.size());
        insert(item, path);
    }
    void remove() {
        if (!allowed || locked) {
            ++beeps;
            return;
        }
        for (const int id : selectedRows()) {
            if (has(id)) removeAt(pathOf(id));
        }
        select({});
        edited = true;
    }
    void removeAt(Path path) {
        const auto position = static_cast<std::ptrdiff_t>(path.back());
        path.pop_back();
        std::vector<Item> &siblings = at(path).children;
        siblings.erase(siblings.begin() + position);
    }
    void promoteChildren() {
        if (!allowed || locked) return;
        if (const std::vector<int> ids = selected(); !ids.empty()) {
            std::vector<int> children;
            for (const Item &child : at(pathOf(ids.front())).children)
                children.push_back(child.id);
            Path parent = pathOf(ids.front());
            const size_t position = parent.back() + 1;
            parent.pop_back();
            move(children, parent, position);
            reveal(children);
        }
        edited = true;
    }

    // Titles

    using Rewrite = std::function<QString(const QString &title)>;
    void rename(const Rewrite &rewrite) {
        const std::vector<int> ids = selected();
        if (ids.empty()) {
            ++beeps;
            return;
        }
        for (const int id : ids) {
            Item &item = at(pathOf(id));
            item.title = rewrite(item.title);
        }
        edited = true;
    }
    /// What was typed in place of a title.
    void typeTitle(int id, const QString &title) {
        Item &item = at(pathOf(id));
        if (item.title == title) return;
        item.title = title;
        edited = true;
    }
    void typeLabel(int id, const QString &label) {
        Item &item = at(pathOf(id));
        if (item.label == label) return;
        item.label = label;
        item.isOfItsPage = false;
        edited = true;
    }
    /// For all that are selected, unless they have it already.
    void toggle(bool Item::*property) {
        const std::vector<int> ids = selected();
        const bool allHave =
            std::all_of(ids.begin(), ids.end(), [&](int id) { return at(pathOf(id)).*property; });
        for (const int id : ids)
            at(pathOf(id)).*property = !allHave;
        edited = true;
    }
    void paint(const QString &color) {
        for (const int id : selected())
            at(pathOf(id)).color = color;
        edited = true;
    }
    /// @param prefix may be absent
    void number(const QString &prefix, qint32 first, qint32 step, const QString &between,
                const QString &behind) {
        const QString lead = prefix.isNull() ? QString() : prefix + between;
        rename([&, number = first](const QString &title) mutable {
            QString numbered = lead + QString::number(number) + behind + title;
            number += step;
            return numbered;
        });
    }
    void replace(const QString &term, bool ignoreCase, const QString &replacement) {
        if (term.isEmpty() || replacement.isNull()) {
            ++beeps;
            return;
        }
        rename([&](const QString &title) {
            QString result;
            for (qsizetype i = 0; i < title.size();) {
                const bool here =
                    i + term.size() <= title.size() && equal(title.mid(i, term.size()), term, ignoreCase);
                result += here ? replacement : title.mid(i, 1);
                i += here ? term.size() : 1;
            }
            return result;
        });
    }
    void addPrefix(const QString &prefix) {
        if (prefix.isNull()) {
            ++beeps;
            return;
        }
        rename([&](const QString &title) { return prefix + " " + title; });
    }
    /// The title of the only selected row, if there is one.
    void titleCaseSelectedRow() {
        if (!allowed || locked) {
            ++beeps;
            return;
        }
        for (const int id : selectedRows()) {
            Item &item = at(pathOf(id));
            item.title = titleCase(item.title);
        }
        edited = true;
    }
    /// Of a text of English letters, digits, blanks and dashes.
    static QString titleCase(const QString &text) {
        QString result;
        bool inWord = false;
        bool afterLetter = false;
        for (const QChar c : text) {
            if (!c.isLetterOrNumber()) inWord = false;
            afterLetter = inWord && afterLetter;
            result += afterLetter ? c.toLower() : c.toUpper();
            inWord = c.isLetterOrNumber();
            afterLetter = afterLetter || c.isLetter();
        }
        return result;
    }

    // Dragging

    /// Items that have been away are not dragged any more, even if they come back.
    void forgetWhatIsGone() {
        if (dragged_) std::erase_if(*dragged_, [this](int id) { return !has(id); });
    }
    void beginDragOfItems(const std::vector<int> &ids) { dragged_ = ids; }
    /// @param source whether the drag came from this outline. @return whether it was dropped
    bool dropItems(const Place &place, bool fromHere) {
        if (place.parent && isBelowDragged(*place.parent)) return false;
        return fromHere && dropOther(place);
    }
    bool dropSpot(const Place &place, const Item &item) {
        if (place.parent && place.childIndex < 0) {
            Item &target = at(*place.parent);
            target.label = item.label;
            target.point = item.point;
            target.isOfItsPage = false;
            edited = true;
            return true;
        }
        Path path = place.parent.value_or(Path());
        path.push_back(place.childIndex < 0 ? root.children.size() : static_cast<size_t>(place.childIndex));
        insert(item, path);
        return true;
    }
    /// Items whose drag was given up are dropped in place of the text.
    bool dropText(const Place &place, const Item &item) {
        new_ = item;
        return dropOther(place);
    }

private:
    static void walkBelow(Item &top, Path path, const Visit &visit) {
        path.push_back(0);
        for (Item &child : top.children) {
            visit(child, path);
            walkBelow(child, path, visit);
            ++path.back();
        }
    }
    static bool equal(const QString &a, const QString &b, bool ignoreCase) {
        return ignoreCase ? a.toLower() == b.toLower() : a == b;
    }
    static bool contains(const QString &title, const QString &term) {
        for (qsizetype i = 0; !term.isEmpty() && i + term.size() <= title.size(); ++i) {
            if (title.mid(i, term.size()) == term) return true;
        }
        return false;
    }

    /// Unfolds what items are in.
    void reveal(const std::vector<int> &ids) {
        for (const int id : ids) {
            for (Path above = pathOf(id); above.size() > 1;) {
                above.pop_back();
                at(above).unfolded = true;
                at(above).hadChildren = true;
            }
        }
    }
    void insert(Item item, Path path) {
        select({});
        item.selected = true;
        const auto position = static_cast<std::ptrdiff_t>(path.back());
        path.pop_back();
        std::vector<Item> &siblings = at(path).children;
        siblings.insert(siblings.begin() + position, std::move(item));
        reveal(selected());
        edited = true;
    }

    static std::optional<Item> takeFrom(std::vector<Item> &list, int id) {
        for (auto item = list.begin(); item != list.end(); ++item) {
            if (item->id == id) {
                Item taken = std::move(*item);
                list.erase(item);
                return taken;
            }
            if (auto taken = takeFrom(item->children, id)) return taken;
        }
        return std::nullopt;
    }
    /// Takes items out one by one, and puts them where a marker holds the gap.
    void move(const std::vector<int> &ids, const Path &parent, size_t gap) {
        constexpr int marker = -1;
        std::vector<Item> &target = at(parent).children;
        Item mark;
        mark.id = marker;
        target.insert(target.begin() + static_cast<std::ptrdiff_t>(gap), std::move(mark));
        std::vector<Item> taken;
        for (const int id : ids) {
            auto item = takeFrom(root.children, id);
            // Below one that was taken before.
            if (!item) item = takeFrom(taken, id);
            taken.push_back(std::move(item.value()));
        }
        Path place = pathOf(marker);
        const auto position = static_cast<std::ptrdiff_t>(place.back());
        place.pop_back();
        std::vector<Item> &siblings = at(place).children;
        siblings.erase(siblings.begin() + position);
        siblings.insert(siblings.begin() + position, std::make_move_iterator(taken.begin()),
                        std::make_move_iterator(taken.end()));
    }

    bool isBelowDragged(const Path &path) {
        const auto isAbove = [&](int id) { return has(id) && startsWith(path, pathOf(id)); };
        return dragged_ && std::any_of(dragged_->begin(), dragged_->end(), isAbove);
    }
    bool dropOther(const Place &place) {
        const Path parent = place.parent.value_or(Path());
        const size_t end = place.parent ? 0 : root.children.size();
        const size_t position = place.childIndex < 0 ? end : static_cast<size_t>(place.childIndex);
        if (dragged_) {
            if (isBelowDragged(parent)) return false;
            std::erase_if(*dragged_, [this](int id) { return !has(id); });
            move(*dragged_, parent, position);
            reveal(*dragged_);
            dragged_.reset();
            edited = true;
            return true;
        }
        if (!new_) return false;
        Path path = parent;
        path.push_back(position);
        insert(*new_, path);
        new_.reset();
        return true;
    }

    std::optional<std::vector<int>> dragged_;
    std::optional<Item> new_;
};

}  // namespace leafwright::test
