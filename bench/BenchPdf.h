#pragma once

#include "pdf/PDFDocument.h"

namespace leafwright::bench {

/// The folder for what the benchmarks make; gone when the program ends.
QString benchFolder();

/// The PDF to measure on: the one that LEAFWRIGHT_BENCH_PDF names, else a manual of 500 pages made for it.
QString benchPdfPath();

/// Opens the PDF. Throws std::runtime_error when it can't be read.
std::unique_ptr<PDFDocument> openBenchPdf();

}  // namespace leafwright::bench
