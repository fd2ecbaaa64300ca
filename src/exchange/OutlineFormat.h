#pragma once

#include "exchange/ReadOutline.h"

#include <QStringList>

#include <array>
#include <functional>
#include <span>

namespace leafwright {

/// Takes a text, in UTF-8, piece by piece.
using TextSink = std::function<void(const QByteArray &bytes)>;

/// Tells the 0-based page that an item leads to; absent where that is none, or not known. Asked once an item,
/// if at all.
using PageOfItem = std::function<std::optional<int>(const MyOutlineItem &item)>;

/// One form in which outlines are given to people and other programs, and taken from them.
struct OutlineFormat {
    const char *name = "";  ///< By which people ask for it: "json".
    /// What names of files with it end in, without dots: its own first, then those that others share. Empty
    /// ones are none, and a form without any is for the command line only.
    std::array<const char *, 3> extensions = {};
    /// Whether an entry keeps its page label where no page has it; else it leads to no page then.
    bool keepsLabels = false;
    /// Writes what is below the root.
    void (*write)(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink) = nullptr;
    /// Reads it again; null where that is not possible.
    OutlineTree (*read)(const QByteArray &text, const OutlineSource &source) = nullptr;
    /// Whether a text is in this form, by how it begins; it is given from its first character that is no
    /// blank. Null for a form that can't be told from any text, and is known by its extension only.
    bool (*looksLike)(QByteArrayView text) = nullptr;
    /// Whether a text without entries says that no outline is wanted; in others, it is a mistake.
    bool mayBeEmpty = false;

    bool hasExtension(QStringView extension) const;
};

/// All formats, in the order in which they are listed.
std::span<const OutlineFormat> outlineFormats();
/// The one of a name; null if there is none.
const OutlineFormat *outlineFormatNamed(QStringView name);
/// The names of those that can be written, or of those that can be read.
QStringList namesOfWrittenFormats();
QStringList namesOfReadFormats();
/// What names of files may end in, each format's own extension first of all.
QStringList extensionsOfOutlines();
/// Those that say by themselves in which format a file is.
QStringList ownExtensionsOfOutlines();

/// The format in which a file of this name is to be written; null where its extension says none, or several.
const OutlineFormat *formatToWrite(const QString &path);
/// The format that a text is in: by the extension of its file's name, and by how it begins where several have
/// that extension, or none has. Null where that leaves it open, or the two contradict each other.
const OutlineFormat *formatToRead(const QString &path, QByteArrayView text);

/// What is larger is no outline that somebody has written, in bytes.
inline constexpr qsizetype largestOutlineText = qsizetype{256} << 20;

/// Reads a text in a format. Texts that are too large are refused, and so are those without entries, which
/// programs leave that failed: who wants no outline has to say so, in a format that can.
OutlineTree readOutline(const OutlineFormat &format, const QByteArray &text, const OutlineSource &source);

}  // namespace leafwright
