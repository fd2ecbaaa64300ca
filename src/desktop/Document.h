#pragma once

#include "platform/Platform.h"

#include <QObject>
#include <QUndoStack>

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

    bool isDocumentEdited() const { return edited_; }
    void updateChangeCount(Change change);

    /// What the platform records by itself, such as typing.
    QUndoStack &undoManager() { return undoManager_; }

    /// Asks, if there are unsaved changes, whether to save or discard them or to go on editing; saves if so
    /// told. The document is not closed by this.
    Closing prepareToClose();

Q_SIGNALS:
    void editedChanged(bool edited);
    /// The document's place or name is another now.
    void fileURLChanged();
    /// The user closed the window and nothing is left to ask.
    void closed();

protected:
    /// Writes the document to its place. @return whether it was written
    virtual bool saveBeforeClosing() = 0;

private:
    Platform &platform_;
    QUndoStack undoManager_;
    bool edited_ = false;
};

}  // namespace leafwright
