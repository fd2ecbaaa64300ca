#pragma once

#include "pdf/PDFOutline.h"
#include "pdf/mupdf/Reader.h"

#include <QHash>

namespace leafwright::mupdf {

/// Resolves destinations (ISO 32000-1, 12.3.2): explicit, by name from the name tree, by name from the
/// old-style dictionary. Names are looked up in one hash, built at the first one.
class DestinationReader {
public:
    explicit DestinationReader(Reader &reader) : reader_(reader) {}

    /// The destination of an outline entry or a link: its /Dest, else the /D of its GoTo action. Absent
    /// when it has none or when that leads to no page of this document.
    std::optional<PDFDestination> of(const Object &entry);
    /// How far a viewer zooms in there, 1 for not at all; 0 for as far as it is (ISO 32000-1, table 151).
    double zoomOf(const Object &entry);
    /// What a destination leads to: an array, a dictionary around one, or a name of either. Absent likewise.
    std::optional<PDFDestination> placeOf(const Object &named);
    /// All named destinations of the document: the names' bytes with what they stand for.
    const QHash<QByteArray, Object> &names();

private:
    static Object destinationOf(const Object &entry);
    Object resolveNames(Object destination);
    void collectNames();
    static QPointF pointOf(const Object &destination, const Object &page);

    Reader &reader_;
    bool namesCollected_ = false;
    QHash<QByteArray, Object> names_;
};

}  // namespace leafwright::mupdf
