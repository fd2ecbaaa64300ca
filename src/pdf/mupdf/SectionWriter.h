#pragma once

#include "pdf/DictionarySyntax.h"
#include "pdf/mupdf/OutputFile.h"

#include <QCryptographicHash>

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

    /// @param out stands at the end of the original, and is used until this goes
    /// @param start how many bytes the file has in front of its header, from where all offsets count
    /// @param separator what the original needs behind it; written with the first object
    SectionWriter(OutputFile &out, qint64 start, QByteArray separator)
        : out_(out), start_(start), begin_(out.position() - start), separator_(std::move(separator)) {}

    void add(const NewObject &object);
    /// Whether a table can hold where the next object would be: it has room for ten digits.
    bool tableIsWideEnough() const { return offset() <= farthestInTable; }
    /// Writes cross-reference and trailer, which says that the section is ours (see OwnSection).
    /// @param trailer its entries but /Size and /Prev
    /// @param previous where the file's newest section before has its cross-reference
    /// @param sizeBefore one more than the highest object number of the original
    /// @param size one more than the highest object number of all
    void end(CrossReference kind, DictionarySyntax trailer, qint64 previous, int sizeBefore, int size);

private:
    static constexpr qint64 farthestInTable = 9'999'999'999;

    struct Entry {
        int number;
        int generation;
        qint64 offset;
    };

    qint64 offset() const { return out_.position() - start_; }
    void writeHashed(const QByteArray &bytes);
    void writeTable();
    void writeStream(int number, DictionarySyntax dictionary);

    OutputFile &out_;
    qint64 start_;
    qint64 begin_;
    QByteArray separator_;
    QCryptographicHash hash_{QCryptographicHash::Sha256};
    std::vector<Entry> entries_;
};

}  // namespace leafwright::mupdf
