#pragma once

#include <QByteArray>
#include <QList>

namespace leafwright::test {

/// Damages one of some files as disks, networks and other programs do: flips bits, changes digits, cuts,
/// doubles and moves pieces, and puts in pieces of other files.
/// @param seed the same seed gives the same mutant of the same files
QByteArray mutant(const QList<QByteArray> &files, quint64 seed);

}  // namespace leafwright::test
