#include "app/Appcast.h"

#include "app/PlainTextOfHtml.h"
#include "formats/XmlAttributes.h"

#include <QRegularExpression>
#include <QStringDecoder>
#include <QXmlStreamReader>

#include <algorithm>

namespace leafwright {

namespace {

constexpr qsizetype deepestLevel = 200;

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

/// Reads a feed within its bounds; what is beyond them ends it as an error in the text would.
class FeedReader {
public:
    template <typename Text>
    FeedReader(const Text &xml, QDeadlineTimer deadline) : xml_(xml), deadline_(deadline) {
        // Entities declared in the file could stand for texts of any length.
        xml_.setEntityExpansionLimit(0);
    }

    QXmlStreamReader &xml() { return xml_; }
    /// Goes on to the next token. @return false at the end, or at a bound
    bool next() {
        if (xml_.atEnd()) return false;
        const auto token = xml_.readNext();
        if (token == QXmlStreamReader::StartElement) ++depth_;
        if (token == QXmlStreamReader::EndElement) --depth_;
        if (depth_ > deepestLevel || deadline_.hasExpired() || token == QXmlStreamReader::DTD)
            xml_.raiseError(QStringLiteral("beyond the bounds"));
        return !xml_.hasError();
    }
    /// Goes to the next element below the one of a depth. @return false at the end of that one
    bool goToChild(qsizetype parentDepth) {
        while (next()) {
            if (depth_ < parentDepth) return false;
            if (xml_.isStartElement() && depth_ == parentDepth + 1) return true;
        }
        return false;
    }
    bool goToChild(qsizetype parentDepth, QStringView name) {
        while (goToChild(parentDepth)) {
            if (xml_.name() == name) return true;
        }
        return false;
    }
    /// All text of the current element, and goes to its end.
    QString text() {
        QString text;
        for (const qsizetype own = depth_; next() && depth_ >= own;) {
            if (xml_.isCharacters() || xml_.isEntityReference()) text += xml_.text();
        }
        return text.trimmed();
    }

private:
    QXmlStreamReader xml_;
    QDeadlineTimer deadline_;
    qsizetype depth_ = 0;
};

constexpr qsizetype rssDepth = 1;
constexpr qsizetype channelDepth = 2;
constexpr qsizetype itemDepth = 3;

FeedItem readItem(FeedReader &reader) {
    FeedItem item;
    while (reader.goToChild(itemDepth)) {
        const QString name = reader.xml().name().toString();
        if (name == u"enclosure") {
            readEnclosure(reader.xml().attributes(), item);
        } else if (name == u"version") {
            item.version = reader.text();
        } else if (name == u"shortVersionString") {
            item.shortVersion = reader.text();
        } else if (name == u"description") {
            item.description = reader.text();
        } else if (name == u"link") {
            item.link = reader.text();
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
                       plainTextOfHtml(item.description), page.isEmpty() ? webAddress(item.enclosure) : page};
}

/// Whether the signs of XML are bytes of their own in the encoding that is declared, as they are where none
/// is. In UTF-7, which Qt may know, attributes could not be counted.
bool hasPlainSigns(const QByteArray &xml) {
    QXmlStreamReader reader(xml);
    reader.readNext();
    static const QRegularExpression plain(
        QStringLiteral("^(utf-8|us-ascii|ascii|iso-8859-[0-9]+|windows-125[0-9])?$"),
        QRegularExpression::CaseInsensitiveOption);
    return plain.match(reader.documentEncoding().toString()).hasMatch();
}

template <typename Text>
std::optional<AppcastItem> newestVersion(const Text &xml, QDeadlineTimer deadline) {
    if (hasTooManyAttributes(xml)) return std::nullopt;
    FeedReader reader(xml, deadline);
    if (!reader.goToChild(0, u"rss") || !reader.goToChild(rssDepth, u"channel")) return std::nullopt;
    std::optional<AppcastItem> newest;
    while (reader.goToChild(channelDepth, u"item")) {
        auto item = announcement(readItem(reader));
        if (item && (!newest || item->version > newest->version)) newest = std::move(item);
    }
    // An end that is missing may have held the newest version.
    while (reader.next())
        continue;
    return reader.xml().hasError() ? std::nullopt : newest;
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

std::optional<AppcastItem> newestVersionInAppcast(const QByteArray &xml, QDeadlineTimer deadline) {
    const auto encoding = QStringConverter::encodingForData(xml, u'<');
    if (!encoding || encoding == QStringConverter::Utf8) {
        if (hasTooManyAttributes(xml) || !hasPlainSigns(xml)) return std::nullopt;
        return newestVersion(xml, deadline);
    }
    return newestVersion(QString(QStringDecoder(*encoding)(xml)), deadline);
}

}  // namespace leafwright
