#pragma once

#include "pdf/PDFOutline.h"
#include "pdf/mupdf/ObjectSource.h"
#include "pdf/mupdf/OutlineLinks.h"
#include "pdf/mupdf/OwnSection.h"
#include "pdf/mupdf/SectionWriter.h"
#include "pdf/mupdf/TargetWriter.h"

#include <QSet>

#include <functional>

namespace leafwright::mupdf {

/// Takes the objects of a file that are new or have changed.
using ObjectSink = std::function<void(const NewObject &object)>;

/// Spells what an outline changes in the reader's file (ISO 32000-1, 12.3.3).
///
/// An entry that stands for one of the file keeps its object and all of its bytes but those of what has
/// changed; where nothing has, it is not written at all, unless its object is to be left behind. A second one
/// that stands for the same is a copy. Where an entry leads, stays as it is spelled as long as that is the
/// same place.
class OutlineWriter {
public:
    /// @param original what is kept of the file; objects behind that are written again, if they are still
    /// needed
    OutlineWriter(Reader &reader, ObjectSink put, const OwnSection &original);

    void writeEntries(const PDFOutline &root);
    /// Writes the catalog if it has to change; comes last.
    /// @param version what the file has to claim at least, as "1.5"; empty for what it claims already
    void writeCatalog(const QByteArray &version);

    /// Whether anything has been written.
    bool hasChanges() const { return hasChanges_; }
    /// One more than the highest object number so far.
    int size() const { return size_; }
    QByteArray catalogReference() const;

private:
    std::vector<int> sourcesOf(const std::vector<LinkedEntry> &entries) const;
    void number(std::vector<LinkedEntry> &entries, const std::vector<int> &sources);
    bool mayKeep(int number) const;
    void putAgain(int number);
    Object objectOf(int number) const;
    bool isAsInFile(const LinkedEntry &entry, const LinkedEntry &original) const;
    DictionarySyntax spelled(const LinkedEntry &entry, int source);
    void setLinks(DictionarySyntax &dictionary, const LinkedEntry &entry, const LinkedEntry *original);
    void put(int number, const DictionarySyntax &dictionary);

    Reader &reader_;
    ObjectSource source_;
    TargetWriter targets_;
    ObjectSink put_;
    std::unique_ptr<PDFOutline> inFile_;
    std::vector<LinkedEntry> originals_;   ///< Of the file, the root first.
    QHash<int, qsizetype> originalIndex_;  ///< By object number.
    qint64 end_;                           ///< Of what is kept of the file.
    int next_;                             ///< No lower number is free.
    int size_;
    int root_ = 0;
    int catalog_;
    bool hasChanges_ = false;
};

}  // namespace leafwright::mupdf
