#pragma once

#include "pdf/PDFOutline.h"

#include <memory>
#include <string>
#include <vector>

namespace leafwright::test {

/// An outline in plain sight, for making one. A point of a destination is in page space.
struct Entry {
    QString title;
    std::optional<PDFDestination> destination = {};
    std::vector<Entry> children = {};
};
std::unique_ptr<PDFOutline> makeOutline(const std::vector<Entry> &entries);

/// The entries below a root in tree order, with the 0-based page index: "Intro -> 0 (72, 700)" or, without a
/// destination, "Intro"; two blanks in front for each level.
std::vector<std::string> linesOf(const PDFOutline &root);
/// The same of a file, as QPDF reads it (no deeper than 50 levels).
std::vector<std::string> linesByQpdf(const QString &path);

}  // namespace leafwright::test
