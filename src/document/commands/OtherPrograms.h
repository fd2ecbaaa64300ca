#pragma once

#include "files/FileOnDisk.h"

#include <memory>

namespace leafwright {

class FileWatch;
class MyDocument;

/// What other programs do to the document's file: tells of it, asks before it is overwritten, and loads what
/// they have written.
class OtherPrograms {
public:
    /// Registers the commands. @param document must outlive this
    explicit OtherPrograms(MyDocument &document);
    ~OtherPrograms();

    /// Begins to watch the file, once there is a window to tell in.
    void watch();
    /// Has the window's bar tell what became of the file, as long as that is not what we know of.
    void tell();
    /// Whether the document's own file may be written: asks, where another program has changed it, and does
    /// what else is chosen. Without a window that is left to the write, which fails then.
    bool letWrite();

    /// Shows the pages that the file has now. Where there is an outline that it may not have, asks whether to
    /// keep that or to take the file's.
    void reloadFromDisk();
    /// Shows the pages that the file has now, and keeps the outline, whose entries are found again by their
    /// page labels. What can't be loaded is told, and all stays as it is.
    void loadNewPages();

private:
    bool letWriteOverOthers(FileOnDisk::State state);

    MyDocument &document_;
    std::unique_ptr<FileWatch> watch_;
    FileOnDisk::State told_ = FileOnDisk::State::Unchanged;
    bool tellsWhenIdle_ = false;  ///< However often the file is touched until then.
};

}  // namespace leafwright
