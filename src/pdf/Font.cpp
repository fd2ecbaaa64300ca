#include "pdf/Font.h"

namespace leafwright {

Font::Font(std::shared_ptr<const FontFace> face, double pointSize)
    : face_(std::move(face)), pointSize_(pointSize) {
    Q_ASSERT(face_);
}

Font::Font(FontFace face, double pointSize)
    : face_(std::make_shared<const FontFace>(std::move(face))), pointSize_(pointSize) {}

}  // namespace leafwright
