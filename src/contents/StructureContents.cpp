#include "contents/StructureContents.h"

#include "contents/ContentsWords.h"
#include "contents/TextFolding.h"

#include <QHash>

#include <map>
#include <set>

namespace leafwright {

namespace {

/// What is left of a text when it comes to finding where it is printed: no leaders, no blanks.
QString keyOf(const QString &text) {
    QString key = foldedTitle(text);
    key.removeIf([](QChar c) { return !c.isLetterOrNumber(); });
    return key;
}

/// Finds the lines of a page that items are printed in.
class ItemLines {
public:
    explicit ItemLines(const PageLines &page) : page_(page) {
        for (int i = static_cast<int>(page.lines.size()) - 1; i >= 0; --i) {
            const QString key = keyOf(page.line(i).text);
            if (key.isEmpty() || page.line(i).isRunning) continue;
            lines_[key].push_back(i);
            lengths_.insert(key.size());
        }
    }

    /// The lines of an item, each of one item alone; none unless they make up half of it.
    std::vector<TextLine> take(const QString &item) {
        const QString key = keyOf(item);
        std::vector<TextLine> found;
        qsizetype at = 0;
        while (std::vector<int> *lines = linesAt(key, at)) {
            found.push_back(page_.line(lines->back()));
            found.back().spans.clear();
            lines->pop_back();
        }
        return 2 * at >= key.size() ? found : std::vector<TextLine>();
    }

private:
    /// The lines that go on in a key, the longest; moves on behind them.
    std::vector<int> *linesAt(const QString &key, qsizetype &at) {
        for (const qsizetype length : lengths_) {
            if (at + length > key.size()) continue;
            const auto lines = lines_.find(key.mid(at, length));
            if (lines == lines_.end() || lines->empty()) continue;
            at += length;
            return &*lines;
        }
        return nullptr;
    }

    const PageLines &page_;
    QHash<QString, std::vector<int>> lines_;  // by key; the first one is the last of each
    std::set<qsizetype, std::greater<>> lengths_;
};

std::vector<std::optional<RowEnd>> endsOf(const std::vector<StructureItem> &items) {
    std::vector<std::optional<RowEnd>> ends;
    for (const StructureItem &item : items) {
        TextLine row;
        row.text = withSingleBlanks(item.text);
        ends.push_back(isChapterLabel(row.text) ? std::nullopt : rowEnd(row));
    }
    return ends;
}

PrintedEntry entryOf(const StructureItem &item, const std::optional<RowEnd> &end) {
    PrintedEntry entry;
    entry.title = end ? end->title : withSingleBlanks(item.text);
    entry.number = end ? end->number : QString();
    entry.numbering = numberingOf(entry.title);
    entry.contentsPage = item.pageIndex;
    entry.link = item.link;
    entry.level = item.level;
    return entry;
}

/// Where an item leads whose link is not tagged.
std::optional<ContentsLink> linkOn(const std::vector<TextLine> &rows, const PageLines &page) {
    for (const TextLine &row : rows) {
        const std::vector<ContentsLink> links = linksOn(row, page.links);
        if (!links.empty()) return links.front();
    }
    return std::nullopt;
}

/// Closes the gaps between levels.
void rankLevels(std::vector<PrintedEntry> &entries) {
    std::map<int, int> ranks;
    for (const PrintedEntry &entry : entries)
        ranks[entry.level] = 0;
    int rank = 0;
    for (auto &[level, value] : ranks)
        value = ++rank;
    for (PrintedEntry &entry : entries)
        entry.level = ranks[entry.level];
}

}  // namespace

std::vector<PrintedEntry> entriesOfItems(const std::vector<StructureItem> &items,
                                         const std::vector<PageLines> &pages) {
    std::vector<std::optional<RowEnd>> ends = endsOf(items);
    const auto numbered = static_cast<size_t>(
        std::count_if(ends.begin(), ends.end(), [](const auto &end) { return end.has_value(); }));
    // Where few end in a number, these are numbers of the titles.
    if (2 * numbered < items.size()) ends.assign(items.size(), std::nullopt);
    std::map<int, ItemLines> lines;
    std::vector<PrintedEntry> entries;
    for (size_t i = 0; i < items.size(); ++i) {
        const StructureItem &item = items[i];
        const bool isOnPage = item.pageIndex >= 0 && item.pageIndex < static_cast<int>(pages.size());
        if (!isOnPage || isContentsTitle(item.text)) continue;
        const PageLines &page = pages[static_cast<size_t>(item.pageIndex)];
        PrintedEntry entry = entryOf(item, ends[i]);
        entry.rows = lines.try_emplace(item.pageIndex, page).first->second.take(item.text);
        if (!entry.link) entry.link = linkOn(entry.rows, page);
        // One whose row is not found stands where the one before does.
        if (entry.rows.empty()) entry.rows = {entries.empty() ? TextLine() : entries.back().firstRow()};
        entries.push_back(std::move(entry));
    }
    rankLevels(entries);
    return entries;
}

bool areCaptions(const std::vector<PrintedEntry> &entries) {
    const auto captions = std::count_if(entries.begin(), entries.end(), [](const PrintedEntry &entry) {
        return startsAsCaption(entry.title);
    });
    return 2 * static_cast<size_t>(captions) > entries.size();
}

}  // namespace leafwright
