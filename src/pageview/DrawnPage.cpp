#include "pageview/DrawnPage.h"

namespace leafwright {

QImage imageOf(const PageImage &page) {
    if (page.isNull()) return {};
    // Blue first and alpha last, as Qt has them in memory.
    static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN);
    const auto release = [](void *kept) { delete static_cast<PageImage *>(kept); };
    const QSize size = page.size();
    return {page.bits(),          size.width(),
            size.height(),        qsizetype{size.width()} * PageImage::pixelBytes,
            QImage::Format_RGB32, release,
            new PageImage(page)};
}

QImage drawnPage(const PDFDocument &document, const RenderRequest &request, const std::stop_token &stop) {
    return imageOf(document.renderPage(request, stop));
}

}  // namespace leafwright
