#include "cli/Commands.h"
#include "cli/FileClash.h"
#include "cli/OpenFile.h"
#include "cli/OutlineOutput.h"
#include "document/outline/PageLabelMap.h"
#include "exchange/OutlineFormat.h"
#include "files/FileReading.h"
#include "model/TreeWalk.h"
#include "texts/Translated.h"

#include <unistd.h>

namespace leafwright::cli {

namespace {

const QString formatOption = QStringLiteral("format");

constexpr Translated translated{"ApplyCommand"};

std::optional<QByteArray> readTree(const QString &path, Console &console) {
    auto text = path == QLatin1String("-") ? readDescriptor(STDIN_FILENO, largestOutlineText)
                                           : readFile(path, largestOutlineText);
    if (const auto *reason = std::get_if<QString>(&text)) {
        console.message(translated("%1: the outline can't be read: %2").arg(path, *reason));
        return std::nullopt;
    }
    return std::get<QByteArray>(std::move(text));
}

/// The format to read a text in, as an option says or else as the text and its file's name do. What can't be
/// told is read as plus lines, which has the line told that is none.
const OutlineFormat &formatOf(const QString &option, const QString &path, const QByteArray &text) {
    if (!option.isEmpty()) return *outlineFormatNamed(option);
    if (const OutlineFormat *format = formatToRead(path, text)) return *format;
    if (const OutlineFormat *format = formatToRead({}, text)) return *format;
    return *outlineFormatNamed(u"plus");
}

/// The outline in a file, for a PDF; null where there is none, which is told.
std::unique_ptr<MyOutlineItem> outlineFor(const PDFDocument &pdf, const QString &treeFile,
                                          const QString &format, Console &console) {
    const std::optional<QByteArray> text = readTree(treeFile, console);
    if (!text) return nullptr;
    QStringList notices;
    auto tree = readOutline(formatOf(format, treeFile, *text), *text,
                            {pdf, entriesByNumber(pdf.outlineRoot()), &notices});
    if (const auto *error = std::get_if<TreeError>(&tree)) {
        const QString where =
            error->where.isEmpty() ? treeFile : treeFile + QLatin1String(": ") + error->where;
        console.message(where + QLatin1String(": ") + error->message);
        return nullptr;
    }
    for (const QString &notice : notices)
        console.message(treeFile + QLatin1String(": ") + notice);
    return std::get<std::unique_ptr<MyOutlineItem>>(std::move(tree));
}

QString unknownPage(const QString &title, const QString &label) {
    const QString text =
        isPrintedPageNumber(label)
            ? translated(
                  "\"%1\": \"%2\" is read as a printed page number, which no page is known to have; the "
                  "entry leads to the first page")
            : translated("\"%1\": no page is labelled \"%2\"; the entry leads to the first page");
    return text.arg(title, label);
}

/// Says what will not be as the tree has it: labels that stand for no page, and entries without a page. Those
/// that have a page of their own either keep it or are told of by the write.
void reportPages(const OutlineDocument &document, const MyOutlineItem &root, Console &console) {
    constexpr int mostNamed = 10;
    int unknown = 0;
    int without = 0;
    walkBelow(root, [&](const MyOutlineItem &item, size_t /*depth*/) {
        const Target target = item.target();
        if (std::holds_alternative<std::monostate>(target)) ++without;
        const auto *page = std::get_if<PageTarget>(&target);
        // Looked up in any case, since that finds out about printed page numbers.
        const bool isUnknown = page && !document.pageIndexOfItem(item) && !page->importedPage;
        if (isUnknown && ++unknown <= mostNamed) console.message(unknownPage(item.pageTitle(), page->label));
    });
    if (unknown > mostNamed) {
        console.message(translated("%1 more entries with unknown page labels lead to the first page")
                            .arg(unknown - mostNamed));
    }
    if (without > 0)
        console.message(translated("%1 entries have no page; they are written without one").arg(without));
    const LostActions lost = lostActions(root, entriesByNumber(document.pdfDoc()->outlineRoot()));
    if (lost.unknown > 0)
        console.message(
            translated("%1 entries did something that only the file has that they come from; they "
                       "are written without it")
                .arg(lost.unknown));
    if (lost.besidePages > 0)
        console.message(
            translated("%1 entries have an action beside their page; they lead to the page and are "
                       "written without the action")
                .arg(lost.besidePages));
}

}  // namespace

CommandInfo ApplyCommand::info() const {
    return {
        QStringLiteral("apply"),
        translated(
            "Writes an outline, given as JSON, plus lines or in a form of other programs, into a PDF."),
        translated(
            "TREE is what \"outline\" prints, in any format but text, edited or not. An entry's page is told "
            "by its pageLabel; of pages with the same label it is the last. pageIndex counts only without a "
            "pageLabel, or with --keep-pages where it is a page with that label. An entry at [0, 0] is given "
            "the middle of its page's top edge. An empty TREE is refused: [] says that no outline is "
            "wanted."),
        {{QStringLiteral("FILE"), translated("The PDF.")},
         {QStringLiteral("TREE"), translated("The outline, in a file; \"-\" is standard input.")}},
        {outputOption(),
         keepPagesOption(),
         {formatOption,
          translated(
              "The format of TREE: one of %1. Without it, that is told by the extension of its name and "
              "by how it begins.")
              .arg(namesOfReadFormats().join(QLatin1String(", "))),
          QStringLiteral("FORMAT")}}};
}

ExitCode ApplyCommand::run(const QCommandLineParser &arguments, Console &console) const {
    const QString out = outputOf(arguments);
    if (out.isEmpty()) return wrongUsage(*this, translated("-o OUT is missing"), console);
    const QString format = arguments.value(formatOption);
    const QStringList formats = namesOfReadFormats();
    if (arguments.isSet(formatOption) && !formats.contains(format)) {
        return wrongUsage(*this,
                          translated("\"%1\" is no format that can be read; there are %2")
                              .arg(format, formats.join(QLatin1String(", "))),
                          console);
    }
    const QString file = arguments.positionalArguments()[0];
    const QString treeFile = arguments.positionalArguments()[1];

    if (const auto clash = clashOf({.pdf = file, .read = {treeFile}, .out = out})) {
        console.message(*clash);
        return Failed;
    }
    OutlineDocument document;
    if (QString failure; !openForEditing(document, file, failure)) {
        console.message(failure);
        return Failed;
    }
    const auto outline = outlineFor(*document.pdfDoc(), treeFile, format, console);
    if (!outline) return Failed;
    const bool keepPages = arguments.isSet(keepPagesOption().names().first());
    document.setKeepsPages([keepPages] { return keepPages; });
    observeWriting(document, file, console);
    appendEntries(document, outline->takeChildren());
    reportPages(document, document.root(), console);
    console.tellPages(document.pdfDoc()->pageCount());
    console.tellEntries(countBelow(document.root()));
    // Printed page numbers may have been looked up on the pages.
    if (const auto failure = readFailure(file, *document.pdfDoc())) {
        console.message(*failure);
        return Failed;
    }
    if (const auto error = document.write(out, OutlineDocument::saveFinalPDF)) {
        console.message(error->message);
        return Failed;
    }
    tellWritten(out, document, console);
    return Done;
}

}  // namespace leafwright::cli
