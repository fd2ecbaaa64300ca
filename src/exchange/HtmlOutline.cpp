#include "exchange/HtmlOutline.h"

#include "exchange/CharacterReferences.h"
#include "exchange/HtmlTags.h"
#include "exchange/PageLink.h"
#include "model/TreeWalk.h"
#include "texts/Translated.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <utility>

namespace leafwright {

namespace {

constexpr Translated translated{"HtmlOutline"};

/// What HTML folds into one blank; a no-break space is not among it.
bool isBlank(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\f' || c == u'\r';
}

/// Whether what comes before a tag and behind it stand apart when they are shown.
bool separates(const HtmlTag &tag) {
    // clang-format off
    static const QStringList names = QStringLiteral(
        "blockquote br dd details div dl dt figure h1 h2 h3 h4 h5 h6 hr p pre section summary table tbody td tfoot "
        "th thead tr").split(u' ');
    // clang-format on
    return names.contains(tag.name);
}

QString escaped(QStringView text) {
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        // Blanks that a reader of HTML would leave out.
        const bool isLoneBlank = c == u' ' && i > 0 && i + 1 < text.size() && !text[i - 1].isSpace();
        const bool isMarkup = c == u'&' || c == u'<' || c == u'>' || c == u'"';
        if (isMarkup || needsReference(text, i) || (c.isSpace() && !isLoneBlank)) {
            result += numericReference(c.unicode());
        } else {
            result += c;
        }
    }
    return result;
}

/// Adds what stands between tags to a text: blanks and line ends count as one blank, and as none at the
/// beginning. Those that are spelled as references are kept.
void addText(QStringView text, QString &result, bool &blankIsDue) {
    for (qsizetype i = 0; i < text.size();) {
        if (isBlank(text[i])) {
            blankIsDue = !result.isEmpty();
            ++i;
            continue;
        }
        if (std::exchange(blankIsDue, false)) result += u' ';
        if (const auto reference = referenceAt(text.sliced(i))) {
            result += reference->text;
            i += reference->length;
        } else {
            result += text[i++];
        }
    }
}

/// Makes entries of the items of lists.
class Reader {
public:
    explicit Reader(const OutlineSource &source) : source_(source) {}

    void read(const HtmlText &text) {
        if (entry_) addText(text.text, entry_->title, blankIsDue_);
    }

    /// @return what is wrong; absent when all is well
    std::optional<QString> read(const HtmlTag &tag) {
        const bool isList = tag.name == QLatin1String("ul") || tag.name == QLatin1String("ol");
        if (isList || tag.name == QLatin1String("li")) {
            if (auto problem = finish()) return problem;
        }
        if (isList) {
            depth_ += tag.isEnd ? -1 : 1;
            if (depth_ < 0) return translated("a list ends that has not begun");
        } else if (tag.name == QLatin1String("li") && !tag.isEnd) {
            if (depth_ == 0) return translated("an item (li) stands in no list");
            entry_ = EntryParts{.title = QStringLiteral("")};
        } else if (tag.name == QLatin1String("a") && !tag.isEnd && entry_) {
            return readLinkOf(tag);
        } else if (entry_ && separates(tag)) {
            blankIsDue_ = !entry_->title.isEmpty();
        }
        return std::nullopt;
    }

    /// @return what is wrong with the entry at hand, if there is one
    std::optional<QString> finish() {
        blankIsDue_ = false;
        const auto entry = std::exchange(entry_, std::nullopt);
        if (!entry) return std::nullopt;
        auto item = itemOfEntry(*entry, source_.pages);
        if (const auto *problem = std::get_if<QString>(&item)) return *problem;
        return items_.add(std::get<std::unique_ptr<MyOutlineItem>>(std::move(item)), depth_);
    }

    bool isInList() const { return depth_ > 0; }
    LevelledItems &items() { return items_; }

private:
    std::optional<QString> readLinkOf(const HtmlTag &tag) {
        const auto address = tag.attributes.constFind(QStringLiteral("href"));
        const auto label = tag.attributes.constFind(QStringLiteral("title"));
        if (label != tag.attributes.constEnd()) entry_->pageLabel = *label;
        if (address == tag.attributes.constEnd() || readLink(*address, *entry_)) return std::nullopt;
        return translated("a link leads neither to a page (#page=12) nor to an address of the web");
    }

    const OutlineSource &source_;
    LevelledItems items_;
    qint64 depth_ = 0;  ///< How many lists are open.
    std::optional<EntryParts> entry_;
    bool blankIsDue_ = false;
};

QString spelledTitle(const MyOutlineItem &item, const QString &link) {
    QString attributes;
    if (!link.isEmpty()) attributes += QLatin1String(" href=\"") + escaped(link) + u'"';
    if (!item.pageLabel().isNull())
        attributes += QLatin1String(" title=\"") + escaped(item.pageLabel()) + u'"';
    const QString title = escaped(item.pageTitle());
    return attributes.isEmpty() ? title
                                : QLatin1String("<a") + attributes + u'>' + title + QLatin1String("</a>");
}

}  // namespace

void writeHtmlOutline(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink) {
    sink(
        "<!DOCTYPE html>\n<html>\n<head>\n<meta "
        "charset=\"utf-8\">\n<title>Outline</title>\n</head>\n<body>\n");
    sink("<ul>\n");
    walkBelow(
        root,
        [&](const MyOutlineItem &item, size_t /*depth*/) {
            sink("<li>" + spelledTitle(item, linkOf(item, pageOf(item))).toUtf8());
            sink(item.children().empty() ? QByteArray() : QByteArray("\n<ul>\n"));
        },
        [&](const MyOutlineItem &item) {
            sink(item.children().empty() ? QByteArray("</li>\n") : QByteArray("</ul>\n</li>\n"));
        });
    sink("</ul>\n</body>\n</html>\n");
}

OutlineTree readHtmlOutline(const QByteArray &text, const OutlineSource &source) {
    const auto decoded = textOfLines(text);
    if (const auto *error = std::get_if<TreeError>(&decoded)) return *error;
    HtmlTags tags(std::get<QString>(decoded));
    Reader reader(source);
    bool hasList = false;
    while (const auto piece = tags.next()) {
        if (const auto *between = std::get_if<HtmlText>(&*piece)) {
            reader.read(*between);
        } else if (const auto problem = reader.read(std::get<HtmlTag>(*piece))) {
            return faultInLine(tags.line(), *problem);
        }
        hasList = hasList || reader.isInList();
    }
    if (!tags.isAtEnd()) return faultInLine(tags.line(), translated("a tag or a comment does not end"));
    if (reader.isInList()) return TreeError{{}, translated("a list does not end")};
    if (!hasList) return TreeError{{}, translated("there is no list in it")};
    return reader.items().take();
}

bool looksLikeHtmlOutline(QByteArrayView text) {
    constexpr qsizetype longest = 14;
    const QByteArray begin = text.first(std::min(text.size(), longest)).toByteArray().toLower();
    constexpr auto begins = std::to_array<const char *>({"<!doctype html", "<html", "<ul", "<ol"});
    return std::ranges::any_of(begins, [&](const char *each) { return begin.startsWith(each); });
}

}  // namespace leafwright
