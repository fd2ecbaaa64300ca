#include "app/PlainTextOfHtml.h"

#include <algorithm>
#include <array>
#include <optional>

// HTML from the network: each character is looked at a bounded number of times, and nothing nests.

namespace leafwright {

namespace {

constexpr qsizetype longestNotes = qsizetype{64} * 1024;  // UTF-16 units
/// "&", a name or number, and ";".
constexpr qsizetype longestReference = 12;

/// Text in paragraphs, with blanks as HTML has them: any number of them is one, and none begins or ends a
/// line.
class PlainText {
public:
    void add(QStringView text) {
        for (const QChar c : text) {
            const bool isBlank = c == u' ' || c == u'\n' || c == u'\t' || c == u'\r' || c == u'\f';
            if (isBlank) {
                blankIsDue_ = true;
            } else {
                addCharacter(c);
            }
        }
    }
    /// A character that is no blank to be joined with others.
    void addCharacter(QChar c) {
        if (linesDue_ > 0 && !text_.isEmpty()) text_ += QString(linesDue_, u'\n');
        if (linesDue_ == 0 && blankIsDue_ && !text_.isEmpty()) text_ += u' ';
        linesDue_ = 0;
        blankIsDue_ = false;
        if (isFull()) return;
        text_ += c;
    }
    /// What follows begins on a new line, with empty ones before it if that is more than one.
    void breakLine(int lines) {
        linesDue_ = std::max(linesDue_, lines);
        blankIsDue_ = false;
    }
    bool isFull() const { return text_.size() >= longestNotes; }
    QString text() const { return text_.first(std::min(text_.size(), longestNotes)); }

private:
    QString text_;
    int linesDue_ = 0;
    bool blankIsDue_ = false;
};

bool isAnyOf(QStringView name, std::initializer_list<QStringView> names) {
    return std::ranges::any_of(names, [&](QStringView each) { return name == each; });
}

/// The name in a tag, in lower case; empty for a comment.
QString nameOf(QStringView tag) {
    if (tag.startsWith(u'/')) tag = tag.sliced(1);
    const auto end = std::ranges::find_if_not(tag, [](QChar c) { return c.isLetterOrNumber(); });
    return tag.first(end - tag.begin()).toString().toLower();
}

/// The character that a reference such as "&amp;" or "&#38;" means; absent for one that is not known.
std::optional<char32_t> characterOf(QStringView reference) {
    static constexpr std::array<std::pair<QStringView, char32_t>, 6> named{
        {{u"amp", u'&'}, {u"lt", u'<'}, {u"gt", u'>'}, {u"quot", u'"'}, {u"apos", u'\''}, {u"nbsp", 0xA0}}};
    for (const auto &[name, character] : named)
        if (reference == name) return character;
    if (!reference.startsWith(u'#')) return std::nullopt;
    const bool isHexadecimal = reference.startsWith(u"#x") || reference.startsWith(u"#X");
    bool isNumber = false;
    const uint code = reference.sliced(isHexadecimal ? 2 : 1).toUInt(&isNumber, isHexadecimal ? 16 : 10);
    const bool isCharacter =
        isNumber && code >= u' ' && code <= QChar::LastValidCodePoint && !QChar::isSurrogate(code);
    return isCharacter ? std::optional<char32_t>(code) : std::nullopt;
}

/// Adds text in which references stand for characters.
void addWithReferences(PlainText &plain, QStringView text) {
    qsizetype at = 0;
    for (qsizetype sign = text.indexOf(u'&'); sign >= 0; sign = text.indexOf(u'&', sign + 1)) {
        const qsizetype end = text.sliced(sign, std::min(longestReference, text.size() - sign)).indexOf(u';');
        const auto character = end < 0 ? std::nullopt : characterOf(text.sliced(sign + 1, end - 1));
        if (!character) continue;
        plain.add(text.sliced(at, sign - at));
        for (const QChar unit : QChar::fromUcs4(*character))
            plain.addCharacter(unit);
        at = sign + end + 1;
    }
    plain.add(text.sliced(at));
}

/// Begins a line or a paragraph where a tag does.
void addTag(PlainText &plain, QStringView tag, const QString &name) {
    const bool begins = !tag.startsWith(u'/');
    if (isAnyOf(name, {u"p", u"h1", u"h2", u"h3", u"h4", u"h5", u"h6", u"ul", u"ol", u"table", u"blockquote",
                       u"pre"})) {
        plain.breakLine(2);
    } else if (isAnyOf(name, {u"br", u"div", u"li", u"tr", u"dt", u"dd", u"hr"})) {
        plain.breakLine(1);
    }
    if (begins && name == u"li") plain.add(u"\u2022 ");
}

/// Where what begins with a tag ends that is no text; -1 if it has no end.
qsizetype endOfTag(QStringView html, qsizetype tag) {
    const bool isComment = html.sliced(tag).startsWith(u"<!--");
    const qsizetype end = isComment ? html.indexOf(u"-->", tag) : html.indexOf(u'>', tag);
    return end < 0 || !isComment ? end : end + 2;
}

}  // namespace

QString plainTextOfHtml(const QString &html) {
    PlainText plain;
    const QStringView text(html);
    QString passedOver;  // the name of the element whose text is none
    for (qsizetype at = 0; at < text.size() && !plain.isFull();) {
        const qsizetype tag = text.indexOf(u'<', at);
        const qsizetype plainEnd = tag < 0 ? text.size() : tag;
        if (passedOver.isEmpty()) addWithReferences(plain, text.sliced(at, plainEnd - at));
        const qsizetype end = tag < 0 ? -1 : endOfTag(text, tag);
        if (end < 0) break;
        const QStringView inside = text.sliced(tag + 1, end - tag - 1);
        const QString name = nameOf(inside);
        if (passedOver.isEmpty()) {
            addTag(plain, inside, name);
            if (isAnyOf(name, {u"script", u"style"}) && !inside.startsWith(u'/')) passedOver = name;
        } else if (name == passedOver && inside.startsWith(u'/')) {
            passedOver.clear();
        }
        at = end + 1;
    }
    return plain.text();
}

}  // namespace leafwright
