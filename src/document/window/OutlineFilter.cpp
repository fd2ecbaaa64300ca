#include "document/window/OutlineFilter.h"

#include "document/MyDocument.h"
#include "document/commands/ActionTable.h"
#include "document/outline/TitleFilter.h"
#include "model/TreeWalk.h"
#include "outlineview/OutlineView.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>

#include <algorithm>
#include <utility>

namespace leafwright {

namespace {

constexpr int margin = 4;
/// So many take a millisecond or two.
constexpr qsizetype titlesAtOnce = 5'000;

QString numberText(size_t number) {
    return QLocale().toString(static_cast<qulonglong>(number));
}

QString keysOf(const char *selector) {
    const QKeySequence keys(QString::fromLatin1(actionDescription(QString::fromLatin1(selector))->shortcut));
    return keys.toString(QKeySequence::NativeText);
}

}  // namespace

OutlineFilter::OutlineFilter(MyDocument &document, OutlineView &view)
    : document_(document), view_(view), field_(new QLineEdit), result_(new QLabel) {
    setObjectName(QStringLiteral("outlineFilter"));
    setWindowTitle(tr("Filter"));
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(margin, margin, margin, margin);
    line->setSpacing(margin);
    field_->setObjectName(QStringLiteral("filterField"));
    field_->setAccessibleName(tr("Filter of the outline"));
    field_->setPlaceholderText(tr("Filter (%1)").arg(keysOf("filterOutline:")));
    field_->setClearButtonEnabled(true);
    line->addWidget(field_, 1);
    result_->setObjectName(QStringLiteral("filterResult"));
    result_->setTextFormat(Qt::PlainText);
    result_->hide();
    line->addWidget(result_);
    connect(field_, &QLineEdit::textChanged, this, &OutlineFilter::look);
    again_.setSingleShot(true);
    again_.setInterval(0);
    connect(&again_, &QTimer::timeout, this, &OutlineFilter::look);
    const TreeController *tree = &document.treecontroller();
    connect(tree, &TreeController::emptied, this, [this] {
        if (!text().isEmpty()) again_.start();
    });
    counting_.setSingleShot(true);
    counting_.setInterval(0);
    connect(&counting_, &QTimer::timeout, this, &OutlineFilter::count);
    const auto countAgain = [this] {
        if (document_.treecontroller().isFiltered()) counting_.start();
    };
    connect(tree, &QAbstractItemModel::rowsInserted, this, countAgain);
    connect(tree, &QAbstractItemModel::rowsRemoved, this, countAgain);
    view.installEventFilter(this);
}

OutlineFilter::~OutlineFilter() = default;

QString OutlineFilter::text() const {
    return field_->text();
}

QString OutlineFilter::result() const {
    return result_->text();
}

void OutlineFilter::open() {
    field_->setFocus();
    field_->selectAll();
}

void OutlineFilter::clear() {
    field_->clear();
    view_.setFocus();
}

/// Looks for the entries that have the text of the field.
void OutlineFilter::look() {
    again_.stop();
    stop();
    if (text().isEmpty()) {
        const bool wereCurrent = titlesAreCurrent();
        view_.showAll();
        if (wereCurrent) titles_.structureRevision = document_.treecontroller().structureRevision();
        return tell({});
    }
    if (!titlesAreCurrent()) beginTitles();
    if (!readTitles()) return again_.start();
    thread_ = std::jthread([this, titles = titles_.filter, text = text()](const std::stop_token &stop) {
        std::vector<size_t> found = titles->matches(text, stop);
        if (stop.stop_requested()) return;
        {
            const std::lock_guard lock(mutex_);
            found_ = std::move(found);
        }
        // By its name, since a pointer would travel in memory of this thread, of which ThreadSanitizer does
        // not see that Qt hands it over.
        QMetaObject::invokeMethod(this, "takeMatches", Qt::QueuedConnection);
    });
}

/// The thread ends within the look at one title.
void OutlineFilter::stop() {
    thread_ = std::jthread();
    const std::lock_guard lock(mutex_);
    found_.reset();
}

void OutlineFilter::finish() {
    while (again_.isActive())
        look();
    while (thread_.joinable()) {
        thread_.join();
        takeMatches();
    }
    count();
}

bool OutlineFilter::titlesAreCurrent() const {
    return titles_.isBegun && titles_.structureRevision == document_.treecontroller().structureRevision() &&
           titles_.revision == document_.outline().edits().revision();
}

void OutlineFilter::beginTitles() {
    const TreeController &tree = document_.treecontroller();
    titles_ = {{}, {}, nullptr, true, tree.structureRevision(), document_.outline().edits().revision()};
    titles_.nodes.reserve(tree.nodeCount());
    titles_.read.reserve(static_cast<qsizetype>(tree.nodeCount()));
    walkBelow(tree.arrangedObjects(),
              [this](TreeNode &node, size_t /*depth*/) { titles_.nodes.push_back(&node); });
}

/// Reads some more. @return whether all are there
bool OutlineFilter::readTitles() {
    if (titles_.filter) return true;
    const auto count = static_cast<qsizetype>(titles_.nodes.size());
    const qsizetype end = std::min(count, titles_.read.size() + titlesAtOnce);
    while (titles_.read.size() < end)
        titles_.read.append(
            titles_.nodes[static_cast<size_t>(titles_.read.size())]->representedObject()->pageTitle());
    if (end < count) return false;
    titles_.filter = std::make_shared<TitleFilter>(std::exchange(titles_.read, {}));
    return true;
}

void OutlineFilter::takeMatches() {
    if (document_.isBusy()) {
        // No command finds another selection at its end than at its beginning.
        if (std::exchange(waits_, true)) return;
        document_.whenIdle([self = QPointer(this)] {
            if (self) self->takeMatches();
        });
        return;
    }
    waits_ = false;
    std::optional<std::vector<size_t>> found;
    {
        const std::lock_guard lock(mutex_);
        found = std::exchange(found_, std::nullopt);
    }
    if (!found) return;
    // What was looked through is not what is there now.
    if (!titlesAreCurrent()) return look();
    show(*found);
}

void OutlineFilter::show(const std::vector<size_t> &matches) {
    TreeController &tree = document_.treecontroller();
    std::vector<TreeNode *> nodes;
    nodes.reserve(matches.size());
    for (const size_t position : matches)
        nodes.push_back(titles_.nodes[position]);
    const size_t selected = tree.selectedNodes().size();
    view_.showOnly(nodes);
    titles_.structureRevision = tree.structureRevision();
    count();
    const size_t dropped = selected - tree.selectedNodes().size();
    if (dropped == 1) Q_EMIT told(tr("The selected entry is hidden by the filter, and selected no longer."));
    if (dropped > 1)
        Q_EMIT told(tr("%1 selected entries are hidden by the filter, and selected no longer.")
                        .arg(numberText(dropped)));
}

/// Tells how many entries have the text by now.
void OutlineFilter::count() {
    counting_.stop();
    const TreeController &tree = document_.treecontroller();
    if (tree.isFiltered())
        tell(tr("%1 of %2").arg(numberText(tree.matchCount()), numberText(tree.nodeCount())));
}

/// Goes from the field to the first entry that has the text.
void OutlineFilter::selectFirst() {
    finish();
    TreeController &tree = document_.treecontroller();
    if (TreeNode *first = tree.firstMatch()) tree.setSelectedNodes({first});
    view_.setFocus();
}

void OutlineFilter::tell(const QString &result) {
    result_->setText(result);
    result_->setVisible(!result.isEmpty());
    // Who can't see the field hears what it tells.
    field_->setAccessibleDescription(result);
    QAccessibleEvent event(field_, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

void OutlineFilter::keyPressEvent(QKeyEvent *event) {
    switch (event->key()) {
        case Qt::Key_Escape:
            clear();
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Down:
            selectFirst();
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}

bool OutlineFilter::eventFilter(QObject *watched, QEvent *event) {
    const auto *key = event->type() == QEvent::KeyPress ? dynamic_cast<QKeyEvent *>(event) : nullptr;
    if (watched != &view_ || !key || key->key() != Qt::Key_Escape || text().isEmpty())
        return QWidget::eventFilter(watched, event);
    clear();
    return true;
}

}  // namespace leafwright
