#pragma once

#include <QString>

namespace leafwright {

class MyDocument;

/// The sheet in which the user states which number is printed on the page shown.
class PrintedPageCommands {
public:
    /// Registers the command, and opens the sheet at the document's middle page when a printed page number
    /// has to be resolved while the offset is unknown. @param document must outlive this
    explicit PrintedPageCommands(MyDocument &document);

    /// Opens the sheet for the page shown.
    void runPrintedPageSheet();
    /// What the sheet proposes for the page shown: the number that the offset predicts, or the page's label.
    QString proposedPrintedPage() const;
    /// Sets the offset from the number printed on the page shown. If that or the page's label is not a
    /// positive number, the offset becomes unknown, and the user is told.
    void takePrintedPage(const QString &text);

private:
    QString currentLabel() const;

    MyDocument &document_;
};

}  // namespace leafwright
