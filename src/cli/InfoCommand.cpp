#include "cli/Commands.h"
#include "cli/FileClash.h"
#include "cli/JsonWriter.h"
#include "cli/OpenFile.h"
#include "texts/CountText.h"
#include "texts/Translated.h"

namespace leafwright::cli {

namespace {

constexpr Translated translated{"InfoCommand"};

}  // namespace

CommandInfo InfoCommand::info() const {
    return {QStringLiteral("info"),
            translated("Tells what kind of file a PDF is, as JSON."),
            translated("The number of pages, the version, and whether the file is locked (needs a "
                       "password), encrypted, damaged and repaired on opening, signed, and has an "
                       "outline. Of a locked file, the pages and what is on them can't be told."),
            {{QStringLiteral("FILE"), translated("The PDF.")}},
            {}};
}

ExitCode InfoCommand::run(const QCommandLineParser &arguments, Console &console) const {
    const QString path = arguments.positionalArguments().first();
    if (const auto clash = clashOfPrinting(path)) {
        console.message(*clash);
        return Failed;
    }
    const auto opened = PDFDocument::open(path);
    if (const auto *error = std::get_if<PDFError>(&opened)) {
        console.message(openFailure(path, *error));
        return Failed;
    }
    const PDFDocument &document = *std::get<std::unique_ptr<PDFDocument>>(opened);
    if (const auto failure = readFailure(path, document)) {
        console.message(*failure);
        return Failed;
    }
    console.tellPages(document.pageCount());
    const PDFVersion version = document.version();
    JsonWriter json(console);
    json.beginObject();
    json.member("pages", document.pageCount());
    json.member("version", QStringLiteral("%1.%2").arg(version.major).arg(version.minor));
    json.member("locked", document.isLocked());
    json.member("encrypted", document.isEncrypted());
    json.member("repaired", document.wasRepaired());
    json.member("signed", document.isSigned());
    json.member("hasOutline", document.hasOutline());
    json.endObject();
    console.tellOutcome(path + QLatin1String(": ") + pageCountText(document.pageCount()));
    return Done;
}

}  // namespace leafwright::cli
