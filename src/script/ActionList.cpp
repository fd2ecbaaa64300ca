#include "script/ActionList.h"

#include "document/commands/ActionTable.h"
#include "formats/JsonWriter.h"

namespace leafwright::script {

namespace {

/// Null for an empty text.
QString presentOrNull(const QString &text) {
    return text.isEmpty() ? QString() : text;
}

}  // namespace

void writeActionList(JsonWriter &json) {
    json.beginArray();
    for (const ActionDescription &description : actionDescriptions()) {
        json.beginObject(JsonWriter::Layout::Compact);
        json.member("selector", QString::fromLatin1(description.selector));
        json.member("title", QString::fromUtf8(description.title));
        json.member("menu", presentOrNull(menuTitle(description.menu).remove(u'&')));
        json.member("shortcut", presentOrNull(QString::fromLatin1(description.shortcut)));
        json.endObject();
    }
    json.endArray();
}

}  // namespace leafwright::script
