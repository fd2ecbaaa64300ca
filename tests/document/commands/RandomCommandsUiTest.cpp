#include "categories/SelectionFont.h"
#include "document/commands/BatchRenaming.h"
#include "document/commands/NaiveOutline.h"
#include "document/commands/SelectionCommands.h"
#include "document/commands/StructuralEdits.h"
#include "document/window/OutlineDelegate.h"
#include "support/WindowFixture.h"
#include "view/SpotArchive.h"

#include <QCheckBox>
#include <QColor>
#include <QLineEdit>
#include <QSpinBox>

#include <gtest/gtest.h>
#include <random>
#include <set>

namespace leafwright {
namespace {

using test::NaiveOutline;
using test::PdfBuilder;

/// A small tree is kept at a size; the other one begins with nothing and grows.
struct Run {
    unsigned seed;
    bool grows;
};

void PrintTo(const Run &run, std::ostream *out) {
    *out << (run.grows ? "growing, seed " : "small, seed ") << run.seed;
}

/// Gives the same commands to a document with its window and to a naive outline, and compares them.
class RandomCommands : public test::WindowFixture, public testing::WithParamInterface<Run> {
protected:
    struct Command {
        int weight;
        const char *name;
        std::function<void()> run;
    };
    using Rule = std::function<bool()>;
    using Do = std::function<void()>;

    void SetUp() override {
        PdfBuilder pdf;
        for (const char *word : headings) {
            pdf.addPage(PdfBuilder::showText("F2", 24, 72, 700, word) +
                        PdfBuilder::showText("F1", 10, 72, 660, "second line") +
                        PdfBuilder::showText("F1", 10, 72, 640, "third"));
        }
        open(pdf);
        // Another number in the environment gives other runs.
        random.seed(GetParam().seed + unsigned(qEnvironmentVariableIntValue("LEAFWRIGHT_SEED")));
        if (!GetParam().grows) fill(naive.root, 12);
        for (std::unique_ptr<MyOutlineItem> &item : copiesOf(naive.root.children))
            document.edits().insert(document.root(), document.root().children().size(), std::move(item));
        document.edits().forgetHistory();
        document.updateChangeCount(Document::Change::Cleared);
    }

    // Chance

    size_t below(size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(random); }
    bool oneIn(size_t many) { return below(many) == 0; }
    template <typename Element>
    Element any(const std::vector<Element> &of) {
        return of[below(of.size())];
    }

    NaiveOutline::Item newItem(const QString &title, const QString &label, const QPointF &point) {
        NaiveOutline::Item item;
        item.id = ++lastId;
        item.title = title;
        item.label = label;
        item.point = point;
        return item;
    }
    void fill(NaiveOutline::Item &parent, int count) {
        for (int i = 0; i < count; ++i) {
            const QString title = QStringLiteral("item %1").arg(lastId + 1);
            parent.children.push_back(newItem(title, QString::number(lastId), {double(lastId), 5}));
            if (oneIn(3)) fill(parent.children.back(), count / 4);
        }
    }
    static MyOutlineItem::Children copiesOf(const std::vector<NaiveOutline::Item> &list) {
        MyOutlineItem::Children items;
        for (const NaiveOutline::Item &each : list) {
            items.push_back(std::make_unique<MyOutlineItem>());
            items.back()->setPageTitle(each.title);
            items.back()->setPageLabel(each.label);
            items.back()->setPointOnPage(each.point);
            items.back()->setChildren(copiesOf(each.children));
        }
        return items;
    }

    // Both sides

    static IndexPath indexPath(const NaiveOutline::Path &path) {
        return IndexPath::indexPathWithIndexes({path.begin(), path.end()});
    }
    TreeNode *nodeAt(const NaiveOutline::Path &path) { return node(indexPath(path)); }

    void selectBoth(const std::vector<int> &ids) {
        std::vector<IndexPath> paths;
        for (const int id : ids)
            paths.push_back(indexPath(naive.pathOf(id)));
        select(paths);
        naive.select(ids);
        before = naive.root;
    }
    /// Mostly a few items, as people select; sometimes nothing, or a lot.
    void selectSomething() {
        const std::vector<int> all = oneIn(4) ? naive.all() : naive.rows();
        if (all.empty()) return;
        std::vector<int> ids;
        const size_t kind = below(12);
        if (kind == 0) {
            selectBoth({});
            return;
        }
        if (kind < 5) {
            ids = {any(all)};
        } else if (kind < 9) {
            const size_t first = below(all.size());
            const size_t last = std::min(all.size(), first + 1 + below(5));
            ids.assign(all.begin() + qsizetype(first), all.begin() + qsizetype(last));
        } else {
            const size_t part = kind == 9 && all.size() < 100 ? 2 : 1 + all.size() / 6;
            std::copy_if(all.begin(), all.end(), std::back_inserter(ids), [&](int) { return oneIn(part); });
        }
        selectBoth(ids);
    }

    /// Chooses a command, from its menu or directly.
    void perform(const char *selector, const Rule &isEnabled, const Do &direct, const Do &inModel) {
        if (oneIn(2)) {
            const bool enabled = isEnabled();
            ASSERT_EQ(document.actions().perform(selector), enabled);
            if (enabled) inModel();
        } else {
            direct();
            inModel();
        }
    }
    bool anyRowSelected() { return !naive.selectedRows().empty(); }
    bool oneParentSelected() {
        const std::vector<int> ids = naive.selectedRows();
        return ids.size() == 1 && !naive.at(naive.pathOf(ids.front())).children.empty();
    }
    Command structural(int weight, const char *selector, void (StructuralEdits::*direct)(),
                       void (NaiveOutline::*inModel)()) {
        return {weight, selector, [=, this] {
                    perform(
                        selector, [this] { return anyRowSelected(); },
                        [=, this] { (document.structuralEdits().*direct)(); },
                        [=, this] { (naive.*inModel)(); });
                }};
    }

    // Pages

    void turnPage() { document.pdfview()->goToPage(document.pdfDoc()->page(int(below(headings.size())))); }
    NaiveOutline::Item itemForCurrentPage() {
        const QString label = document.pdfview()->currentPage()->label();
        NaiveOutline::Item item = newItem(headings.at(size_t(label.toInt()) - 1), label, {});
        item.isOfItsPage = true;
        return item;
    }
    /// Selects all three lines of a page. @return what is added for them
    NaiveOutline::Item selectText() {
        const PDFPage &page = *document.pdfDoc()->page(int(below(headings.size())));
        const QString text = page.text()->attributedString.string.trimmed();
        const PDFSelection selection = page.selectionForRange({0, int(text.size())});
        document.pdfview()->setCurrentSelection(selection);
        const QString title = headings.at(size_t(page.index())) + QStringLiteral(" second line third");
        NaiveOutline::Item item = newItem(title, page.label(), topLeftPoint(selection));
        item.isOfItsPage = true;
        return item;
    }

    // Drags

    NaiveOutline::Place somewhere() {
        NaiveOutline::Place place;
        const std::vector<int> all = naive.all();
        if (!all.empty() && !oneIn(3)) place.parent = naive.pathOf(any(all));
        const size_t count = naive.at(place.parent.value_or(NaiveOutline::Path())).children.size();
        place.childIndex = int(below(count + 2)) - 1;
        return place;
    }
    /// Drags to a place, and lets go there if that is allowed. @return whether it was dropped
    bool drag(const QMimeData &data, const QObject *source, const char *className,
              const NaiveOutline::Place &place) {
        OutlineView &view = *document.outlineview();
        TreeNode *parent = place.parent ? nodeAt(*place.parent) : nullptr;
        const DraggingInfo info{&data, source, className};
        OutlineDelegate &delegate = document.outlineDelegate();
        return delegate.outlineViewValidateDrop(view, info, parent, place.childIndex) !=
                   DragOperation::None &&
               delegate.outlineViewAcceptDrop(view, info, parent, place.childIndex);
    }
    void dragItems() {
        std::vector<int> ids = naive.selectedRows();
        if (ids.empty()) return;
        std::vector<TreeNode *> nodes;
        for (const int id : ids)
            nodes.push_back(nodeAt(naive.pathOf(id)));
        QMimeData data;
        document.outlineDelegate().outlineViewWriteItems(*document.outlineview(), nodes, data);
        naive.beginDragOfItems(ids);
        const NaiveOutline::Place place = somewhere();
        const bool fromHere = !oneIn(8);
        const QObject elsewhere;
        const bool dropped =
            drag(data, fromHere ? document.outlineview() : &elsewhere, "OKNSOutlineView", place);
        ASSERT_EQ(dropped, naive.dropItems(place, fromHere));
        (dropped ? drops : refusals) += 1;
    }
    void dragSpot() {
        const Spot spot{{double(below(500)), double(below(700)) + 0.5}, QString::number(below(9))};
        QMimeData data;
        data.setData(NSPOINT_PBOARD_TYPE, archivedSpot(spot));
        const NaiveOutline::Place place = somewhere();
        const bool dropped = drag(data, document.pdfview(), "LabelPDFView", place);
        ASSERT_EQ(dropped, naive.dropSpot(place, newItem("New Dragged Target", spot.pageLabel, spot.point)));
    }
    void dragText() {
        const NaiveOutline::Item item = selectText();
        QMimeData data;
        data.setText("whatever");
        const NaiveOutline::Place place = somewhere();
        ASSERT_EQ(drag(data, document.pdfview(), "PDFViewTextDrag", place), naive.dropText(place, item));
    }

    // Titles

    void number() {
        const QString prefix = any<QString>({"Ch", "", QString()});
        const QString between = any<QString>({" ", "-", ""});
        const QString behind = any<QString>({") ", " ", ""});
        const int first = int(below(20)) - 5;
        const int step = int(below(7)) - 3;
        document.batchRenaming().renameSelectedTOCItemsWithPrefix({prefix, between, behind}, first, step);
        naive.number(prefix, first, step, between, behind);
    }
    void replace() {
        const QString term = any<QString>({"item", "ITEM", "1", "em", "", " "});
        const QString by = any<QString>({"Item", "x", "", QString(), "2 2"});
        const bool ignoreCase = oneIn(2);
        document.batchRenaming().renameSelectedTOCItemsWithFindTerm(term, ignoreCase, by);
        naive.replace(term, ignoreCase, by);
    }
    void addPrefix() {
        const QString prefix = any<QString>({"pre", "", QString()});
        document.batchRenaming().renameSelectedTOCItemsWithPrefix(prefix);
        naive.addPrefix(prefix);
    }
    Command changeCase(const char *selector, void (BatchRenaming::*direct)(),
                       QString (*inModel)(const QString &)) {
        return {1, selector, [=, this] {
                    perform(
                        selector, [this] { return anyRowSelected(); },
                        [=, this] { (document.batchRenaming().*direct)(); },
                        [=, this] { naive.rename(inModel); });
                }};
    }
    template <typename Field>
    Field &field(const char *name) {
        return *qobject_cast<Field *>(document.openSheet()->field(name));
    }
    /// A renaming command through its sheet, which is cancelled half of the time.
    void renameInSheet() {
        if (!anyRowSelected()) return;
        const size_t which = below(3);
        const char *selectors[] = {"renameSequentialNumbering:", "renameFindReplace:", "renameAddPrefix:"};
        ASSERT_TRUE(document.actions().perform(selectors[which]));
        const int tag = int(below(2));
        if (which == 0) {
            field<QSpinBox>("sequentialNumberingFirstNumberField").setValue(10);
            field<QSpinBox>("sequentialNumberingStepValueField").setValue(-5);
            if (tag != 0) naive.number("Ch", 10, -5, " ", ". ");
        } else if (which == 1) {
            field<QLineEdit>("findReplaceFindTermText").setText("ch");
            field<QLineEdit>("findReplaceReplaceTermText").setText("c-h");
            field<QCheckBox>("findReplaceIgnoreCaseCheck").setChecked(true);
            if (tag != 0) naive.replace("ch", true, "c-h");
        } else if (tag != 0) {
            naive.addPrefix("Ch");
        }
        ASSERT_TRUE(document.openSheet()->pressButton(tag));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    /// Types a title, or a label, in the row of any item.
    void typeInPlace() {
        if (naive.root.children.empty() || naive.locked) return;  // no field opens while it is locked
        const int id = any(naive.all());
        const bool isTitle = oneIn(2);
        const QString text =
            isTitle ? any<QString>({"typed", "item 1", ""}) : any<QString>({"1", "3", "nowhere", ""});
        const int column = isTitle ? TreeController::TitleColumn : TreeController::PageColumn;
        TreeController &tree = document.treecontroller();
        ASSERT_TRUE(tree.setData(tree.indexForNode(*nodeAt(naive.pathOf(id)), column), text));
        isTitle ? naive.typeTitle(id, text) : naive.typeLabel(id, text);
    }
    Command toggle(const char *selector, bool NaiveOutline::Item::*inModel) {
        return {1, selector, [=, this] {
                    const bool enabled = anyRowSelected();
                    ASSERT_EQ(document.actions().perform(selector), enabled);
                    if (enabled) naive.toggle(inModel);
                }};
    }
    /// A colour through its sheet, or none.
    void chooseColor() {
        if (!anyRowSelected()) return;
        ASSERT_TRUE(document.actions().perform("chooseTitleColor:"));
        enum Answer { Cancel, Take, TakeAway };
        const auto answer = any<Answer>({Cancel, Take, TakeAway});
        const QString color = any<QString>({"#ff0000", "#0000ff"});
        field<QLineEdit>("titleColorField").setText(color);
        if (answer != Cancel) naive.paint(answer == Take ? color : QString());
        ASSERT_TRUE(document.openSheet()->pressButton(answer));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static QString nameOf(const std::optional<OutlineEntry::Color> &color) {
        return color ? QColor::fromRgbF(float((*color)[0]), float((*color)[1]), float((*color)[2])).name()
                     : QString();
    }
    /// Titles grow with every prefix and number; someone types new ones in time.
    void shortenTitles() {
        const OutlineEdits::Transaction edit(document.edits(), "shorten", OutlineEdits::Counting::No);
        naive.walk([this](NaiveOutline::Item &item, const NaiveOutline::Path &path) {
            constexpr qsizetype longest = 60;
            if (item.title.size() < longest) return;
            item.title = QStringLiteral("item %1").arg(item.id);
            document.edits().setPageTitle(*nodeAt(path)->representedObject(), item.title);
        });
    }

    // Steps back and forward

    /// A change, as the model knows it: all that there was on the other side of it.
    struct Step {
        NaiveOutline::Item root;
        int revisionBefore;
        int revisionAfter;
    };
    static bool saySame(const NaiveOutline::Item &a, const NaiveOutline::Item &b) {
        return a.id == b.id && a.title == b.title && a.label == b.label && a.point == b.point &&
               a.isOfItsPage == b.isOfItsPage && a.bold == b.bold && a.italic == b.italic &&
               a.openInViewers == b.openInViewers && a.color == b.color &&
               std::equal(a.children.begin(), a.children.end(), b.children.begin(), b.children.end(),
                          saySame);
    }
    void beginChange() {
        before = naive.root;
        naive.edited = false;
    }
    /// Notes what was changed since, as one step.
    void endChange() {
        const int old = revision;
        if (naive.edited) revision = ++lastRevision;
        if (!saySame(before, naive.root)) {
            past.push_back({before, old, revision});
            future.clear();
        } else if (naive.edited && !past.empty()) {
            past.back().revisionAfter = revision;
        }
        naive.edited = revision != saved;
        naive.forgetWhatIsGone();
    }
    void step(const char *selector, std::vector<Step> &from, std::vector<Step> &to, int Step::*revisionThen) {
        const bool enabled = naive.allowed && !naive.locked && !from.empty();
        document.myWindow()->updateActions();
        ASSERT_EQ(document.actions().perform(selector), enabled);
        if (!enabled) return;
        ++steps;
        Step taken = std::move(from.back());
        from.pop_back();
        std::swap(taken.root, naive.root);
        revision = taken.*revisionThen;
        to.push_back(std::move(taken));
        before = naive.root;
        naive.forgetWhatIsGone();
    }
    void stepBack() { step("stepBack:", past, future, &Step::revisionBefore); }
    void stepForward() { step("stepForward:", future, past, &Step::revisionAfter); }

    // Commands

    std::vector<Command> commands() {
        std::vector<Command> all = structuralCommands();
        for (auto group : {titleCommands(), selectionCommands(), otherCommands()})
            all.insert(all.end(), group.begin(), group.end());
        return all;
    }
    std::vector<Command> structuralCommands() {
        const Rule always = [] { return true; };
        const int adding = GetParam().grows ? 8 : 3;
        return {
            structural(6, "moveLeft:", &StructuralEdits::moveLeft, &NaiveOutline::moveLeft),
            structural(6, "moveRight:", &StructuralEdits::moveRight, &NaiveOutline::moveRight),
            structural(6, "moveUp:", &StructuralEdits::moveUp, &NaiveOutline::moveUp),
            structural(6, "moveDown:", &StructuralEdits::moveDown, &NaiveOutline::moveDown),
            {adding, "addSiblingOutlineItem:",
             [=, this] {
                 const NaiveOutline::Item item = itemForCurrentPage();
                 perform(
                     "addSiblingOutlineItem:", always,
                     [this] { document.structuralEdits().addSiblingOutlineItem(); },
                     [&] { naive.addSibling(item); });
             }},
            {adding, "addChildOutlineItem:",
             [=, this] {
                 const NaiveOutline::Item item = itemForCurrentPage();
                 perform(
                     "addChildOutlineItem:", always,
                     [this] { document.structuralEdits().addChildOutlineItem(); },
                     [&] { naive.addChild(item); });
             }},
            {adding, "addSelectedTextAsTOCSibling:",
             [this] {
                 const NaiveOutline::Item item = selectText();
                 ASSERT_TRUE(document.actions().perform("addSelectedTextAsTOCSibling:"));
                 naive.insertBesideSelection(item);
             }},
            {adding, "addSelectedTextAsTOCChild:",
             [this] {
                 const NaiveOutline::Item item = selectText();
                 ASSERT_TRUE(document.actions().perform("addSelectedTextAsTOCChild:"));
                 naive.insertBelowSelection(item);
             }},
            {GetParam().grows ? 1 : 3, "removeOutlineItems:",
             [this] {
                 // A tree that shall grow loses few at a time.
                 if (GetParam().grows && naive.selectedRows().size() > 2) return;
                 perform(
                     "removeOutlineItems:", [this] { return anyRowSelected(); },
                     [this] { document.structuralEdits().removeOutlineItems(); }, [this] { naive.remove(); });
             }},
            {4, "promoteChildrenOutlineItem:",
             [this] {
                 perform(
                     "promoteChildrenOutlineItem:", [this] { return oneParentSelected(); },
                     [this] { document.structuralEdits().promoteChildrenOutlineItem(); },
                     [this] { naive.promoteChildren(); });
             }},
            {1, "removeNodeAtIndexPath:",
             [this] {
                 if (naive.root.children.empty()) return;
                 const NaiveOutline::Path path = naive.pathOf(any(naive.all()));
                 if (GetParam().grows && !naive.at(path).children.empty()) return;
                 document.structuralEdits().removeNodeAtIndexPath(indexPath(path));
                 naive.removeAt(path);
             }},
        };
    }
    std::vector<Command> titleCommands() {
        return {
            {1, "number sequentially", [this] { number(); }},
            {2, "find and replace", [this] { replace(); }},
            {1, "add prefix", [this] { addPrefix(); }},
            {1, "a renaming sheet", [this] { renameInSheet(); }},
            changeCase("changeCaseToTitleCase:", &BatchRenaming::changeCaseToTitleCase,
                       NaiveOutline::titleCase),
            changeCase("changeCaseToUpperCase:", &BatchRenaming::changeCaseToUpperCase,
                       [](const QString &title) { return title.toUpper(); }),
            changeCase("changeCaseToLowerCase:", &BatchRenaming::changeCaseToLowerCase,
                       [](const QString &title) { return title.toLower(); }),
            {3, "type in place", [this] { typeInPlace(); }},
            toggle("toggleBold:", &NaiveOutline::Item::bold),
            toggle("toggleItalic:", &NaiveOutline::Item::italic),
            toggle("toggleOpenInViewers:", &NaiveOutline::Item::openInViewers),
            {1, "chooseTitleColor:", [this] { chooseColor(); }},
            {1, "changeOutlineItemToTitleCase:",
             [this] {
                 // Which of several selected rows is meant is the view's business.
                 const std::vector<int> ids = naive.selectedRows();
                 if (ids.size() > 1) selectBoth({any(ids)});
                 ASSERT_TRUE(document.actions().perform("changeOutlineItemToTitleCase:"));
                 naive.titleCaseSelectedRow();
             }},
        };
    }
    std::vector<Command> selectionCommands() {
        std::vector<Command> all{
            {40, "select", [this] { selectSomething(); }},
            {1, "selectTOCAll:",
             [this] {
                 ASSERT_TRUE(document.actions().perform("selectTOCAll:"));
                 naive.selectAll();
             }},
            {1, "search",
             [this] {
                 const QString term = any<QString>({"item", "Item 1", "line", "", "nowhere", "x"});
                 document.selectionCommands().searchAndSelect(term);
                 naive.search(term);
             }},
        };
        const char *levels[] = {"selectTOCOnlyLevel1:", "selectTOCOnlyLevel2:", "selectTOCOnlyLevel3:"};
        for (size_t level = 1; level <= 3; ++level) {
            const char *selector = levels[level - 1];
            all.push_back({1, selector, [=, this] {
                               ASSERT_TRUE(document.actions().perform(selector));
                               naive.selectLevel(level);
                           }});
        }
        const std::pair<const char *, bool> foldings[] = {{"applyTOCExpand:", true},
                                                          {"applyTOCCollapse:", false}};
        for (const auto &[selector, unfolds] : foldings) {
            all.push_back({unfolds ? 6 : 2, selector, [=, this] {
                               ASSERT_EQ(document.actions().perform(selector), anyRowSelected());
                               naive.setUnfolded(unfolds);
                           }});
        }
        return all;
    }
    std::vector<Command> otherCommands() {
        return {
            {6, "drag items", [this] { dragItems(); }},
            {3, "drag a spot", [this] { dragSpot(); }},
            {2, "drag text", [this] { dragText(); }},
            {2, "turn the page", [this] { turnPage(); }},
            {1, "handle events", [] { QCoreApplication::processEvents(); }},
            {4, "save",
             [this] {
                 document.updateChangeCount(Document::Change::Cleared);
                 saved = revision;
             }},
            {5, "stepBack:", [this] { stepBack(); }},
            {5, "stepForward:", [this] { stepForward(); }},
            {1, "back to the beginning, and to the end",
             [this] {
                 if (!naive.allowed || naive.locked) return;
                 while (!past.empty() && !HasFailure())
                     stepBack();
                 naive.edited = revision != saved;
                 check();
                 naive.edited = false;  // Steps count nothing.
                 while (!future.empty() && !HasFailure())
                     stepForward();
             }},
            {1, "forbid editing",
             [this] {
                 naive.allowed = !naive.allowed || !oneIn(3);
                 naive.locked = naive.allowed && oneIn(3);
                 document.setAllowTOCediting(naive.allowed);
                 document.setLockTOCediting(naive.locked);
             }},
        };
    }

    /// Takes the last items away from a tree that adding has made too large.
    void keepSmall() {
        constexpr size_t largest = 60;
        while (naive.size() > largest) {
            beginChange();
            const NaiveOutline::Path path = naive.pathOf(naive.all().back());
            document.structuralEdits().removeNodeAtIndexPath(indexPath(path));
            naive.removeAt(path);
            endChange();
        }
    }

    // Comparing

    void compare(NaiveOutline::Item &wanted, const TreeNode &found) {
        ASSERT_EQ(found.childCount(), wanted.children.size()) << qPrintable(wanted.title);
        for (size_t row = 0; row < wanted.children.size(); ++row) {
            NaiveOutline::Item &child = wanted.children[row];
            const TreeNode &childNode = *found.childNodes()[row];
            const MyOutlineItem &item = *childNode.representedObject();
            ASSERT_EQ(item.pageTitle(), child.title);
            ASSERT_EQ(item.pageLabel(), child.label) << qPrintable(child.title);
            ASSERT_EQ(item.pointOnPage(), child.point) << qPrintable(child.title);
            ASSERT_EQ(item.entry().bold, child.bold) << qPrintable(child.title);
            ASSERT_EQ(item.entry().italic, child.italic) << qPrintable(child.title);
            ASSERT_EQ(item.entry().open, child.openInViewers) << qPrintable(child.title);
            ASSERT_EQ(nameOf(item.entry().color), child.color) << qPrintable(child.title);
            ASSERT_EQ(selectedItems.contains(&item), child.selected) << qPrintable(child.title);
            const bool unfolded = document.outlineview()->isItemExpanded(childNode);
            if (child.hadChildren && !child.children.empty()) {
                ASSERT_EQ(unfolded, child.unfolded) << qPrintable(child.title);
            }
            child.unfolded = unfolded;
            child.hadChildren = !child.children.empty();
            compare(child, childNode);
            if (HasFatalFailure()) return;
        }
    }
    void check() {
        const std::vector<TreeNode *> nodes = document.treecontroller().selectedNodes();
        std::vector<IndexPath> paths;
        selectedItems.clear();
        for (const TreeNode *each : nodes) {
            selectedItems.insert(each->representedObject());
            paths.push_back(each->indexPath());
        }
        ASSERT_TRUE(std::is_sorted(paths.begin(), paths.end()));
        compare(naive.root, document.treecontroller().arrangedObjects());
        ASSERT_EQ(document.isDocumentEdited(), naive.edited);
        ASSERT_EQ(platform.beeps, naive.beeps);
        ASSERT_FALSE(document.shouldIgnoreKVO());
    }

    const std::vector<const char *> headings{"Alpha", "Beta", "Gamma", "Delta"};
    std::mt19937 random;
    NaiveOutline naive;
    std::set<const MyOutlineItem *> selectedItems;
    int lastId = 0;
    NaiveOutline::Item before;  ///< The model's outline when the command began.
    std::vector<Step> past;
    std::vector<Step> future;
    int revision = 0;
    int lastRevision = 0;
    int saved = 0;
    int steps = 0;
    int drops = 0;
    int refusals = 0;
};

constexpr int commandsARun = 2'000;

TEST_P(RandomCommands, GiveWhatANaiveOutlineGives) {
    const std::vector<Command> all = commands();
    std::vector<int> weights;
    for (const Command &command : all)
        weights.push_back(command.weight);
    std::discrete_distribution<size_t> chosen(weights.begin(), weights.end());
    for (int number = 0; number < commandsARun; ++number) {
        const Command &command = all[chosen(random)];
        beginChange();
        command.run();
        endChange();
        check();
        ASSERT_FALSE(HasFailure()) << "after " << command.name << ", command " << number;
        beginChange();
        shortenTitles();
        endChange();
        if (!GetParam().grows) keepSmall();
    }
    EXPECT_GT(drops, 20);
    EXPECT_GT(refusals, 5);
    EXPECT_GT(steps, 100);
    constexpr size_t grown = 200;
    EXPECT_TRUE(!GetParam().grows || naive.size() > grown) << naive.size();
}

std::string seedOf(const testing::TestParamInfo<Run> &run) {
    return "Seed" + std::to_string(run.param.seed);
}

INSTANTIATE_TEST_SUITE_P(SmallTree, RandomCommands,
                         testing::Values(Run{1, false}, Run{2, false}, Run{3, false}, Run{4, false},
                                         Run{5, false}),
                         seedOf);
INSTANTIATE_TEST_SUITE_P(GrowingTree, RandomCommands,
                         testing::Values(Run{11, true}, Run{12, true}, Run{13, true}, Run{14, true},
                                         Run{15, true}),
                         seedOf);

}  // namespace
}  // namespace leafwright
