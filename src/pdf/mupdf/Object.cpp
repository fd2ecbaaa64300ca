#include "pdf/mupdf/Object.h"

#include "pdf/mupdf/Context.h"

#include <charconv>
#include <cmath>

namespace leafwright::mupdf {

namespace {

/// Reads from an object; what is broken (an object stream, say) counts as absent.
template <typename Read>
auto readOr(fz_context *ctx, const pdf_obj *object, std::invoke_result_t<Read> absent, Read &&read) {
    if (!object) return absent;
    try {
        return guarded(ctx, std::forward<Read>(read));
    } catch (const ReadProblem &) {
        throw;
    } catch (const Error &) {
        return absent;
    }
}

double shortestDecimal(float value) {
    if (!std::isfinite(value)) return 0;
    char text[64];
    const auto written = std::to_chars(text, text + sizeof text, value);
    double number = 0;
    std::from_chars(text, written.ptr, number);
    return number;
}

}  // namespace

bool Object::isDict() const {
    return readOr(ctx_, object_, 0, [this] { return pdf_is_dict(ctx_, object_); });
}

bool Object::isArray() const {
    return readOr(ctx_, object_, 0, [this] { return pdf_is_array(ctx_, object_); });
}

bool Object::isName() const {
    return readOr(ctx_, object_, 0, [this] { return pdf_is_name(ctx_, object_); });
}

bool Object::isString() const {
    return readOr(ctx_, object_, 0, [this] { return pdf_is_string(ctx_, object_); });
}

bool Object::isInt() const {
    return readOr(ctx_, object_, 0, [this] { return pdf_is_int(ctx_, object_); });
}

bool Object::isNumber() const {
    return readOr(ctx_, object_, 0, [this] { return pdf_is_number(ctx_, object_); });
}

bool Object::isIndirect() const {
    return object_ && pdf_is_indirect(ctx_, object_);
}

Object::operator bool() const {
    return !readOr(ctx_, object_, 1, [this] { return pdf_is_null(ctx_, object_); });
}

int Object::objectNumber() const {
    return isIndirect() ? pdf_to_num(ctx_, object_) : 0;
}

Object Object::get(pdf_obj *key) const {
    pdf_obj *none = nullptr;
    return {ctx_, readOr(ctx_, object_, none, [&] { return pdf_dict_get(ctx_, object_, key); })};
}

Object Object::get(const char *key) const {
    pdf_obj *none = nullptr;
    return {ctx_, readOr(ctx_, object_, none, [&] { return pdf_dict_gets(ctx_, object_, key); })};
}

Object Object::inherited(pdf_obj *key) const {
    // The walk is ours because MuPDF's throws on a loop of parents.
    constexpr int deepestTree = 100;
    Object node = *this;
    for (int depth = 0; depth < deepestTree && node.isDict(); ++depth) {
        if (Object value = node.get(key)) return value;
        node = node.get(PDF_NAME(Parent));
    }
    return {};
}

Object Object::at(int index) const {
    pdf_obj *none = nullptr;
    return {ctx_, readOr(ctx_, object_, none, [&] { return pdf_array_get(ctx_, object_, index); })};
}

int Object::size() const {
    return readOr(ctx_, object_, 0, [this] {
        return pdf_is_array(ctx_, object_) ? pdf_array_len(ctx_, object_) : pdf_dict_len(ctx_, object_);
    });
}

QByteArray Object::keyAt(int index) const {
    pdf_obj *none = nullptr;
    return Object(ctx_, readOr(ctx_, object_, none, [&] { return pdf_dict_get_key(ctx_, object_, index); }))
        .toName();
}

Object Object::valueAt(int index) const {
    pdf_obj *none = nullptr;
    return {ctx_, readOr(ctx_, object_, none, [&] { return pdf_dict_get_val(ctx_, object_, index); })};
}

int Object::toInt() const {
    return readOr(ctx_, object_, 0, [this] { return pdf_to_int(ctx_, object_); });
}

double Object::toNumber() const {
    return shortestDecimal(readOr(ctx_, object_, 0.0F, [this] { return pdf_to_real(ctx_, object_); }));
}

QByteArray Object::toName() const {
    const char *none = nullptr;
    return readOr(ctx_, object_, none, [this] { return pdf_to_name(ctx_, object_); });
}

QByteArray Object::toBytes() const {
    size_t length = 0;
    const char *none = nullptr;
    const char *bytes = readOr(ctx_, object_, none, [&] { return pdf_to_string(ctx_, object_, &length); });
    return bytes ? QByteArray(bytes, static_cast<qsizetype>(length)) : QByteArray();
}

}  // namespace leafwright::mupdf
