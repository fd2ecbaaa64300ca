#include "pdf/mupdf/PageRenderer.h"

#include "pdf/ImageMemory.h"
#include "pdf/PageTransform.h"
#include "pdf/mupdf/FactsReader.h"
#include "pdf/mupdf/TimeLimit.h"
#include "pdf/mupdf/Walk.h"

#include <QLoggingCategory>

#include <algorithm>
#include <atomic>
#include <cmath>

namespace leafwright::mupdf {

namespace {

Q_LOGGING_CATEGORY(log, "leafwright.rendering", QtWarningMsg)

/// Pages take milliseconds. One that takes this long is made to keep us busy; what it showed by then is kept.
constexpr std::chrono::seconds longestRun(5);

/// No page needs more annotations than this to be read.
constexpr int mostAnnotations = 10'000;

fz_rect fitzRect(const Rect &rect) {
    return fz_make_rect(static_cast<float>(rect.x), static_cast<float>(rect.y),
                        static_cast<float>(rect.right()), static_cast<float>(rect.top()));
}

/// From page space to device pixels of the page as it is shown.
fz_matrix deviceMatrix(const PageGeometry &geometry, double scale) {
    const PageTransform transform(geometry.cropBox, geometry.rotation);
    const QPointF origin = transform.toShown(QPointF(0, 0));
    const QPointF x = transform.toShown(QPointF(1, 0)) - origin;
    const QPointF y = transform.toShown(QPointF(0, 1)) - origin;
    const auto scaled = [scale](double value) { return static_cast<float>(value * scale); };
    return fz_make_matrix(scaled(x.x()), scaled(x.y()), scaled(y.x()), scaled(y.y()), scaled(origin.x()),
                          scaled(origin.y()));
}

/// Whether something on the page may be blended with what is beneath it. Looks into forms within forms, each
/// once.
bool blends(const Object &page) {
    constexpr int mostForms = 1000;
    if (page.get(PDF_NAME(Group)).isDict()) return true;
    Walk walk;
    std::vector<Object> pending{page.inherited(PDF_NAME(Resources))};
    for (int looked = 0; !pending.empty() && looked < mostForms; ++looked) {
        const Object resources = std::move(pending.back());
        pending.pop_back();
        const Object states = resources.get(PDF_NAME(ExtGState));
        const bool areNew = states.isDict() && walk.enter(states);
        for (int i = 0; areNew && i < states.size(); ++i) {
            const Object mode = states.valueAt(i).get(PDF_NAME(BM));
            if (mode && mode.toName() != "Normal" && mode.toName() != "Compatible") return true;
        }
        const Object forms = resources.get(PDF_NAME(XObject));
        if (!forms.isDict() || !walk.enter(forms)) continue;
        for (int i = 0; i < forms.size(); ++i) {
            const Object form = forms.valueAt(i);
            if (!walk.enter(form)) continue;
            if (Object inner = form.get(PDF_NAME(Resources)); inner.isDict())
                pending.push_back(std::move(inner));
        }
    }
    return false;
}

/// The appearance of an annotation (ISO 32000-1, 12.5.5); null if it has none or is not to be seen.
Object appearanceOf(const Object &annotation) {
    constexpr int hidden = 2;
    constexpr int noView = 32;
    if ((annotation.get(PDF_NAME(F)).toInt() & (hidden | noView)) != 0) return {};
    if (annotation.get(PDF_NAME(Subtype)).toName() == "Popup") return {};
    Object appearance = annotation.get(PDF_NAME(AP)).get(PDF_NAME(N));
    const Object state = annotation.get(PDF_NAME(AS));
    if (!appearance.get(PDF_NAME(BBox)).isArray() && state.isName())
        appearance = appearance.get(state.toName().constData());
    return appearance.get(PDF_NAME(BBox)).isArray() ? appearance : Object();
}

/// Refuses patterns that would be painted more often than anybody can wait for: their painting, other than
/// content, does not look at the abort flag.
class PatternGuard {
public:
    /// @param visible the part that is drawn, in device pixels
    static void watch(fz_device *device, const fz_irect &visible) {
        beginTile = device->begin_tile;
        visibleArea = fz_rect_from_irect(visible);
        device->begin_tile = onBeginTile;
    }

private:
    static double sizeOf(const fz_rect &rect) {
        return (double{rect.x1} - rect.x0) * (double{rect.y1} - rect.y0);
    }

    static int onBeginTile(fz_context *ctx, fz_device *device, fz_rect area, fz_rect view, float xStep,
                           float yStep, fz_matrix matrix, int id) {
        // Patterns in good faith paint each pixel about once. A tile takes some time however small it is.
        constexpr double mostTiles = 1e6;
        constexpr double mostPixels = 1e9;
        const fz_rect seen = fz_intersect_rect(fz_transform_rect(area, matrix), visibleArea);
        if (!fz_is_empty_rect(seen)) {
            const double scale = std::abs(double{matrix.a} * matrix.d - double{matrix.b} * matrix.c);
            const double tiles = sizeOf(seen) / (scale * std::abs(double{xStep} * yStep));
            const double pixels = tiles * sizeOf(fz_transform_rect(view, matrix));
            if (!(tiles <= mostTiles) || !(pixels <= mostPixels))
                fz_throw(ctx, FZ_ERROR_GENERIC, "a pattern has too many tiles");
        }
        return beginTile(ctx, device, area, view, xStep, yStep, matrix, id);
    }

    // By thread, since the device has no room for them.
    static thread_local decltype(fz_device::begin_tile) beginTile;
    static thread_local fz_rect visibleArea;
};

thread_local decltype(fz_device::begin_tile) PatternGuard::beginTile = nullptr;
thread_local fz_rect PatternGuard::visibleArea = fz_empty_rect;

/// Draws one page on an image.
class PageRun {
public:
    PageRun(Reader &reader, const Object &page, const PageGeometry &geometry, const RenderRequest &request,
            PageImage &image, fz_cookie &cookie)
        : ctx_(reader.context()),
          reader_(reader),
          page_(page),
          resources_(page.inherited(PDF_NAME(Resources))),
          matrix_(deviceMatrix(geometry, request.scale)),
          cookie_(cookie),
          box_(fitzRect(geometry.cropBox)) {
        const QRect &clip = request.clip;
        const fz_irect area{clip.x(), clip.y(), clip.x() + clip.width(), clip.y() + clip.height()};
        const fz_irect visible = fz_intersect_irect(area, fz_round_rect(fz_transform_rect(box_, matrix_)));
        uchar *const pixels = image.bits();
        pixmap_ = guarded(ctx_, [&] {
            return fz_new_pixmap_with_bbox_and_data(ctx_, fz_device_bgr(ctx_), area, nullptr, 1, pixels);
        });
        try {
            device_ = guarded(
                ctx_, [&] { return fz_new_draw_device_with_bbox(ctx_, fz_identity, pixmap_, &visible); });
            PatternGuard::watch(device_, visible);
            loadColours();
        } catch (const Error &) {
            drop();
            throw;
        }
    }
    ~PageRun() { drop(); }
    PageRun(const PageRun &) = delete;
    PageRun &operator=(const PageRun &) = delete;

    void run() {
        const bool grouped = blends(page_);
        guarded(ctx_, [&] {
            if (!grouped) return;
            const fz_rect area = fz_transform_rect(box_, matrix_);
            fz_begin_group(ctx_, device_, area, nullptr, 1, 0, FZ_BLEND_NORMAL, 1);
        });
        const Object contents = page_.get(PDF_NAME(Contents));
        process([&](pdf_processor *processor) {
            pdf_process_contents(ctx_, processor, reader_.document(), resources_.get(), contents.get(),
                                 &cookie_);
        });
        guarded(ctx_, [&] {
            if (grouped) fz_end_group(ctx_, device_);
        });
        const Object annotations = page_.get(PDF_NAME(Annots));
        const int count = annotations.isArray() ? std::min(annotations.size(), mostAnnotations) : 0;
        for (int i = 0; i < count && !aborted(); ++i)
            drawAnnotation(annotations.at(i));
        guarded(ctx_, [&] { fz_close_device(ctx_, device_); });
    }

private:
    bool aborted() const { return std::atomic_ref(cookie_.abort).load() != 0; }

    void loadColours() {
        colours_ = guarded(ctx_, [&] { return fz_new_default_colorspaces(ctx_); });
        try {
            fz_default_colorspaces *const own = guarded(
                ctx_, [&] { return pdf_update_default_colorspaces(ctx_, colours_, resources_.get()); });
            fz_drop_default_colorspaces(ctx_, colours_);
            colours_ = own;
        } catch (const Error &error) {
            qCDebug(log, "colour spaces can't be read: %s", error.what());
        }
    }

    /// Lets `body` feed content to a processor of its own. Broken content ends it, and no more.
    template <typename Body>
    void process(Body &&body) {
        pdf_processor *processor = nullptr;
        try {
            processor = guarded(ctx_, [&] {
                return pdf_new_run_processor(ctx_, device_, matrix_, "View", nullptr, colours_, &cookie_);
            });
            guarded(ctx_, [&] {
                body(processor);
                pdf_close_processor(ctx_, processor);
            });
        } catch (const Error &error) {
            qCDebug(log, "page content ends early: %s", error.what());
        }
        pdf_drop_processor(ctx_, processor);
    }

    void drawAnnotation(const Object &annotation) {
        const Object form = appearanceOf(annotation);
        if (!form) return;
        const Object place = annotation.get(PDF_NAME(Rect));
        fz_matrix toPlace = fz_identity;
        try {
            toPlace = guarded(ctx_, [&] { return placement(form.get(), place.get()); });
        } catch (const Error &error) {
            qCDebug(log, "annotation without a place: %s", error.what());
            return;
        }
        if (fz_is_empty_rect(fz_transform_rect(fz_unit_rect, toPlace))) return;
        process([&](pdf_processor *processor) {
            processor->op_q(ctx_, processor);
            processor->op_cm(ctx_, processor, toPlace.a, toPlace.b, toPlace.c, toPlace.d, toPlace.e,
                             toPlace.f);
            processor->op_Do_form(ctx_, processor, nullptr, form.get(), resources_.get());
            processor->op_Q(ctx_, processor);
        });
    }

    /// What moves an appearance into the annotation's rectangle.
    fz_matrix placement(pdf_obj *form, pdf_obj *place) const {
        const fz_rect rect = pdf_to_rect(ctx_, place);
        const fz_rect box = fz_transform_rect(pdf_dict_get_rect(ctx_, form, PDF_NAME(BBox)),
                                              pdf_dict_get_matrix(ctx_, form, PDF_NAME(Matrix)));
        const float width = box.x1 - box.x0;
        const float height = box.y1 - box.y0;
        if (!(width > 0) || !(height > 0)) return fz_make_matrix(0, 0, 0, 0, 0, 0);
        const float x = (rect.x1 - rect.x0) / width;
        const float y = (rect.y1 - rect.y0) / height;
        return fz_make_matrix(x, 0, 0, y, rect.x0 - box.x0 * x, rect.y0 - box.y0 * y);
    }

    void drop() {
        fz_drop_default_colorspaces(ctx_, colours_);
        fz_drop_device(ctx_, device_);
        fz_drop_pixmap(ctx_, pixmap_);
    }

    fz_context *ctx_;
    Reader &reader_;
    const Object &page_;
    Object resources_;
    fz_matrix matrix_;
    fz_cookie &cookie_;
    fz_rect box_;
    fz_pixmap *pixmap_ = nullptr;
    fz_device *device_ = nullptr;
    fz_default_colorspaces *colours_ = nullptr;
};

}  // namespace

PageImage blankImage(const QRect &clip) {
    if (clip.isEmpty() || qint64{clip.width()} * clip.height() > mostPixelsOfImage) return {};
    PageImage image = makeImage(clip.size());
    const size_t pixels = static_cast<size_t>(clip.width()) * static_cast<size_t>(clip.height());
    if (!image.isNull()) std::fill_n(image.bits(), pixels * PageImage::pixelBytes, uchar{255});
    return image;
}

PageImage renderPage(Reader &reader, const RenderRequest &request, const std::stop_token &stop) {
    PageImage image = blankImage(request.clip);
    if (image.isNull()) return {};
    fz_cookie cookie{};
    {
        const TimeLimit limit(cookie, longestRun);
        const std::stop_callback onStop(stop, [&cookie] { std::atomic_ref(cookie.abort).store(1); });
        try {
            const Object page = reader.page(request.pageIndex);
            PageRun(reader, page, geometryOf(page), request, image, cookie).run();
        } catch (const Error &error) {
            qCDebug(log, "page %d can't be drawn whole: %s", request.pageIndex + 1, error.what());
        }
    }
    return stop.stop_requested() ? PageImage() : image;
}

}  // namespace leafwright::mupdf
