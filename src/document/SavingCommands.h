#pragma once

namespace leafwright {

class MyDocument;

/// Writing the outline into the PDF.
class SavingCommands {
public:
    /// Registers the commands. @param document must outlive this
    explicit SavingCommands(MyDocument &document);

    /// Writes the document's own file.
    void saveDocument();
    /// Writes to a place the user chooses, which is the document's place from then on.
    void saveDocumentAs();
    /// Saves without further questions. @return whether the document is saved
    bool saveBeforeClosing();

private:
    MyDocument &document_;
};

}  // namespace leafwright
