#include "pdf/mupdf/TextExtractor.h"

#include "pdf/FontName.h"
#include "pdf/mupdf/FontReading.h"

#include <cmath>

namespace leafwright::mupdf {

namespace {

double rounded(double value) {
    return std::round(value * 100) / 100;
}

/// Builds a page's text from MuPDF's lines of characters.
class TextBuilder {
public:
    TextBuilder(fz_context *ctx, const StructuredText &source, FaceTable &faces, std::vector<Rect> *boxes)
        : source_(source), boxes_(boxes), sizeScale_(fz_matrix_expansion(source.toPageSpace())) {
        fallback_ = faces.face(QByteArrayLiteral("Unknown"), 0);
        for (const SeenFont &seen : source.fonts()) {
            faces_.emplace_back(seen.font, faces.face(baseFontOf(seen), traitsOf(ctx, seen)));
        }
        for (const fz_stext_block *block = source.page()->first_block; block; block = block->next) {
            if (block->type != FZ_STEXT_BLOCK_TEXT) continue;
            for (const fz_stext_line *line = block->u.t.first_line; line; line = line->next)
                addLine(*line);
        }
    }

    PageText take() {
        for (const fz_rect &bounds : runBounds_)
            text_.runBounds.push_back(toPageSpace(bounds));
        return std::move(text_);
    }

private:
    void addLine(const fz_stext_line &line) {
        if (!line.first_char) return;
        for (const fz_stext_char *character = line.first_char; character; character = character->next) {
            addCharacter(*character);
        }
        append(QStringView(u"\n"), fz_empty_rect);
    }

    void addCharacter(const fz_stext_char &character) {
        if (character.c <= 0) return;
        auto code = static_cast<char32_t>(character.c);
        if (code > QChar::LastValidCodePoint || QChar::isSurrogate(code)) code = QChar::ReplacementCharacter;
        if (code < u' ') code = u' ';
        const bool blank = QChar::isSpace(code);
        // A blank belongs to the word before it, in whatever font the producer happened to set it.
        if (!blank || text_.attributedString.runs.empty()) selectFont(character);
        const auto utf16 = QChar::fromUcs4(code);
        append(utf16, fz_rect_from_quad(character.quad));
    }

    void selectFont(const fz_stext_char &character) {
        if (character.font == rawFont_ && character.size == rawSize_) return;
        rawFont_ = character.font;
        rawSize_ = character.size;
        font_ = Font(faceOf(character.font), rounded(double{character.size} * sizeScale_));
    }

    std::shared_ptr<const FontFace> faceOf(const fz_font *font) const {
        for (const auto &[seen, face] : faces_) {
            if (seen == font) return face;
        }
        return fallback_;
    }

    void append(QStringView characters, const fz_rect &box) {
        AttributedString &text = text_.attributedString;
        const int length = static_cast<int>(characters.size());
        if (!text.runs.empty() && text.runs.back().font == font_) {
            text.runs.back().range.length += length;
            runBounds_.back() = fz_union_rect(runBounds_.back(), box);
        } else {
            text.runs.push_back({{static_cast<int>(text.string.size()), length}, font_});
            runBounds_.push_back(box);
        }
        text.string += characters;
        if (boxes_) boxes_->insert(boxes_->end(), length, toPageSpace(box));
    }

    Rect toPageSpace(const fz_rect &rect) const {
        if (fz_is_empty_rect(rect)) return {};
        const fz_rect r = fz_transform_rect(rect, source_.toPageSpace());
        const double left = rounded(r.x0);
        const double bottom = rounded(r.y0);
        return {left, bottom, rounded(rounded(r.x1) - left), rounded(rounded(r.y1) - bottom)};
    }

    const StructuredText &source_;
    std::vector<Rect> *boxes_;
    double sizeScale_;
    std::vector<std::pair<const fz_font *, std::shared_ptr<const FontFace>>> faces_;
    std::shared_ptr<const FontFace> fallback_;
    const fz_font *rawFont_ = nullptr;
    float rawSize_ = 0;
    Font font_;
    PageText text_;
    std::vector<fz_rect> runBounds_;
};

}  // namespace

std::shared_ptr<const FontFace> FaceTable::face(const QByteArray &baseFont, FontTraits traits) {
    const QByteArray key = baseFont + '\0' + QByteArray::number(traits);
    const std::lock_guard lock(mutex_);
    std::shared_ptr<const FontFace> &face = faces_[key];
    if (!face) face = std::make_shared<const FontFace>(fontFaceFromBaseFont(baseFont, traits));
    return face;
}

PageText extractText(Reader &reader, FaceTable &faces, int pageIndex, std::vector<Rect> *boxes) {
    const StructuredText source(reader, pageIndex);
    return TextBuilder(reader.context(), source, faces, boxes).take();
}

}  // namespace leafwright::mupdf
