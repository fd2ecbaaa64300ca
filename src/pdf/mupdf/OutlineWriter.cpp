#include "pdf/mupdf/OutlineWriter.h"

#include "pdf/ObjectSyntax.h"
#include "pdf/TextString.h"

namespace leafwright::mupdf {

/// An entry with the object numbers that it is linked by; 0 for none.
struct OutlineWriter::Numbered {
    const PDFOutline *entry;
    int number;
    int parent;
    int previous = 0;
    int next = 0;
    int first = 0;
    int last = 0;
};

OutlineWriter::OutlineWriter(Reader &reader, ObjectSink put)
    : reader_(reader),
      source_(reader),
      put_(std::move(put)),
      next_(std::max(pdf_xref_len(reader.context(), reader.document()),
                     reader.trailer().get(PDF_NAME(Size)).toInt())),
      catalog_(reader.catalog().objectNumber()) {
    if (!reader.catalog().isDict()) throw Error("the file has no catalog");
}

void OutlineWriter::writeEntries(const PDFOutline &root) {
    const std::vector<Numbered> entries = number(root);
    root_ = entries.front().number;
    for (size_t i = 0; i < entries.size(); ++i)
        put_({entries[i].number, 0, spelled(entries[i], i == 0)});
}

/// Gives every entry below the root an object number: siblings in a row, parents before their children.
std::vector<OutlineWriter::Numbered> OutlineWriter::number(const PDFOutline &root) {
    std::vector<Numbered> entries{{&root, next_++, 0}};
    for (size_t i = 0; i < entries.size(); ++i) {
        const PDFOutline &parent = *entries[i].entry;
        for (int k = 0; k < parent.numberOfChildren(); ++k) {
            Numbered child{&parent.childAtIndex(k), next_++, entries[i].number};
            if (k == 0) {
                entries[i].first = child.number;
            } else {
                child.previous = entries.back().number;
                entries.back().next = child.number;
            }
            entries[i].last = child.number;
            entries.push_back(child);
        }
    }
    if (next_ > PDF_MAX_OBJECT_NUMBER) throw Error("the file has too many objects");
    return entries;
}

QByteArray OutlineWriter::spelled(const Numbered &numbered, bool isRoot) {
    const PDFOutline &entry = *numbered.entry;
    const int children = entry.numberOfChildren();
    DictionarySyntax dictionary;
    if (isRoot) {
        dictionary.set("Type", "/Outlines");
    } else {
        dictionary.set("Title", stringSyntax(encodeTextString(entry.label())));
        setTarget(dictionary, entry);
    }
    const auto link = [&dictionary](const QByteArray &key, int number) {
        if (number != 0) dictionary.set(key, referenceSyntax(number, 0));
    };
    link("Parent", numbered.parent);
    link("Prev", numbered.previous);
    link("Next", numbered.next);
    link("First", numbered.first);
    link("Last", numbered.last);
    // Negative for a closed entry; the root counts what is visible: its own children.
    if (isRoot || children > 0) dictionary.set("Count", QByteArray::number(isRoot ? children : -children));
    return dictionary.toBytes();
}

void OutlineWriter::setTarget(DictionarySyntax &dictionary, const PDFOutline &entry) {
    if (const auto &destination = entry.destination()) {
        const QByteArray target = spelled(*destination);
        if (!target.isEmpty()) dictionary.set("Dest", target);
    } else if (const int foreign = entry.foreignEntry()) {
        fz_context *ctx = reader_.context();
        pdf_obj *raw = guarded(ctx, [&] { return pdf_new_indirect(ctx, reader_.document(), foreign, 0); });
        const Object original(ctx, raw);
        pdf_drop_obj(ctx, raw);
        if (!original.isDict()) return;
        const DictionarySyntax kept = source_.dictionary(original);
        for (const QByteArray key : {"Dest", "A"})
            if (kept.contains(key)) dictionary.set(key, kept.value(key));
    }
}

QByteArray OutlineWriter::spelled(const PDFDestination &destination) {
    const PageTree &pages = reader_.pages();
    if (destination.pageIndex < 0 || destination.pageIndex >= pages.count()) return {};
    const int number = pages.numberOf(destination.pageIndex);
    // A page that is no object of its own can only be told by its index.
    const QByteArray page =
        number != 0 ? source_.reference(number) : QByteArray::number(destination.pageIndex);
    return '[' + page + " /XYZ " + numberSyntax(destination.point.x()) + ' ' +
           numberSyntax(destination.point.y()) + " null]";
}

void OutlineWriter::writeCatalog(const QByteArray &version) {
    DictionarySyntax catalog = source_.dictionary(reader_.catalog());
    catalog.set("Outlines", referenceSyntax(root_, 0));
    if (!version.isEmpty()) catalog.set("Version", nameSyntax(version));
    if (catalog_ == 0) catalog_ = next_++;
    put_({catalog_, source_.generationOf(catalog_), catalog.toBytes()});
}

QByteArray OutlineWriter::catalogReference() const {
    return source_.reference(catalog_);
}

}  // namespace leafwright::mupdf
