#pragma once

#include <QtGlobal>

namespace leafwright {

/// Writes all of it, however often the system takes a part only. @return 0, or the errno of what failed
int writeWhole(int descriptor, const char *data, qint64 size);

/// Whether the disk has what it was asked for. Some file systems have no such operation, and nothing to wait
/// for.
/// @param result of fsync(2) or the like, made just before
bool hasSynced(int result);

/// Has writes fail that would make a file larger than this process may (`ulimit -f`), or that nobody will
/// read (a pipe whose reader has gone), so that the user is told and nothing is left behind. As processes
/// start, the system ends them there without a word. For main().
void letHopelessWritesFail();

}  // namespace leafwright
