#include "pdf/mupdf/SpanReader.h"

#include "pdf/PageTransform.h"
#include "pdf/mupdf/FactsReader.h"
#include "pdf/mupdf/FontReading.h"

#include <cmath>

namespace leafwright::mupdf {

namespace {

/// Far more than can be read on a page; what is beyond would only take memory.
constexpr int mostCharacters = 200'000;

/// A raised or lowered character begins a span of its own from this part of the size on. Letters that belong
/// to a word, as in the names of typesetting systems, are moved by less.
constexpr double largestShift = 0.4;

/// Accents that the typesetter drew as characters of their own, at any height.
bool isAccent(char32_t code) {
    if (code < 0x80) return code == u'^' || code == u'`';
    switch (QChar::category(code)) {
        case QChar::Mark_NonSpacing:
        case QChar::Mark_Enclosing:
        case QChar::Symbol_Modifier:
        case QChar::Letter_Modifier:
            return true;
        default:
            return false;
    }
}

/// From the space of the structured text to the page as it is shown.
fz_matrix toShown(const StructuredText &text, const PageGeometry &geometry) {
    const PageTransform transform(geometry.cropBox, geometry.rotation);
    const QPointF o = transform.toShown(QPointF(0, 0));
    const QPointF x = transform.toShown(QPointF(1, 0)) - o;
    const QPointF y = transform.toShown(QPointF(0, 1)) - o;
    const auto single = [](double value) { return static_cast<float>(value); };
    return fz_concat(text.toPageSpace(), fz_make_matrix(single(x.x()), single(x.y()), single(y.x()),
                                                        single(y.y()), single(o.x()), single(o.y())));
}

/// A font as the spans have it.
struct SpanFont {
    QString name;
    bool bold = false;
    bool italic = false;
    bool mono = false;
};

/// Cuts MuPDF's lines of characters into spans.
class SpanBuilder {
public:
    SpanBuilder(fz_context *ctx, const StructuredText &source, const PageGeometry &geometry)
        : toShown_(leafwright::mupdf::toShown(source, geometry)),
          sizeScale_(fz_matrix_expansion(source.toPageSpace())) {
        for (const SeenFont &seen : source.fonts()) {
            const FontTraits traits = traitsOf(ctx, seen);
            auto *const face = const_cast<fz_font *>(seen.font);  // MuPDF's getters do not take const
            fonts_.emplace_back(seen.font,
                                SpanFont{QString::fromUtf8(baseFontOf(seen)), (traits & BoldTrait) != 0,
                                         (traits & ItalicTrait) != 0, fz_font_is_monospaced(ctx, face) != 0});
        }
        for (const fz_stext_block *block = source.page()->first_block; block; block = block->next) {
            if (block->type != FZ_STEXT_BLOCK_TEXT) continue;
            for (const fz_stext_line *line = block->u.t.first_line; line; line = line->next)
                addLine(*line);
        }
    }

    std::vector<TextSpan> take() { return std::move(spans_); }

private:
    void addLine(const fz_stext_line &line) {
        const fz_point direction = fz_normalize_vector(fz_transform_vector(line.dir, toShown_));
        direction_ = {double{direction.x}, double{direction.y}};
        for (const fz_stext_char *character = line.first_char; character; character = character->next) {
            if (characters_ >= mostCharacters) break;
            addCharacter(*character);
        }
        endSpan();
    }

    /// Whether the line runs up or down.
    bool isVertical() const { return std::abs(direction_.y()) > std::abs(direction_.x()); }

    void addCharacter(const fz_stext_char &character) {
        if (character.c <= 0) return;
        auto code = static_cast<char32_t>(character.c);
        if (code > QChar::LastValidCodePoint || QChar::isSurrogate(code)) code = QChar::ReplacementCharacter;
        const bool blank = code < u' ' || QChar::isSpace(code);
        if (blank && text_.isEmpty()) return;
        // Producers set blanks in any font, and accents at any height.
        if (blank) return append(u' ', character, blank);
        const double height = heightOf(character.origin);
        const bool accent = isAccent(code);
        if (!continues(character, accent, height)) beginSpan(character);
        append(code, character, blank);
        if (!accent) heights_.push_back(height);
    }

    /// How far below the page's top a point is, or right of its left edge where text runs up or down.
    double heightOf(const fz_point &origin) const {
        const fz_point shown = fz_transform_point(origin, toShown_);
        return double{shown.y} * direction_.x() - double{shown.x} * direction_.y();
    }

    bool continues(const fz_stext_char &character, bool accent, double height) const {
        if (text_.isEmpty() || character.font != font_ || character.size != size_ ||
            character.color != color_)
            return false;
        return accent || heights_.empty() || std::abs(height - heights_.front()) <= largestShift * span_.size;
    }

    void beginSpan(const fz_stext_char &character) {
        endSpan();
        font_ = character.font;
        size_ = character.size;
        color_ = character.color;
        const auto known = std::find_if(fonts_.begin(), fonts_.end(),
                                        [this](const auto &font) { return font.first == font_; });
        if (known != fonts_.end()) {
            const SpanFont &font = known->second;
            span_.fontName = font.name;
            span_.bold = font.bold;
            span_.italic = font.italic;
            span_.mono = font.mono;
        }
        span_.size = double{size_} * sizeScale_;
        span_.direction = direction_;
        span_.color = static_cast<quint32>(color_) | 0xff000000U;
        const fz_point origin = fz_transform_point(character.origin, toShown_);
        span_.baseline = double{isVertical() ? origin.x : origin.y};
        box_ = fz_empty_rect;
    }

    void append(char32_t code, const fz_stext_char &character, bool blank) {
        const fz_rect box = boxOf(character.quad);
        const auto utf16 = QChar::fromUcs4(code);
        for (const char16_t unit : utf16) {
            text_ += QChar(unit);
            starts_.push_back(isVertical() ? box.y0 : box.x0);
        }
        if (!blank) box_ = fz_union_rect(box_, box);
        ++characters_;
    }

    /// As it is shown. Nearly all pages are shown as they are or upside down, for which there is a short way.
    fz_rect boxOf(const fz_quad &quad) const {
        const fz_rect box = fz_rect_from_quad(quad);
        if (toShown_.b != 0 || toShown_.c != 0) return fz_transform_rect(box, toShown_);
        const auto [x0, x1] =
            std::minmax({box.x0 * toShown_.a + toShown_.e, box.x1 * toShown_.a + toShown_.e});
        const auto [y0, y1] =
            std::minmax({box.y0 * toShown_.d + toShown_.f, box.y1 * toShown_.d + toShown_.f});
        return {x0, y0, x1, y1};
    }

    void endSpan() {
        if (!text_.isEmpty()) {
            span_.text = QString(text_.constData(), text_.size());
            span_.starts.assign(starts_.begin(), starts_.end());
            // What most characters stand on, since the first may be raised.
            if (!heights_.empty()) {
                const auto middle = heights_.begin() + static_cast<std::ptrdiff_t>(heights_.size() / 2);
                std::nth_element(heights_.begin(), middle, heights_.end());
                const double component = isVertical() ? -direction_.y() : direction_.x();
                // Where text runs aslant, the first one's is as good as any.
                constexpr double straight = 0.999;
                if (std::abs(component) > straight) span_.baseline = component > 0 ? *middle : -*middle;
            }
            span_.box = {double{box_.x0}, double{box_.y0}, double{box_.x1} - double{box_.x0},
                         double{box_.y1} - double{box_.y0}};
            spans_.push_back(std::move(span_));
        }
        span_ = {};
        text_.resize(0);  // which keeps the room that it has
        starts_.clear();
        heights_.clear();
    }

    fz_matrix toShown_;
    double sizeScale_;
    std::vector<std::pair<const fz_font *, SpanFont>> fonts_;
    std::vector<TextSpan> spans_;
    int characters_ = 0;
    // The line and the span that are being read.
    QPointF direction_;
    const fz_font *font_ = nullptr;
    float size_ = 0;
    int color_ = 0;
    TextSpan span_;
    QString text_;
    std::vector<float> starts_;
    fz_rect box_ = fz_empty_rect;
    std::vector<double> heights_;  // of the characters that are no accents
};

}  // namespace

std::vector<TextSpan> readSpans(Reader &reader, int pageIndex) {
    const StructuredText source(reader, pageIndex, {.colours = true});
    return SpanBuilder(reader.context(), source, geometryOf(reader.page(pageIndex))).take();
}

}  // namespace leafwright::mupdf
