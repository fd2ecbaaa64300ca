#pragma once

#include <QHash>
#include <QString>

#include <optional>
#include <variant>

namespace leafwright {

/// A tag of HTML. Names are in small letters.
struct HtmlTag {
    QString name;
    bool isEnd = false;
    QHash<QString, QString> attributes = {};  ///< Their values, with character references replaced.
};

/// Text between tags, references and all.
struct HtmlText {
    QStringView text;
};

/// Cuts HTML into tags and text. Comments, declarations, scripts and styles are passed over. Nothing
/// recurses.
class HtmlTags {
public:
    /// @param text must outlive this
    explicit HtmlTags(QStringView text) : text_(text) {}

    /// The next piece; nothing at the end, and where a tag does not end.
    std::optional<std::variant<HtmlTag, HtmlText>> next();
    /// Whether it came to the end.
    bool isAtEnd() const { return position_ == text_.size(); }
    /// The line of what came last, from 1.
    qint64 line() const;

private:
    std::optional<HtmlTag> takeTag();
    bool takeAttribute(HtmlTag &tag);
    QStringView takeWhile(bool (*isPart)(QChar));
    bool skipBeyond(QLatin1String end);

    QStringView text_;
    qsizetype position_ = 0;
    qsizetype begin_ = 0;  ///< Of what came last.
};

}  // namespace leafwright
