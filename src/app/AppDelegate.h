#pragma once

#include "desktop/DocumentController.h"

namespace leafwright {

class MyDocument;

/// The application: its settings' defaults, what it opens at the start, and the commands that belong to no
/// document in particular.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    /// Registers the defaults, before any document opens. @param platform must outlive the delegate
    explicit AppDelegate(Platform &platform);

    /// Never: there are no empty documents.
    bool applicationShouldOpenUntitledFile() const { return false; }
    /// Opens the user guide if the setting says so.
    void applicationDidFinishLaunching();
    /// Opens files; those that can't be opened are told of one by one.
    void openFiles(const QStringList &paths);
    /// Shows the newest window, for a second start without files.
    void comeToFront();
    /// Closes all documents and ends the program, unless the user keeps one open.
    void terminate();

    DocumentController &documentController() { return documentController_; }

private:
    std::unique_ptr<Document> makeDocument();
    void registerActions(MyDocument &document);
    void documentOpened(Document *document);

    Platform &platform_;
    DocumentController documentController_;
};

}  // namespace leafwright
