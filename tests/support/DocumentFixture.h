#pragma once

#include "document/MyDocument.h"
#include "support/OutlineItems.h"
#include "support/PdfBuilder.h"
#include "support/RecordingPlatform.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace leafwright::test {

/// A document on a recording platform, and a folder for its files.
class DocumentFixture : public testing::Test {
protected:
    QString save(const PdfBuilder &pdf, const PdfBuilder::Options &options = {}) const {
        pdf.save(dir.path("a.pdf"), options);
        return dir.path("a.pdf");
    }

    /// Reads a PDF into the document as far as its outline.
    void load(const PdfBuilder &pdf) { load(document, save(pdf)); }
    static void load(MyDocument &document, const QString &path) {
        ASSERT_TRUE(document.readFromURL(path));
        document.prepareForEditing();
        document.importOutline();
    }

    /// The outline of a file, as a document that opens it shows it.
    QString outlineOf(const QString &path) {
        MyDocument other(platform);
        load(other, path);
        return treeText(other.root());
    }

    TempDir dir;
    RecordingPlatform platform;
    MyDocument document{platform};
};

/// Labels for the pages: "i" to "iv", then "1", "2", ...
inline void setRomanThenDecimalLabels(PdfBuilder &pdf) {
    pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /r >> 4 << /S /D >>] >>");
}

}  // namespace leafwright::test
