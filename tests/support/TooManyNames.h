#pragma once

#include "support/PdfBuilder.h"

namespace leafwright::test {

/// Gives a document named destinations whose names together take more memory than a file may have: one
/// string, spelled once and used thousands of times. Only who reads the names of all destinations notices.
inline void addTooManyNames(PdfBuilder &pdf) {
    std::string text(60'000, 'x');
    text.front() = '(';
    text.back() = ')';
    const std::string name = PdfBuilder::reference(pdf.addObject(text));
    std::string names;
    for (int i = 0; i < 5000; ++i)
        names += name + " [" + pdf.pageReference(0) + " /Fit] ";
    pdf.setCatalogEntry("/Names", "<< /Dests << /Names [" + names + "] >> >>");
}

}  // namespace leafwright::test
