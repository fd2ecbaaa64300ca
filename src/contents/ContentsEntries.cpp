#include "contents/ContentsEntries.h"

#include "contents/ContentsWords.h"
#include "contents/TextFolding.h"

#include <QSet>

#include <cmath>

namespace leafwright {

namespace {

bool leadToSamePlace(const ContentsLink &a, const ContentsLink &b) {
    const auto y = [](const ContentsLink &link) { return link.targetPoint.value_or(QPointF()).y(); };
    return a.targetPage == b.targetPage && std::abs(y(a) - y(b)) < 1;
}

/// Whether all links of a row, which has some, lead to one place.
bool leadsToOnePlace(const ContentsRow &row) {
    return std::all_of(row.links.begin(), row.links.end(),
                       [&row](const ContentsLink &link) { return leadToSamePlace(link, row.links.front()); });
}

QString joined(const QString &upper, const QString &lower) {
    return upper + (meetWithoutBlank(upper, lower) ? QString() : QStringLiteral(" ")) + lower;
}

constexpr double hanging = 2;      // points further right than the first row of a title
constexpr qsizetype fullRow = 55;  // characters; a title this long does not end by itself

/// Collects rows into entries.
class EntryMaker {
public:
    EntryMaker(bool isLinkedList, const BodyStyle &body) : isLinkedList_(isLinkedList), body_(body) {}

    /// @return false when the contents end before this row
    bool add(const ContentsRow &row);
    std::vector<PrintedEntry> finish();

private:
    using Rows = std::vector<const ContentsRow *>;

    bool addNumbered(const ContentsRow &row);
    void addWithoutNumber(const ContentsRow &row);
    static bool belongsAbove(const ContentsRow &waiting, const ContentsRow &below,
                             const ContentsRow &numbered, const QString &titleBelow, bool isFirst);
    static bool goesOn(const ContentsRow &upper, const ContentsRow &lower);
    bool beginsAgain(int number, const QString &title) const;
    bool beginsOtherList(int number, const Numbering &numbering) const;
    void keepHeadings(const Rows &rows);
    void makeEntry(const QString &title, const QString &number, const Rows &rows,
                   const std::vector<ContentsLink> &links);

    bool isLinkedList_;
    const BodyStyle &body_;
    std::vector<PrintedEntry> entries_;
    Rows waiting_;  // rows without a number that wait for one
    std::optional<int> lastNumber_;
    QSet<QStringList> sections_;  // the dotted numbers so far
};

bool EntryMaker::add(const ContentsRow &row) {
    constexpr size_t fewestBeforeList = 3;
    if (!row.isEntry && isListTitle(row.line.text)) {
        if (entries_.size() >= fewestBeforeList) return false;
        waiting_.clear();
        return true;
    }
    if (!row.isEntry && isContentsTitle(row.line.text)) {
        waiting_.clear();
        return true;
    }
    if (row.isEntry) return addNumbered(row);
    addWithoutNumber(row);
    return true;
}

/// Whether a row that waits is the beginning of the title in the row below it.
/// @param below the row directly below, @param numbered the row with the number
/// @param isFirst whether the row below is the numbered one
bool EntryMaker::belongsAbove(const ContentsRow &waiting, const ContentsRow &below,
                              const ContentsRow &numbered, const QString &titleBelow, bool isFirst) {
    constexpr double sameSize = 0.6;
    constexpr double widestLeading = 1.7;
    const TextLine &upper = waiting.line;
    const TextLine &lower = below.line;
    const double distance = lower.baseline - upper.baseline;
    const double size = std::max(numbered.line.look.size, upper.look.size);
    const bool close = waiting.page == numbered.page && waiting.column == numbered.column && distance > 0 &&
                       distance < widestLeading * size + 1;
    const bool sameLook = std::abs(upper.look.size - numbered.line.look.size) < sameSize &&
                          upper.look.bold == numbered.line.look.bold;
    if (!close || !sameLook) return false;
    const NumberKind kindBelow = numberingOf(isFirst ? titleBelow : lower.text).kind;
    const NumberKind kind = numberingOf(upper.text).kind;
    const bool isLabel = isChapterLabel(upper.text);
    if (isLabel && kindBelow != NumberKind::Dotted && kindBelow != NumberKind::Chapter) return true;

    const bool bothLinked = !waiting.links.empty() && !numbered.links.empty();
    const bool samePlace = bothLinked && leadToSamePlace(waiting.links.front(), numbered.links.front());
    if (bothLinked && !samePlace) return false;
    if (kindBelow != NumberKind::None && kindBelow != NumberKind::PerhapsSingle && !isLabel) return false;
    if (kind == NumberKind::Part || upper.text.endsWith(u'.') || upper.text.endsWith(u':')) return false;
    const bool isNumbered =
        kind == NumberKind::Dotted || kind == NumberKind::Single || kind == NumberKind::Chapter;
    return samePlace || isNumbered || lower.left > upper.left + hanging || startsLowercase(titleBelow) ||
           upper.text.size() > fullRow;
}

/// Whether a row of a linked list is the beginning of the title in the row below it. Where links lead to
/// whole pages, several entries may lead to one.
bool EntryMaker::goesOn(const ContentsRow &upper, const ContentsRow &lower) {
    if (upper.links.empty() || lower.links.empty() ||
        !leadToSamePlace(upper.links.front(), lower.links.front()) || !leadsToOnePlace(upper) ||
        !leadsToOnePlace(lower) || !belongsAbove(upper, lower, lower, lower.line.text, true))
        return false;
    return upper.links.front().targetPoint || lower.line.left > upper.line.left + hanging ||
           startsLowercase(lower.line.text) || upper.line.text.size() > fullRow;
}

/// Whether brief contents end here, and the full ones begin.
bool EntryMaker::beginsAgain(int number, const QString &title) const {
    constexpr size_t fewestBefore = 8;
    constexpr int firstPages = 3;
    return lastNumber_ && number < *lastNumber_ - 2 && number <= firstPages &&
           entries_.size() > fewestBefore && foldedTitle(title) == foldedTitle(entries_.front().title);
}

/// Whether sections and pages are counted anew, as in a list of figures.
bool EntryMaker::beginsOtherList(int number, const Numbering &numbering) const {
    return lastNumber_ && number < *lastNumber_ - 2 && numbering.kind == NumberKind::Dotted &&
           sections_.contains(numbering.components);
}

bool EntryMaker::addNumbered(const ContentsRow &row) {
    QString title = row.end->title;
    Rows rows{&row};
    while (!waiting_.empty()) {
        const ContentsRow &upper = *waiting_.back();
        if (!belongsAbove(upper, *rows.front(), row, title, rows.size() == 1)) break;
        title = joined(upper.line.text, title);
        rows.insert(rows.begin(), &upper);
        waiting_.pop_back();
        const NumberKind kind = numberingOf(upper.line.text).kind;
        if (kind == NumberKind::Dotted || kind == NumberKind::Single || kind == NumberKind::Chapter) break;
    }
    keepHeadings(std::exchange(waiting_, {}));
    if (isDecimalNumber(row.end->number)) {
        const int number = decimalValue(row.end->number);
        const Numbering numbering = numberingOf(title);
        if (beginsAgain(number, title) || beginsOtherList(number, numbering)) return false;
        if (numbering.kind == NumberKind::Dotted) sections_.insert(numbering.components);
        lastNumber_ = number;
    }
    const auto linked =
        std::find_if(rows.begin(), rows.end(), [](const ContentsRow *r) { return !r->links.empty(); });
    makeEntry(title, row.end->number, rows, linked == rows.end() ? row.links : (*linked)->links);
    return true;
}

void EntryMaker::addWithoutNumber(const ContentsRow &row) {
    constexpr size_t mostWaiting = 6;
    if (isLinkedList_ && !row.links.empty()) {
        const ContentsLink &link = row.links.front();
        const bool continuesWaiting = !waiting_.empty() && !waiting_.back()->links.empty() &&
                                      leadToSamePlace(waiting_.back()->links.front(), link);
        if (leadsToOnePlace(row)) {
            if (!continuesWaiting) keepHeadings(std::exchange(waiting_, {}));
            waiting_.push_back(&row);
            return;
        }
    }
    waiting_.push_back(&row);
    if (waiting_.size() > mostWaiting) waiting_.erase(waiting_.begin());
}

/// Rows without a number that belong to no other: entries of their own, if they look like it. In a linked
/// list, a title may go on in the next row.
void EntryMaker::keepHeadings(const Rows &rows) {
    constexpr double bigger = 1.08;
    constexpr qsizetype longest = 90;
    for (auto row = rows.begin(); row != rows.end();) {
        const ContentsRow &first = **row;
        const TextLine &line = first.line;
        Rows own{&first};
        QString title = line.text;
        while (++row != rows.end() && isLinkedList_ && goesOn(*own.back(), **row)) {
            title = joined(title, (*row)->line.text);
            own.push_back(*row);
        }
        if (isContentsTitle(title) || isListTitle(title)) continue;
        const NumberKind kind = numberingOf(title).kind;
        const bool isStyled =
            (line.look.size > bigger * body_.size || line.look.bold) && title.size() < longest;
        const bool isDivision = kind == NumberKind::Part || kind == NumberKind::Chapter;
        if ((isLinkedList_ && !first.links.empty()) || isDivision || isStyled)
            makeEntry(title, QString(), own, first.links);
    }
}

void EntryMaker::makeEntry(const QString &title, const QString &number, const Rows &rows,
                           const std::vector<ContentsLink> &links) {
    PrintedEntry entry;
    entry.title = withSingleBlanks(title);
    entry.number = number;
    entry.numbering = numberingOf(entry.title);
    entry.contentsPage = rows.front()->page;
    entry.column = rows.front()->column;
    if (!links.empty()) entry.link = links.front();
    for (const ContentsRow *row : rows) {
        entry.rows.push_back(row->line);
        entry.rows.back().spans.clear();
    }
    entries_.push_back(std::move(entry));
}

std::vector<PrintedEntry> EntryMaker::finish() {
    if (isLinkedList_) {
        std::erase_if(waiting_, [](const ContentsRow *row) { return row->links.empty(); });
        keepHeadings(std::exchange(waiting_, {}));
    }
    return std::move(entries_);
}

}  // namespace

std::vector<PrintedEntry> entriesOfRegion(const ContentsPageFindings &findings, const ContentsRegion &region,
                                          const BodyStyle &body) {
    const auto begin = findings.rows.lower_bound(region.firstPage);
    const auto end = findings.rows.upper_bound(region.lastPage);
    size_t all = 0;
    size_t linked = 0;
    for (auto page = begin; page != end; ++page) {
        for (const ContentsRow &row : page->second) {
            ++all;
            linked += row.links.empty() ? 0 : 1;
        }
    }
    EntryMaker maker(linked > 0 && 2 * linked >= all, body);
    for (auto page = begin; page != end; ++page) {
        for (const ContentsRow &row : page->second) {
            if (!maker.add(row)) return maker.finish();
        }
    }
    return maker.finish();
}

}  // namespace leafwright
