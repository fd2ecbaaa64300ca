#pragma once

#include <QByteArray>
#include <QStringList>

#include <sys/stat.h>

namespace leafwright {

/// Gives a new file what an old one has besides its content and its times: owner, group, permissions, access
/// list and other extended attributes. Nobody may do more with it than with the old one.
/// @param file a descriptor of the new file, which only its owner may use so far
/// @param path the old file's. @param status the old file's
/// @return what could not be kept, as a sentence each
QStringList keepAttributes(int file, const QByteArray &path, const struct stat &status);

}  // namespace leafwright
