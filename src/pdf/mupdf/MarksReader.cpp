#include "pdf/mupdf/MarksReader.h"

#include "pdf/TextString.h"
#include "pdf/mupdf/DestinationReader.h"
#include "pdf/mupdf/StructureReader.h"
#include "pdf/mupdf/TextRunner.h"

#include <tuple>

namespace leafwright::mupdf {

namespace {

/// No document has more names than this in good faith.
constexpr size_t mostNames = 200'000;
constexpr size_t mostMarks = 65'535;

std::vector<NamedDestination> readNames(Reader &reader) {
    std::vector<NamedDestination> names;
    DestinationReader &destinations = reader.destinations();
    const QHash<QByteArray, Object> &all = destinations.names();
    for (auto name = all.begin(); name != all.end() && names.size() < mostNames; ++name) {
        if (const auto place = destinations.placeOf(name.value()))
            names.push_back({decodeTextString(name.key()), *place});
    }
    std::sort(names.begin(), names.end(), [](const NamedDestination &a, const NamedDestination &b) {
        const auto key = [](const NamedDestination &n) {
            return std::tuple(n.destination.pageIndex, -n.destination.point.y(), n.destination.point.x());
        };
        return std::tuple_cat(key(a), std::tie(a.name)) < std::tuple_cat(key(b), std::tie(b.name));
    });
    return names;
}

void append(QString &text, int code) {
    if (code <= 0) return;
    const auto character = static_cast<char32_t>(code);
    const bool letter =
        code >= ' ' && code <= int{QChar::LastValidCodePoint} && !QChar::isSurrogate(character);
    text += QChar::fromUcs4(letter ? character : U' ');
}

}  // namespace

DocumentMarks readMarks(Reader &reader) {
    const Object information = reader.trailer().get(PDF_NAME(Info));
    DocumentMarks marks;
    marks.hasPageLabels = reader.catalog().get("PageLabels").isDict();
    marks.producer = decodeTextString(information.get(PDF_NAME(Producer)).toBytes());
    marks.creator = decodeTextString(information.get("Creator").toBytes());
    marks.names = readNames(reader);
    marks.structure = readStructure(reader);
    return marks;
}

std::vector<QString> readMarkedText(Reader &reader, int pageIndex, std::vector<int> identifiers) {
    std::vector<QString> texts(identifiers.size());
    if (identifiers.size() > mostMarks) identifiers.resize(mostMarks);
    const StructuredText source(reader, pageIndex, {.colours = false, .marks = identifiers});
    for (const fz_stext_block *block = source.page()->first_block; block; block = block->next) {
        if (block->type != FZ_STEXT_BLOCK_TEXT) continue;
        for (const fz_stext_line *line = block->u.t.first_line; line; line = line->next) {
            int last = 0;
            for (const fz_stext_char *character = line->first_char; character; character = character->next) {
                const int mark = character->color;
                if (mark <= 0 || static_cast<size_t>(mark) > identifiers.size()) continue;
                QString &text = texts[static_cast<size_t>(mark) - 1];
                if (mark != std::exchange(last, mark) && !text.isEmpty()) text += u' ';
                append(text, character->c);
            }
        }
    }
    return texts;
}

}  // namespace leafwright::mupdf
