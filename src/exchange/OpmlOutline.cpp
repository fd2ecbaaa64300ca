#include "exchange/OpmlOutline.h"

#include "exchange/CharacterReferences.h"
#include "exchange/PageLink.h"
#include "formats/XmlAttributes.h"
#include "model/TreeWalk.h"
#include "texts/Translated.h"

#include <QXmlStreamReader>

namespace leafwright {

namespace {

const QString outlineElement = QStringLiteral("outline");

constexpr Translated translated{"OpmlOutline"};

/// Whether XML 1.0 can hold a character, as itself or by reference (section 2.2).
bool isOfXml(QStringView text, qsizetype index) {
    const char16_t unit = text[index].unicode();
    if (text[index].isSurrogate()) return !needsReference(text, index);
    return unit == u'\t' || unit == u'\n' || unit == u'\r' || (unit >= u' ' && unit < u'\xFFFE');
}

QString escaped(QStringView text) {
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool isMarkup = c == u'&' || c == u'<' || c == u'>' || c == u'"';
        if (!isOfXml(text, i)) {
            result += QChar(QChar::ReplacementCharacter);
        } else if (isMarkup || needsReference(text, i)) {
            result += numericReference(c.unicode());
        } else {
            result += c;
        }
    }
    return result;
}

QString attribute(const char *name, const QString &value) {
    return u' ' + QLatin1String(name) + QLatin1String("=\"") + escaped(value) + u'"';
}

QString attributesOf(const MyOutlineItem &item, std::optional<int> page) {
    QString text = attribute("text", item.pageTitle());
    if (page) text += attribute("page", QString::number(*page + 1));
    if (!item.pageLabel().isNull()) text += attribute("pageLabel", item.pageLabel());
    if (const QString link = linkOf(item, std::nullopt); !link.isEmpty())
        text += QLatin1String(" type=\"link\"") + attribute("url", link);
    return text;
}

/// The parts of an entry that attributes tell. @return what is wrong with them
std::optional<QString> readAttributes(const QXmlStreamAttributes &attributes, EntryParts &parts) {
    const QString text = QStringLiteral("text");
    if (!attributes.hasAttribute(text)) return translated("an outline element must have the attribute text");
    parts.title = attributes.value(text).toString();
    if (const QString name = QStringLiteral("pageLabel"); attributes.hasAttribute(name))
        parts.pageLabel = attributes.value(name).toString();
    if (const QString name = QStringLiteral("url"); attributes.hasAttribute(name)) {
        if (!readLink(attributes.value(name), parts))
            return translated("a link leads neither to a page (#page=12) nor to an address of the web");
    }
    if (const QString name = QStringLiteral("page"); attributes.hasAttribute(name)) {
        const auto number = pageNumberOf(attributes.value(name));
        if (!number) return translated("the attribute page must be a number");
        parts.pageNumber = *number;
    }
    return std::nullopt;
}

/// Goes through a document. @return what is wrong; absent when all is well
std::optional<QString> readElements(QXmlStreamReader &xml, const OutlineSource &source, LevelledItems &items,
                                    bool &isOpml) {
    qint64 depth = 0;
    qint64 level = 0;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
            case QXmlStreamReader::DTD:
                return translated("it declares entities or other things, which are not read");
            case QXmlStreamReader::StartElement: {
                if (++depth == 1) isOpml = xml.name() == QLatin1String("opml");
                if (!isOpml) return translated("it is no OPML");
                if (auto problem = problemOfSize(0, depth)) return problem;
                if (xml.name() != outlineElement) break;
                EntryParts parts;
                if (auto problem = readAttributes(xml.attributes(), parts)) return problem;
                auto item = itemOfEntry(parts, source.pages);
                if (const auto *problem = std::get_if<QString>(&item)) return *problem;
                if (auto problem =
                        items.add(std::get<std::unique_ptr<MyOutlineItem>>(std::move(item)), level++))
                    return problem;
                break;
            }
            case QXmlStreamReader::EndElement:
                --depth;
                if (xml.name() == outlineElement) --level;
                break;
            default:
                break;
        }
    }
    return xml.hasError() ? std::optional(xml.errorString()) : std::nullopt;
}

}  // namespace

void writeOpmlOutline(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink) {
    sink(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<opml version=\"2.0\">\n<head>\n<title>Outline</title>\n"
        "</head>\n<body>\n");
    walkBelow(
        root,
        [&](const MyOutlineItem &item, size_t /*depth*/) {
            const QString end = QLatin1String(item.children().empty() ? "/>\n" : ">\n");
            sink((QLatin1String("<outline") + attributesOf(item, pageOf(item)) + end).toUtf8());
        },
        [&](const MyOutlineItem &item) {
            if (!item.children().empty()) sink("</outline>\n");
        });
    sink("</body>\n</opml>\n");
}

OutlineTree readOpmlOutline(const QByteArray &text, const OutlineSource &source) {
    const auto decoded = textOfLines(text);
    if (const auto *error = std::get_if<TreeError>(&decoded)) return *error;
    const QString &content = std::get<QString>(decoded);
    if (hasTooManyAttributes(content)) return TreeError{{}, translated("an element has too many attributes")};
    QXmlStreamReader xml(content);
    // Each name would be looked for in the declarations of all elements around it.
    xml.setNamespaceProcessing(false);
    LevelledItems items;
    bool isOpml = false;
    if (const auto problem = readElements(xml, source, items, isOpml))
        return faultInLine(xml.lineNumber(), *problem);
    return items.take();
}

bool looksLikeOpmlOutline(QByteArrayView text) {
    constexpr QByteArrayView element("<opml");
    return text.startsWith(element) || (text.startsWith("<?xml") && text.contains(element));
}

}  // namespace leafwright
