#pragma once

#include "pdf/PDFEngine.h"
#include "pdf/mupdf/Reader.h"

namespace leafwright::mupdf {

/// A file that has been opened: what is read of it once, its pages, and the reader that did the reading.
struct OpenedFile {
    PDFFacts facts;
    std::shared_ptr<const PageTree> pages;
    std::unique_ptr<Reader> reader;
    std::optional<PDFError> problem = {};  ///< Why the facts or the pages may lack something.
    bool isMeantEmpty = false;             ///< It has no pages, and its page tree says so.
};

/// Opens a PDF. Throws Error when the file is not a PDF beyond repair, ReadProblem when that can't be told.
OpenedFile openFile(const std::shared_ptr<const FileHandle> &file);

}  // namespace leafwright::mupdf
