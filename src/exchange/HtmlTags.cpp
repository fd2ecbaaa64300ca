#include "exchange/HtmlTags.h"

#include "exchange/CharacterReferences.h"

namespace leafwright {

namespace {

bool isBlank(QChar c) {
    return c.isSpace();
}

bool isOfTagName(QChar c) {
    return !c.isSpace() && c != u'>' && c != u'/';
}

bool isOfAttributeName(QChar c) {
    return isOfTagName(c) && c != u'=';
}

bool isOfBareValue(QChar c) {
    return !c.isSpace() && c != u'>';
}

/// How much of a text stands before the next "<"; one that begins no tag is text as well.
qsizetype lengthOfText(QStringView text) {
    if (text[0] != u'<') {
        const qsizetype end = text.indexOf(u'<');
        return end < 0 ? text.size() : end;
    }
    const QChar next = text.size() > 1 ? text[1] : QChar();
    return next == u'/' || next == u'!' || next == u'?' || next.isLetter() ? 0 : 1;
}

/// What ends the comment, the declaration or the instruction that a text begins with.
std::optional<QLatin1String> endOfDeclaration(QStringView text) {
    if (text.startsWith(QLatin1String("<!--"))) return QLatin1String("-->");
    if (text.startsWith(QLatin1String("<!")) || text.startsWith(QLatin1String("<?")))
        return QLatin1String(">");
    return std::nullopt;
}

/// What ends the text behind a tag that nobody reads: a script or a style.
std::optional<QLatin1String> endOfUnread(const HtmlTag &tag) {
    if (tag.isEnd) return std::nullopt;
    if (tag.name == QLatin1String("script")) return QLatin1String("</script>");
    if (tag.name == QLatin1String("style")) return QLatin1String("</style>");
    return std::nullopt;
}

}  // namespace

qint64 HtmlTags::line() const {
    return text_.first(begin_).count(u'\n') + 1;
}

QStringView HtmlTags::takeWhile(bool (*isPart)(QChar)) {
    const qsizetype from = position_;
    while (position_ < text_.size() && isPart(text_[position_]))
        ++position_;
    return text_.sliced(from, position_ - from);
}

bool HtmlTags::skipBeyond(QLatin1String end) {
    const qsizetype at = text_.indexOf(end, position_, Qt::CaseInsensitive);
    if (at < 0) return false;
    position_ = at + end.size();
    return true;
}

std::optional<std::variant<HtmlTag, HtmlText>> HtmlTags::next() {
    while (position_ < text_.size()) {
        begin_ = position_;
        const QStringView rest = text_.sliced(position_);
        if (const qsizetype length = lengthOfText(rest); length > 0) {
            position_ += length;
            return HtmlText{rest.first(length)};
        }
        auto end = endOfDeclaration(rest);
        if (!end) {
            auto tag = takeTag();
            if (!tag) return std::nullopt;
            end = endOfUnread(*tag);
            if (!end) return *std::move(tag);
        }
        if (!skipBeyond(*end)) return std::nullopt;
    }
    return std::nullopt;
}

std::optional<HtmlTag> HtmlTags::takeTag() {
    HtmlTag tag;
    ++position_;
    if (position_ < text_.size() && text_[position_] == u'/') {
        tag.isEnd = true;
        ++position_;
    }
    tag.name = takeWhile(isOfTagName).toString().toLower();
    while (true) {
        takeWhile([](QChar c) { return c.isSpace() || c == u'/'; });
        if (position_ == text_.size()) break;
        if (text_[position_] == u'>') {
            ++position_;
            return tag;
        }
        if (!takeAttribute(tag)) break;
    }
    position_ = begin_;  // So that the line is that of the tag, which does not end.
    return std::nullopt;
}

bool HtmlTags::takeAttribute(HtmlTag &tag) {
    constexpr qsizetype mostAttributes = 100;
    const QString name = takeWhile(isOfAttributeName).toString().toLower();
    takeWhile(isBlank);
    QString value;
    if (position_ < text_.size() && text_[position_] == u'=') {
        ++position_;
        takeWhile(isBlank);
        const QChar quote = position_ < text_.size() ? text_[position_] : QChar();
        if (quote == u'"' || quote == u'\'') {
            const qsizetype end = text_.indexOf(quote, position_ + 1);
            if (end < 0) return false;
            value = withoutReferences(text_.sliced(position_ + 1, end - position_ - 1));
            position_ = end + 1;
        } else {
            value = withoutReferences(takeWhile(isOfBareValue));
        }
    } else if (name.isEmpty()) {
        return false;
    }
    // Of an attribute that comes twice, the first counts.
    if (tag.attributes.size() < mostAttributes && !tag.attributes.contains(name))
        tag.attributes.insert(name, value);
    return true;
}

}  // namespace leafwright
