#include "cli/Commands.h"
#include "cli/OpenFile.h"
#include "cli/OutlineFormats.h"
#include "model/TreeWalk.h"
#include "texts/Translated.h"

namespace leafwright::cli {

namespace {

const QString formatOption = QStringLiteral("format");

constexpr Translated translated{"OutlineCommand"};

}  // namespace

CommandInfo OutlineCommand::info() const {
    return {QStringLiteral("outline"),
            translated("Prints the outline, as JSON, plus lines or text."),
            translated(
                "JSON nodes have title, pageLabel, pageIndex (from 0), point ([x, y] in points from the "
                "page's lower left; [0, 0] is no particular spot) and children. Plus lines have one \"+\" a "
                "level, \"@\" and the page label, and the title. \"apply\" reads both."),
            {{QStringLiteral("FILE"), translated("The PDF.")}},
            {{formatOption, translated("json (the default), plus or text."), QStringLiteral("FORMAT"),
              QStringLiteral("json")}}};
}

ExitCode OutlineCommand::run(const QCommandLineParser &arguments, Console &console) const {
    const QString format = arguments.value(formatOption);
    auto *const print = format == QLatin1String("json")   ? printOutlineAsJson
                        : format == QLatin1String("plus") ? printOutlineAsPlusLines
                        : format == QLatin1String("text") ? printOutlineAsText
                                                          : nullptr;
    if (!print) {
        return wrongUsage(*this, translated("\"%1\" is no format; there are json, plus and text").arg(format),
                          console);
    }
    const QString path = arguments.positionalArguments().first();
    const auto document = openForReading(path, console);
    if (!document) return Failed;
    console.tellEntries(countBelow(document->outlineRoot()));
    if (const auto failure = readFailure(path, *document)) {
        console.message(*failure);
        return Failed;
    }
    print(*document, console);
    return Done;
}

}  // namespace leafwright::cli
