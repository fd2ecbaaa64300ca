#include "cli/ContentsReport.h"

namespace leafwright::cli {

namespace {

void writeSources(ContentsSources sources, leafwright::JsonWriter &json) {
    static constexpr std::pair<ContentsSource, const char *> names[] = {{PrintedSource, "printed"},
                                                                        {StyleSource, "style"},
                                                                        {LinkSource, "link"},
                                                                        {NameSource, "name"},
                                                                        {StructureSource, "structure"}};
    json.key("evidence");
    json.beginArray(leafwright::JsonWriter::Layout::Compact);
    for (const auto &[source, name] : names) {
        if ((sources & source) != 0) json.value(QString::fromLatin1(name));
    }
    json.endArray();
}

}  // namespace

void writeContentsReport(const FoundContents &found, const TextPages &pages, leafwright::JsonWriter &json) {
    std::vector<int> open;  // the levels of the entries that we are in
    const auto closeTo = [&](int level) {
        while (!open.empty() && open.back() >= level) {
            json.endArray();
            json.endObject();
            open.pop_back();
        }
    };
    json.beginArray();
    for (const ContentsEntry &entry : found.entries) {
        closeTo(entry.level);
        json.beginObject();
        json.member("title", entry.title);
        json.member("pageLabel", pages.pageLabel(entry.pageIndex));
        json.member("pageIndex", entry.pageIndex);
        json.member("point", entry.point);
        json.member("level", static_cast<int>(open.size()) + 1);
        writeSources(entry.sources, json);
        json.member("confidence", entry.confidence);
        json.key("children");
        json.beginArray();
        open.push_back(entry.level);
    }
    closeTo(0);
    json.endArray();
}

}  // namespace leafwright::cli
