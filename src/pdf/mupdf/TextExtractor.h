#pragma once

#include "pdf/PageText.h"
#include "pdf/mupdf/Reader.h"

#include <QHash>

#include <mutex>

namespace leafwright::mupdf {

/// The faces of one document: every reader that meets a face gets the same object. Safe to share.
class FaceTable {
public:
    std::shared_ptr<const FontFace> face(const QByteArray &baseFont, FontTraits traits);

private:
    std::mutex mutex_;
    QHash<QByteArray, std::shared_ptr<const FontFace>> faces_;
};

/// Reads the text of a page. @param boxes if given, gets the box in page space of every UTF-16 unit.
/// Sizes and boxes are rounded to 1/100 point, since matrix arithmetic leaves noise in the last bits.
PageText extractText(Reader &reader, FaceTable &faces, int pageIndex, std::vector<Rect> *boxes = nullptr);

}  // namespace leafwright::mupdf
