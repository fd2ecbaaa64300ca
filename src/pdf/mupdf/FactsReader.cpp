#include "pdf/mupdf/FactsReader.h"

#include "pdf/PageLabels.h"
#include "pdf/TextString.h"
#include "pdf/mupdf/ObjectPeek.h"
#include "pdf/mupdf/Walk.h"

namespace leafwright::mupdf {

namespace {

Rect intersection(const Rect &a, const Rect &b) {
    const double left = std::max(a.x, b.x);
    const double bottom = std::max(a.y, b.y);
    return {left, bottom, std::min(a.right(), b.right()) - left, std::min(a.top(), b.top()) - bottom};
}

qsizetype bytesOf(const QString &text) {
    return text.size() * qsizetype{sizeof(QChar)};
}

PageLabelStyle styleNamed(const QByteArray &name) {
    if (name == "D") return PageLabelStyle::Decimal;
    if (name == "R") return PageLabelStyle::UpperRoman;
    if (name == "r") return PageLabelStyle::LowerRoman;
    if (name == "A") return PageLabelStyle::UpperLetters;
    if (name == "a") return PageLabelStyle::LowerLetters;
    return PageLabelStyle::None;
}

PageLabelRange labelRange(int firstPage, const Object &label) {
    PageLabelRange range;
    range.firstPage = firstPage;
    range.style = styleNamed(label.get(PDF_NAME(S)).toName());
    range.prefix = decodeTextString(label.get(PDF_NAME(P)).toBytes());
    if (const Object start = label.get("St"); start.isInt()) range.start = std::max(1, start.toInt());
    return range;
}

/// The labelling ranges from the catalog's number tree (ISO 32000-1, 7.9.7 and 12.4.2).
std::vector<PageLabelRange> readLabelRanges(const Object &catalog, Walk &walk) {
    std::vector<PageLabelRange> ranges;
    std::vector<Object> pending{catalog.get("PageLabels")};
    while (!pending.empty()) {
        const Object node = std::move(pending.back());
        pending.pop_back();
        if (!walk.enter(node)) continue;
        const Object kids = node.get(PDF_NAME(Kids));
        if (kids.isArray() && walk.enter(kids)) {
            for (int i = 0; i < kids.size(); ++i)
                pending.push_back(kids.at(i));
        }
        const Object numbers = node.get(PDF_NAME(Nums));
        if (!numbers.isArray() || !walk.enter(numbers)) continue;
        for (int i = 0; i + 1 < numbers.size(); i += 2) {
            walk.step();
            const Object label = numbers.at(i + 1);
            if (!numbers.at(i).isInt() || !label.isDict()) continue;
            ranges.push_back(labelRange(numbers.at(i).toInt(), label));
            walk.keep(bytesOf(ranges.back().prefix));
        }
    }
    return ranges;
}

/// Whether some field of the form holds a signature (ISO 32000-1, 12.8.1), or the catalog refers to one.
bool holdsSignature(const Object &catalog) {
    if (catalog.get(PDF_NAME(Perms)).get(PDF_NAME(DocMDP)) || catalog.get(PDF_NAME(Perms)).get("UR3"))
        return true;
    Walk walk;
    std::vector<Object> pending{catalog.get(PDF_NAME(AcroForm)).get(PDF_NAME(Fields))};
    while (!pending.empty()) {
        const Object fields = std::move(pending.back());
        pending.pop_back();
        if (!fields.isArray() || !walk.enter(fields)) continue;
        for (int i = 0; i < fields.size(); ++i) {
            const Object field = fields.at(i);
            if (!walk.enter(field)) continue;
            if (field.inherited(PDF_NAME(FT)).toName() == "Sig" && field.get(PDF_NAME(V)).isDict())
                return true;
            if (const Object kids = field.get(PDF_NAME(Kids))) pending.push_back(kids);
        }
    }
    return false;
}

/// The later of the header's version and the catalog's (ISO 32000-1, 7.5.2).
PDFVersion readVersion(Reader &reader, const Object &catalog) {
    // The header's; MuPDF's own pdf_version() has the catalog win, even with nonsense.
    int version = reader.document()->version;
    const QList<QByteArray> parts = catalog.get(PDF_NAME(Version)).toName().split('.');
    if (parts.size() == 2) version = std::max(version, parts[0].toInt() * 10 + parts[1].toInt());
    return {version / 10, version % 10};
}

}  // namespace

Rect rectOf(const Object &array) {
    if (!array.isArray() || array.size() < 4) return {};
    const auto [left, right] = std::minmax({array.at(0).toNumber(), array.at(2).toNumber()});
    const auto [bottom, top] = std::minmax({array.at(1).toNumber(), array.at(3).toNumber()});
    return {left, bottom, right - left, top - bottom};
}

PageGeometry geometryOf(const Object &page) {
    PageGeometry geometry;
    geometry.mediaBox = rectOf(page.inherited(PDF_NAME(MediaBox)));
    if (geometry.mediaBox.isEmpty()) geometry.mediaBox = {0, 0, 612, 792};
    geometry.cropBox = intersection(rectOf(page.inherited(PDF_NAME(CropBox))), geometry.mediaBox);
    if (geometry.cropBox.isEmpty()) geometry.cropBox = geometry.mediaBox;
    const int rotation = page.inherited(PDF_NAME(Rotate)).toInt();
    if (rotation % 90 == 0) geometry.rotation = ((rotation % 360) + 360) % 360;
    return geometry;
}

PDFFacts readFacts(Reader &reader) {
    const Object catalog = reader.catalog();
    PDFFacts facts;
    facts.version = readVersion(reader, catalog);
    facts.locked = reader.isLocked();
    facts.unlocked = reader.isUnlocked();
    facts.encrypted = reader.isEncrypted();
    return facts;
}

bool isSigned(Reader &reader) {
    return holdsSignature(reader.catalog());
}

bool hasOutline(Reader &reader) {
    return reader.catalog().get(PDF_NAME(Outlines)).get(PDF_NAME(First)).isDict();
}

std::optional<std::vector<PageGeometry>> readGeometry(Reader &reader) {
    const int count = reader.pages().count();
    std::vector<PageGeometry> geometry;
    geometry.reserve(count);
    ObjectPeek peek(reader);
    for (int i = 0; i < count; ++i) {
        try {
            const Object page = peek.object(reader.page(i));
            if (!isPage(page)) return std::nullopt;
            geometry.push_back(geometryOf(page));
        } catch (const ReadProblem &) {
            geometry.push_back(geometryOf(Object()));
        }
    }
    return geometry;
}

std::vector<QString> readLabels(Reader &reader) {
    Walk walk;
    return pageLabels(readLabelRanges(reader.catalog(), walk), reader.pages().count(),
                      [&walk](const QString &label) { walk.keep(bytesOf(label)); });
}

}  // namespace leafwright::mupdf
