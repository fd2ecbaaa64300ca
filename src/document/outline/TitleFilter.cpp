#include "document/outline/TitleFilter.h"

namespace leafwright {

std::vector<size_t> TitleFilter::matches(const QString &text, const std::stop_token &stop) {
    const FoldedText term(text);
    const auto count = static_cast<size_t>(titles_.size());
    folded_.reserve(count);
    std::vector<size_t> found;
    for (size_t i = 0; i < count && !stop.stop_requested(); ++i) {
        if (i == folded_.size()) folded_.emplace_back(titles_[static_cast<qsizetype>(i)]);
        if (term.isEmpty() || folded_[i].contains(term)) found.push_back(i);
    }
    return found;
}

}  // namespace leafwright
