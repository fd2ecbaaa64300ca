#pragma once

#include "contents/TextLine.h"

namespace leafwright {

/// The text of a span as it is read: presentation forms and composed letters resolved. Right-to-left text
/// that the file has in the order in which it is seen is turned around, which the places of its characters
/// tell.
QString spanText(const TextSpan &span);

/// Puts the spans of a line in the order in which they are read: words of another script in a line that runs
/// from right to left run from left to right.
/// @param spans in the order in which they stand in the reading frame
void settleReadingOrder(std::vector<LineSpan> &spans);

/// The text of a line with what is left of presentation forms and loose marks composed (NFC); in
/// text from right to left, the parts of a number such as "1-2" close up.
QString logicalText(const QString &text);

/// Whether most letters are of a script that is written from right to left.
bool isRightToLeft(QStringView text);

/// A title set with wide gaps between its letters, as words again; other text comes back as it is.
/// @param spans what the text was made of; the places of their characters tell where words end
QString withoutLetterSpacing(const QString &text, const std::vector<LineSpan> &spans);

/// The page as it is read: one whose text mostly runs up or down turned, one whose text mostly runs from
/// right to left mirrored, so that lines begin at the left of every page. The spans' boxes, baselines and
/// directions, and the links' boxes, are those of the page as it is read.
struct ReadingFrame {
    PageTransform shown{Rect(), 0};  ///< The page as it is shown.
    PageTransform turned{Rect(), 0};
    bool isMirrored = false;

    QSizeF size() const { return turned.shownSize(); }
    QPointF toRead(const QPointF &shownPoint) const;
    QRectF toRead(const QRectF &shownBox) const;
    QPointF toPage(const QPointF &readPoint) const;
    QRectF toShown(const QRectF &readBox) const;
};

/// How a page is to be read.
ReadingFrame readingFrameOf(const PageEvidence &evidence);
/// What is on the page, in its reading frame.
std::shared_ptr<const PageEvidence> inFrame(std::shared_ptr<const PageEvidence> evidence,
                                            const ReadingFrame &frame);

}  // namespace leafwright
