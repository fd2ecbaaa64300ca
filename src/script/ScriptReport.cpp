#include "script/ScriptReport.h"

#include "categories/FontIdentity.h"
#include "document/MyDocument.h"
#include "formats/JsonWriter.h"
#include "model/TreeWalk.h"
#include "outlineview/OKNSOutlineView.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"
#include "view/SpotArchive.h"

#include <QLineEdit>

namespace leafwright::script {

namespace {

using Layout = JsonWriter::Layout;

// What happened

void write(const QStringList &texts, JsonWriter &json) {
    json.beginArray(Layout::Compact);
    for (const QString &text : texts)
        json.value(text);
    json.endArray();
}

void write(const QJsonValue &value, JsonWriter &json) {
    if (value.isBool()) return json.value(value.toBool());
    if (value.isDouble()) return json.value(value.toDouble());
    json.value(value.toString());
}

void write(const Happenings::ShownAlert &shown, JsonWriter &json) {
    json.beginObject();
    json.member("message", shown.alert.message);
    json.member("informativeText", shown.alert.informativeText);
    json.key("buttons");
    write(shown.alert.buttons, json);
    json.member("answer", shown.answer);
    json.endObject();
}

void write(const ShownSheet &shown, JsonWriter &json) {
    json.beginObject();
    json.member("title", shown.title);
    json.key("fields");
    json.beginObject();
    for (const auto &[name, value] : shown.fields) {
        json.key(qPrintable(name));
        write(value, json);
    }
    json.endObject();
    json.member("tag", shown.tag);
    json.endObject();
}

void write(const Happenings::ShownPanel &shown, JsonWriter &json) {
    json.beginObject();
    json.member("kind", shown.saves ? QStringLiteral("save") : QStringLiteral("open"));
    json.member("title", shown.panel.title);
    json.key("allowedFileTypes");
    write(shown.panel.allowedFileTypes, json);
    json.member("chosen", shown.chosen);
    json.endObject();
}

void write(const Happenings::ShownElsewhere &shown, JsonWriter &json) {
    constexpr std::array kinds{"revealed", "opened", "address"};
    json.beginObject(Layout::Compact);
    json.member(kinds.at(static_cast<size_t>(shown.kind)), shown.what);
    json.endObject();
}

void write(const LevelRecord &record, JsonWriter &json) {
    json.beginObject(Layout::Compact);
    json.member("levelNumber", record.levelNumber);
    json.member("Level", record.levelName);
    json.member("FontTraits", record.fontText);
    if (record.font) {
        json.member("font", record.font->displayName());
        json.member("size", record.font->pointSize());
        json.member("bold", isBold(*record.font));
        json.member("italic", isItalic(*record.font));
    }
    json.endObject();
}

template <typename Shown>
void writeList(const char *key, const std::vector<Shown> &list, JsonWriter &json) {
    json.key(key);
    json.beginArray();
    for (const Shown &each : list)
        write(each, json);
    json.endArray();
}

void writeHappenings(const StepRecord &record, JsonWriter &json) {
    json.member("beeps", record.happenings.beeps);
    writeList("alerts", record.happenings.alerts, json);
    writeList("sheets", record.sheets, json);
    writeList("panels", record.happenings.panels, json);
    writeList("workspace", record.happenings.workspace, json);
    json.member("clipboard", record.happenings.clipboard.value_or(QString()));
}

// How things stand

void beginNode(const MyOutlineItem &item, const MyDocument &document, JsonWriter &json) {
    json.beginObject();
    json.member("title", item.pageTitle());
    json.member("pageLabel", item.pageLabel());
    const auto index = document.outline().knownPageIndexOfItem(item);
    json.key("pageIndex");
    index ? json.value(*index) : json.null();
    json.member("point", item.pointOnPage());
    json.key("children");
    json.beginArray();
}

void writeOutline(MyDocument &document, JsonWriter &json) {
    json.key("outline");
    json.beginArray();
    walkBelow(
        document.treecontroller().arrangedObjects(),
        [&](const TreeNode &node, size_t /*depth*/) { beginNode(*node.representedObject(), document, json); },
        [&](const TreeNode & /*node*/) {
            json.endArray();
            json.endObject();
        });
    json.endArray();
}

void write(const IndexPath &path, JsonWriter &json) {
    json.beginArray(Layout::Compact);
    for (size_t i = 0; i < path.length(); ++i)
        json.value(static_cast<qint64>(path.indexAtPosition(i)));
    json.endArray();
}

void writePaths(const char *key, const std::vector<IndexPath> &paths, JsonWriter &json) {
    json.key(key);
    json.beginArray(Layout::Compact);
    for (const IndexPath &path : paths)
        write(path, json);
    json.endArray();
}

std::vector<IndexPath> expandedPaths(MyDocument &document) {
    std::vector<IndexPath> paths;
    walkBelow(document.treecontroller().arrangedObjects(), [&](const TreeNode &node, size_t /*depth*/) {
        if (document.outlineview()->isItemExpanded(node)) paths.push_back(node.indexPath());
    });
    return paths;
}

void writeEditing(MyDocument &document, JsonWriter &json) {
    json.key("editing");
    const OKNSOutlineView &view = *document.outlineview();
    const auto *field = view.viewport()->findChild<QLineEdit *>();
    if (!field || !view.currentIndex().isValid()) return json.null();
    const bool isTitle = view.currentIndex().column() == TreeController::TitleColumn;
    json.beginObject(Layout::Compact);
    json.key("path");
    write(document.treecontroller().nodeForIndex(view.currentIndex()).indexPath(), json);
    json.member("column", isTitle ? QStringLiteral("title") : QStringLiteral("page"));
    json.member("selectedText", field->selectedText());
    json.endObject();
}

void writePage(const PDFPage *page, JsonWriter &json) {
    json.key("page");
    page ? json.value(page->index() + 1) : json.null();
}

void writeSelection(const std::optional<PDFSelection> &selection, JsonWriter &json) {
    json.key("pageSelection");
    if (!selection || selection->isEmpty()) return json.null();
    json.beginObject();
    json.member("text", selection->string());
    json.key("ranges");
    json.beginArray();
    for (const PDFPage *page : selection->pages()) {
        for (const TextRange &range : selection->rangesOnPage(*page)) {
            json.beginObject(Layout::Compact);
            json.member("page", page->index() + 1);
            json.member("location", range.location);
            json.member("length", range.length);
            json.endObject();
        }
    }
    json.endArray();
    json.endObject();
}

void writeIcon(const QByteArray &archive, JsonWriter &json) {
    json.key("icon");
    const auto spot = unarchivedSpot(archive);
    if (!spot) return json.null();
    json.beginObject(Layout::Compact);
    json.member("pageLabel", spot->pageLabel);
    json.member("point", spot->point);
    json.endObject();
}

void writeState(MyDocument &document, JsonWriter &json) {
    writeOutline(document, json);
    writePaths("selection", document.treecontroller().selectionIndexPaths(), json);
    writePaths("expanded", expandedPaths(document), json);
    writeEditing(document, json);
    json.member("edited", document.isDocumentEdited());
    writePage(document.pdfview()->currentPage(), json);
    writeSelection(document.pdfview()->currentSelection(), json);
    writeList("map", document.listH1H2H3Config(), json);
    json.member("printedPageOffset", static_cast<qint32>(document.printedPageOffset()));
    json.member("badge", document.pdfview()->pageLabelLocation());
    writeIcon(document.pdfview()->iconLocationData(), json);
}

void writeClosedState(JsonWriter &json) {
    for (const char *key : {"outline", "selection", "expanded", "editing", "edited", "page", "pageSelection",
                            "map", "printedPageOffset", "badge", "icon"}) {
        json.key(key);
        json.null();
    }
}

}  // namespace

void writeRecord(const StepRecord &record, MyDocument *document, JsonWriter &json) {
    json.beginObject();
    json.member("do", record.name);
    json.key("enabled");
    record.enabled ? json.value(*record.enabled) : json.null();
    writeHappenings(record, json);
    document ? writeState(*document, json) : writeClosedState(json);
    json.endObject();
}

}  // namespace leafwright::script
