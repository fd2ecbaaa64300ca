#include "autotoc/HeadingMapText.h"
#include "categories/FontIdentity.h"
#include "cli/Commands.h"
#include "cli/FileClash.h"
#include "cli/JsonWriter.h"
#include "cli/OpenFile.h"
#include "cli/ProgramStart.h"
#include "files/FileReplacement.h"
#include "pdf/ReadAhead.h"
#include "texts/Translated.h"

namespace leafwright::cli {

namespace {

const QString saveMapOption = QStringLiteral("save-map");

constexpr Translated translated{"FontsCommand"};

void printFont(const Font &font, JsonWriter &json) {
    json.member("font", font.displayName());
    json.member("size", font.pointSize());
    json.member("bold", isBold(font));
    json.member("italic", isItalic(font));
}

void print(const FontCensus &census, const HeadingLevelMap &map, Console &console) {
    using Layout = JsonWriter::Layout;
    JsonWriter json(console);
    json.beginObject();
    json.key("census");
    json.beginArray();
    for (const FontCensus::Entry &entry : census.entries()) {
        json.beginObject(Layout::Compact);
        printFont(entry.font, json);
        json.member("fontIDString", fontIDString(entry.font));
        json.member("charCount", entry.record.charCount);
        json.member("instances", entry.record.instances);
        json.endObject();
    }
    json.endArray();
    json.key("map");
    json.beginArray();
    for (const LevelRecord &record : map) {
        json.beginObject(Layout::Compact);
        json.member("levelNumber", record.levelNumber);
        json.member("Level", record.levelName);
        json.member("FontTraits", record.fontText);
        printFont(*record.font, json);
        json.endObject();
    }
    json.endArray();
    json.endObject();
}

bool saveMap(const HeadingLevelMap &map, const QString &path, Console &console) {
    FileReplacement file(path);
    const QByteArray bytes = stringToSaveListH1H2H3(map).toUtf8();
    const bool written = file.start() && file.write(bytes) == bytes.size() &&
                         file.commit() == FileReplacement::Outcome::Written;
    for (const QString &notice : file.notices())
        console.message(notice);
    if (!written) console.message(file.message());
    return written;
}

}  // namespace

CommandInfo FontsCommand::info() const {
    return {
        QStringLiteral("fonts"),
        translated("Counts the fonts and guesses which are headings, as JSON."),
        translated(
            "\"census\" has every font of the text with its number of characters and runs; \"map\" has the "
            "fonts larger than the body text's with the heading level guessed for each."),
        {{QStringLiteral("FILE"), translated("The PDF.")}},
        {{saveMapOption,
          translated("Also saves the guessed map to a file that \"autotoc --map\" reads, to be edited."),
          QStringLiteral("MAP")}}};
}

ExitCode FontsCommand::run(const QCommandLineParser &arguments, Console &console) const {
    const QString path = arguments.positionalArguments().first();
    const QString results = QStringLiteral("-");
    if (const auto clash = clashOf({.pdf = path, .written = {results, arguments.value(saveMapOption)}})) {
        console.message(*clash);
        return Failed;
    }
    const auto document = openForReading(path, console);
    if (!document) return Failed;
    if (workerOf() != WorkerOf::Batch) readAllPages(*document);  // of many files, each has a core to itself
    const FontCensus census = calcFontsInDocument(*document);
    if (const auto failure = readFailure(path, *document)) {
        console.message(*failure);
        return Failed;
    }
    const HeadingLevelMap map = headingsfromFonts(census);
    print(census, map, console);
    if (arguments.isSet(saveMapOption) && !saveMap(map, arguments.value(saveMapOption), console))
        return Failed;
    console.tellOutcome(translated("%1: %2 fonts, %3 of them of headings")
                            .arg(path)
                            .arg(census.entries().size())
                            .arg(map.size()));
    return Done;
}

}  // namespace leafwright::cli
