#include "pageview/PageImageCache.h"

#include <algorithm>

namespace leafwright {

void PageImageCache::insert(const RenderRequest &request, const QImage &image) {
    if (const auto old = position(request); old != entries_.end()) remove(old);
    const qint64 size = image.sizeInBytes();
    if (size > capacity_) return;
    shrinkTo(capacity_ - size);
    entries_.push_front({request, image});
    byPage_[request.pageIndex].push_back(entries_.begin());
    bytes_ += size;
}

QImage PageImageCache::find(const RenderRequest &request) {
    const auto entry = position(request);
    if (entry == entries_.end()) return {};
    entries_.splice(entries_.begin(), entries_, entry);
    return entry->image;
}

bool PageImageCache::contains(const RenderRequest &request) const {
    return position(request) != entries_.end();
}

std::vector<PageImageCache::Entry> PageImageCache::imagesAtOtherScale(int pageIndex, double scale) const {
    std::vector<Entry> images;
    const auto ofPage = byPage_.constFind(pageIndex);
    if (ofPage == byPage_.constEnd()) return images;
    for (auto entry = ofPage->rbegin(); entry != ofPage->rend(); ++entry) {
        const double other = (*entry)->request.scale;
        if (other != scale && (images.empty() || images.front().request.scale == other))
            images.push_back(**entry);
    }
    return images;
}

void PageImageCache::setCapacity(qint64 bytes) {
    capacity_ = bytes;
    shrinkTo(bytes);
}

void PageImageCache::clear() {
    entries_.clear();
    byPage_.clear();
    bytes_ = 0;
}

void PageImageCache::remove(Entries::iterator entry) {
    const auto ofPage = byPage_.find(entry->request.pageIndex);
    ofPage->erase(std::find(ofPage->begin(), ofPage->end(), entry));
    if (ofPage->empty()) byPage_.erase(ofPage);
    bytes_ -= entry->image.sizeInBytes();
    entries_.erase(entry);
}

void PageImageCache::shrinkTo(qint64 bytes) {
    while (bytes_ > bytes)
        remove(std::prev(entries_.end()));
}

PageImageCache::Entries::iterator PageImageCache::position(const RenderRequest &request) const {
    const auto ofPage = byPage_.constFind(request.pageIndex);
    if (ofPage == byPage_.constEnd()) return entries_.end();
    const auto entry = std::find_if(ofPage->begin(), ofPage->end(),
                                    [&](const auto &candidate) { return candidate->request == request; });
    return entry == ofPage->end() ? entries_.end() : *entry;
}

}  // namespace leafwright
