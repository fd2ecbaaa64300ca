#pragma once

#include "pdf/PDFOutline.h"
#include "pdf/mupdf/ObjectSource.h"
#include "pdf/mupdf/SectionWriter.h"

#include <functional>

namespace leafwright::mupdf {

/// Takes the objects of a file that are new or have changed.
using ObjectSink = std::function<void(const NewObject &object)>;

/// Spells a new outline for the reader's file (ISO 32000-1, 12.3.3), and its catalog, which leads to that;
/// the catalog comes last.
///
/// Entries are written closed. One without a destination takes over, byte by byte, where the foreign entry leads
/// that it stands for, if any. A destination whose page the document does not have is left out.
class OutlineWriter {
public:
    OutlineWriter(Reader &reader, ObjectSink put);

    void writeEntries(const PDFOutline &root);
    /// @param version what the file has to claim at least, as "1.5"; empty for what it claims already
    void writeCatalog(const QByteArray &version);

    /// One more than the highest object number so far.
    int size() const { return next_; }
    /// Of the catalog that has been written.
    QByteArray catalogReference() const;

private:
    struct Numbered;

    std::vector<Numbered> number(const PDFOutline &root);
    QByteArray spelled(const Numbered &numbered, bool isRoot);
    void setTarget(DictionarySyntax &dictionary, const PDFOutline &entry);
    QByteArray spelled(const PDFDestination &destination);

    Reader &reader_;
    ObjectSource source_;
    ObjectSink put_;
    int next_;
    int root_ = 0;
    int catalog_;
};

}  // namespace leafwright::mupdf
