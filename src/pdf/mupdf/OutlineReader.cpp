#include "pdf/mupdf/OutlineReader.h"

#include "pdf/TextString.h"
#include "pdf/mupdf/DestinationReader.h"
#include "pdf/mupdf/Walk.h"

namespace leafwright::mupdf {

namespace {

/// A list of siblings that is being read.
struct Siblings {
    PDFOutline *parent;
    Object next;
};

/// Absent for an object without a number of its own.
std::optional<int> numberOf(const Object &object) {
    const int number = object.objectNumber();
    return number != 0 ? std::optional(number) : std::nullopt;
}

std::optional<OutlineEntry::Action> readAction(const Object &action) {
    const QByteArray type = action.get(PDF_NAME(S)).toName();
    if (type.isEmpty()) return std::nullopt;
    OutlineEntry::Action read{QString::fromUtf8(type)};
    if (type == "URI") read.target = QString::fromUtf8(action.get(PDF_NAME(URI)).toBytes());
    if (type == "GoToR") {
        // A file is told by its name or by a dictionary (ISO 32000-1, 7.11).
        const Object file = action.get(PDF_NAME(F));
        const Object unicodeName = file.get(PDF_NAME(UF));
        const Object name = !file.isDict() ? file : unicodeName ? unicodeName : file.get(PDF_NAME(F));
        read.target = decodeTextString(name.toBytes());
    }
    return read;
}

std::optional<OutlineEntry::Color> readColor(const Object &color) {
    if (!color.isArray() || color.size() != 3) return std::nullopt;
    return OutlineEntry::Color{color.at(0).toNumber(), color.at(1).toNumber(), color.at(2).toNumber()};
}

OutlineEntry readWhatElse(const Object &entry) {
    constexpr int italicFlag = 1;
    constexpr int boldFlag = 2;
    const int flags = entry.get(PDF_NAME(F)).toInt();
    return {.number = numberOf(entry),
            .bold = (flags & boldFlag) != 0,
            .italic = (flags & italicFlag) != 0,
            .open = entry.get(PDF_NAME(Count)).toInt() > 0,
            .color = readColor(entry.get(PDF_NAME(C))),
            .action = readAction(entry.get(PDF_NAME(A)))};
}

std::unique_ptr<PDFOutline> readEntry(const Object &entry, DestinationReader &destinations) {
    auto outline = std::make_unique<PDFOutline>(decodeTextString(entry.get(PDF_NAME(Title)).toBytes()));
    outline->setDestination(destinations.of(entry));
    outline->setEntry(readWhatElse(entry));
    return outline;
}

/// What the texts of an entry take.
qsizetype bytesOf(const PDFOutline &outline) {
    const std::optional<OutlineEntry::Action> &action = outline.entry().action;
    qsizetype characters = outline.label().size();
    if (action) characters += action->type.size() + action->target.value_or(QString()).size();
    return characters * qsizetype{sizeof(QChar)};
}

}  // namespace

std::unique_ptr<PDFOutline> readOutline(Reader &reader) {
    auto root = std::make_unique<PDFOutline>();
    const Object outlines = reader.catalog().get(PDF_NAME(Outlines));
    if (outlines.isDict()) root->setEntry({.number = numberOf(outlines)});
    DestinationReader destinations(reader);
    Walk walk;
    std::vector<Siblings> open{{root.get(), outlines.get(PDF_NAME(First))}};
    while (!open.empty()) {
        const Object entry = open.back().next;
        if (!entry.isDict() || !walk.enter(entry)) {
            open.pop_back();
            continue;
        }
        PDFOutline &parent = *open.back().parent;
        PDFOutline &outline =
            parent.insertChildAtIndex(readEntry(entry, destinations), parent.numberOfChildren());
        walk.keep(bytesOf(outline));
        open.back().next = entry.get(PDF_NAME(Next));
        if (Object first = entry.get(PDF_NAME(First)); first.isDict())
            open.push_back({&outline, std::move(first)});
    }
    reader.throwProblem();  // one that MuPDF passed over
    return root;
}

}  // namespace leafwright::mupdf
