#pragma once

#include "cli/batch/HashFile.h"

#include <QStringList>

namespace leafwright::cli {

/// The files that the jobs of a batch have been told to read and to write, so that no job writes over what
/// another one reads or writes, in whatever order they are done. It looks at where paths lead when they are
/// told.
class UsedPlaces {
public:
    /// Keeps a file from being written by any job, such as the batch's own. @return why that is not possible
    std::optional<QString> reserve(const QString &path);
    /// @param read what a job reads, its file first @param pdf the PDF that it writes, which may be its file;
    /// may be empty @param written what it writes besides
    /// @return why it is not to be done; absent where all is well
    std::optional<QString> add(const QStringList &read, const QString &pdf, const QStringList &written);

private:
    HashFile places_;
};

}  // namespace leafwright::cli
