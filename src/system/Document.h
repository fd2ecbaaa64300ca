#pragma once

#include "platform/Platform.h"

#include <QObject>
#include <QUndoStack>

#include <deque>
#include <functional>
#include <vector>

class QWidget;

namespace leafwright {

/// An open file with its window: whether there is something to save, what can be undone, and the question
/// that is asked before unsaved changes are lost.
class Document : public QObject {
    Q_OBJECT

public:
    /// How a change is counted.
    enum class Change {
        Done,    ///< One more change to save.
        Cleared  ///< All is saved.
    };
    /// What stands between a document and its closing.
    enum class Closing { Allowed, Refused };

    /// @param platform must outlive the document
    explicit Document(Platform &platform) : platform_(platform) {}

    Platform &platform() const { return platform_; }

    /// Reads the file at a path. @return false if it can't be; the user knows by then
    virtual bool readFromURL(const QString &path) = 0;
    /// Where the document is saved: an absolute path, or empty.
    virtual QString fileURL() const = 0;
    /// What people call the document: its file's name.
    QString displayName() const;

    /// Makes the document's window, which the document owns, and shows it.
    virtual void makeWindowControllers() = 0;
    /// Null before makeWindowControllers().
    virtual QWidget *window() const = 0;

    /// Whether there is something to save.
    virtual bool isDocumentEdited() const = 0;
    /// Counts a change that nothing else counts, or says that all is saved.
    virtual void updateChangeCount(Change change) = 0;

    /// While one lives, its document is left alone. It stands wherever a call handles events before it
    /// returns: a question, a panel, a pause, work on another thread, progress that is drawn. Commands are
    /// refused meanwhile; what whenIdle() is given waits, and so does closing.
    class Busy {
    public:
        /// @param document must outlive this
        explicit Busy(Document &document) : document_(document) { document_.beginBusy(); }
        ~Busy() { document_.endBusy(); }
        Busy(const Busy &) = delete;
        Busy &operator=(const Busy &) = delete;

    private:
        Document &document_;
    };
    bool isBusy() const { return busy_ > 0; }
    /// Calls a function at once, or when the document is busy no more: then once events are handled, and
    /// in the order of the calls. Dropped with the document.
    void whenIdle(std::function<void()> function);
    /// The same for whatever would hold up the work of any document, since it asks or takes long: calls it at
    /// once, or when none of this thread's is busy any more.
    static void whenNoneIsBusy(std::function<void()> function);

    // What the platform asks and tells for the document, which is busy until the answer is there. Alerts have
    // the document's name as their title.
    int runModal(Alert alert);
    std::optional<QString> runOpenPanel(const FilePanel &panel);
    std::optional<QString> runSavePanel(const FilePanel &panel);
    /// Calls a function later, and not before all documents are idle.
    void performAfterDelay(int milliseconds, std::function<void()> function);

    /// What the platform records by itself, such as typing.
    QUndoStack &undoManager() { return undoManager_; }

    /// Asks, if there are unsaved changes, whether to save or discard them or to go on editing; saves if so
    /// told. Refused while the document is busy. The document is not closed by this.
    Closing prepareToClose();

Q_SIGNALS:
    /// isDocumentEdited() is another now.
    void editedChanged(bool edited);
    /// The document's place or name is another now.
    void fileURLChanged();
    /// The user closed the window and nothing is left to ask.
    void closed();

protected:
    /// Writes the document to its place. @return whether it was written
    virtual bool saveBeforeClosing() = 0;

private:
    void beginBusy();
    void endBusy();
    void callWaiting();

    /// Of the thread at hand: documents without windows are worked on beside each other.
    static thread_local std::vector<Document *> busyDocuments_;

    Platform &platform_;
    QUndoStack undoManager_;
    int busy_ = 0;  ///< How many keep the document busy, each within another.
    std::deque<std::function<void()>> waiting_;
};

}  // namespace leafwright
