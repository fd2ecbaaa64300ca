#include "pdf/mupdf/OutlineWriter.h"

#include "pdf/TextString.h"

#include <cmath>

namespace leafwright::mupdf {

namespace {

/// An entry with the object numbers that it is linked by; 0 for none.
struct Numbered {
    const PDFOutline *entry;
    int number;
    int parent;
    int previous = 0;
    int next = 0;
    int first = 0;
    int last = 0;
};

/// A coordinate that every reader can read. MuPDF writes a large one without a decimal point, and readers
/// that take it for an integer lose the whole entry, and with it all behind it, when it is too large for one.
double writableCoordinate(double value) {
    constexpr double farthest = 1e9;
    return std::isnan(value) ? 0 : std::clamp(value, -farthest, farthest);
}

/// Gives every entry below the root an object number: siblings in a row, parents before their children.
std::vector<Numbered> number(Reader &reader, const PDFOutline &root) {
    fz_context *ctx = reader.context();
    pdf_document *doc = reader.document();
    const auto newNumber = [&] { return guarded(ctx, [&] { return pdf_create_object(ctx, doc); }); };
    std::vector<Numbered> entries{{&root, newNumber(), 0}};
    for (size_t i = 0; i < entries.size(); ++i) {
        const PDFOutline &parent = *entries[i].entry;
        for (int k = 0; k < parent.numberOfChildren(); ++k) {
            Numbered child{&parent.childAtIndex(k), newNumber(), entries[i].number};
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
    return entries;
}

class Writer {
public:
    explicit Writer(Reader &reader) : reader_(reader), ctx_(reader.context()), doc_(reader.document()) {}

    void write(const Numbered &numbered, bool isRoot) const {
        const PDFOutline &entry = *numbered.entry;
        const int children = entry.numberOfChildren();
        const Object dictionary = newDictionary(isRoot ? 4 : 8);
        if (isRoot) {
            put([&] { pdf_dict_put(ctx_, dictionary.get(), PDF_NAME(Type), PDF_NAME(Outlines)); });
        } else {
            const QByteArray title = encodeTextString(entry.label());
            put([&] {
                pdf_dict_put_string(ctx_, dictionary.get(), PDF_NAME(Title), title.constData(),
                                    static_cast<size_t>(title.size()));
            });
            putTarget(dictionary, entry);
        }
        putReference(dictionary, PDF_NAME(Parent), numbered.parent);
        putReference(dictionary, PDF_NAME(Prev), numbered.previous);
        putReference(dictionary, PDF_NAME(Next), numbered.next);
        putReference(dictionary, PDF_NAME(First), numbered.first);
        putReference(dictionary, PDF_NAME(Last), numbered.last);
        // Negative for a closed entry; the root counts what is visible: its own children.
        if (isRoot || children > 0) {
            put([&] {
                pdf_dict_put_int(ctx_, dictionary.get(), PDF_NAME(Count), isRoot ? children : -children);
            });
        }
        put([&] { pdf_update_object(ctx_, doc_, numbered.number, dictionary.get()); });
    }

    void setCatalogOutline(int rootNumber) const {
        const Object catalog = reader_.catalog();
        if (!catalog.isDict()) throw Error("the file has no catalog");
        putReference(catalog, PDF_NAME(Outlines), rootNumber);
    }

private:
    template <typename Body>
    void put(Body &&body) const {
        guarded(ctx_, std::forward<Body>(body));
    }

    Object newDictionary(int capacity) const {
        pdf_obj *raw = guarded(ctx_, [&] { return pdf_new_dict(ctx_, doc_, capacity); });
        Object object(ctx_, raw);
        pdf_drop_obj(ctx_, raw);
        return object;
    }

    void putReference(const Object &dictionary, pdf_obj *key, int number) const {
        if (number == 0) return;
        put([&] { pdf_dict_put_drop(ctx_, dictionary.get(), key, pdf_new_indirect(ctx_, doc_, number, 0)); });
    }

    void putTarget(const Object &dictionary, const PDFOutline &entry) const {
        if (const auto &destination = entry.destination()) {
            putDestination(dictionary, *destination);
        } else if (const int foreign = entry.foreignEntry()) {
            pdf_obj *raw = guarded(ctx_, [&] { return pdf_new_indirect(ctx_, doc_, foreign, 0); });
            const Object action = Object(ctx_, raw).get(PDF_NAME(A));
            pdf_drop_obj(ctx_, raw);
            if (action) put([&] { pdf_dict_put(ctx_, dictionary.get(), PDF_NAME(A), action.get()); });
        }
    }

    void putDestination(const Object &dictionary, const PDFDestination &destination) const {
        if (destination.pageIndex < 0 || destination.pageIndex >= reader_.pages().count()) return;
        const Object page = reader_.page(destination.pageIndex);
        const double x = writableCoordinate(destination.point.x());
        const double y = writableCoordinate(destination.point.y());
        put([&] {
            pdf_obj *array = pdf_dict_put_array(ctx_, dictionary.get(), PDF_NAME(Dest), 5);
            // A page that is no object of its own can only be told by its index.
            if (page.isIndirect()) {
                pdf_array_push(ctx_, array, page.get());
            } else {
                pdf_array_push_int(ctx_, array, destination.pageIndex);
            }
            pdf_array_push(ctx_, array, PDF_NAME(XYZ));
            pdf_array_push_real(ctx_, array, x);
            pdf_array_push_real(ctx_, array, y);
            pdf_array_push(ctx_, array, PDF_NULL);
        });
    }

    Reader &reader_;
    fz_context *ctx_;
    pdf_document *doc_;
};

}  // namespace

void installOutline(Reader &reader, const PDFOutline &root) {
    const Writer writer(reader);
    const std::vector<Numbered> entries = number(reader, root);
    for (size_t i = 0; i < entries.size(); ++i)
        writer.write(entries[i], i == 0);
    writer.setCatalogOutline(entries.front().number);
}

}  // namespace leafwright::mupdf
