#pragma once

#include "pdf/PDFOutline.h"
#include "pdf/mupdf/DestinationReader.h"
#include "pdf/mupdf/ObjectSource.h"

namespace leafwright::mupdf {

/// Spells where the entries of an outline lead (ISO 32000-1, 12.3.2 and 12.6.4).
class TargetWriter {
public:
    /// @param reader and source of the file that is written to; must outlive this
    TargetWriter(Reader &reader, ObjectSource &source) : reader_(reader), source_(source) {}

    /// Lets an entry's dictionary lead where the entry does: to its destination, else to what its action does
    /// where that is known in full, else nowhere. A destination whose page the document does not have is left
    /// out. What else an action
    /// of its kind does is done as before. An entry that led to no particular
    /// spot of its page, and has got one, keeps its zoom and its structure destination (ISO 32000-2,
    /// 12.3.2.3).
    /// @param before the entry in the file, absent for a new one; @param inFile its dictionary
    void setTarget(DictionarySyntax &dictionary, const PDFOutline &now, const PDFOutline &before,
                   const Object &inFile);

private:
    QByteArray spelled(const PDFDestination &destination, double zoom) const;
    double zoomOf(const Object &entry);
    QByteArray actionOf(const OutlineEntry &now, const OutlineEntry &before, const Object &action,
                        const QByteArray &spelled);
    std::optional<DictionarySyntax> actionLedTo(const QByteArray &place, bool keepsStructure,
                                                const Object &action, const QByteArray &spelled);

    Reader &reader_;
    ObjectSource &source_;
    std::optional<DestinationReader> destinations_;  ///< Made for the first that is asked for.
};

}  // namespace leafwright::mupdf
