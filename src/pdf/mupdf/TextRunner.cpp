#include "pdf/mupdf/TextRunner.h"

#include "pdf/mupdf/TimeLimit.h"

#include <QLoggingCategory>

#include <cstring>

namespace leafwright::mupdf {

namespace {

Q_LOGGING_CATEGORY(log, "leafwright.pagetext", QtWarningMsg)

/// A font as the content selects it: plain data, since it is recorded amid MuPDF's calls.
struct RecordedFont {
    fz_font *font;        // kept
    pdf_obj *dictionary;  // kept, or null
    char resourceName[64];
    int flags;
    float italicAngle;
};

/// Listens in on MuPDF's content interpreter for the fonts it selects, together with the resource
/// dictionary each was found in: MuPDF keeps only the first 31 bytes of a font's name.
class FontListener {
public:
    FontListener(pdf_processor *processor, pdf_obj *resources)
        : selectFont_(processor->op_Tf),
          showForm_(processor->op_Do_form),
          beginState_(processor->op_gs_begin),
          endState_(processor->op_gs_end),
          resources_(resources),
          outer_(current) {
        processor->op_Tf = onSelectFont;
        processor->op_Do_form = onShowForm;
        processor->op_gs_begin = onBeginState;
        processor->op_gs_end = onEndState;
        current = this;
    }
    ~FontListener() { current = outer_; }
    FontListener(const FontListener &) = delete;
    FontListener &operator=(const FontListener &) = delete;

    const std::vector<RecordedFont> &fonts() const { return fonts_; }

private:
    static void onSelectFont(fz_context *ctx, pdf_processor *processor, const char *name, pdf_font_desc *font,
                             float size) {
        if (font) current->record(ctx, name, font);
        current->selectFont_(ctx, processor, name, font, size);
    }

    static void onShowForm(fz_context *ctx, pdf_processor *processor, const char *name, pdf_obj *form,
                           pdf_obj *pageResources) {
        FontListener *const listener = current;
        pdf_obj *const outer = listener->resources_;
        pdf_obj *const own = pdf_dict_gets(ctx, form, "Resources");
        listener->resources_ = own ? own : pageResources;
        runThenAlways(
            ctx, [&] { listener->showForm_(ctx, processor, name, form, pageResources); },
            [&] { listener->resources_ = outer; });
    }

    static void onBeginState(fz_context *ctx, pdf_processor *processor, const char *name, pdf_obj *state) {
        current->state_ = state;
        if (current->beginState_) current->beginState_(ctx, processor, name, state);
    }

    static void onEndState(fz_context *ctx, pdf_processor *processor) {
        current->state_ = nullptr;
        if (current->endState_) current->endState_(ctx, processor);
    }

    /// The dictionary of the font selected: by name, or by the graphics state that is being set.
    pdf_obj *dictionaryOf(fz_context *ctx, const char *name) const {
        if (state_) return pdf_array_get(ctx, pdf_dict_get(ctx, state_, PDF_NAME(Font)), 0);
        return pdf_dict_gets(ctx, pdf_dict_get(ctx, resources_, PDF_NAME(Font)), name ? name : "");
    }

    void record(fz_context *ctx, const char *name, const pdf_font_desc *font) {
        for (const RecordedFont &known : fonts_) {
            if (known.font == font->font) return;
        }
        RecordedFont recorded{fz_keep_font(ctx, font->font),
                              pdf_keep_obj(ctx, dictionaryOf(ctx, name)),
                              {},
                              font->flags,
                              font->italic_angle};
        if (name) std::strncpy(recorded.resourceName, name, sizeof recorded.resourceName - 1);
        if (!add(recorded)) {
            fz_drop_font(ctx, recorded.font);
            pdf_drop_obj(ctx, recorded.dictionary);
            Context::of(ctx).noteOutOfMemory();
            fz_throw(ctx, FZ_ERROR_MEMORY, "no memory for a font");
        }
    }

    /// Whether there was memory for it: nothing may be thrown through MuPDF.
    bool add(const RecordedFont &font) noexcept {
        try {
            fonts_.push_back(font);
            return true;
        } catch (const std::bad_alloc &) {
            return false;
        }
    }

    static thread_local FontListener *current;

    decltype(pdf_processor::op_Tf) selectFont_;
    decltype(pdf_processor::op_Do_form) showForm_;
    decltype(pdf_processor::op_gs_begin) beginState_;
    decltype(pdf_processor::op_gs_end) endState_;
    pdf_obj *resources_;        // borrowed from the page or form being run
    pdf_obj *state_ = nullptr;  // borrowed, while it is being set
    FontListener *outer_;
    std::vector<RecordedFont> fonts_;
};

thread_local FontListener *FontListener::current = nullptr;

/// Gives the characters of marked content a colour that says which it is. It takes the place of the colours
/// that the content sets, so those operators must be taken out.
class MarkColours {
public:
    /// @param marks must outlive this
    MarkColours(pdf_processor *processor, const std::vector<int> &marks)
        : marks_(marks),
          setColour_(processor->op_rg),
          begin_(processor->op_BMC),
          beginWithProperties_(processor->op_BDC),
          end_(processor->op_EMC),
          restore_(processor->op_Q),
          outer_(current) {
        processor->op_BMC = onBegin;
        processor->op_BDC = onBeginWithProperties;
        processor->op_EMC = onEnd;
        processor->op_Q = onRestore;
        current = this;
    }
    ~MarkColours() { current = outer_; }
    MarkColours(const MarkColours &) = delete;
    MarkColours &operator=(const MarkColours &) = delete;

private:
    /// Content that is nested deeper counts as part of what is around it.
    static constexpr int deepest = 256;

    static void onBegin(fz_context *ctx, pdf_processor *processor, const char *tag) {
        current->enter(current->colour());
        if (current->begin_) current->begin_(ctx, processor, tag);
    }

    static void onBeginWithProperties(fz_context *ctx, pdf_processor *processor, const char *tag,
                                      pdf_obj *raw, pdf_obj *properties) {
        pdf_obj *const identifier = pdf_dict_gets(ctx, properties, "MCID");
        current->enter(pdf_is_int(ctx, identifier) ? current->colourOf(pdf_to_int(ctx, identifier))
                                                   : current->colour());
        if (current->beginWithProperties_)
            current->beginWithProperties_(ctx, processor, tag, raw, properties);
        current->apply(ctx, processor);
    }

    static void onEnd(fz_context *ctx, pdf_processor *processor) {
        if (current->depth_ > 0) --current->depth_;
        if (current->end_) current->end_(ctx, processor);
        current->apply(ctx, processor);
    }

    static void onRestore(fz_context *ctx, pdf_processor *processor) {
        current->restore_(ctx, processor);
        current->apply(ctx, processor);
    }

    int colour() const { return depth_ > 0 ? colours_[std::min(depth_, deepest) - 1] : 0; }

    int colourOf(int identifier) const {
        const auto found = std::find(marks_.begin(), marks_.end(), identifier);
        return found == marks_.end() ? 0 : static_cast<int>(found - marks_.begin()) + 1;
    }

    void enter(int colour) {
        if (depth_ < deepest) colours_[depth_] = colour;
        ++depth_;
    }

    void apply(fz_context *ctx, pdf_processor *processor) const {
        // A quarter more than the whole number comes back as that number, rounded or cut off.
        const auto part = [](int value) { return (static_cast<float>(value) + 0.25F) / 255; };
        const int number = colour();
        setColour_(ctx, processor, 0, part(number >> 8), part(number & 0xff));
    }

    static thread_local MarkColours *current;

    const std::vector<int> &marks_;
    decltype(pdf_processor::op_rg) setColour_;
    decltype(pdf_processor::op_BMC) begin_;
    decltype(pdf_processor::op_BDC) beginWithProperties_;
    decltype(pdf_processor::op_EMC) end_;
    decltype(pdf_processor::op_Q) restore_;
    int colours_[deepest] = {};  // of the marked content that is open
    int depth_ = 0;
    MarkColours *outer_;
};

thread_local MarkColours *MarkColours::current = nullptr;

/// Passes over patterns as colours: text that is painted with one keeps the colour from before.
class PatternFilter {
public:
    explicit PatternFilter(pdf_processor *processor) : setColourSpace_(processor->op_cs), outer_(current) {
        processor->op_cs = onSetColourSpace;
        current = this;
    }
    ~PatternFilter() { current = outer_; }
    PatternFilter(const PatternFilter &) = delete;
    PatternFilter &operator=(const PatternFilter &) = delete;

private:
    static void onSetColourSpace(fz_context *ctx, pdf_processor *processor, const char *name,
                                 fz_colorspace *space) {
        if (space) current->setColourSpace_(ctx, processor, name, space);
    }

    static thread_local PatternFilter *current;

    decltype(pdf_processor::op_cs) setColourSpace_;
    PatternFilter *outer_;
};

thread_local PatternFilter *PatternFilter::current = nullptr;

void dropColours(pdf_processor *p) {
    p->op_CS = p->op_cs = nullptr;
    p->op_SC_color = p->op_sc_color = nullptr;
    p->op_G = p->op_g = nullptr;
    p->op_RG = p->op_rg = nullptr;
    p->op_K = p->op_k = nullptr;
}

/// An operator without a handler is passed over by the interpreter, its operands unread.
void keepOnlyText(pdf_processor *p) {
    p->op_gs_BM = nullptr;
    p->op_gs_ca = nullptr;
    p->op_gs_CA = nullptr;
    p->op_gs_SMask = nullptr;
    p->op_m = p->op_l = nullptr;
    p->op_c = nullptr;
    p->op_v = p->op_y = nullptr;
    p->op_h = nullptr;
    p->op_re = nullptr;
    p->op_S = p->op_s = p->op_F = p->op_f = p->op_fstar = nullptr;
    p->op_B = p->op_Bstar = p->op_b = p->op_bstar = p->op_n = nullptr;
    p->op_W = p->op_Wstar = nullptr;
    p->op_SC_pattern = p->op_sc_pattern = nullptr;
    p->op_SC_shade = p->op_sc_shade = nullptr;
    p->op_BI = nullptr;
    p->op_sh = nullptr;
    p->op_Do_image = nullptr;
}

}  // namespace

StructuredText::StructuredText(Reader &reader, int pageIndex, const TextRunOptions &options)
    : ctx_(reader.context()) {
    const Object page = reader.page(pageIndex);
    fz_matrix toDevice = fz_identity;
    page_ = guarded(ctx_, [&] {
        fz_rect visible = fz_empty_rect;
        pdf_page_obj_transform(ctx_, page.get(), &visible, &toDevice);
        return fz_new_stext_page(ctx_, fz_transform_rect(visible, toDevice));
    });
    toPageSpace_ = fz_invert_matrix(toDevice);
    if (!run(reader, page, toDevice, options)) Context::of(ctx_).noteSlowPage(pageIndex + 1);
}

bool StructuredText::run(Reader &reader, const Object &page, fz_matrix toDevice,
                         const TextRunOptions &options) {
    const Object resources = page.inherited(PDF_NAME(Resources));
    const Object contents = page.get(PDF_NAME(Contents));
    fz_stext_options clipped{};
    clipped.flags = FZ_STEXT_MEDIABOX_CLIP;
    fz_device *device = guarded(ctx_, [&] { return fz_new_stext_device(ctx_, page_, &clipped); });
    fz_cookie cookie{};
    const TimeLimit limit(cookie, options.longest);
    pdf_processor *processor = nullptr;
    try {
        processor = guarded(ctx_, [&] {
            return pdf_new_run_processor(ctx_, device, toDevice, "View", nullptr, nullptr, &cookie);
        });
        FontListener listener(processor, resources.get());
        std::optional<MarkColours> marks;
        if (!options.marks.empty()) marks.emplace(processor, options.marks);
        keepOnlyText(processor);
        std::optional<PatternFilter> patterns;
        if (options.colours) {
            patterns.emplace(processor);
        } else {
            dropColours(processor);
        }
        try {
            guarded(ctx_, [&] {
                // With the cookie, the time is looked at between all operators: each may load a font.
                pdf_process_contents(ctx_, processor, reader.document(), resources.get(), contents.get(),
                                     &cookie);
                pdf_close_processor(ctx_, processor);
                fz_close_device(ctx_, device);
            });
        } catch (const Error &error) {
            qCDebug(log, "page content ends early: %s", error.what());
        }
        for (const RecordedFont &font : listener.fonts()) {
            keptFonts_.push_back(font.font);
            fonts_.push_back(
                {font.font, Object(ctx_, font.dictionary), font.resourceName, font.flags, font.italicAngle});
            pdf_drop_obj(ctx_, font.dictionary);
        }
    } catch (const Error &error) {
        qCDebug(log, "page content can't be read: %s", error.what());
    }
    pdf_drop_processor(ctx_, processor);
    fz_drop_device(ctx_, device);
    return !limit.isOver();
}

StructuredText::~StructuredText() {
    for (fz_font *font : keptFonts_)
        fz_drop_font(ctx_, font);
    fz_drop_stext_page(ctx_, page_);
}

}  // namespace leafwright::mupdf
