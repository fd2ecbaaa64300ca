#pragma once

#include "pdf/PDFEngine.h"

namespace leafwright {

class FileSnapshot;

/// Opens a PDF file with MuPDF. Locked and encrypted files open too; see the facts.
/// @param asItWas gets the file as it was before MuPDF read any of it; may be null
Result<std::unique_ptr<PDFEngine>> openWithMuPDF(const QString &path,
                                                 std::shared_ptr<const FileSnapshot> *asItWas);

}  // namespace leafwright
