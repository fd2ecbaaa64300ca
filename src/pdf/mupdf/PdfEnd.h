#pragma once

#include <QtGlobal>

#include <functional>
#include <optional>

namespace leafwright::mupdf {

/// Reads as FileHandle::readAt() does.
using ReadAt = std::function<qint64(qint64 offset, void *data, qint64 length)>;

/// Finds where a PDF ends that other data stand behind, as servers, mailers and archives of two kinds put
/// them there: behind the "%%EOF" of the last cross-reference offset (ISO 32000-1, 7.5.5) that leads to a
/// cross-reference. MuPDF, which looks for it in the last 1024 bytes, would take such a file for damaged, and
/// guess at what its own tables say.
///
/// Where nothing stands behind, that is the size. So it is where this can't be told: no such offset in the
/// last 64 MiB, or objects behind it, which an incomplete update may have left there.
/// @return nothing, with errno set, when a read fails
std::optional<qint64> findPdfEnd(const ReadAt &readAt, qint64 size);

}  // namespace leafwright::mupdf
