#pragma once

#include "pdf/RenderRequest.h"

#include <QHash>
#include <QImage>

#include <list>
#include <vector>

namespace leafwright {

/// Images of pages, the least recently used of which go when there are too many bytes of them.
class PageImageCache {
public:
    /// An image with what it shows.
    struct Entry {
        RenderRequest request;
        QImage image;
    };

    /// @param capacity in bytes
    explicit PageImageCache(qint64 capacity) : capacity_(capacity) {}

    /// Takes an image, in place of an older one for the same request. One that alone exceeds the capacity
    /// is not kept.
    void insert(const RenderRequest &request, const QImage &image);
    /// The image for a request, which counts as used by that; null if there is none.
    QImage find(const RenderRequest &request);
    bool contains(const RenderRequest &request) const;
    /// All images of a page that were made at one other scale: at that of the last one made.
    std::vector<Entry> imagesAtOtherScale(int pageIndex, double scale) const;

    qint64 bytes() const { return bytes_; }
    qint64 capacity() const { return capacity_; }
    void setCapacity(qint64 bytes);
    void clear();

private:
    using Entries = std::list<Entry>;

    void remove(Entries::iterator entry);
    void shrinkTo(qint64 bytes);
    Entries::iterator position(const RenderRequest &request) const;

    mutable Entries entries_;  ///< The most recently used first.
    QHash<int, std::vector<Entries::iterator>> byPage_;
    qint64 bytes_ = 0;
    qint64 capacity_;
};

}  // namespace leafwright
