#pragma once

#include "support/TreeWindowFixture.h"

#include <QTableView>

namespace leafwright::test {

/// A window with a PDF of two pages, each with a heading of 24 points, one of 16, both bold, and body text of
/// 10 points below.
class HeadingsWindowFixture : public TreeWindowFixture {
protected:
    void SetUp() override { open(chapters()); }

    static PdfBuilder chapters() {
        PdfBuilder pdf;
        for (int chapter = 0; chapter < 2; ++chapter)
            pdf.addPage(chapterPage());
        return pdf;
    }

    static std::string chapterPage() {
        std::string content = PdfBuilder::showText("F2", 24, 72, 700, "Chapter title") +
                              PdfBuilder::showText("F2", 16, 72, 660, "Section title");
        for (int line = 0; line < 20; ++line)
            content += PdfBuilder::showText("F1", 10, 72, 620 - 12 * line, "Body text that fills the page.");
        return content;
    }

    /// The heading map, "H1 24, H2 16"; 0 for a record without a font.
    QString map() {
        QStringList rows;
        for (const LevelRecord &record : document.listH1H2H3Config())
            rows.append(record.levelName + " " + QString::number(record.font ? record.font->pointSize() : 0));
        return rows.join(", ");
    }
    /// Selects where a text stands first on a page. @param index 0-based
    void selectText(const QString &text, int index = 0) {
        const PDFPage &page = *document.pdfDoc()->page(index);
        const int at = static_cast<int>(page.text()->attributedString.string.indexOf(text));
        ASSERT_GE(at, 0);
        document.pdfview()->setCurrentSelection(page.selectionForRange({at, static_cast<int>(text.size())}));
    }
    QTableView &table() { return *document.myWindow()->tableViewH1H2H3Config(); }

    const QString mapKey = "LastUsedH1H2H3MapString";
};

}  // namespace leafwright::test
