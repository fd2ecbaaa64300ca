#include "exchange/OutlineFormats.h"

#include "formats/JsonWriter.h"
#include "model/MyOutlineItem.h"
#include "model/TreeWalk.h"

namespace leafwright {

namespace {

void printAction(const std::optional<OutlineEntry::Action> &action, JsonWriter &json) {
    if (!action) {
        json.null();
        return;
    }
    json.beginObject(JsonWriter::Layout::Compact);
    json.member("type", action->type);
    if (action->target) json.member(action->type == QLatin1String("URI") ? "uri" : "file", *action->target);
    json.endObject();
}

void printWhatElse(const OutlineEntry &entry, JsonWriter &json) {
    json.member("bold", entry.bold);
    json.member("italic", entry.italic);
    json.key("color");
    if (entry.color) {
        json.beginArray(JsonWriter::Layout::Compact);
        for (const double part : *entry.color)
            json.value(part);
        json.endArray();
    } else {
        json.null();
    }
    json.member("open", entry.open);
    json.key("action");
    printAction(entry.action, json);
    json.key("entry");
    entry.number ? json.value(*entry.number) : json.null();
}

}  // namespace

void printOutlineAsJson(const PDFDocument &document, const TextSink &sink) {
    JsonWriter json(sink);
    json.beginArray();
    walkBelow(
        document.outlineRoot(),
        [&](const PDFOutline &entry, size_t /*depth*/) {
            const auto &destination = entry.destination();
            json.beginObject();
            json.member("title", entry.label().isNull() ? QStringLiteral("") : entry.label());
            json.member("pageLabel", destination ? document.pageLabel(destination->pageIndex) : QString());
            json.key("pageIndex");
            destination ? json.value(destination->pageIndex) : json.null();
            json.member("point", destination ? destination->point : QPointF());
            printWhatElse(entry.entry(), json);
            json.key("children");
            json.beginArray();
        },
        [&](const PDFOutline & /*entry*/) {
            json.endArray();
            json.endObject();
        });
    json.endArray();
}

void printOutlineAsPlusLines(const PDFDocument &document, const TextSink &sink) {
    // An entry at a time: the lines of a deep outline, each as long as its depth, may not fit into memory.
    walkBelow(
        document.outlineRoot(),
        [&](const PDFOutline &entry, size_t depth) {
            const auto &destination = entry.destination();
            const QString label = destination ? document.pageLabel(destination->pageIndex) : QString();
            const MyOutlineItem item(entry.label(), PageTarget{label});
            sink(item.plusDescriptionForLevel(static_cast<qint32>(depth) + 1).toUtf8());
        },
        [](const PDFOutline & /*entry*/) {});
}

void printOutlineAsText(const PDFDocument &document, const TextSink &sink) {
    constexpr size_t deepestIndent = 40;
    walkBelow(
        document.outlineRoot(),
        [&](const PDFOutline &entry, size_t depth) {
            QString line(static_cast<qsizetype>(2 * std::min(depth, deepestIndent)), u' ');
            line += entry.label().simplified();
            if (const auto &destination = entry.destination()) {
                line += QLatin1String("  [") + document.pageLabel(destination->pageIndex) + u']';
            }
            sink((line + u'\n').toUtf8());
        },
        [](const PDFOutline & /*entry*/) {});
}

}  // namespace leafwright
