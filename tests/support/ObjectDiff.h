#pragma once

#include <QString>

#include <map>
#include <string>
#include <vector>

namespace leafwright::test {

/// A file's objects by number, spelled by QPDF; without streams, of which cross-references may be some.
std::map<int, std::string> objectsOf(const QString &path);
/// The numbers of the objects that are not the same in both files, or only in the second.
std::vector<int> changedObjects(const QString &before, const QString &after);
/// The keys that are not the same in a dictionary of both files, with their slashes.
std::vector<std::string> changedKeys(const QString &before, const QString &after, int number);

}  // namespace leafwright::test
