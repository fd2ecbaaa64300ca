#include "desktop/Appcast.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>

namespace leafwright {

namespace {

constexpr qsizetype longestNotes = qsizetype{64} * 1024;  // characters of HTML

/// One <item>, as it stands there.
struct FeedItem {
    QString version;
    QString shortVersion;
    QString description;
    QString link;
    QString enclosure;
};

/// The attribute with a name, whatever its namespace; null if there is none.
QString attribute(const QXmlStreamAttributes &attributes, QStringView name) {
    const auto found =
        std::ranges::find_if(attributes, [&](const auto &each) { return each.name() == name; });
    return found == attributes.end() ? QString() : found->value().toString();
}

void readEnclosure(const QXmlStreamAttributes &attributes, FeedItem &item) {
    item.enclosure = attribute(attributes, u"url");
    if (const QString version = attribute(attributes, u"version"); !version.isNull()) item.version = version;
    if (const QString name = attribute(attributes, u"shortVersionString"); !name.isNull())
        item.shortVersion = name;
}

FeedItem readItem(QXmlStreamReader &xml) {
    FeedItem item;
    const auto text = [&] { return xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed(); };
    while (xml.readNextStartElement()) {
        const QString name = xml.name().toString();
        if (name == u"enclosure") {
            readEnclosure(xml.attributes(), item);
            xml.skipCurrentElement();
        } else if (name == u"version") {
            item.version = text();
        } else if (name == u"shortVersionString") {
            item.shortVersion = text();
        } else if (name == u"description") {
            item.description = text();
        } else if (name == u"link") {
            item.link = text();
        } else {
            xml.skipCurrentElement();
        }
    }
    return item;
}

/// An address that a browser may be sent to; empty for anything else, such as a file.
QUrl webAddress(const QString &text) {
    const QUrl url(text.trimmed(), QUrl::StrictMode);
    const bool isWeb = url.scheme() == u"https" || url.scheme() == u"http";
    return isWeb && !url.host().isEmpty() ? url : QUrl();
}

std::optional<AppcastItem> announcement(const FeedItem &item) {
    const auto version = versionFromString(item.version.isEmpty() ? item.shortVersion : item.version);
    if (!version) return std::nullopt;
    const QUrl page = webAddress(item.link);
    return AppcastItem{*version, item.shortVersion.isEmpty() ? item.version : item.shortVersion,
                       harmlessHtml(item.description), page.isEmpty() ? webAddress(item.enclosure) : page};
}

/// Goes to the next element of a name among those below the current one.
bool goToElement(QXmlStreamReader &xml, QStringView name) {
    while (xml.readNextStartElement()) {
        if (xml.name() == name) return true;
        xml.skipCurrentElement();
    }
    return false;
}

/// What an element of the notes becomes: the same without attributes, or nothing.
QString harmlessTag(QStringView tag) {
    static constexpr std::array allowed{u"p",  u"br", u"b",  u"strong", u"i",  u"em", u"ul",
                                        u"ol", u"li", u"h1", u"h2",     u"h3", u"h4"};
    const bool closes = tag.startsWith(u'/');
    if (closes) tag = tag.mid(1);
    qsizetype length = 0;
    while (length < tag.size() && tag[length].isLetterOrNumber())
        ++length;
    const QString name = tag.first(length).toString().toLower();
    const bool isAllowed = std::ranges::any_of(allowed, [&](const char16_t *each) { return name == each; });
    return isAllowed ? QStringLiteral("<%1%2>").arg(closes ? QStringLiteral("/") : QString(), name)
                     : QString();
}

}  // namespace

std::optional<QVersionNumber> versionFromString(const QString &text) {
    static const QRegularExpression form(QStringLiteral(R"(^[0-9]+(\.[0-9]+)*$)"));
    const QString trimmed = text.trimmed();
    if (!form.match(trimmed).hasMatch()) return std::nullopt;
    qsizetype end = 0;
    const auto version = QVersionNumber::fromString(trimmed, &end);
    // It stops where a number is too large.
    if (end != trimmed.size()) return std::nullopt;
    return version.normalized();
}

std::optional<AppcastItem> newestVersionInAppcast(const QByteArray &xml) {
    QXmlStreamReader reader(xml);
    // Entities declared in the file could stand for texts of any length.
    reader.setEntityExpansionLimit(0);
    while (!reader.isStartElement() && !reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::DTD) return std::nullopt;
    if (reader.name() != u"rss" || !goToElement(reader, u"channel")) return std::nullopt;
    std::optional<AppcastItem> newest;
    while (goToElement(reader, u"item")) {
        auto item = announcement(readItem(reader));
        if (item && (!newest || item->version > newest->version)) newest = std::move(item);
    }
    // An end that is missing may have held the newest version.
    while (!reader.atEnd())
        reader.readNext();
    return reader.hasError() ? std::nullopt : newest;
}

QString harmlessHtml(const QString &html) {
    QString result;
    const QStringView text = QStringView(html).first(std::min(html.size(), longestNotes));
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype tag = text.indexOf(u'<', at);
        const qsizetype end = tag < 0 ? -1 : text.indexOf(u'>', tag);
        const qsizetype plainEnd = tag < 0 ? text.size() : tag;
        result += text.sliced(at, plainEnd - at).toString().replace(u'>', QStringLiteral("&gt;"));
        if (end < 0) break;
        result += harmlessTag(text.sliced(tag + 1, end - tag - 1));
        at = end + 1;
    }
    return result;
}

}  // namespace leafwright
