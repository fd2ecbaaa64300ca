#include "cli/Commands.h"
#include "cli/OpenFile.h"
#include "document/outline/OutlineImport.h"
#include "exchange/OutlineFormat.h"
#include "model/TreeWalk.h"
#include "texts/CountText.h"
#include "texts/Translated.h"

namespace leafwright::cli {

namespace {

const QString formatOption = QStringLiteral("format");

constexpr Translated translated{"OutlineCommand"};

}  // namespace

CommandInfo OutlineCommand::info() const {
    return {QStringLiteral("outline"),
            translated("Prints the outline, as JSON, plus lines, text or in a form of other programs."),
            translated(
                "JSON nodes have title, pageLabel, pageIndex (from 0), point ([x, y] in points from the "
                "page's lower left; [0, 0] is no particular spot) and children. Plus lines have one \"+\" a "
                "level, \"@\" and the page label, and the title. \"apply\" reads all formats but text."),
            {{QStringLiteral("FILE"), translated("The PDF.")}},
            {{formatOption,
              translated("One of %1; the first is the default.")
                  .arg(namesOfWrittenFormats().join(QLatin1String(", "))),
              QStringLiteral("FORMAT"), QStringLiteral("json")}}};
}

ExitCode OutlineCommand::run(const QCommandLineParser &arguments, Console &console) const {
    const QString name = arguments.value(formatOption);
    const OutlineFormat *format = outlineFormatNamed(name);
    if (!format) {
        return wrongUsage(*this,
                          translated("\"%1\" is no format; there are %2")
                              .arg(name, namesOfWrittenFormats().join(QLatin1String(", "))),
                          console);
    }
    const QString path = arguments.positionalArguments().first();
    const auto document = openForReading(path, console);
    if (!document) return Failed;
    MyOutlineItem root;
    addOutlineChildren(document->outlineRoot(), root, *document);
    console.tellEntries(countBelow(document->outlineRoot()));
    if (const auto failure = readFailure(path, *document)) {
        console.message(*failure);
        return Failed;
    }
    format->write(
        root, [](const MyOutlineItem &item) { return item.importedPage(); },
        [&console](const QByteArray &bytes) { console.write(bytes); });
    console.tellOutcome(path + QLatin1String(": ") + entryCountText(countBelow(root)));
    return Done;
}

}  // namespace leafwright::cli
