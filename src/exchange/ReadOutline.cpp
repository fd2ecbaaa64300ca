#include "exchange/ReadOutline.h"

#include "formats/Utf8Text.h"
#include "model/TreeWalk.h"
#include "texts/Translated.h"

namespace leafwright {

namespace {

// Far beyond any outline that somebody can use, and still little for the memory.
constexpr qsizetype mostEntries = 1'000'000;
constexpr qsizetype mostLevels = 100'000;

constexpr Translated translated{"ReadOutline"};

}  // namespace

TreeError faultInLine(qint64 number, const QString &message) {
    return {translated("line %1").arg(number), message};
}

std::variant<QString, TreeError> textOfLines(const QByteArray &text) {
    auto decoded = textOfUtf8(text);
    if (const auto *fault = std::get_if<NotUtf8>(&decoded))
        return faultInLine(fault->line, translated("the text is not UTF-8"));
    return std::get<QString>(std::move(decoded));
}

std::optional<QStringView> Lines::next() {
    if (rest_.isEmpty()) return std::nullopt;
    ++number_;
    const qsizetype end = rest_.indexOf(u'\n');
    QStringView line = end < 0 ? rest_ : rest_.first(end);
    rest_ = end < 0 ? QStringView() : rest_.sliced(end + 1);
    if (line.endsWith(u'\r')) line.chop(1);
    return line;
}

std::optional<QString> LevelledItems::add(std::unique_ptr<MyOutlineItem> item, qint64 level) {
    while (path_.back().level >= level)
        path_.pop_back();
    if (auto problem = problemOfSize(++count_, static_cast<qsizetype>(path_.size()))) return problem;
    path_.push_back({&path_.back().item->appendChild(std::move(item)), level});
    return std::nullopt;
}

LostActions lostActions(const MyOutlineItem &root, const OutlineEntries &inFile) {
    LostActions lost;
    walkBelow(root, [&](const MyOutlineItem &item, size_t /*depth*/) {
        const OutlineEntry &entry = item.entry();
        if (!entry.action) return;
        const bool hasPage = std::holds_alternative<PageTarget>(item.target());
        const auto found = inFile.constFind(entry.number.value_or(0));
        const bool isAsInFile = found != inFile.constEnd() && found->entry.action == entry.action &&
                                found->destination.has_value() == hasPage;
        if (isAsInFile) return;
        // To go to a page is what the page says, too.
        if (hasPage && entry.action->type != QLatin1String("GoTo")) ++lost.besidePages;
        if (!hasPage && !entry.action->isKnownInFull()) ++lost.unknown;
    });
    return lost;
}

std::optional<QString> problemOfSize(qsizetype entries, qsizetype levels) {
    if (entries > mostEntries) return translated("there are more than %1 entries").arg(mostEntries);
    if (levels > mostLevels) return translated("there are more than %1 levels").arg(mostLevels);
    return std::nullopt;
}

}  // namespace leafwright
