#pragma once

#include "pdf/DictionarySyntax.h"
#include "pdf/mupdf/ObjectStream.h"

namespace leafwright::mupdf {

/// Where an object is, as a cross-reference tells it (ISO 32000-1, table 18).
struct ObjectPlace {
    enum class Kind : char { Free = 0, InFile = 1, InStream = 2 };

    Kind kind;
    qint64 offset;   ///< In an object stream, that stream's number.
    int generation;  ///< In an object stream, the place there.
};

/// How objects are spelled in the file: what is written again keeps its bytes, such as all digits of a
/// number, of which MuPDF keeps only what single precision does.
class ObjectSource {
public:
    explicit ObjectSource(Reader &reader) : reader_(reader) {}

    /// The dictionary that a reference leads to. Where its bytes make no sense by themselves (a broken file),
    /// it is spelled as MuPDF understands it. Throws Error when there is no dictionary.
    DictionarySyntax dictionary(const Object &reference);
    /// A stream's dictionary as it stands in the file. Nothing where its bytes make no sense by themselves,
    /// or where no stream stands.
    std::optional<DictionarySyntax> streamDictionary(int objectNumber) const;
    /// A value as MuPDF understands it; references stay what they are.
    QByteArray spelled(const Object &value) const;
    /// A reference to an object of the file, with its generation: "12 0 R".
    QByteArray reference(int objectNumber) const;
    /// Where an object is; free for one that is not there.
    ObjectPlace placeOf(int objectNumber) const;
    /// Where an object stands by itself in the file; -1 for one in an object stream and for none.
    qint64 offsetOf(int objectNumber) const;
    /// The generation of an object of the file.
    int generationOf(int objectNumber) const;

private:
    const pdf_xref_entry *entryOf(int objectNumber) const;
    std::optional<DictionarySyntax> inFile(int objectNumber, qint64 offset, QByteArrayView lastWord) const;
    std::optional<DictionarySyntax> inStream(int objectNumber, int streamNumber);

    Reader &reader_;
    std::unique_ptr<ObjectStream> stream_;  ///< The last one that was asked for.
    int streamNumber_ = 0;
};

}  // namespace leafwright::mupdf
