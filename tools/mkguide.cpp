// Turns the user guide from Markdown into a PDF: mkguide INPUT.md OUTPUT.pdf
//
// It needs no display; the build sets QT_QPA_PLATFORM=offscreen.

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <cstdio>

namespace {

constexpr double bodySize = 10.5;  // points
constexpr double headingSizes[] = {24, 18, 13.5};
constexpr double marginMillimetres = 24;

void styleBlock(const QTextBlock &block) {
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    QTextBlockFormat layout = block.blockFormat();
    QTextCharFormat text;
    const int level = layout.headingLevel();
    if (level >= 1 && level <= 3) {
        text.setFontPointSize(headingSizes[level - 1]);
        text.setFontWeight(QFont::Bold);
        layout.setTopMargin(level == 2 ? 0 : 14);
        layout.setBottomMargin(6);
        if (level == 2) layout.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    } else {
        text.setFontPointSize(bodySize);
        layout.setBottomMargin(6);
        layout.setLineHeight(125, QTextBlockFormat::ProportionalHeight);
    }
    text.clearProperty(QTextFormat::FontSizeAdjustment);
    cursor.mergeCharFormat(text);
    cursor.setBlockFormat(layout);
}

void drawPages(QTextDocument &document, QPdfWriter &writer) {
    const QRectF page(QPointF(), QSizeF(writer.width(), writer.height()));
    document.setPageSize(page.size());
    QPainter painter(&writer);
    for (int i = 0; i < document.pageCount(); ++i) {
        if (i > 0) writer.newPage();
        painter.save();
        painter.translate(0, -i * page.height());
        document.drawContents(&painter, page.translated(0, i * page.height()));
        painter.restore();
    }
}

}  // namespace

int main(int argc, char *argv[]) {
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QFile input(arguments.value(1));
    if (arguments.size() != 3 || !input.open(QIODevice::ReadOnly)) {
        std::fputs("usage: mkguide INPUT.md OUTPUT.pdf\n", stderr);
        return 2;
    }
    QPdfWriter writer(arguments[2]);
    writer.setTitle(QStringLiteral("Leafwright User Guide"));
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Portrait,
                                     QMarginsF(marginMillimetres / 1.5, marginMillimetres / 1.5,
                                               marginMillimetres / 1.5, marginMillimetres / 1.5),
                                     QPageLayout::Millimeter));

    QTextDocument document;
    document.documentLayout()->setPaintDevice(&writer);
    document.setDefaultFont(QFont(QStringLiteral("DejaVu Sans")));
    document.setDocumentMargin(0);
    document.setMarkdown(QString::fromUtf8(input.readAll()));
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        styleBlock(block);
    drawPages(document, writer);
    return 0;
}
