#include "autotoc/MiniTOC.h"
#include "cli/Commands.h"
#include "cli/FileClash.h"
#include "cli/OpenFile.h"
#include "cli/OutlineOutput.h"
#include "pdf/ReadAhead.h"
#include "texts/Translated.h"

#include <QRegularExpression>

namespace leafwright::cli {

namespace {

const QString pageOption = QStringLiteral("page");
const QString textOption = QStringLiteral("text");

constexpr Translated translated{"MiniTOCCommand"};

/// Where the sample stands first in a page's text. Blanks in it stand for blanks and line ends of any number,
/// for nobody sees on a page which they are.
std::optional<TextRange> findSample(const QString &text, const QString &sample) {
    QStringList words;
    for (const QString &word : sample.simplified().split(u' '))
        words.append(QRegularExpression::escape(word));
    const QRegularExpression pattern(words.join(QLatin1String("\\s+")),
                                     QRegularExpression::UseUnicodePropertiesOption);
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch()) return std::nullopt;
    return TextRange{static_cast<int>(match.capturedStart()), static_cast<int>(match.capturedLength())};
}

/// The fonts of the sample on a page, counted from 0. @return why there is none
std::optional<QString> samplePattern(const PDFDocument &pdf, int page, const QString &sample,
                                     QStringList &pattern) {
    if (page < 0 || page >= pdf.pageCount())
        return translated("there is no page %1; the pages are 1 to %2").arg(page + 1).arg(pdf.pageCount());
    const std::shared_ptr<const PageText> text = pdf.pageText(page);
    const auto range = findSample(text->attributedString.string, sample);
    if (!range) return translated("page %1 has no text \"%2\"").arg(QString::number(page + 1), sample);
    pattern = fontPattern(text->attributedString.part(*range));
    return std::nullopt;
}

/// Adds the entry to the file's outline. @return why that failed
std::optional<QString> miniTOC(const QString &file, int page, const QString &sample, const QString &out,
                               bool keepPages, Console &console) {
    if (auto clash = clashOf({.pdf = file, .out = out})) return clash;
    OutlineDocument document;
    if (QString failure; !openForEditing(document, file, failure)) return failure;
    const PDFDocument &pdf = *document.pdfDoc();
    QStringList pattern;
    const auto noSample = samplePattern(pdf, page - 1, sample, pattern);
    if (auto failure = readFailure(file, pdf)) return failure;
    if (noSample) return file + QLatin1String(": ") + *noSample;
    document.setKeepsPages([keepPages] { return keepPages; });
    observeWriting(document, file, console);
    document.importOutline();
    readAllPages(pdf);
    if (auto failure = readFailure(file, pdf)) return failure;
    MyOutlineItem::Children entries;
    entries.push_back(runMiniTOC(pdf, pattern));
    appendEntries(document, std::move(entries));
    if (const auto error = document.write(out, OutlineDocument::saveFinalPDF)) return error->message;
    tellWritten(out, document, console);
    return std::nullopt;
}

}  // namespace

CommandInfo MiniTOCCommand::info() const {
    return {
        QStringLiteral("minitoc"),
        translated("Finds headings by example, and adds them to the outline of a PDF."),
        translated(
            "SAMPLE is a heading's text, or as much of it as shows its fonts. Every place in the PDF where "
            "text has the same fonts in the same order is a heading; they go below one new entry, "
            "\"MiniTOC\", at the end of the outline."),
        {{QStringLiteral("FILE"), translated("The PDF.")}},
        {outputOption(),
         {pageOption, translated("The page that has the sample, counted from 1."), QStringLiteral("N")},
         {textOption, translated("The sample. Where the page has it more than once, the first counts."),
          QStringLiteral("SAMPLE")},
         keepPagesOption()}};
}

ExitCode MiniTOCCommand::run(const QCommandLineParser &arguments, Console &console) const {
    const QString out = outputOf(arguments);
    const QString sample = arguments.value(textOption);
    if (out.isEmpty()) return wrongUsage(*this, translated("-o OUT is missing"), console);
    if (!arguments.isSet(pageOption)) return wrongUsage(*this, translated("--page N is missing"), console);
    bool isNumber = false;
    const int page = arguments.value(pageOption).toInt(&isNumber);
    if (!isNumber) {
        return wrongUsage(*this, translated("\"%1\" is no page number").arg(arguments.value(pageOption)),
                          console);
    }
    if (sample.trimmed().isEmpty()) return wrongUsage(*this, translated("--text SAMPLE is missing"), console);
    if (const auto failure = miniTOC(arguments.positionalArguments().first(), page, sample, out,
                                     arguments.isSet(keepPagesOption().names().first()), console)) {
        console.message(*failure);
        return Failed;
    }
    return Done;
}

}  // namespace leafwright::cli
