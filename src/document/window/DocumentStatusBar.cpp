#include "document/window/DocumentStatusBar.h"

#include "document/MyDocument.h"
#include "pageview/PDFView.h"
#include "texts/CountText.h"
#include "tree/TreeController.h"

#include <QAccessible>
#include <QLabel>
#include <QLocale>

namespace leafwright {

namespace {

constexpr int timeOfMessage = 8'000;  // milliseconds
constexpr int gap = 8;                // pixels at both sides of a text

}  // namespace

DocumentStatusBar::DocumentStatusBar(MyDocument &document, const PDFView &pages)
    : document_(document),
      pages_(pages),
      entries_(addLabel(QStringLiteral("entryStatus"))),
      page_(addLabel(QStringLiteral("pageStatus"))),
      zoom_(addLabel(QStringLiteral("zoomStatus"))) {
    entriesUpdate_.setSingleShot(true);
    entriesUpdate_.setInterval(0);
    connect(&entriesUpdate_, &QTimer::timeout, this, &DocumentStatusBar::updateEntries);
    const auto schedule = [this] { entriesUpdate_.start(); };
    TreeController &tree = document.treecontroller();
    connect(tree.selectionModel(), &QItemSelectionModel::selectionChanged, this, schedule);
    connect(&tree, &QAbstractItemModel::rowsInserted, this, schedule);
    connect(&tree, &QAbstractItemModel::rowsRemoved, this, schedule);
    connect(&tree, &QAbstractItemModel::modelReset, this, schedule);
    connect(&tree, &QAbstractItemModel::layoutChanged, this, schedule);
    connect(&pages, &PDFView::documentChanged, this, schedule);
    connect(&pages, &PDFView::pageChanged, this, &DocumentStatusBar::updatePage);
    connect(&pages, &PDFView::scaleChanged, this, &DocumentStatusBar::updatePage);
    schedule();
}

QLabel *DocumentStatusBar::addLabel(const QString &name) {
    auto *label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(gap, 0, gap, 0);
    addPermanentWidget(label);
    return label;
}

void DocumentStatusBar::tell(const QString &text) {
    showMessage(text, timeOfMessage);
    setAccessibleDescription(text);
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

QString DocumentStatusBar::entriesText() const {
    const TreeController &tree = document_.treecontroller();
    const PDFDocument *pdf = document_.pdfDoc();
    if (pdf && pdf->isLocked()) return tr("Locked by a password");
    QString text = entryCountText(tree.nodeCount());
    if (tree.isFiltered())
        text = tr("%1 of %2 shown").arg(QLocale().toString(static_cast<qulonglong>(tree.shownCount())), text);
    if (const size_t selected = tree.selectedNodes().size(); selected > 0)
        text = tr("%1, %2 selected").arg(text, QLocale().toString(static_cast<qulonglong>(selected)));
    return pdf && pdf->isEncrypted() ? tr("%1, not to be changed as the file is encrypted").arg(text) : text;
}

void DocumentStatusBar::updateEntries() {
    entries_->setText(entriesText());
}

void DocumentStatusBar::updatePage() {
    const PDFPage *page = pages_.currentPage();
    page_->setText(page ? tr("Page %1 (%2 of %3)")
                              .arg(page->label(), QLocale().toString(page->index() + 1),
                                   QLocale().toString(page->document().pageCount()))
                        : QString());
    zoom_->setText(tr("%1 %").arg(qRound(pages_.scaleFactor() * 100)));
}

}  // namespace leafwright
