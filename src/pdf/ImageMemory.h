#pragma once

#include "pdf/PageImage.h"

namespace leafwright {

/// Makes an image without initial content, in memory that goes back where it came from with the image's last
/// copy. Large blocks are kept for the next image and not left to the heap:
/// coming and going by the dozen on several threads, they would tear holes into it that are as large as all
/// of them together. May be called from any thread.
/// @param size not empty @return a null image where there is no memory for it
PageImage makeImage(const QSize &size);

/// The bytes that are kept for images to come. Never more than 32 MB.
qint64 idleImageBytes();

}  // namespace leafwright
