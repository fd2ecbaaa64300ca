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
    constexpr double hanging = 2;      // points further right than the first row
    constexpr qsizetype fullRow = 55;  // characters; a title this long does not end by itself
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
        title = upper.line.text +
                (meetWithoutBlank(upper.line.text, title) ? QString() : QStringLiteral(" ")) + title;
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
        const bool continuesEntry = !entries_.empty() && entries_.back().link && waiting_.empty() &&
                                    entries_.back().number.isEmpty() &&
                                    leadToSamePlace(link, *entries_.back().link);
        if (continuesEntry) {
            entries_.back().title += u' ' + row.line.text;
            return;
        }
        const bool onePlace =
            std::all_of(row.links.begin(), row.links.end(),
                        [&link](const ContentsLink &other) { return leadToSamePlace(link, other); });
        const bool continuesWaiting = !waiting_.empty() && !waiting_.back()->links.empty() &&
                                      leadToSamePlace(waiting_.back()->links.front(), link);
        if (onePlace) {
            if (!continuesWaiting) keepHeadings(std::exchange(waiting_, {}));
            waiting_.push_back(&row);
            return;
        }
    }
    waiting_.push_back(&row);
    if (waiting_.size() > mostWaiting) waiting_.erase(waiting_.begin());
}

/// Rows without a number that belong to no other: entries of their own, if they look like it.
void EntryMaker::keepHeadings(const Rows &rows) {
    constexpr double bigger = 1.08;
    constexpr qsizetype longest = 90;
    for (const ContentsRow *row : rows) {
        const TextLine &line = row->line;
        if (isContentsTitle(line.text) || isListTitle(line.text)) continue;
        const NumberKind kind = numberingOf(line.text).kind;
        const bool isStyled =
            (line.look.size > bigger * body_.size || line.look.bold) && line.text.size() < longest;
        const bool isDivision = kind == NumberKind::Part || kind == NumberKind::Chapter;
        if ((isLinkedList_ && !row->links.empty()) || isDivision || isStyled)
            makeEntry(line.text, QString(), {row}, row->links);
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
