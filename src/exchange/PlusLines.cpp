#include "exchange/PlusLines.h"

#include "model/TreeWalk.h"
#include "texts/Translated.h"

#include <algorithm>
#include <stdexcept>

namespace leafwright {

namespace {

constexpr Translated translated{"PlusLines"};

bool anyPageIsLabelled(const TextPages &pages, QStringView label) {
    for (int i = 0; i < pages.pageCount(); ++i) {
        if (pages.pageLabel(i) == label) return true;
    }
    return false;
}

/// The item of a line; null where it is none.
std::unique_ptr<MyOutlineItem> itemOfLine(const QString &line) {
    std::unique_ptr<MyOutlineItem> item;
    try {
        item = MyOutlineItem::initWithPlusString(line);
    } catch (const std::out_of_range &) {
        return nullptr;
    }
    const bool plusesOnly = item && item->pluslevelstr().count(u'+') == item->pluslevelstr().size();
    return plusesOnly ? std::move(item) : nullptr;
}

/// What follows a line end would be another entry, or none.
QString inOneLine(QString title) {
    for (const QChar end : {u'\n', u'\r'})
        title.replace(end, u' ');
    return title;
}

}  // namespace

void writePlusLines(const MyOutlineItem &root, const PageOfItem & /*pageOf*/, const TextSink &sink) {
    // An entry at a time: the lines of a deep outline, each as long as its depth, may not fit into memory.
    walkBelow(root, [&](const MyOutlineItem &item, size_t depth) {
        const MyOutlineItem line(inOneLine(item.pageTitle()), PageTarget{item.pageLabel()});
        sink(line.plusDescriptionForLevel(static_cast<qint32>(depth) + 1).toUtf8());
    });
}

OutlineTree readPlusLines(const QByteArray &text, const OutlineSource &source) {
    const auto decoded = textOfLines(text);
    if (const auto *error = std::get_if<TreeError>(&decoded)) return *error;
    const bool isLabel = anyPageIsLabelled(source.pages, u"");
    Lines lines(std::get<QString>(decoded));
    LevelledItems items;
    while (const auto line = lines.next()) {
        if (line->isEmpty()) continue;
        auto item = itemOfLine(line->toString());
        if (!item) return faultInLine(lines.number(), translated("not of the form \"+ @12 Title\""));
        // No label behind the "@" is the empty one of a page, or how an entry that leads to none is written.
        if (item->pageLabel().isEmpty() && !isLabel) item->setPageLabel(QString());
        const qint64 level = item->pluslevelstr().size();
        if (const auto problem = items.add(std::move(item), level))
            return faultInLine(lines.number(), *problem);
    }
    return items.take();
}

bool looksLikePlusLines(QByteArrayView text) {
    const auto end = std::ranges::find_if_not(text, [](char c) { return c == '+'; });
    return end != text.begin() && text.sliced(end - text.begin()).startsWith(" @");
}

}  // namespace leafwright
