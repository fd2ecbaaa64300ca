#include "contents/PageLines.h"

#include "contents/SpanRows.h"

#include <atomic>
#include <thread>

namespace leafwright {

namespace {

/// Sorts the lines from top to bottom and tells the rows where they are now.
void sortLines(PageLines &page) {
    std::stable_sort(page.lines.begin(), page.lines.end(), [](const TextLine &a, const TextLine &b) {
        return std::make_tuple(a.baseline, a.left) < std::make_tuple(b.baseline, b.left);
    });
    for (size_t i = 0; i < page.lines.size(); ++i)
        page.rows[static_cast<size_t>(page.lines[i].row)].push_back(static_cast<int>(i));
    for (std::vector<int> &row : page.rows) {
        std::stable_sort(row.begin(), row.end(),
                         [&page](int a, int b) { return page.line(a).left < page.line(b).left; });
    }
}

/// Finds each line's neighbours above and below.
void linkNeighbours(PageLines &page) {
    constexpr int linesLookedAt = 40;
    constexpr double sameBaseline = 1;
    for (int i = 0; i < static_cast<int>(page.lines.size()); ++i) {
        TextLine &line = page.line(i);
        for (int k = i - 1; k >= std::max(0, i - linesLookedAt); --k) {
            TextLine &above = page.line(k);
            if (above.left >= line.right || line.left >= above.right ||
                above.baseline >= line.baseline - sameBaseline)
                continue;
            line.previous = k;
            line.gapAbove = line.baseline - above.baseline;
            if (above.next < 0) {
                above.next = i;
                above.gapBelow = line.gapAbove;
            }
            break;
        }
    }
}

}  // namespace

PageLines readLines(std::shared_ptr<const PageEvidence> evidence, int page) {
    PageLines result;
    result.frame = readingFrameOf(*evidence);
    result.evidence = inFrame(std::move(evidence), result.frame);
    result.links = result.evidence->links;
    result.isRecognised = result.evidence->isRecognised;
    const std::vector<std::vector<LineSpan>> rows = spanRows(result.evidence->spans);
    for (const std::vector<LineSpan> &row : rows) {
        for (std::vector<LineSpan> &part : partedAtGaps(row)) {
            result.lines.push_back(makeLine(std::move(part), page));
            result.lines.back().row = static_cast<int>(result.rows.size());
        }
        result.rows.emplace_back();
    }
    sortLines(result);
    linkNeighbours(result);
    return result;
}

void dropSpans(PageLines &page) {
    for (TextLine &line : page.lines)
        std::vector<LineSpan>().swap(line.spans);
    page.evidence.reset();
}

std::vector<PageLines> readAllLines(const ContentsPages &pages, const std::stop_token &stop,
                                    const std::function<void(int)> &progress, int withSpans) {
    const int count = pages.pageCount();
    std::vector<PageLines> result(static_cast<size_t>(count));
    std::atomic<int> next = 0;
    std::atomic<int> done = 0;
    const auto readOne = [&] {
        const int index = next++;
        if (index >= count || stop.stop_requested()) return false;
        PageLines &page = result[static_cast<size_t>(index)];
        page = readLines(pages.pageEvidence(index), index);
        if (index >= withSpans) dropSpans(page);
        ++done;
        return true;
    };
    {
        std::vector<std::jthread> helpers;
        const int cores = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
        for (int i = 1; i < std::min(cores, count); ++i)
            helpers.emplace_back([&readOne] {
                while (readOne()) {
                }
            });
        while (readOne())
            progress(done);
    }
    if (stop.stop_requested()) return {};
    return result;
}

}  // namespace leafwright
