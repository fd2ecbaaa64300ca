#pragma once

#include "pdf/mupdf/FileStream.h"

#include <optional>

namespace leafwright::mupdf {

/// Looks through the file's cross-reference sections (ISO 32000-1, 7.5.8) for a stream whose fields claim to
/// be longer than any number: MuPDF would read each of them to its end, gigabytes that are not there, and
/// only then find that the stream is damaged. Throws ReadProblem when the file can't be read.
/// @return the offset of the name W in that stream's dictionary; absent in all sound files
std::optional<qint64> absurdFieldWidths(const FileHandle &file);

}  // namespace leafwright::mupdf
