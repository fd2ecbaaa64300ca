#pragma once

#include <QFont>
#include <QList>
#include <QTextCursor>
#include <QTextDocument>

class QPainter;

/// How the user guide looks.
namespace guide {

QFont bodyFont(QPaintDevice *device);
/// @param level from 1
QFont headingFont(int level, QPaintDevice *device);
QFont footFont(QPaintDevice *device);

struct Heading {
    QString title;
    int level;  ///< From 1.
    int page;   ///< From 0, of this text.
    double y;   ///< From the top of the page, in units of the device.
};

/// Markdown, laid out on pages.
class Text {
public:
    /// @param pictures the folder that they are looked up in
    Text(const QString &markdown, const QString &pictures, QPaintDevice *device, const QSizeF &pageSize);

    int pageCount() const { return document_.pageCount(); }
    const QList<Heading> &headings() const { return headings_; }
    /// @param part of the pages below each other
    void draw(QPainter &painter, const QRectF &part);

private:
    void style(const QTextBlock &block);
    void styleFragments(const QTextBlock &block);
    void fitPicture(QTextCursor &cursor, const QTextImageFormat &format);
    Heading headingOf(const QTextBlock &block) const;
    double topOf(const QTextBlock &block) const;
    int pageAt(double y) const;
    void beginPageBefore(const QTextBlock &block);
    bool moveLonelyHeading();
    bool moveSplitTable();
    void findHeadings();

    QTextDocument document_;
    QPaintDevice *device_;
    QSizeF pageSize_;
    QList<Heading> headings_;
};

}  // namespace guide
