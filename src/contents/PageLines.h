#pragma once

#include "contents/ReadingOrder.h"

#include <functional>
#include <limits>
#include <stop_token>

namespace leafwright {

/// A page as lines, from top to bottom.
struct PageLines {
    ReadingFrame frame;
    std::vector<TextLine> lines;
    std::vector<std::vector<int>>
        rows;                         ///< Lines on one baseline, from left to right; by indices into lines.
    std::vector<ContentsLink> links;  ///< Boxes in the reading frame; targets as they are given.
    bool isRecognised = false;        ///< See PageEvidence.
    /// What the lines' spans point to; null once they are no longer needed.
    std::shared_ptr<const PageEvidence> evidence;

    double width() const { return frame.size().width(); }
    double height() const { return frame.size().height(); }
    TextLine &line(int index) { return lines[static_cast<size_t>(index)]; }
    const TextLine &line(int index) const { return lines[static_cast<size_t>(index)]; }
    /// The line below or above; null where none is.
    const TextLine *nextOf(const TextLine &line) const {
        return line.next < 0 ? nullptr : &lines[static_cast<size_t>(line.next)];
    }
    const TextLine *previousOf(const TextLine &line) const {
        return line.previous < 0 ? nullptr : &lines[static_cast<size_t>(line.previous)];
    }
};

/// Names a line of a document.
struct LineRef {
    int page = -1;
    int line = -1;

    bool isNull() const { return line < 0; }
    friend bool operator==(const LineRef &, const LineRef &) = default;
    friend size_t qHash(const LineRef &ref, size_t seed = 0) { return qHashMulti(seed, ref.page, ref.line); }
};

/// The lines of a page: spans on one baseline, parted at gaps. Raised and lowered characters belong to the
/// text that they touch, and text drawn twice counts once. Only what runs from left to right in the reading
/// frame is read.
PageLines readLines(std::shared_ptr<const PageEvidence> evidence, int page);

/// Lets go what a page's lines were made of, which takes more memory than they do.
void dropSpans(PageLines &page);

/// The lines of all pages, read on as many threads as there are cores.
/// @param progress told how many pages are read; from the thread that called
/// @param withSpans so many pages from the first keep what their lines were made of
/// @return nothing when stopped
std::vector<PageLines> readAllLines(const ContentsPages &pages, const std::stop_token &stop,
                                    const std::function<void(int)> &progress,
                                    int withSpans = std::numeric_limits<int>::max());

}  // namespace leafwright
