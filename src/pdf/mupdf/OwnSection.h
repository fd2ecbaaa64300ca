#pragma once

#include "pdf/mupdf/Reader.h"

#include <optional>

namespace leafwright::mupdf {

/// The key by which a trailer tells of its section that we have appended it: a string of the members of
/// OwnSection and the SHA-256 of its objects, in hexadecimal digits, with blanks between them.
inline constexpr char ownSectionKey[] = "LeafwrightSection";

/// A section that we have appended to a file (ISO 32000-1, 7.5.6) and that is still its end. As it holds
/// nothing but outline and catalog, another may take its place.
struct OwnSection {
    qint64 begin;     ///< Where it begins, and the file ended before.
    int size;         ///< One more than the highest object number before.
    qint64 previous;  ///< Where the section before it has its cross-reference.
};

/// One more than the highest object number of the file.
int sizeOf(Reader &reader);

/// What the key of a section says. @param hash of its objects
QByteArray ownSectionText(const OwnSection &section, const QByteArray &hash);

/// Finds the section of ours that the reader's file ends with. Nothing where there is none, where it is not
/// byte by byte as we wrote it, or where anything stands behind it, such as a signature made since.
std::optional<OwnSection> findOwnSection(Reader &reader);

}  // namespace leafwright::mupdf
