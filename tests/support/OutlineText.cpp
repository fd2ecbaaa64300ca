#include "support/OutlineText.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFOutlineDocumentHelper.hh>

#include <QFile>

#include <map>

namespace leafwright::test {

namespace {

std::string line(int level, const std::string &title, const std::optional<PDFDestination> &destination) {
    const std::string text = std::string(2 * level, ' ') + title;
    if (!destination) return text;
    return text + QStringLiteral(" -> %1 (%2, %3)")
                      .arg(destination->pageIndex)
                      .arg(destination->point.x(), 0, 'g', 10)
                      .arg(destination->point.y(), 0, 'g', 10)
                      .toStdString();
}

void addEntries(PDFOutline &parent, const std::vector<Entry> &entries) {
    for (const Entry &entry : entries) {
        auto child = std::make_unique<PDFOutline>(entry.title);
        child->setDestination(entry.destination);
        addEntries(*child, entry.children);
        parent.insertChildAtIndex(std::move(child), parent.numberOfChildren());
    }
}

void addLines(std::vector<std::string> &lines, const PDFOutline &parent, int level) {
    for (int i = 0; i < parent.numberOfChildren(); ++i) {
        const PDFOutline &child = parent.childAtIndex(i);
        lines.push_back(line(level, child.label().toStdString(), child.destination()));
        addLines(lines, child, level + 1);
    }
}

using PageIndexes = std::map<QPDFObjGen, int>;

void addLines(std::vector<std::string> &lines, const std::vector<QPDFOutlineObjectHelper> &entries,
              const PageIndexes &pages, int level) {
    for (QPDFOutlineObjectHelper entry : entries) {
        std::optional<PDFDestination> destination;
        if (QPDFObjectHandle dest = entry.getDest(); dest.isArray()) {
            destination = PDFDestination{
                pages.at(entry.getDestPage().getObjGen()),
                {dest.getArrayItem(2).getNumericValue(), dest.getArrayItem(3).getNumericValue()}};
        }
        lines.push_back(line(level, entry.getTitle(), destination));
        addLines(lines, entry.getKids(), pages, level + 1);
    }
}

}  // namespace

std::unique_ptr<PDFOutline> makeOutline(const std::vector<Entry> &entries) {
    auto root = std::make_unique<PDFOutline>();
    addEntries(*root, entries);
    return root;
}

std::vector<std::string> linesOf(const PDFOutline &root) {
    std::vector<std::string> lines;
    addLines(lines, root, 0);
    return lines;
}

std::vector<std::string> linesByQpdf(const QString &path) {
    QPDF pdf;
    pdf.processFile(QFile::encodeName(path).constData());
    PageIndexes pages;
    for (const QPDFObjectHandle &page : pdf.getAllPages())
        pages.emplace(page.getObjGen(), static_cast<int>(pages.size()));
    std::vector<std::string> lines;
    addLines(lines, QPDFOutlineDocumentHelper(pdf).getTopLevelOutlines(), pages, 0);
    return lines;
}

}  // namespace leafwright::test
