// Takes the pictures of the user guide:
//
//     guideshots PLAIN.pdf OUTLINED.pdf FOLDER
//
// of two copies of one document, without and with an outline. Run by scripts/make-guide-pictures.

#include "Pictures.h"
#include "app/AppDelegate.h"
#include "app/QtPlatform.h"
#include "document/MyDocument.h"
#include "document/commands/ContentsCommands.h"
#include "document/window/ContentsProposal.h"
#include "document/window/DocumentWindow.h"
#include "outlineview/OKNSOutlineView.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"
#include "view/SpotArchive.h"
#include "widgets/Sheet.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <cstdio>

namespace {

using namespace leafwright;

constexpr QSize windowSize(880, 560);
constexpr int longEnoughToDraw = 2500;

/// The desktop gives a sheet its frame and its title; where there is none, we do.
void drawInFront(QPixmap &picture, Sheet &sheet) {
    constexpr int titleHeight = 28;
    sheet.resize(sheet.sizeHint());  // The screen of the offscreen platform is too small for some.
    const QPixmap front = sheet.grab();
    const QRect frame(QPoint((windowSize.width() - sheet.width()) / 2, 80),
                      sheet.size() + QSize(0, titleHeight));
    QPainter painter(&picture);
    for (int i = 8; i > 0; --i)
        painter.fillRect(frame.adjusted(-i, -i + 3, i, i + 3), QColor(0, 0, 0, 12));
    painter.fillRect(frame, QColor(222, 224, 226));
    QFont bold = sheet.font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.drawText(QRect(frame.topLeft(), QSize(frame.width(), titleHeight)), Qt::AlignCenter,
                     sheet.windowTitle());
    painter.drawPixmap(frame.topLeft() + QPoint(0, titleHeight), front);
    painter.setPen(QColor(120, 125, 130));
    painter.drawRect(frame.adjusted(-1, -1, 0, 0));
}

/// A window on a document, with settings of its own.
class Scene {
public:
    explicit Scene(const QString &path)
        : platform_(settings_.filePath(QStringLiteral("settings.ini"))), delegate_(platform_) {
        document_ = static_cast<MyDocument *>(
            delegate_.documentController().openDocumentWithContentsOfURL(path, true));
        if (!document_) qFatal("guideshots: %s can't be read", qPrintable(path));
        document_->window()->resize(windowSize);
        handleEventsFor(longEnoughToDraw);
    }

    MyDocument &document() { return *document_; }

    void unfoldAll() {
        for (const TreeNode *node : document_->treecontroller().arrangedObjects().childNodes())
            document_->outlineview()->expandItem(*node, true);
    }

    void goToPage(int index) { document_->pdfview()->goToPage(document_->pdfDoc()->page(index)); }

    void perform(const char *selector) {
        if (!document_->actions().perform(QString::fromLatin1(selector)))
            qFatal("guideshots: %s is not enabled", selector);
    }

    /// Types into a field of the open sheet.
    void type(const char *field, const QString &text) {
        qobject_cast<QLineEdit *>(document_->openSheet()->field(QString::fromLatin1(field)))->setText(text);
    }

    void press(int tag) { document_->openSheet()->pressButton(tag); }

    /// The window with the sheet that is open, if any, in front of it.
    void take(const QString &path) {
        handleEventsFor(longEnoughToDraw);
        QPixmap picture = document_->window()->grab();
        if (Sheet *sheet = document_->openSheet(); sheet && sheet->isWindow()) drawInFront(picture, *sheet);
        if (!picture.save(path)) qFatal("guideshots: %s can't be written", qPrintable(path));
    }

private:
    QTemporaryDir settings_;
    QtPlatform platform_;
    AppDelegate delegate_;
    MyDocument *document_;
};

void takeEditing(const QString &outlined, const QString &folder) {
    Scene scene(outlined);
    scene.unfoldAll();
    scene.goToPage(2);
    scene.take(folder + QStringLiteral("/window.png"));

    scene.perform("runSearchSelectSheet:");
    scene.type("searchSelectField", QStringLiteral("Sow"));
    scene.take(folder + QStringLiteral("/search.png"));
    scene.press(1);

    scene.perform("selectTOCOnlyLevel1:");
    scene.perform("renameSequentialNumbering:");
    scene.take(folder + QStringLiteral("/numbering.png"));
    scene.press(0);

    LabelPDFView &pages = *scene.document().pdfview();
    const PDFPage *page = scene.document().pdfDoc()->page(2);
    pages.setIconLocationData(archivedSpot({QPointF(60, 470), page->label()}));
    pages.setNeedsDisplay();
    scene.document().treecontroller().setSelectedNodes({});
    scene.take(folder + QStringLiteral("/target.png"));
}

void takeProposal(const QString &plain, const QString &folder) {
    Scene scene(plain);
    scene.perform("findContents:");
    handleEventsFor(2 * longEnoughToDraw);
    const ContentsProposal *proposal = scene.document().contentsCommands().proposal();
    if (!proposal) qFatal("guideshots: nothing was found");
    auto *entries = proposal->findChild<QTreeWidget *>(QStringLiteral("contentsEntries"));
    entries->setCurrentItem(entries->topLevelItem(1));
    scene.take(folder + QStringLiteral("/proposal.png"));
}

void takeAutoTOC(const QString &plain, const QString &folder) {
    Scene scene(plain);
    scene.goToPage(2);
    scene.perform("runGuessPDF:");
    scene.take(folder + QStringLiteral("/autotoc.png"));
    scene.press(1);
    handleEventsFor(2 * longEnoughToDraw);
    scene.unfoldAll();
    scene.take(folder + QStringLiteral("/result.png"));
}

}  // namespace

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4) {
        std::fputs("usage: guideshots PLAIN.pdf OUTLINED.pdf FOLDER\n", stderr);
        return 2;
    }
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    takeEditing(arguments[2], arguments[3]);
    takeProposal(arguments[1], arguments[3]);
    takeAutoTOC(arguments[1], arguments[3]);
    return 0;
}
