#include "pdf/mupdf/OutlineReader.h"

#include "pdf/TextString.h"
#include "pdf/mupdf/DestinationReader.h"

#include <QSet>

namespace leafwright::mupdf {

namespace {

/// A list of siblings that is being read.
struct Siblings {
    PDFOutline *parent;
    Object next;
};

std::unique_ptr<PDFOutline> readEntry(const Object &entry, DestinationReader &destinations) {
    auto outline = std::make_unique<PDFOutline>(decodeTextString(entry.get(PDF_NAME(Title)).toBytes()));
    outline->setDestination(destinations.of(entry));
    const bool leadsElsewhere = entry.get(PDF_NAME(Dest)) || entry.get(PDF_NAME(A));
    if (!outline->destination() && leadsElsewhere) outline->setForeignEntry(entry.objectNumber());
    return outline;
}

}  // namespace

std::unique_ptr<PDFOutline> readOutline(Reader &reader) {
    auto root = std::make_unique<PDFOutline>();
    DestinationReader destinations(reader);
    QSet<int> visited;
    std::vector<Siblings> open{{root.get(), reader.catalog().get(PDF_NAME(Outlines)).get(PDF_NAME(First))}};
    while (!open.empty()) {
        const Object entry = open.back().next;
        const int number = entry.objectNumber();
        if (!entry.isDict() || (number != 0 && visited.contains(number))) {
            open.pop_back();
            continue;
        }
        if (number != 0) visited.insert(number);
        PDFOutline &parent = *open.back().parent;
        PDFOutline &outline =
            parent.insertChildAtIndex(readEntry(entry, destinations), parent.numberOfChildren());
        open.back().next = entry.get(PDF_NAME(Next));
        if (Object first = entry.get(PDF_NAME(First)); first.isDict())
            open.push_back({&outline, std::move(first)});
    }
    return root;
}

}  // namespace leafwright::mupdf
