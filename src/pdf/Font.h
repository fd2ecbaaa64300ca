#pragma once

#include <QHashFunctions>
#include <QString>

#include <memory>

namespace leafwright {

/// Bits of a font's symbolic traits.
enum FontTrait : quint32 {
    ItalicTrait = 1,
    BoldTrait = 2,
};
using FontTraits = quint32;

/// What is common to one face at every size.
struct FontFace {
    QString displayName;  ///< For people, such as "Times Bold".
    QString familyName;   ///< Such as "Times".
    FontTraits traits = 0;

    friend bool operator==(const FontFace &, const FontFace &) = default;
};

/// A font as page text uses it: a face at a size. A value; cheap to copy, since faces are shared.
class Font {
public:
    /// No font: empty names, size 0.
    Font() = default;
    /// @param face must not be null.
    /// @param pointSize in points, in the page's own space.
    Font(std::shared_ptr<const FontFace> face, double pointSize);
    /// A font with a face of its own.
    Font(FontFace face, double pointSize);

    bool isNull() const { return !face_; }
    QString displayName() const { return face_ ? face_->displayName : QString(); }
    QString familyName() const { return face_ ? face_->familyName : QString(); }
    FontTraits symbolicTraits() const { return face_ ? face_->traits : 0; }
    double pointSize() const { return pointSize_; }

    /// Equal when face and exact size are.
    friend bool operator==(const Font &a, const Font &b) {
        return a.pointSize_ == b.pointSize_ &&
               (a.face_ == b.face_ || (a.face_ && b.face_ && *a.face_ == *b.face_));
    }
    friend size_t qHash(const Font &font, size_t seed = 0) {
        return qHashMulti(seed, font.displayName(), font.pointSize_);
    }

private:
    std::shared_ptr<const FontFace> face_;
    double pointSize_ = 0;
};

}  // namespace leafwright
