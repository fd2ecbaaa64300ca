#pragma once

#include <QString>

#include <variant>

namespace leafwright {

/// Why something could not be done with a PDF file, in words for people.
struct PDFError {
    enum class Kind {
        FileMissing,     ///< No file at that path.
        FileUnreadable,  ///< The file is there, but the system does not let us read it.
        OutOfMemory,     ///< Reading it takes more memory than there is, or than one file may take.
        TakesTooLong,    ///< Reading a page of it takes more time than a page may take.
        NotAPDF,         ///< What is in the file can't be read as a PDF, even after repair.
        Locked,          ///< A password is needed.
        FileChanged,     ///< Another program has changed it since it was read; nothing has been written.
        WriteFailed,     ///< The new file could not be written; an old one at its place is unchanged.
        NotDurable,      ///< The new file has been written, but the disk does not confirm that it has it.
    };
    Kind kind;
    QString message;
};

/// A value, or why there is none.
template <typename T>
using Result = std::variant<T, PDFError>;

}  // namespace leafwright
