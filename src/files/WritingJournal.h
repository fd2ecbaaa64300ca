#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace leafwright {

// A process that is ended from outside can't tidy up, nor tell what it has written. So it notes beforehand,
// for whoever has started it, what it makes beside the files that it writes and which of these take their
// place. A note is there for good as soon as its call returns, whatever becomes of the process.

/// Has this process keep a journal, from now on. Without this, notes go nowhere.
/// @param descriptor of an open file, empty, which others can read after the end; it is to stay open. -1 ends
/// it
void keepWritingJournal(int descriptor);

/// Notes that a name is about to be made that is to be gone again in the end. @param folder a descriptor of
/// its folder
void noteUnfinishedFile(int folder, const QByteArray &name);
/// Notes that an open file is about to take its place. @param path as the user knows it, symbolic links and
/// all
void noteReplacement(int file, const QByteArray &path);

/// Does what the process can no longer do that kept a journal: removes the unfinished files that it has left.
/// For use once it has ended. @return the paths of the files that have taken their place
QByteArrayList settleWritingJournal(int descriptor);

}  // namespace leafwright
