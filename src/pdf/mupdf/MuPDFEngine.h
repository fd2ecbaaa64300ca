#pragma once

#include "pdf/PDFEngine.h"

namespace leafwright {

/// Opens a PDF file with MuPDF. Locked and encrypted files open too; see the facts.
Result<std::unique_ptr<PDFEngine>> openWithMuPDF(const QString &path);

}  // namespace leafwright
