#include "categories/FontIdentity.h"
#include "cli/Commands.h"
#include "cli/JsonWriter.h"
#include "cli/OpenFile.h"
#include "texts/CountText.h"
#include "texts/Translated.h"

namespace leafwright::cli {

namespace {

const QString pageOption = QStringLiteral("page");

constexpr Translated translated{"TextCommand"};

void printRuns(const PDFDocument &document, int pageIndex, Console &console) {
    const std::shared_ptr<const PageText> text = document.pageText(pageIndex);
    for (size_t i = 0; i < text->attributedString.runs.size(); ++i) {
        const FontRun &run = text->attributedString.runs[i];
        const Rect &bounds = text->runBounds[i];
        JsonWriter json(console, JsonWriter::Layout::Compact);
        json.beginObject();
        json.member("page", pageIndex + 1);
        json.member("location", run.range.location);
        json.member("length", run.range.length);
        json.member("font", run.font.displayName());
        json.member("size", run.font.pointSize());
        json.member("bold", isBold(run.font));
        json.member("italic", isItalic(run.font));
        json.key("bounds");
        json.beginArray();
        for (const double edge : {bounds.x, bounds.y, bounds.width, bounds.height})
            json.value(edge);
        json.endArray();
        json.member("text", text->attributedString.substring(run.range));
        json.endObject();
    }
}

}  // namespace

CommandInfo TextCommand::info() const {
    return {
        QStringLiteral("text"),
        translated("Prints the text as runs of one font, a JSON object a line."),
        translated(
            "Each run has its page (from 1), location and length in the page's text, font, size in points, "
            "bold, italic, bounds ([x, y, width, height] in points from the page's lower left) and text. "
            "Every line of text ends with a line feed that belongs to its last run."),
        {{QStringLiteral("FILE"), translated("The PDF.")}},
        {{pageOption, translated("Only this page, counted from 1."), QStringLiteral("N")}}};
}

ExitCode TextCommand::run(const QCommandLineParser &arguments, Console &console) const {
    const QString path = arguments.positionalArguments().first();
    bool isNumber = true;
    const int page = arguments.isSet(pageOption) ? arguments.value(pageOption).toInt(&isNumber) : 0;
    if (!isNumber) {
        return wrongUsage(*this, translated("\"%1\" is no page number").arg(arguments.value(pageOption)),
                          console);
    }
    const auto document = openForReading(path, console);
    if (!document) return Failed;
    const bool allPages = !arguments.isSet(pageOption);
    if (!allPages && (page < 1 || page > document->pageCount())) {
        console.message(translated("%1: there is no page %2; the pages are 1 to %3")
                            .arg(path, arguments.value(pageOption), QString::number(document->pageCount())));
        return Failed;
    }
    const int first = allPages ? 0 : page - 1;
    const int end = allPages ? document->pageCount() : page;
    for (int i = first; i < end; ++i) {
        document->pageText(i);
        if (const auto failure = readFailure(path, *document)) {
            console.message(*failure);
            return Failed;
        }
        printRuns(*document, i, console);
    }
    console.tellOutcome(path + QLatin1String(": ") + pageCountText(end - first));
    return Done;
}

}  // namespace leafwright::cli
