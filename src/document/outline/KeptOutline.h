#pragma once

#include "document/outline/EntryKey.h"
#include "files/FileMark.h"
#include "model/MyOutlineItem.h"

#include <QPointF>

#include <functional>
#include <optional>
#include <vector>

namespace leafwright {

/// An entry of an outline as a value, without those below it, to be handed to another thread.
struct KeptEntry {
    size_t depth = 0;  ///< 0 at the top level.
    QString title;
    QString label;
    std::optional<int> page;  ///< MyOutlineItem::importedPage().
    QPointF point;
    OutlineEntry entry;
    /// What the file's entry that it stands for is found again by, where that is not what it says itself.
    std::optional<EntryKey> inFile = {};
};

/// An outline that was not saved, with the file that it belongs to.
struct KeptOutline {
    QString pdf;      ///< An absolute path.
    FileMark file;    ///< The file there, as the program that kept the outline knew it.
    qint64 date = 0;  ///< When it was kept: milliseconds since the start of 1970, UTC.
    std::vector<KeptEntry> entries;
    int order = 0;  ///< Greater than that of what was kept for the same file before, whatever the clock said.
};

/// All that is below a root, in tree order.
std::vector<KeptEntry> keptEntries(const MyOutlineItem &root);
/// Notes how entries are found again that have been changed since they were read.
/// @param outlineOfFile of the file that they are kept for
void noteKeysInFile(std::vector<KeptEntry> &entries, const PDFOutline &outlineOfFile);
/// What those that stand for an entry of the file are found again by, in their order.
std::vector<EntryInFile> entriesInFile(const std::vector<KeptEntry> &entries);
/// New items that say the same, without identities.
MyOutlineItem::Children itemsOfKeptEntries(const std::vector<KeptEntry> &entries);

/// Spells an outline for readKeptOutline(), in UTF-8: a line of JSON about it all, and one for each entry,
/// since outlines go deeper than most readers of JSON do. @param sink takes the text piece by piece
void writeKeptOutline(const KeptOutline &outline, const std::function<void(const QByteArray &bytes)> &sink);
/// Nothing if the text is not one of those, or not the whole of one.
std::optional<KeptOutline> readKeptOutline(const QByteArray &text);
/// The same without its entries, of the first line alone.
std::optional<KeptOutline> readHeadOfKeptOutline(const QByteArray &line);
/// Whether a first line is one that only a later version of the program understands.
bool isHeadOfLaterVersion(const QByteArray &line);

}  // namespace leafwright
