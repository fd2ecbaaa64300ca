#include "cli/Commands.h"
#include "cli/FileClash.h"
#include "cli/OpenFile.h"
#include "cli/OutlineOutput.h"
#include "cli/OutlineTree.h"
#include "files/FileReading.h"
#include "model/TreeWalk.h"
#include "texts/Translated.h"

#include <unistd.h>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"ApplyCommand"};

std::optional<QByteArray> readTree(const QString &path, Console &console) {
    constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    auto text = path == QLatin1String("-") ? readDescriptor(STDIN_FILENO) : readFile(path);
    if (const auto *reason = std::get_if<QString>(&text)) {
        console.message(translated("%1: the outline can't be read: %2").arg(path, *reason));
        return std::nullopt;
    }
    // What a program leaves that failed, or a file that was never written, is no wish to have no outline.
    QByteArrayView content = std::get<QByteArray>(text);
    if (content.startsWith(byteOrderMark)) content = content.sliced(byteOrderMark.size());
    if (content.trimmed().isEmpty()) {
        console.message(
            translated("%1: there is nothing in it; [] says that no outline is wanted").arg(path));
        return std::nullopt;
    }
    return std::get<QByteArray>(std::move(text));
}

/// Says what will not be as the tree has it: labels that no page has, and entries without a page.
void reportPages(const OutlineDocument &document, const MyOutlineItem &root, Console &console) {
    constexpr int mostNamed = 10;
    int unknown = 0;
    int without = 0;
    walkBelow(root, [&](const MyOutlineItem &item, size_t /*depth*/) {
        const Target target = item.target();
        if (std::holds_alternative<std::monostate>(target)) ++without;
        const auto *page = std::get_if<PageTarget>(&target);
        if (page && !document.getRealPageArrayIndex(page->label) && ++unknown <= mostNamed) {
            console.message(
                translated("\"%1\": no page is labelled \"%2\"; the entry leads to the first page")
                    .arg(item.pageTitle(), page->label));
        }
    });
    if (unknown > mostNamed) {
        console.message(translated("%1 more entries with unknown page labels lead to the first page")
                            .arg(unknown - mostNamed));
    }
    if (without > 0)
        console.message(translated("%1 entries have no page; they are written without one").arg(without));
}

}  // namespace

CommandInfo ApplyCommand::info() const {
    return {
        QStringLiteral("apply"),
        translated("Writes an outline, given as JSON or plus lines, into a PDF."),
        translated(
            "TREE is what \"outline\" prints, edited or not. An entry's page is told by its pageLabel; of "
            "pages with the same label it is the last. pageIndex counts only without a pageLabel, or with "
            "--keep-pages where it is a page with that label. An entry at [0, 0] is given the middle of its "
            "page's top edge. An empty TREE is refused: [] says that no outline is wanted."),
        {{QStringLiteral("FILE"), translated("The PDF.")},
         {QStringLiteral("TREE"), translated("The outline, in a file; \"-\" is standard input.")}},
        {outputOption(), keepPagesOption()}};
}

ExitCode ApplyCommand::run(const QCommandLineParser &arguments, Console &console) const {
    const QString out = arguments.value(outputOption());
    if (out.isEmpty()) return wrongUsage(*this, translated("-o OUT is missing"), console);
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
    const std::optional<QByteArray> text = readTree(treeFile, console);
    if (!text) return Failed;
    auto tree =
        parseOutlineTree(*text, *document.pdfDoc(), entriesByNumber(document.pdfDoc()->outlineRoot()));
    if (const auto *error = std::get_if<TreeError>(&tree)) {
        const QString where =
            error->where.isEmpty() ? treeFile : treeFile + QLatin1String(": ") + error->where;
        console.message(where + QLatin1String(": ") + error->message);
        return Failed;
    }
    const bool keepPages = arguments.isSet(keepPagesOption().names().first());
    document.setKeepsPages([keepPages] { return keepPages; });
    observeWriting(document, file, console);
    appendEntries(document, std::get<std::unique_ptr<MyOutlineItem>>(tree)->takeChildren());
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
    return Done;
}

}  // namespace leafwright::cli
