#pragma once

#include "pdf/DictionarySyntax.h"
#include "pdf/mupdf/ObjectSource.h"
#include "pdf/mupdf/OutputFile.h"
#include "pdf/mupdf/OwnSection.h"

#include <QCryptographicHash>
#include <QSet>

#include <vector>

namespace leafwright::mupdf {

/// An object as it is put into a file.
struct NewObject {
    int number;
    int generation;
    QByteArray syntax;  ///< "<< /Type /Outlines >>"
};

/// Writes the section at the end of a file that holds what has changed in it (ISO 32000-1, 7.5.6).
class SectionWriter {
public:
    /// How a section says where its objects are (ISO 32000-1, 7.5.4 and 7.5.8).
    enum class CrossReference { Table, Stream };
    /// The farthest offset that a table has room for, in ten digits.
    static constexpr qint64 farthestInTable = 9'999'999'999;

    /// @param out stands at the end of the original, and is used until this goes
    /// @param start how many bytes the file has in front of its header, from where all offsets count
    /// @param separator what the original needs behind it; written with the first object
    SectionWriter(OutputFile &out, qint64 start, QByteArray separator)
        : out_(out), start_(start), separator_(std::move(separator)) {}

    void add(const NewObject &object);
    /// Whether a table can hold where the next object would be: it has room for ten digits.
    bool tableIsWideEnough() const { return offset() <= farthestInTable; }
    /// Lists an object that stays where it is, unless it has been written anew: for a section that knows all
    /// objects of the file.
    void keep(int number, const ObjectPlace &place);
    /// Writes cross-reference and trailer, which says that the section is ours.
    /// @param trailer its entries but /Size and /Prev
    /// @param original what stands in front of it
    /// @param size one more than the highest object number of all
    /// @param standsAlone whether it knows all objects of the file, so that no reader has to go farther back
    void end(CrossReference kind, DictionarySyntax trailer, const OwnSection &original, int size,
             bool standsAlone);

private:
    struct Entry {
        int number;
        ObjectPlace place;
    };

    qint64 offset() const { return out_.position() - start_; }
    void writeHashed(const QByteArray &bytes);
    void writeTable();
    void writeStream(int number, DictionarySyntax dictionary);

    OutputFile &out_;
    qint64 start_;
    QByteArray separator_;
    QCryptographicHash hash_{QCryptographicHash::Sha256};
    std::vector<Entry> entries_;
    QSet<int> added_;  ///< The numbers of the objects that have been written.
};

}  // namespace leafwright::mupdf
