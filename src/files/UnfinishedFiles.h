#pragma once

#include <QByteArray>

namespace leafwright {

// A file that is being written stands beside the one whose place it will take, as ".NAME.XXXXXX". What a
// program leaves there that is killed meanwhile, the next one removes.

/// A file that is open, and locked as long as that lasts.
struct UnfinishedFile {
    int descriptor = -1;  ///< -1 with errno set where none could be made.
    QByteArray name;
};

/// Makes a file under a name of its own. @param folder a descriptor of the folder
/// @param name the one that it is to take. @param mode its permissions, before the system's mask
UnfinishedFile makeUnfinishedFile(int folder, const QByteArray &name, unsigned mode);

/// Gives a file a second name of this kind, by which it can come back, and opens it for reading, locked, so
/// that nobody takes it for abandoned, however old it is. @return a descriptor of -1 where there can be none
UnfinishedFile linkAsUnfinished(int folder, const QByteArray &name);

/// Whether a name is one that these give. Of the six letters at its end, four depend on what
/// stands before them, so that it is not taken for such a name what a person has called "notes.backup".
bool isNameOfUnfinishedFile(const QByteArray &name);

/// Removes a file of this kind whose maker has ended, unless somebody else writes under its name now.
void removeUnfinishedFile(const QByteArray &path);

/// Removes from a folder the files of this kind that nobody writes any more: our user's own, not changed for
/// ten minutes, and not locked, nor is their folder (FolderLock). What can't be removed stays. A folder is
/// looked through once in ten minutes.
/// @param folder a descriptor of the folder. @param path the same folder's path
void removeAbandonedFiles(int folder, const QByteArray &path);

}  // namespace leafwright
