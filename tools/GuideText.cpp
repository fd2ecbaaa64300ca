#include "GuideText.h"

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QPainter>
#include <QTextBlock>
#include <QTextLayout>
#include <QTextTable>

namespace guide {

namespace {

// Sizes in points. Headings are told from the rest, and from each other, by theirs.
constexpr double bodySize = 9.5;
constexpr double codeSize = 8.5;
constexpr double captionSize = 8;
constexpr double headingSizes[] = {20, 14, 11.5};
constexpr double layoutDpi = 96;        // of margins, tabs and pictures in a text document
constexpr double lastPartOfPage = 0.8;  // A heading in there has too little below it.

QFont font(const char *family, double size, QPaintDevice *device) {
    QFont result(QString::fromLatin1(family));
    result.setPointSizeF(size);
    return device ? QFont(result, device) : result;
}

bool isCode(const QTextBlock &block) {
    return block.blockFormat().hasProperty(QTextFormat::BlockCodeFence) ||
           block.blockFormat().hasProperty(QTextFormat::BlockCodeLanguage);
}

bool isPicture(const QTextBlock &block) {
    const auto first = block.begin();
    return !first.atEnd() && first.fragment().charFormat().isImageFormat();
}

/// The paragraph behind a picture, all in italics.
bool isCaption(const QTextBlock &block) {
    return isPicture(block.previous()) && block.begin().fragment().charFormat().fontItalic();
}

QTextCharFormat textFormat(const QTextBlock &block, const QTextCharFormat &old) {
    QTextCharFormat format;
    const int level = block.blockFormat().headingLevel();
    const bool fixed = old.fontFixedPitch() || isCode(block);
    format.setFontFamilies({fixed ? QStringLiteral("DejaVu Sans Mono") : QStringLiteral("DejaVu Sans")});
    double size = fixed ? codeSize : isCaption(block) ? captionSize : bodySize;
    if (level > 0) size = headingSizes[level - 1];
    format.setFontPointSize(size);
    format.setFontWeight(level > 0 ? QFont::Bold : old.fontWeight());
    format.setFontItalic(old.fontItalic());
    if (level > 0) format.setForeground(QColor(20, 83, 45));
    return format;
}

}  // namespace

QFont bodyFont(QPaintDevice *device) {
    return font("DejaVu Sans", bodySize, device);
}

QFont headingFont(int level, QPaintDevice *device) {
    QFont result = font("DejaVu Sans", headingSizes[level - 1], device);
    result.setBold(true);
    return result;
}

QFont footFont(QPaintDevice *device) {
    return font("DejaVu Sans", captionSize, device);
}

Text::Text(const QString &markdown, const QString &pictures, QPaintDevice *device, const QSizeF &pageSize)
    : device_(device), pageSize_(pageSize) {
    document_.documentLayout()->setPaintDevice(device);
    document_.setDefaultFont(bodyFont(nullptr));
    document_.setDocumentMargin(0);
    document_.setBaseUrl(QUrl::fromLocalFile(pictures + u'/'));
    document_.setMarkdown(markdown);
    for (QTextBlock block = document_.begin(); block.isValid(); block = block.next())
        style(block);
    document_.setPageSize(pageSize);
    document_.pageCount();  // Lays everything out; otherwise that is done piece by piece.
    while (moveLonelyHeading() || moveSplitTable()) {
    }
    findHeadings();
}

void Text::style(const QTextBlock &block) {
    QTextBlockFormat format = block.blockFormat();
    const int level = format.headingLevel();
    const bool isFirst = block == document_.begin();
    format.setTopMargin(level == 2 ? 12 : level == 3 ? 8 : 0);
    format.setBottomMargin(level == 1 ? 14 : block.textList() ? 4 : 7);
    if (level == 0) format.setLineHeight(118, QTextBlockFormat::ProportionalHeight);
    if (level == 1 && !isFirst) format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    if (isCode(block)) {
        format.setBackground(QColor(240, 242, 240));
        format.setBottomMargin(isCode(block.next()) ? 0 : 8);
    }
    if (isPicture(block) || isCaption(block)) format.setAlignment(Qt::AlignHCenter);
    if (isPicture(block)) {
        format.setBottomMargin(3);
        format.setLineHeight(0, QTextBlockFormat::SingleHeight);
    }
    if (block.text().contains(u'\t')) {
        const double width = pageSize_.width() * layoutDpi / device_->logicalDpiX();
        format.setTabPositions({QTextOption::Tab(width, QTextOption::RightTab)});
        format.setBottomMargin(0);
    }
    QTextCursor cursor(block);
    if (QTextTable *table = cursor.currentTable()) {
        format.setBottomMargin(2);
        QTextTableFormat layout = table->format();
        layout.setWidth(QTextLength(QTextLength::PercentageLength, 100));
        layout.setCellPadding(3);
        layout.setCellSpacing(0);
        layout.setBorder(0.5);
        layout.setBorderCollapse(true);
        layout.setBorderBrush(QColor(190, 200, 195));
        table->setFormat(layout);
    }
    cursor.setBlockFormat(format);
    styleFragments(block);
}

void Text::styleFragments(const QTextBlock &block) {
    struct Part {
        int position;
        int length;
        QTextCharFormat format;
    };
    QList<Part> parts;
    for (auto i = block.begin(); !i.atEnd(); ++i)
        parts.append({i.fragment().position(), i.fragment().length(), i.fragment().charFormat()});
    for (const Part &part : parts) {
        QTextCursor cursor(&document_);
        cursor.setPosition(part.position);
        cursor.setPosition(part.position + part.length, QTextCursor::KeepAnchor);
        if (part.format.isImageFormat()) {
            fitPicture(cursor, part.format.toImageFormat());
        } else {
            cursor.setCharFormat(textFormat(block, part.format));
        }
    }
}

void Text::fitPicture(QTextCursor &cursor, const QTextImageFormat &format) {
    const QString path = document_.baseUrl().resolved(QUrl(format.name())).toLocalFile();
    const QImage image(path);
    if (image.isNull()) qFatal("mkguide: there is no picture %s", qPrintable(path));
    // Pictures are taken at twice the density of the screen, and shown a little smaller than there.
    constexpr double shrink = 2.9;
    const double available = pageSize_.width() * layoutDpi / device_->logicalDpiX();
    const double width = qMin(available, image.width() / shrink);
    QTextImageFormat fitted;
    fitted.setName(path);
    fitted.setWidth(width);
    fitted.setHeight(width * image.height() / image.width());
    cursor.setCharFormat(fitted);
}

double Text::topOf(const QTextBlock &block) const {
    return document_.documentLayout()->blockBoundingRect(block).top() + block.layout()->lineAt(0).y();
}

int Text::pageAt(double y) const {
    return static_cast<int>(y / pageSize_.height());
}

Heading Text::headingOf(const QTextBlock &block) const {
    const int page = pageAt(topOf(block));
    return {block.text(), block.blockFormat().headingLevel(), page, topOf(block) - page * pageSize_.height()};
}

void Text::beginPageBefore(const QTextBlock &block) {
    QTextBlockFormat format = block.blockFormat();
    format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    format.setTopMargin(0);
    QTextCursor(block).setBlockFormat(format);
    document_.pageCount();
}

/// Begins a page before the first heading that stands at the end of one. @return whether there was one
bool Text::moveLonelyHeading() {
    for (QTextBlock block = document_.begin(); block.isValid(); block = block.next()) {
        const QTextBlockFormat format = block.blockFormat();
        if (format.headingLevel() < 2 || format.pageBreakPolicy() != QTextFormat::PageBreak_Auto) continue;
        if (headingOf(block).y < lastPartOfPage * pageSize_.height()) continue;
        beginPageBefore(block);
        return true;
    }
    return false;
}

/// Begins a page before the first table that does not end on the page of its beginning, with the paragraph
/// that leads to it. @return whether there was one
bool Text::moveSplitTable() {
    for (const QTextFrame *frame : document_.rootFrame()->childFrames()) {
        const QTextBlock first = frame->firstCursorPosition().block();
        const QTextBlock last = frame->lastCursorPosition().block();
        const double end = document_.documentLayout()->blockBoundingRect(last).bottom();
        if (pageAt(end) == pageAt(topOf(first))) continue;
        QTextBlock start = first.previous();
        if (start.previous().blockFormat().headingLevel() > 0) start = start.previous();
        if (start.blockFormat().pageBreakPolicy() != QTextFormat::PageBreak_Auto) continue;
        beginPageBefore(start);
        return true;
    }
    return false;
}

void Text::findHeadings() {
    for (QTextBlock block = document_.begin(); block.isValid(); block = block.next())
        if (block.blockFormat().headingLevel() > 0) headings_.append(headingOf(block));
}

void Text::draw(QPainter &painter, const QRectF &part) {
    document_.drawContents(&painter, part);
}

}  // namespace guide
