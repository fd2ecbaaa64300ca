#pragma once

#include "system/Document.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace leafwright {

/// The open documents and the files opened lately.
class DocumentController : public QObject {
    Q_OBJECT

public:
    using Factory = std::function<std::unique_ptr<Document>()>;

    /// @param platform must outlive the controller
    DocumentController(Platform &platform, Factory makeDocument);
    ~DocumentController() override;

    /// Opens a file and shows its window; a file that is open already comes to the front. Null if the file
    /// can't be read; the user knows by then. The controller owns the document until its window is closed.
    Document *openDocumentWithContentsOfURL(const QString &path, bool display);
    std::vector<Document *> documents() const;

    /// Lets the user choose a file, and opens it. @param asking the document from whose window that is asked;
    /// null if there is none
    void openDocument(Document *asking = nullptr);
    /// Closes a document unless the user wants to keep it open. @return whether it is closed
    bool closeDocument(Document &document);
    /// Closes all documents, one after the other, until the user keeps one open. @return whether all are
    /// closed
    bool closeAllDocuments();

    /// Has a file never be among those opened lately.
    void leaveOutOfRecent(const QString &path) { leftOut_ = path; }
    /// Absolute paths, the latest first, 10 at most; of files that are still there.
    QStringList recentDocuments() const;
    void clearRecentDocuments();

Q_SIGNALS:
    void documentOpened(Document *document);
    /// A file can't be read; the document that was to show it goes right after this.
    void openingFailed(Document *document);
    void recentDocumentsChanged();
    void lastDocumentClosed();

private:
    void noteRecentDocument(const QString &path);
    void remove(Document *document);

    Platform &platform_;
    Factory makeDocument_;
    QString leftOut_;  ///< Of those opened lately.
    std::vector<std::unique_ptr<Document>> documents_;
};

}  // namespace leafwright
