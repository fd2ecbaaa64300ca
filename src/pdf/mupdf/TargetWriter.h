#pragma once

#include "pdf/PDFOutline.h"
#include "pdf/mupdf/ObjectSource.h"

namespace leafwright::mupdf {

/// Spells where the entries of an outline lead (ISO 32000-1, 12.3.2 and 12.6.4).
class TargetWriter {
public:
    /// @param reader and source of the file that is written to; must outlive this
    TargetWriter(Reader &reader, const ObjectSource &source) : reader_(reader), source_(source) {}

    /// Lets an entry's dictionary lead where the entry does: to its destination, else to what its action does
    /// where that is known in full, else nowhere. A destination whose page the document does not have is left
    /// out.
    void setTarget(DictionarySyntax &dictionary, const PDFOutline &entry) const;

private:
    QByteArray spelled(const PDFDestination &destination) const;

    Reader &reader_;
    const ObjectSource &source_;
};

}  // namespace leafwright::mupdf
