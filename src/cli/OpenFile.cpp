#include "cli/OpenFile.h"

#include "cli/FileClash.h"
#include "texts/Translated.h"

namespace leafwright::cli {

namespace {

constexpr Translated translated{"OpenFile"};

QString lockedMessage(const QString &path) {
    return translated(
               "%1: this PDF is locked: it can't be read without its password. Save a copy without a "
               "password first.")
        .arg(path);
}

}  // namespace

QString openFailure(const QString &path, const PDFError &error) {
    switch (error.kind) {
        case PDFError::Kind::FileMissing:
            return translated("%1: there is no such file").arg(path);
        case PDFError::Kind::FileUnreadable:
        case PDFError::Kind::OutOfMemory:
        case PDFError::Kind::TakesTooLong:
            return translated("%1: the file can't be read: %2").arg(path, error.message);
        case PDFError::Kind::Locked:
            return lockedMessage(path);
        case PDFError::Kind::FileChanged:
        case PDFError::Kind::WriteFailed:
        case PDFError::Kind::NotDurable:
            return path + QLatin1String(": ") + error.message;
        case PDFError::Kind::NotAPDF:
            break;
    }
    return translated("%1: this is not a PDF that can be read, even after repair: %2")
        .arg(path, error.message);
}

std::optional<QString> readFailure(const QString &path, const PDFDocument &document) {
    const auto problem = document.readProblem();
    return problem ? std::optional(openFailure(path, *problem)) : std::nullopt;
}

std::unique_ptr<PDFDocument> openForReading(const QString &path, Console &console) {
    if (const auto clash = clashOfPrinting(path)) {
        console.message(*clash);
        return nullptr;
    }
    auto opened = PDFDocument::open(path);
    if (const auto *error = std::get_if<PDFError>(&opened)) {
        console.message(openFailure(path, *error));
        return nullptr;
    }
    auto document = std::get<std::unique_ptr<PDFDocument>>(std::move(opened));
    if (const auto failed = readFailure(path, *document)) {
        console.message(*failed);
        return nullptr;
    }
    if (document->isLocked()) {
        console.message(lockedMessage(path));
        return nullptr;
    }
    console.tellPages(document->pageCount());
    return document;
}

bool openForEditing(OutlineDocument &document, const QString &path, QString &failure) {
    if (!document.open(path)) {
        failure = openFailure(path, *document.openError());
        return false;
    }
    if (const auto failed = readFailure(path, *document.pdfDoc())) {
        failure = *failed;
        return false;
    }
    if (document.pdfDoc()->isLocked()) {
        failure = lockedMessage(path);
        return false;
    }
    document.prepareForEditing();
    if (!document.allowTOCediting()) {
        failure = translated(
                      "%1: this PDF is encrypted: its outline can't be edited. Save a copy without "
                      "encryption first.")
                      .arg(path);
        return false;
    }
    // Printed page numbers are rare; the pages are searched for their offset when the first one comes up.
    document.setPrintedPageNumbersHandler([&document, tried = false]() mutable {
        if (!std::exchange(tried, true)) document.estimatePrintedPageOffset();
    });
    return true;
}

QCommandLineOption keepPagesOption() {
    return {QStringLiteral("keep-pages"),
            translated("Entries whose page label was not edited keep the page that they came with; without "
                       "this, they lead to the last page that has their label.")};
}

void observeWriting(OutlineDocument &document, const QString &file, Console &console) {
    document.setLossesHandler([&console](const QStringList &losses) {
        for (const QString &loss : losses)
            console.message(loss);
    });
    document.setEntriesElsewhereHandler([file, &console](const EntriesElsewhere &entries) {
        const auto tell = [&](const QString &text, const EntriesOfOneReason &moved) {
            if (moved.count > 0) console.message(text.arg(file, QString::number(moved.count), moved.list()));
        };
        tell(translated("%1: %2 entries lead elsewhere now, to the last page with their label: %3; "
                        "--keep-pages keeps their pages"),
             entries.byRepeatedLabels);
        tell(translated("%1: %2 entries lead elsewhere now, for a page label that begins with \"p\" is read "
                        "as a printed page number: %3; --keep-pages keeps their pages"),
             entries.byPrintedNumbers);
    });
}

}  // namespace leafwright::cli
