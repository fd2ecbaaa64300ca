#pragma once

#include "pdf/mupdf/Reader.h"

#include <QByteArrayView>
#include <QHash>
#include <QList>

namespace leafwright::mupdf {

/// An object stream (ISO 32000-1, 7.5.7), unpacked.
class ObjectStream {
public:
    /// Throws Error when it can't be unpacked. @param number the stream's object number
    ObjectStream(Reader &reader, int number);
    ~ObjectStream();
    ObjectStream(const ObjectStream &) = delete;
    ObjectStream &operator=(const ObjectStream &) = delete;

    /// The stream's bytes from where an object begins; empty where it does not have that object.
    QByteArrayView textFrom(int objectNumber) const;
    /// Of all that it has, in no order.
    QList<int> objectNumbers() const { return offsets_.keys(); }
    qsizetype size() const { return content().size(); }

private:
    QByteArrayView content() const;

    fz_context *ctx_;
    fz_buffer *buffer_ = nullptr;
    QHash<int, qsizetype> offsets_;  ///< By object number.
};

}  // namespace leafwright::mupdf
