#include "document/commands/PrintedPageCommands.h"

#include "document/MyDocument.h"
#include "outlineview/OKNSOutlineView.h"
#include "texts/Translated.h"
#include "view/LabelPDFView.h"
#include "widgets/Sheet.h"

#include <QLineEdit>

namespace leafwright {

namespace {

constexpr Translated translated{"PrintedPageCommands"};

}  // namespace

PrintedPageCommands::PrintedPageCommands(MyDocument &document) : document_(document) {
    document.actions().handle("runPrintedPageSheet:", [this](QObject *) { runPrintedPageSheet(); });
    document.setPrintedPageNumbersHandler([this] {
        if (!document_.pdfview()) return;
        document_.pdfview()->goToPage(document_.pdfDoc()->page(document_.pdfDoc()->pageCount() / 2));
        runPrintedPageSheet();
    });
}

QString PrintedPageCommands::currentLabel() const {
    const PDFPage *page = document_.pdfview()->currentPage();
    return page ? page->label() : QString();
}

QString PrintedPageCommands::proposedPrintedPage() const {
    const QString label = currentLabel();
    const auto offset = static_cast<qint32>(document_.printedPageOffset());
    const qint64 predicted = qint64{integerValue(label)} - offset;
    return offset != 0 && predicted > 0 ? QString::number(predicted) : label;
}

void PrintedPageCommands::runPrintedPageSheet() {
    if (document_.openSheet())
        return;  // One question at a time: an outline may hold many printed page numbers.
    auto *sheet = new Sheet(translated("Printed Page Number"));
    // Names no page: a jump that asks goes on while the sheet is open, and the answer is for the page it ends
    // on.
    sheet->addText(translated("Which number is printed on the page that is shown?"));
    auto *field = new QLineEdit(proposedPrintedPage());
    sheet->addField(translated("Printed page number:"), field, QStringLiteral("printedPageTextField"));
    sheet->addButton(translated("Cancel"), 0);
    sheet->addButton(translated("OK"), 1);
    document_.beginSheet(sheet, [this, field](int returnCode) {
        if (returnCode == 1) takePrintedPage(field->text());
    });
}

void PrintedPageCommands::takePrintedPage(const QString &text) {
    const qint32 printed = integerValue(text);
    const qint32 label = integerValue(currentLabel());
    document_.setPrintedPageOffset(0);
    if (printed < 1 || label < 1) {
        document_.platform().beep();
        document_.runModal({translated("Could not interpret printed page number"),
                            translated("Both the page label and printed page number must be integers."),
                            {translated("OK")}});
        return;
    }
    document_.setPrintedPageOffset(static_cast<quint64>(qint64{label} - printed));
    document_.setUserHasCheckedPrintedPageNumbers(true);
    document_.outlineview()->reloadItem(nullptr);  // More labels may be those of pages now.
}

}  // namespace leafwright
