#pragma once

#include <QObject>
#include <QString>

namespace leafwright {

class MyDocument;

/// Remembers how a document was looked at when its window was closed, and shows it so the next time: the
/// page and the spot on it, the size, which entries were unfolded, and how the panes and what stands in them
/// share the window. What is remembered of a file is a small file in a folder, of which there are 500 at
/// most. A document without one remembers nothing; nor does anybody hear of what can't be written or read.
class ViewMemory final : public QObject {
    Q_OBJECT

public:
    static constexpr int mostFiles = 500;

    /// @param document owns this @param folder need not be there
    ViewMemory(MyDocument &document, QString folder);

    /// In the user's folder for the state of programs (XDG Base Directory Specification, XDG_STATE_HOME).
    static QString standardFolder();

private:
    QString path() const;
    void remember() const;
    void removeOldest() const;
    void restore();

    MyDocument &document_;
    QString folder_;
};

}  // namespace leafwright
