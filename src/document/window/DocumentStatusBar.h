#pragma once

#include <QStatusBar>
#include <QTimer>

class QLabel;

namespace leafwright {

class MyDocument;
class PDFView;

/// The line at the foot of a document's window: how many entries there are and how many of them are selected,
/// the page that is shown, the size; and, for a while, what was done last.
class DocumentStatusBar final : public QStatusBar {
    Q_OBJECT

public:
    /// Both must outlive this. @param pages whose page and size are told
    DocumentStatusBar(MyDocument &document, const PDFView &pages);

    /// Tells something in passing, to assistive programs as well; what was told before goes.
    void tell(const QString &text);
    /// What is told about the entries.
    QString entriesText() const;

private:
    QLabel *addLabel(const QString &name);
    void updateEntries();
    void updatePage();

    MyDocument &document_;
    const PDFView &pages_;
    QLabel *entries_;
    QLabel *page_;
    QLabel *zoom_;
    QTimer entriesUpdate_;  ///< Many changes at once lead to one update.
};

}  // namespace leafwright
