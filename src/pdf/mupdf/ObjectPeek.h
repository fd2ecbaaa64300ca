#pragma once

#include "pdf/mupdf/ObjectStream.h"

#include <QSet>

namespace leafwright::mupdf {

/// Looks at single objects of object streams (ISO 32000-1, 7.5.7) without loading the whole streams.
///
/// MuPDF parses all objects of a stream to get at one. A manual of thousands of pages has its pages spread
/// over all of its streams, so that looking at the pages would parse the file; this parses the pages alone.
class ObjectPeek {
public:
    explicit ObjectPeek(Reader &reader) : reader_(reader) {}

    /// What a reference leads to. Anything but an object of an intact object stream is read by MuPDF, and
    /// so is an object of a stream that we have left behind: no stream is unpacked twice.
    Object object(const Object &reference);

private:
    /// The number of the object stream that holds an object; 0 for one that stands by itself or is loaded.
    int streamOf(int objectNumber) const;
    bool open(int streamNumber);
    Object parse(QByteArrayView text);

    Reader &reader_;
    std::unique_ptr<ObjectStream> stream_;  ///< The open one.
    int openStream_ = 0;
    QSet<int> seenStreams_;
};

}  // namespace leafwright::mupdf
