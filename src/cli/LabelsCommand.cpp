#include "cli/Commands.h"
#include "cli/JsonWriter.h"
#include "cli/OpenFile.h"
#include "texts/CountText.h"
#include "texts/Translated.h"

namespace leafwright::cli {

namespace {

constexpr Translated translated{"LabelsCommand"};

}  // namespace

CommandInfo LabelsCommand::info() const {
    return {QStringLiteral("labels"),
            translated("Lists the page labels, as a JSON array by page."),
            translated("A label is a page's printed name, such as \"iv\". A page without one has "
                       "its number, counted from 1."),
            {{QStringLiteral("FILE"), translated("The PDF.")}},
            {}};
}

ExitCode LabelsCommand::run(const QCommandLineParser &arguments, Console &console) const {
    const QString path = arguments.positionalArguments().first();
    const auto document = openForReading(path, console);
    if (!document) return Failed;
    JsonWriter json(console);
    json.beginArray();
    for (int i = 0; i < document->pageCount(); ++i)
        json.value(document->pageLabel(i));
    json.endArray();
    console.tellOutcome(path + QLatin1String(": ") + pageCountText(document->pageCount()));
    return Done;
}

}  // namespace leafwright::cli
