#pragma once

#include <QString>

namespace leafwright {

/// The path of a file that comes with the program, such as "Leafwright User Guide.pdf": beside the installed
/// program's data, or in the tree it was built in. Null if it is nowhere.
QString resourcePath(const QString &fileName);

}  // namespace leafwright
