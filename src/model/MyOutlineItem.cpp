#include "model/MyOutlineItem.h"

#include "model/FixedDecimals.h"
#include "model/TreeWalk.h"

#include <QLoggingCategory>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace leafwright {

namespace {

Q_LOGGING_CATEGORY(log, "leafwright.outline", QtWarningMsg)

constexpr QLatin1String childrenKey("children");

/// The value of the digits at the start of a text, 0 if there are none.
qint32 leadingInteger(QStringView text) {
    qint64 value = 0;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9') break;
        value = std::min<qint64>(value * 10 + (c.unicode() - u'0'), INT32_MAX);
    }
    return static_cast<qint32>(value);
}

}  // namespace

MyOutlineItem::MyOutlineItem() : pageTitle_(QStringLiteral("Untitled")), pageLabel_(QStringLiteral("1")) {}

MyOutlineItem::MyOutlineItem(QString title, const PageTarget &target)
    : pageTitle_(std::move(title)),
      pageLabel_(target.label),
      pointOnPage_(target.point.value_or(QPointF())),
      importedPage_(target.importedPage.value_or(noPage)) {}

MyOutlineItem::~MyOutlineItem() {
    // A tree as deep as a hostile file likes must not become a chain of calls.
    Children doomed = std::move(children_);
    while (!doomed.empty()) {
        const std::unique_ptr<MyOutlineItem> item = std::move(doomed.back());
        doomed.pop_back();
        std::move(item->children_.begin(), item->children_.end(), std::back_inserter(doomed));
        item->children_.clear();
    }
}

std::unique_ptr<MyOutlineItem> MyOutlineItem::initWithPlusString(const QString &line) {
    const QStringList fields = line.split(u' ');
    if (fields.size() < 3) return nullptr;
    if (fields[1].isEmpty()) throw std::out_of_range("a plus line has one blank between its fields");
    std::unique_ptr<MyOutlineItem> item(new MyOutlineItem(Bare{}));
    item->pluslevelstr_ = fields[0];
    item->pageLabel_ = fields[1].sliced(1);
    item->pageTitle_ = line.sliced(item->pluslevelstr_.size() + item->pageLabel_.size() + 3);
    // Deliberately not the depth: `levelstr` is still absent here.
    item->levelnum_ = static_cast<quint64>(item->levelstr().size());
    return item;
}

const QStringList &MyOutlineItem::allProperties() {
    static const QStringList properties{QStringLiteral("pageTitle"), QStringLiteral("pageLabel")};
    return properties;
}

std::unique_ptr<MyOutlineItem> MyOutlineItem::copy() const {
    struct Copy {
        const MyOutlineItem *from;
        MyOutlineItem *to;
    };
    auto top = std::make_unique<MyOutlineItem>();
    std::vector<Copy> pending{{this, top.get()}};
    while (!pending.empty()) {
        const auto [from, to] = pending.back();
        pending.pop_back();
        to->pageTitle_ = from->pageTitle_;
        to->pageLabel_ = from->pageLabel_;
        to->pointOnPage_ = from->pointOnPage_;
        to->importedPage_ = from->importedPage_;
        to->entry_ = from->entry_;
        for (const auto &child : from->children_)
            pending.push_back({child.get(), &to->appendChild(std::make_unique<MyOutlineItem>())});
    }
    return top;
}

template <typename Change>
void MyOutlineItem::change(QLatin1String key, Change &&makeChange) {
    for (OutlineItemObserver *observer : observers_)
        observer->willChangeValueForKey(*this, key);
    makeChange();
    for (OutlineItemObserver *observer : observers_)
        observer->didChangeValueForKey(*this, key);
}

void MyOutlineItem::setPageTitle(const QString &title) {
    change(QLatin1String("pageTitle"), [&] { pageTitle_ = title; });
}

Target MyOutlineItem::target() const {
    if (pageLabel_.isNull()) {
        return entry_.number || entry_.action ? Target(EntryTarget()) : Target();
    }
    // Not Qt's comparison, which takes what is almost zero for zero.
    const bool isSomewhere = pointOnPage_.x() != 0 || pointOnPage_.y() != 0;
    return PageTarget{pageLabel_, isSomewhere ? std::optional(pointOnPage_) : std::nullopt, importedPage()};
}

void MyOutlineItem::setPageLabel(const QString &label) {
    change(QLatin1String("pageLabel"), [&] {
        pageLabel_ = label;
        importedPage_ = noPage;
    });
}

std::optional<int> MyOutlineItem::importedPage() const {
    return importedPage_ == noPage ? std::nullopt : std::optional(importedPage_);
}

void MyOutlineItem::setImportedPage(std::optional<int> index) {
    change(QLatin1String("importedPage"), [&] { importedPage_ = index.value_or(noPage); });
}

void MyOutlineItem::setEntry(const OutlineEntry &entry) {
    change(QLatin1String("entry"), [&] { entry_ = entry; });
}

void MyOutlineItem::setChildren(Children children) {
    // Swapped rather than overwritten: the old children live until everyone knows that they left.
    change(childrenKey, [&] { children_.swap(children); });
}

MyOutlineItem::Children MyOutlineItem::takeChildren() {
    Children taken;
    change(childrenKey, [&] { taken.swap(children_); });
    return taken;
}

QString MyOutlineItem::levelstr() const {
    const auto *number = std::get_if<std::shared_ptr<const LevelNumber>>(&levelstr_);
    return number ? (*number)->text() : std::get<QString>(levelstr_);
}

void MyOutlineItem::setLevelstr(const QString &levelstr) {
    change(QLatin1String("levelstr"), [&] { levelstr_ = levelstr; });
}

void MyOutlineItem::setLevelstr(std::shared_ptr<const LevelNumber> number) {
    change(QLatin1String("levelstr"), [&] { levelstr_ = std::move(number); });
}

void MyOutlineItem::setLevelnum(quint64 levelnum) {
    change(QLatin1String("levelnum"), [&] { levelnum_ = levelnum; });
}

void MyOutlineItem::setPluslevelstr(const QString &plus) {
    change(QLatin1String("pluslevelstr"), [&] { pluslevelstr_ = plus; });
}

void MyOutlineItem::setPointOnPage(const QPointF &point) {
    change(QLatin1String("pointOnPage"), [&] { pointOnPage_ = point; });
}

void MyOutlineItem::setInitiallevel(quint64 level) {
    change(QLatin1String("initiallevel"), [&] { initiallevel_ = level; });
}

MyOutlineItem &MyOutlineItem::appendChild(std::unique_ptr<MyOutlineItem> child) {
    children_.push_back(std::move(child));
    return *children_.back();
}

void MyOutlineItem::insertObjectInChildrenAtIndex(std::unique_ptr<MyOutlineItem> item, size_t index) {
    Children items;
    items.push_back(std::move(item));
    insertChildrenAtIndex(std::move(items), index);
}

std::unique_ptr<MyOutlineItem> MyOutlineItem::removeObjectFromChildrenAtIndex(size_t index) {
    return std::move(removeChildrenAtIndex(index, 1).front());
}

void MyOutlineItem::insertChildrenAtIndex(Children &&items, size_t index) {
    if (index > children_.size()) throw std::out_of_range("child index");
    const size_t needed = children_.size() + items.size();
    if (needed > children_.capacity()) children_.reserve(std::max(needed, 2 * children_.size()));
    change(childrenKey, [&] {
        children_.insert(children_.begin() + static_cast<qsizetype>(index), std::move_iterator(items.begin()),
                         std::move_iterator(items.end()));
        items.clear();
    });
}

MyOutlineItem::Children MyOutlineItem::removeChildrenAtIndex(size_t index, size_t count) {
    if (index > children_.size() || count > children_.size() - index) throw std::out_of_range("child index");
    const auto begin = children_.begin() + static_cast<qsizetype>(index);
    const auto end = begin + static_cast<qsizetype>(count);
    Children removed;
    removed.reserve(count);
    change(childrenKey, [&] {
        std::move(begin, end, std::back_inserter(removed));
        children_.erase(begin, end);
    });
    return removed;
}

qint32 MyOutlineItem::attachPoint() const {
    const QString number = levelstr();
    return leadingInteger(QStringView(number).sliced(number.lastIndexOf(u'.') + 1));
}

QString MyOutlineItem::wantedParent() const {
    if (levelnum_ == 1) return QStringLiteral("Root");
    const QString number = levelstr();
    const qsizetype lastDot = number.lastIndexOf(u'.');
    return lastDot < 0 ? number : number.first(lastDot);
}

QString MyOutlineItem::description() const {
    return QStringLiteral("pg[%1] %2 at (%3,%4) [#children=%5]")
        .arg(pageLabel_, pageTitle_, fixedDecimals(pointOnPage_.x(), 0), fixedDecimals(pointOnPage_.y(), 0),
             QString::number(children_.size()));
}

bool MyOutlineItem::hasText(const QString &text) const {
    qCDebug(log).noquote() << QStringLiteral("search-select: [%1] checked for [%2]").arg(pageTitle_, text);
    const bool found = !text.isEmpty() && pageTitle_.contains(text, Qt::CaseSensitive);
    if (found) qCDebug(log, "... and found!");
    return found;
}

std::optional<std::vector<MyOutlineItem *>> MyOutlineItem::itemsMatchingText(const QString &text) {
    if (text.isNull()) return std::nullopt;
    std::vector<MyOutlineItem *> matches;
    walkTree(*this, [&](MyOutlineItem &item, size_t /*depth*/) {
        if (item.hasText(text)) matches.push_back(&item);
    });
    return matches;
}

QString MyOutlineItem::plusDescriptionForLevel(qint32 level) const {
    QString text;
    walkTree(*this, [&](const MyOutlineItem &item, size_t depth) {
        const qint32 pluses = std::max(0, level + static_cast<qint32>(depth));
        text +=
            QString(pluses, u'+') + QLatin1String(" @") + item.pageLabel_ + u' ' + item.pageTitle_ + u'\n';
    });
    return text;
}

void MyOutlineItem::addObserver(OutlineItemObserver *observer) {
    observers_.push_back(observer);
}

void MyOutlineItem::removeObserver(OutlineItemObserver *observer) {
    observers_.removeAll(observer);
}

}  // namespace leafwright
