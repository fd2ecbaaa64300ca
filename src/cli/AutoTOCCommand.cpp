#include "autotoc/AutoTOC.h"
#include "autotoc/CalibratingAutoTOC.h"
#include "cli/Commands.h"
#include "cli/FileClash.h"
#include "cli/HeadingMapFile.h"
#include "cli/OpenFile.h"
#include "cli/OutlineOutput.h"
#include "pdf/ReadAhead.h"
#include "texts/Translated.h"

namespace leafwright::cli {

namespace {

constexpr int defaultMaxDepth = 3;
const QString maxDepthOption = QStringLiteral("max-depth");
const QString mapOption = QStringLiteral("map");
const QString calibrateOption = QStringLiteral("calibrate");
const QString keepOption = QStringLiteral("keep");
const QString wrapOption = QStringLiteral("wrap");

constexpr Translated translated{"AutoTOCCommand"};

struct AutoTOCRequest {
    QString mapFile;  ///< Empty: guess the map.
    int maxDepth = defaultMaxDepth;
    bool calibrate = false;
    bool keep = false;
    bool wrap = false;
    bool keepPages = false;
};

/// The headings below a new item, by a map of their fonts; null when the given map has none, which is said.
std::unique_ptr<MyOutlineItem> headingsByMap(const PDFDocument &pdf, const FontCensus &census,
                                             const AutoTOCRequest &request, Console &console) {
    if (request.mapFile.isEmpty())
        return runAutoTOCwithH1H2H3Map(pdf, headingsfromFonts(census), request.maxDepth);
    const HeadingLevelMap map = readHeadingMap(request.mapFile, census, console);
    return map.empty() ? nullptr : runAutoTOCwithH1H2H3Map(pdf, map, request.maxDepth);
}

/// The same by how often fonts occur; null when the text has too few of them, which is said.
std::unique_ptr<MyOutlineItem> headingsByCalibration(const QString &file, const PDFDocument &pdf,
                                                     const FontCensus &census, int maxDepth,
                                                     Console &console) {
    const FontStringCensus counts = fontStringCensus(census);
    if (canCalibrate(counts)) {
        const CalibratedLevels levels(headingFontStrings(counts, FrequencyFilters()));
        return runCalibratingAutoTOC(pdf, levels, maxDepth);
    }
    console.message(
        translated("%1: its text has fewer than two fonts, from which nothing can be told").arg(file));
    return nullptr;
}

/// Makes one file's headings its outline. @return why that failed
std::optional<QString> autoTOC(const QString &file, const QString &out, const AutoTOCRequest &request,
                               bool alone, Console &console) {
    if (auto clash = clashOf({.pdf = file, .read = {request.mapFile}, .out = out})) return clash;
    OutlineDocument document;
    if (QString failure; !openForEditing(document, file, failure)) return failure;
    const PDFDocument &pdf = *document.pdfDoc();
    console.tellPages(pdf.pageCount());
    if (alone) readAllPages(pdf);  // of many files, each has a core to itself
    const FontCensus census = calcFontsInDocument(pdf);
    if (auto failure = readFailure(file, pdf)) return failure;
    auto top = request.calibrate ? headingsByCalibration(file, pdf, census, request.maxDepth, console)
                                 : headingsByMap(pdf, census, request, console);
    if (!top) return translated("%1: nothing was written").arg(file);
    const bool found = !top->children().empty();
    MyOutlineItem::Children items;
    if (!request.wrap) {
        items = top->takeChildren();
    } else if (found || request.keep) {
        items.push_back(std::move(top));
    }
    document.setKeepsPages([&request] { return request.keepPages; });
    observeWriting(document, file, console);
    if (!found) {
        console.message(items.empty()
                            ? translated("%1: no headings were found; the outline stays as it was").arg(file)
                            : translated("%1: no headings were found").arg(file));
    }
    return writeEntries(document, std::move(items), request.keep, out, console);
}

}  // namespace

CommandInfo AutoTOCCommand::info() const {
    return {
        QStringLiteral("autotoc"),
        translated("Makes the headings of a PDF, found by their fonts, its outline."),
        translated(
            "Text in a font larger than the body text's is a heading; its level goes by the font's size, or "
            "by a map (see \"fonts --save-map\"), or by how often fonts occur (--calibrate). The headings "
            "take the place of the outline, unless "
            "--keep is given. With --out-dir, several files are done at once, on all cores, each in a "
            "process "
            "of its own; one that takes more than 60 seconds, or --timeout, is given up."),
        {{QStringLiteral("FILE..."), translated("The PDF, or several with --out-dir.")}},
        OutlineOutput::options() +
            QList<QCommandLineOption>{
                {maxDepthOption, translated("The deepest level of headings (3)."), QStringLiteral("N"),
                 QString::number(defaultMaxDepth)},
                {mapOption, translated("A heading map to use in place of the guessed one."),
                 QStringLiteral("MAP")},
                {calibrateOption,
                 translated(
                     "Tells headings by how often their fonts occur as well, and corrects the levels as they "
                     "appear; in place of a map.")},
                {keepOption, translated("Adds the headings behind the existing outline.")},
                keepPagesOption(),
                {wrapOption, translated("Puts the headings below one entry, \"AutoTOC\" and the depth.")}}};
}

bool AutoTOCCommand::limitsTime(const QCommandLineParser &arguments) const {
    return OutlineOutput(arguments).isFolder();
}

ExitCode AutoTOCCommand::run(const QCommandLineParser &arguments, Console &console) const {
    const OutlineOutput output(arguments);
    AutoTOCRequest request{
        arguments.value(mapOption),       defaultMaxDepth,
        arguments.isSet(calibrateOption), arguments.isSet(keepOption),
        arguments.isSet(wrapOption),      arguments.isSet(keepPagesOption().names().first())};
    bool isNumber = false;
    request.maxDepth = arguments.value(maxDepthOption).toInt(&isNumber);
    if (!isNumber || request.maxDepth < 1) {
        return wrongUsage(*this, translated("--max-depth wants a number from 1"), console);
    }
    if (request.calibrate && arguments.isSet(mapOption)) {
        return wrongUsage(
            *this, translated("--calibrate makes a map of its own; --map can't be given with it"), console);
    }
    if (const auto problem = output.problem()) return wrongUsage(*this, *problem, console);
    if (!output.makeFolder(console)) return Failed;
    const OutlineOutput::Job job{[&](const QString &file) {
        return autoTOC(file, output.targetOf(file), request, output.isAlone(), console);
    }};
    return output.run(info(), arguments, job, console) ? Done : Failed;
}

}  // namespace leafwright::cli
