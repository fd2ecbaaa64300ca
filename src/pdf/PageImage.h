#pragma once

#include <QSize>

#include <memory>

namespace leafwright {

/// The pixels of a page, or of a part of it, that has been drawn: opaque, in rows from the top without gaps,
/// of four bytes a pixel: blue, green, red, and 255. Copies are cheap and share the pixels.
class PageImage {
public:
    /// A null image.
    PageImage() = default;
    /// @param pixels as many as the size says
    PageImage(const QSize &size, std::shared_ptr<uchar[]> pixels) : size_(size), pixels_(std::move(pixels)) {}

    static constexpr int pixelBytes = 4;

    bool isNull() const { return !pixels_; }
    QSize size() const { return size_; }
    uchar *bits() { return pixels_.get(); }
    const uchar *bits() const { return pixels_.get(); }

private:
    QSize size_{0, 0};
    std::shared_ptr<uchar[]> pixels_;
};

}  // namespace leafwright
