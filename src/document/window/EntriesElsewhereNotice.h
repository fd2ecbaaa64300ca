#pragma once

#include <QObject>
#include <QTimer>

namespace leafwright {

class MyDocument;

/// Tells in a bar of a document's window, ahead of the write, which entries that leads elsewhere. Follows the
/// edits: many that come at once are looked at once, and a bar that was closed comes again only when it has
/// something else to say.
class EntriesElsewhereNotice final : public QObject {
    Q_OBJECT

public:
    /// @param document has a window, and must outlive this
    explicit EntriesElsewhereNotice(MyDocument &document);

    /// Shows the bar as it has to be now, also where it was closed.
    void show();

private:
    void follow();
    QString text() const;

    MyDocument &document_;
    QTimer edited_;
    QString told_;  ///< What the bar says, or said before it was closed; empty for no bar.
};

}  // namespace leafwright
