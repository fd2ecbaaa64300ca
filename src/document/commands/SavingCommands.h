#pragma once

#include <QString>

#include <optional>

namespace leafwright {

class MyDocument;

/// Writing the outline into the PDF, into a preview copy of it, and going back to what was written.
class SavingCommands {
public:
    /// Registers the commands. @param document must outlive this
    explicit SavingCommands(MyDocument &document);

    /// For so long after a preview, saving does not offer another one. Seconds.
    static constexpr qint64 previewFreshness = 180;

    /// Writes the document's own file. Where the setting LeafwrightAlwaysPreviewBeforeSave asks for it, and
    /// the last preview is not fresh, offers a preview first.
    void saveDocument();
    /// Writes to a place the user chooses, which is the document's place from then on if that succeeds.
    void saveDocumentAs();
    /// Shows the PDF in the system's application for PDFs; a preview copy if there are unsaved changes.
    void openPDFInDefaultApp();
    /// Makes the outline last written, or that of the file if none was, the tree again.
    void revertOutlineToSaved();

    /// Writes the document's own file without an offer; asks where another program has changed it. @return
    /// whether it was written
    bool saveFinal();
    /// The preview copy's path: the document's file name in the temporary directory.
    QString previewPath() const;

private:
    bool isPreviewDue() const;
    bool generatePreview();

    MyDocument &document_;
    std::optional<qint64> lastTimeTemporaryPDFGenerated_;  ///< Milliseconds since the epoch.
};

}  // namespace leafwright
