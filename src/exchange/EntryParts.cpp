#include "exchange/EntryParts.h"

#include "texts/Translated.h"

#include <algorithm>

namespace leafwright {

namespace {

constexpr Translated translated{"EntryParts"};

}  // namespace

std::variant<std::unique_ptr<MyOutlineItem>, QString> itemOfEntry(const EntryParts &parts,
                                                                  const TextPages &pages) {
    // An absent title is the same as none here.
    const QString title = parts.title.isNull() ? QStringLiteral("") : parts.title;
    PageTarget target;
    if (parts.pageLabel) {
        target.label = parts.pageLabel->isNull() ? QStringLiteral("") : *parts.pageLabel;
        const bool isThere = parts.pageNumber >= 1 && parts.pageNumber <= pages.pageCount();
        const int index = isThere ? static_cast<int>(parts.pageNumber - 1) : 0;
        if (isThere && pages.pageLabel(index) == target.label) target.importedPage = index;
    } else if (parts.pageNumber != 0) {
        if (parts.pageNumber < 0 || parts.pageNumber > pages.pageCount())
            return translated("there is no page %1; the pages are 1 to %2")
                .arg(parts.pageNumber)
                .arg(pages.pageCount());
        target.importedPage = static_cast<int>(parts.pageNumber - 1);
        target.label = pages.pageLabel(*target.importedPage);
        if (target.label.isNull()) target.label = QStringLiteral("");
    }
    if (!target.label.isNull()) target.point = parts.point;
    auto item = std::make_unique<MyOutlineItem>(title, target);
    item->setEntry(parts.entry);
    return item;
}

std::optional<qint64> pageNumberOf(QStringView digits) {
    constexpr qsizetype mostDigits = 9;
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    if (digits.isEmpty() || digits.size() > mostDigits || !std::ranges::all_of(digits, isDigit))
        return std::nullopt;
    return digits.toLongLong();
}

}  // namespace leafwright
