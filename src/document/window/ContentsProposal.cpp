#include "document/window/ContentsProposal.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QSplitter>
#include <QTableWidget>
#include <QTreeWidget>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace leafwright {

namespace {

constexpr int deepest = 99;
constexpr int indexRole = Qt::UserRole;  // of the entry among those shown, or the style's id
enum EntryColumn : int { TitleColumn, PageColumn, DoubtColumn };
enum StyleColumn : int { SampleColumn, CountColumn, LevelColumn, StyleColumns };

/// What speaks for an entry, for people.
QString evidenceOf(const ContentsEntry &entry) {
    QStringList sources;
    const auto add = [&](ContentsSource source, const QString &name) {
        if (entry.sources & source) sources.append(name);
    };
    add(PrintedSource, ContentsProposal::tr("printed contents"));
    add(StyleSource, ContentsProposal::tr("style of the heading"));
    add(LinkSource, ContentsProposal::tr("link"));
    add(NameSource, ContentsProposal::tr("named destination"));
    add(StructureSource, ContentsProposal::tr("structure of the PDF"));
    constexpr int hundred = 100;
    return ContentsProposal::tr("%1 % sure; found by: %2")
        .arg(qRound(entry.confidence * hundred))
        .arg(sources.join(QStringLiteral(", ")));
}

/// Whether the entry is of the outline that is there.
bool isExisting(const ContentsEntry &entry) {
    return entry.id < 0;
}

/// The items with what is below them, in order.
std::vector<QTreeWidgetItem *> itemsOf(QTreeWidget &tree) {
    std::vector<QTreeWidgetItem *> items;
    for (QTreeWidgetItemIterator item(&tree); *item; ++item)
        items.push_back(*item);
    return items;
}

/// A cell's item; a new one where there is none.
QTableWidgetItem &cellOf(QTableWidget &table, int row, int column) {
    if (!table.item(row, column)) table.setItem(row, column, new QTableWidgetItem);
    return *table.item(row, column);
}

QPushButton *makeButton(const QString &title, const QString &toolTip) {
    auto *button = new QPushButton(title);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return button;
}

void setHeader(QHeaderView &header, int stretched) {
    header.setStretchLastSection(false);
    header.setSectionResizeMode(QHeaderView::ResizeToContents);
    header.setSectionResizeMode(stretched, QHeaderView::Stretch);
    header.setHighlightSections(false);
    header.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

}  // namespace

ContentsProposal::ContentsProposal(Choose choose, QStringList pageLabels, Existing existing)
    : Sheet(tr("Find Contents")), choose_(std::move(choose)), pageLabels_(std::move(pageLabels)) {
    setObjectName(QStringLiteral("contentsSheet"));
    setAccessibleName(tr("Proposed outline"));
    setMinimumWidth(0);
    auto *lists = new QSplitter(Qt::Vertical);
    lists->setChildrenCollapsible(false);
    lists->addWidget(makeEntries());
    lists->addWidget(makeStyles());
    lists->setStretchFactor(0, 3);
    lists->setStretchFactor(1, 1);
    auto *column = qobject_cast<QBoxLayout *>(layout());
    column->insertWidget(0, lists, 1);
    addSwitches(existing);
    addButton(tr("Cancel"), 0);
    addButton(existing == Existing::Completed ? tr("Complete Outline") : tr("Use as Outline"), 1);
    chooseAnew();
    setFocusProxy(entries_);
}

ContentsProposal::~ContentsProposal() = default;

QWidget *ContentsProposal::makeEntries() {
    summary_ = new QLabel;
    summary_->setObjectName(QStringLiteral("contentsSummary"));
    summary_->setWordWrap(true);
    nextDoubtful_ = makeButton(tr("Next &Doubtful"), tr("Shows the next entry that is marked as doubtful"));
    entries_ = new QTreeWidget;
    entries_->setObjectName(QStringLiteral("contentsEntries"));
    entries_->setAccessibleName(tr("Proposed entries"));
    entries_->setHeaderLabels({tr("Title"), tr("Page"), QString()});
    entries_->headerItem()->setToolTip(DoubtColumn, tr("Whether the entry is doubtful"));
    entries_->setUniformRowHeights(true);
    entries_->setTextElideMode(Qt::ElideMiddle);
    setHeader(*entries_->header(), TitleColumn);
    acceptLike_ = makeButton(tr("&Accept All Like This"), tr("Takes every heading of the same style"));
    rejectLike_ = makeButton(tr("&Reject All Like This"), tr("Leaves out every heading of the same style"));
    acceptLike_->setObjectName(QStringLiteral("acceptAllLike"));
    rejectLike_->setObjectName(QStringLiteral("rejectAllLike"));
    nextDoubtful_->setObjectName(QStringLiteral("nextDoubtful"));
    connect(entries_, &QTreeWidget::itemChanged, this, &ContentsProposal::entryChanged);
    connect(entries_, &QTreeWidget::currentItemChanged, this, &ContentsProposal::lookAt);
    // The user may have scrolled away from it meanwhile.
    connect(entries_, &QTreeWidget::itemClicked, this, [this] { lookAt(entries_->currentItem()); });
    connect(entries_, &QTreeWidget::itemCollapsed, this,
            [this](const QTreeWidgetItem *item) { foldedEntries_.insert(entryOf(item)->id); });
    connect(entries_, &QTreeWidget::itemExpanded, this,
            [this](const QTreeWidgetItem *item) { foldedEntries_.remove(entryOf(item)->id); });
    connect(acceptLike_, &QPushButton::clicked, this, [this] { decideAllLikeCurrent(true); });
    connect(rejectLike_, &QPushButton::clicked, this, [this] { decideAllLikeCurrent(false); });
    connect(nextDoubtful_, &QPushButton::clicked, this, &ContentsProposal::goToNextDoubtful);

    auto *pane = new QWidget;
    auto *column = new QVBoxLayout(pane);
    column->setContentsMargins({});
    auto *head = new QHBoxLayout;
    head->addWidget(summary_, 1);
    head->addWidget(nextDoubtful_);
    auto *decisions = new QHBoxLayout;
    decisions->addWidget(acceptLike_);
    decisions->addWidget(rejectLike_);
    column->addLayout(head);
    column->addWidget(entries_);
    column->addLayout(decisions);
    return pane;
}

QWidget *ContentsProposal::makeStyles() {
    styles_ = new QTableWidget(0, StyleColumns);
    styles_->setObjectName(QStringLiteral("contentsStyles"));
    styles_->setAccessibleName(tr("Styles of headings"));
    styles_->setHorizontalHeaderLabels({tr("Style of headings"), tr("Found"), tr("Level")});
    styles_->setSelectionBehavior(QAbstractItemView::SelectRows);
    styles_->setTabKeyNavigation(false);
    styles_->setShowGrid(false);
    styles_->setWordWrap(false);
    styles_->verticalHeader()->hide();
    styles_->verticalHeader()->setDefaultSectionSize(styles_->fontMetrics().height() + 6);
    setHeader(*styles_->horizontalHeader(), SampleColumn);
    connect(styles_, &QTableWidget::cellChanged, this, &ContentsProposal::styleChanged);
    return styles_;
}

void ContentsProposal::addSwitches(Existing existing) {
    depth_ = new QSpinBox;
    depth_->setRange(0, deepest);
    depth_->setSpecialValueText(tr("All"));
    addField(tr("&Levels:"), depth_, QStringLiteral("depth"));
    deeper_ = new QCheckBox(tr("Dee&per than the printed contents"));
    addField({}, deeper_, QStringLiteral("deeper"));
    replace_ = new QCheckBox(tr("Replace the outline that &is there"));
    replace_->setChecked(existing == Existing::Replaced);
    addField({}, replace_, QStringLiteral("replace"));
    deeper_->setHidden(existing == Existing::Completed);
    replace_->setHidden(existing != Existing::Replaced);
    connect(depth_, &QSpinBox::valueChanged, this, &ContentsProposal::chooseAnew);
    connect(deeper_, &QCheckBox::toggled, this, &ContentsProposal::chooseAnew);
}

bool ContentsProposal::replaces() const {
    return replace_->isChecked();
}

ContentsOptions ContentsProposal::options() const {
    ContentsOptions options;
    options.maxDepth = depth_->value();
    options.depth = deeper_->isChecked() ? ContentsDepth::Deeper : ContentsDepth::Automatic;
    return options;
}

void ContentsProposal::chooseAnew() {
    ContentsChoices shown = choices_;
    shown.keepsRejected = true;
    showEntries(choose_(options(), shown));
    showStyles();
    showSummary();
}

const ContentsEntry *ContentsProposal::entryOf(const QTreeWidgetItem *item) const {
    return item ? &shown_.entries[item->data(TitleColumn, indexRole).toUInt()] : nullptr;
}

bool ContentsProposal::isDoubtful(const ContentsEntry &entry) const {
    return entry.confidence < doubtfulBelow && !choices_.entries.contains(entry.id) &&
           !choices_.styles.value(entry.style).accepted;
}

QTreeWidgetItem *ContentsProposal::makeEntryItem(size_t index) const {
    const ContentsEntry &entry = shown_.entries[index];
    auto *item = new QTreeWidgetItem({entry.title, pageLabels_.value(entry.pageIndex)});
    item->setData(TitleColumn, indexRole, static_cast<uint>(index));
    if (!isExisting(entry)) item->setCheckState(TitleColumn, entry.isRejected ? Qt::Unchecked : Qt::Checked);
    item->setToolTip(TitleColumn, isExisting(entry) ? entry.title : entry.title + u'\n' + evidenceOf(entry));
    showDoubt(*item);
    return item;
}

void ContentsProposal::showDoubt(QTreeWidgetItem &item) const {
    const ContentsEntry &entry = *entryOf(&item);
    const bool doubtful = isDoubtful(entry);
    QFont font = entries_->font();
    font.setItalic(doubtful);
    font.setStrikeOut(entry.isRejected);
    item.setFont(TitleColumn, font);
    item.setText(DoubtColumn, doubtful ? QStringLiteral("?") : QString());
    item.setToolTip(DoubtColumn, doubtful ? evidenceOf(entry) : QString());
}

void ContentsProposal::showEntries(FoundContents found) {
    const ContentsEntry *current = entryOf(entries_->currentItem());
    const bool hasCurrent = current != nullptr;  // an optional would be taken for uninitialized by GCC 12
    const int currentId = hasCurrent ? current->id : 0;
    const int scrolled = entries_->verticalScrollBar()->value();
    const QSignalBlocker quiet(entries_);
    shown_ = std::move(found);
    const QList<QTreeWidgetItem *> top = makeEntryItems();
    dropItems();
    entries_->addTopLevelItems(top);
    entries_->expandAll();
    entries_->verticalScrollBar()->setValue(scrolled);
    for (QTreeWidgetItem *item : itemsOf(*entries_)) {
        const int id = entryOf(item)->id;
        if (foldedEntries_.contains(id)) item->setExpanded(false);
        if (hasCurrent && id == currentId) entries_->setCurrentItem(item);
    }
}

/// Empties the tree. One of its items may just be telling that it was checked, and goes on when that is
/// heard.
void ContentsProposal::dropItems() {
    const auto dropped = std::make_shared<std::vector<std::unique_ptr<QTreeWidgetItem>>>();
    while (const int count = entries_->topLevelItemCount())
        dropped->emplace_back(entries_->takeTopLevelItem(count - 1));
    QMetaObject::invokeMethod(
        this, [dropped] { dropped->clear(); }, Qt::QueuedConnection);
}

/// The items of the top level with those below them.
QList<QTreeWidgetItem *> ContentsProposal::makeEntryItems() const {
    std::vector<std::pair<QTreeWidgetItem *, int>> above;  // with their levels
    QList<QTreeWidgetItem *> top;
    for (size_t i = 0; i < shown_.entries.size(); ++i) {
        const int level = shown_.entries[i].level;
        while (!above.empty() && above.back().second >= level)
            above.pop_back();
        QTreeWidgetItem *item = makeEntryItem(i);
        above.empty() ? top.append(item) : above.back().first->addChild(item);
        above.emplace_back(item, level);
    }
    return top;
}

void ContentsProposal::showStyles() {
    const QSignalBlocker quiet(styles_);
    if (styleOrder_.isEmpty()) {
        for (const bool accepted : {true, false}) {
            for (const HeadingStyle &style : shown_.styles)
                if (style.accepted == accepted) styleOrder_.append(style.id);
        }
        styles_->setRowCount(static_cast<int>(styleOrder_.size()));
    }
    for (const HeadingStyle &style : shown_.styles)
        showStyle(static_cast<int>(styleOrder_.indexOf(style.id)), style);
}

void ContentsProposal::showStyle(int row, const HeadingStyle &style) {
    QTableWidgetItem &sample = cellOf(*styles_, row, SampleColumn);
    QFont font = styles_->font();
    font.setBold(style.bold);
    font.setItalic(style.italic);
    sample.setText(style.sample);
    sample.setFont(font);
    sample.setToolTip(tr("%1, %2 points").arg(style.family).arg(style.size));
    sample.setData(indexRole, style.id);
    sample.setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    sample.setCheckState(style.accepted ? Qt::Checked : Qt::Unchecked);
    QTableWidgetItem &count = cellOf(*styles_, row, CountColumn);
    count.setData(Qt::DisplayRole, style.count);
    count.setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    QTableWidgetItem &level = cellOf(*styles_, row, LevelColumn);
    level.setData(Qt::EditRole, style.accepted ? QVariant(style.level) : QVariant());
    level.setFlags(style.accepted ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable
                                  : Qt::ItemIsEnabled | Qt::ItemIsSelectable);
}

void ContentsProposal::showSummary() {
    const auto wanted =
        std::ranges::count_if(shown_.entries, [](const auto &each) { return !each.isRejected; });
    const auto doubtful =
        std::ranges::count_if(shown_.entries, [this](const auto &each) { return isDoubtful(each); });
    summary_->setText(tr("Entries: %1, of which doubtful: %2").arg(wanted).arg(doubtful));
    nextDoubtful_->setEnabled(doubtful > 0);
    const bool hasCurrent = entries_->currentItem();
    acceptLike_->setEnabled(hasCurrent);
    rejectLike_->setEnabled(hasCurrent);
}

void ContentsProposal::lookAt(const QTreeWidgetItem *item) {
    const ContentsEntry *entry = entryOf(item);
    if (!entry) return;
    const auto row = styleOrder_.indexOf(entry->style);
    row >= 0 ? styles_->selectRow(static_cast<int>(row)) : styles_->clearSelection();
    showSummary();
    Q_EMIT entryChosen(*entry);
}

void ContentsProposal::entryChanged(QTreeWidgetItem *item) {
    choices_.entries.insert(entryOf(item)->id, item->checkState(TitleColumn) == Qt::Checked);
    chooseAnew();
}

void ContentsProposal::styleChanged(int row, int column) {
    const QTableWidgetItem *sample = styles_->item(row, SampleColumn);
    StyleChoice &choice = choices_.styles[sample->data(indexRole).toInt()];
    if (column == SampleColumn) choice.accepted = sample->checkState() == Qt::Checked;
    if (column == LevelColumn) {
        const int level = styles_->item(row, LevelColumn)->data(Qt::EditRole).toInt();
        choice.level = level > 0 ? std::optional(level) : std::nullopt;
    }
    chooseAnew();
}

void ContentsProposal::decideAllLikeCurrent(bool wanted) {
    const ContentsEntry *current = entryOf(entries_->currentItem());
    if (!current) return;
    const int style = current->style;
    for (const ContentsEntry &entry : shown_.entries) {
        if (entry.style != style) continue;
        // Entries of which no heading was found are alike in that.
        style < 0 ? void(choices_.entries.insert(entry.id, wanted)) : void(choices_.entries.remove(entry.id));
    }
    if (style >= 0) choices_.styles[style].accepted = wanted;
    chooseAnew();
}

void ContentsProposal::goToNextDoubtful() {
    const std::vector<QTreeWidgetItem *> items = itemsOf(*entries_);
    const auto current = std::ranges::find(items, entries_->currentItem());
    const auto next = current == items.end() ? items.begin() : current + 1;
    const auto doubtful = [this](const QTreeWidgetItem *item) { return isDoubtful(*entryOf(item)); };
    auto found = std::find_if(next, items.end(), doubtful);
    if (found == items.end()) found = std::find_if(items.begin(), next, doubtful);
    if (found != items.end()) entries_->setCurrentItem(*found);
}

}  // namespace leafwright
