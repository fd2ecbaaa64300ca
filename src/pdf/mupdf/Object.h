#pragma once

#include <mupdf/pdf.h>

#include <QByteArray>

namespace leafwright::mupdf {

/// A PDF object, kept alive while this lives; null for what is absent. Reads never throw on what a file
/// holds: an object of another type than asked for counts as absent or zero, as ISO 32000-1, 7.3.9
/// wants for references that lead nowhere. References are followed where a value is asked for.
/// What is there but can't be read, because the system or the memory fails, is a ReadProblem that all throw.
class Object {  // NOLINT(cppcoreguidelines-special-member-functions): one operator= copies and moves
public:
    Object() = default;
    /// Takes a reference of its own on `object`, which may be null.
    Object(fz_context *ctx, pdf_obj *object) : ctx_(ctx), object_(pdf_keep_obj(ctx, object)) {}
    Object(const Object &other) : Object(other.ctx_, other.object_) {}
    Object(Object &&other) noexcept : ctx_(other.ctx_), object_(std::exchange(other.object_, nullptr)) {}
    Object &operator=(Object other) noexcept {
        std::swap(ctx_, other.ctx_);
        std::swap(object_, other.object_);
        return *this;
    }
    ~Object() {
        if (object_) pdf_drop_obj(ctx_, object_);
    }

    bool isDict() const;
    bool isArray() const;
    bool isName() const;
    bool isString() const;
    bool isInt() const;
    bool isNumber() const;
    bool isIndirect() const;
    explicit operator bool() const;  ///< Whether there is something other than null.

    /// The object number of a reference, 0 for a direct object.
    int objectNumber() const;
    /// A dictionary's entry. @param key a name object, PDF_NAME(Kids)
    Object get(pdf_obj *key) const;
    /// The same for a name that PDF_NAME() does not have.
    Object get(const char *key) const;
    /// A page's entry, its own or an ancestor's (ISO 32000-1, 7.7.3.4).
    Object inherited(pdf_obj *key) const;
    /// An array's element.
    Object at(int index) const;
    /// An array's or dictionary's number of entries.
    int size() const;
    QByteArray keyAt(int index) const;
    Object valueAt(int index) const;

    int toInt() const;
    /// A number as the shortest decimal that the file's single precision tells apart: 72.1, not
    /// 72.0999984741. NaN and infinities, which no file can spell, are 0.
    double toNumber() const;
    QByteArray toName() const;
    QByteArray toBytes() const;  ///< A string's bytes.

    pdf_obj *get() const { return object_; }

private:
    fz_context *ctx_ = nullptr;
    pdf_obj *object_ = nullptr;
};

}  // namespace leafwright::mupdf
